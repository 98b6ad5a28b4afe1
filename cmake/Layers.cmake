add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough)

# Only the folder `src` is an include root, and the libraries of the platform (Qt, GStreamer) come
# in with the layers that name them, so `#include <QString>` in the engine does not compile.
#
# UNITS are listed bottom-up: a unit may include units listed before it and headers of the
# BELOW layers, nothing else; the layering test checks both, so there are no include cycles. A unit
# may be a header alone. PROGRAMS are units with a `main`, which the library leaves out.
function(add_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "UNITS;PROGRAMS;BELOW")
    foreach(unit IN LISTS arg_UNITS)
        if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${unit}.cpp)
            list(APPEND sources ${unit}.cpp)
        elseif(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${unit}.h)
            message(FATAL_ERROR "${name} lists ${unit}, and there is no such unit")
        endif()
    endforeach()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_BELOW} PRIVATE warnings)
    if(CHOREOGRAPHER_TESTS)
        add_test(NAME layering.${name} COMMAND ${CMAKE_COMMAND} "-DLAYER=${name}"
            "-DUNITS=${arg_UNITS}" "-DPROGRAMS=${arg_PROGRAMS}" "-DBELOW=${arg_BELOW}"
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
