# What `cmake --install` lays down, and the package with it.
include(cmake/releases.cmake)

set(component ${CMAKE_BINARY_DIR}/${VELMORA_APPLICATION_ID}.metainfo.xml)
velmora_releases(${PROJECT_SOURCE_DIR}/debian/changelog VELMORA_RELEASES)
configure_file(share/metainfo/Velmora.metainfo.xml.in ${component} @ONLY)

install(TARGETS Velmora RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY share/ DESTINATION ${CMAKE_INSTALL_DATADIR} PATTERN "*.in" EXCLUDE)
install(DIRECTORY assets/ DESTINATION ${CMAKE_INSTALL_DATADIR}/velmora)
install(FILES ${component} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES assets/icons/velmora.svg RENAME Velmora.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
