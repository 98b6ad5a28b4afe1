add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough)

# Only the folder `src` is an include root, and the libraries of the platform (Qt, GStreamer) come
# in with the layers that name them, so `#include <QString>` in the engine does not compile.
#
# UNITS are listed bottom-up: a unit may include units listed before it and headers of the
# BELOW layers, nothing else; the layering test checks both, so there are no include cycles.
function(add_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "UNITS;HEADERS;BELOW")
    list(TRANSFORM arg_UNITS REPLACE "(.+)" "\\1.cpp" OUTPUT_VARIABLE sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_BELOW} PRIVATE warnings)
    if(CHOREOGRAPHER_TESTS)
        add_test(NAME layering.${name} COMMAND ${CMAKE_COMMAND} "-DLAYER=${name}"
            "-DUNITS=${arg_UNITS}" "-DHEADERS=${arg_HEADERS}" "-DBELOW=${arg_BELOW}"
            "-DROOT=${PROJECT_SOURCE_DIR}/src" -P ${PROJECT_SOURCE_DIR}/cmake/CheckLayer.cmake)
    endif()
endfunction()

# The test of a layer links that layer only, so a call into a higher one cannot link.
function(add_layer_test layer)
    set(name ${layer}_test)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE ${layer} warnings GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data"
        SAMPLES="${PROJECT_SOURCE_DIR}/samples")
    gtest_discover_tests(${name} TEST_PREFIX ${layer}. DISCOVERY_TIMEOUT 60)
endfunction()
