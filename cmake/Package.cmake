# What an installation holds, and the Debian package made of it: scripts/package calls cpack.
include(GNUInstallDirs)

set(release_date 2026-11-21)
set(maintainer "Choreographer Developers <choreographer@velmora.example>")

set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(made ${PROJECT_BINARY_DIR}/packaging)
set(data_dir ${CMAKE_INSTALL_DATADIR}/choreographer)
set(app_id org.velmora.choreographer)

execute_process(COMMAND date --utc --rfc-email --date=${release_date}
    OUTPUT_VARIABLE release_date_rfc OUTPUT_STRIP_TRAILING_WHITESPACE)

# Fills in the version, compresses without a time stamp, and installs under `name`.gz.
function(install_compressed source destination name)
    configure_file(${packaging}/${source} ${made}/${name} @ONLY)
    add_custom_command(OUTPUT ${made}/${name}.gz
        COMMAND gzip -9nkf ${made}/${name}
        DEPENDS ${made}/${name} VERBATIM)
    set_property(GLOBAL APPEND PROPERTY COMPRESSED_FILES ${made}/${name}.gz)
    install(FILES ${made}/${name}.gz DESTINATION ${destination})
endfunction()

install(TARGETS choreographer choreo)
install_compressed(man/choreographer.1 ${CMAKE_INSTALL_MANDIR}/man1 choreographer.1)
install_compressed(man/choreo.1 ${CMAKE_INSTALL_MANDIR}/man1 choreo.1)
install_compressed(debian/changelog.in ${CMAKE_INSTALL_DOCDIR} changelog.Debian)
get_property(compressed GLOBAL PROPERTY COMPRESSED_FILES)
add_custom_target(package_files ALL DEPENDS ${compressed})

configure_file(${packaging}/desktop/${app_id}.metainfo.xml.in ${made}/${app_id}.metainfo.xml @ONLY)
install(FILES ${made}/${app_id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/desktop/${app_id}.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/desktop/choreographer.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${packaging}/icons/choreographer.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(DIRECTORY ${packaging}/bash-completion/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${packaging}/debian/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${packaging}/debian/lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME choreographer)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples DESTINATION ${data_dir}
    FILES_MATCHING PATTERN "*.ctl" PATTERN "*.mp3"
    PATTERN choreography EXCLUDE PATTERN music EXCLUDE)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/TANDRI.HLP DESTINATION ${data_dir})

file(READ ${packaging}/debian/description CPACK_PACKAGE_DESCRIPTION)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME choreographer)
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for the choreographies of a musical fountain")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is loaded at run time, so that no library of the programs names it: the parts of GStreamer
# that read music and find the sound device, the fonts of the layout, the index of the manual.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, \
gstreamer1.0-alsa, fonts-liberation, libqt6sql6-sqlite")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
include(CPack)
