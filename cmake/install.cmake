# SPDX-License-Identifier: MIT
# What is installed beside the programs and the module: what the author of a module or of a host
# builds with, the licence, and the examples. Each component installs what it builds.
include(CMakePackageConfigHelpers)

# Headers depend on no machine, so what finds them lies in the shared data, too.
set(package_folder ${CMAKE_INSTALL_DATADIR}/cmake/dastrel)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/dastrelConfig.cmake.in
    ${PROJECT_BINARY_DIR}/cmake/dastrelConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    PATH_VARS CMAKE_INSTALL_BINDIR CMAKE_INSTALL_LIBDIR
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/dastrelConfigVersion.cmake
    COMPATIBILITY SameMajorVersion
    ARCH_INDEPENDENT)
install(FILES
    ${PROJECT_BINARY_DIR}/cmake/dastrelConfig.cmake
    ${PROJECT_BINARY_DIR}/cmake/dastrelConfigVersion.cmake
    DESTINATION ${package_folder})
install(EXPORT dastrelTargets NAMESPACE dastrel:: DESTINATION ${package_folder})

configure_file(${PROJECT_SOURCE_DIR}/cmake/dastrel.pc.in ${PROJECT_BINARY_DIR}/cmake/dastrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/dastrel.pc
    DESTINATION ${CMAKE_INSTALL_DATADIR}/pkgconfig)

# Under the name that Debian expects.
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/dastrel RENAME copyright)
install(FILES
    ${PROJECT_SOURCE_DIR}/examples/stone.lwo
    ${PROJECT_SOURCE_DIR}/examples/terrain.lwo
    ${PROJECT_SOURCE_DIR}/examples/tree.lwo
    DESTINATION ${CMAKE_INSTALL_DATADIR}/dastrel/examples)
install(DIRECTORY
    ${PROJECT_SOURCE_DIR}/examples/smallest_host
    ${PROJECT_SOURCE_DIR}/examples/smallest_module
    DESTINATION ${CMAKE_INSTALL_DATADIR}/dastrel/examples
    FILES_MATCHING PATTERN *.c PATTERN *.cpp PATTERN CMakeLists.txt)

# The window in the menus of the desktop, and as what opens object files.
if(DASTREL_DESKTOP)
    set(entry_folder ${PROJECT_SOURCE_DIR}/cmake/desktop_entry)
    install(FILES ${entry_folder}/dastrel-modeler.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${entry_folder}/dastrel-modeler.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
    install(FILES ${entry_folder}/dastrel.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
endif()
