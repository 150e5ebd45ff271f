# What `cmake --install` installs, in two components. library: the shared library with the link of its SONAME. development: the
# headers, the link for the linker, and the packages for CMake, pkg-config and plain shell scripts. They work wherever the
# tree is moved to: no path of the build is in them, and each finds the tree from its own place in it.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vrllib)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS vrllib EXPORT vrllibTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT vrllibTargets NAMESPACE vrllib:: DESTINATION ${package_folder} COMPONENT development)

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/vrllibConfig.cmake.in ${PROJECT_BINARY_DIR}/package/vrllibConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/vrllibConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/package/vrllibConfig.cmake
    ${PROJECT_BINARY_DIR}/package/vrllibConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/VrlPlugin.cmake
    ${CMAKE_CURRENT_LIST_DIR}/vrl-plugin.map
    DESTINATION ${package_folder} COMPONENT development)

if(NOT WIN32)
    string(REGEX REPLACE "[^/]+" ".." prefix_from_pkgconfig ${pkgconfig_folder})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/vrllib.pc.in ${PROJECT_BINARY_DIR}/package/vrllib.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/package/vrllib.pc DESTINATION ${pkgconfig_folder} COMPONENT development)

    get_property(VRL_PLUGIN_VERSION_DEFAULT GLOBAL PROPERTY VRL_PLUGIN_VERSION_DEFAULT)
    string(REGEX REPLACE "[^/]+" ".." prefix_from_bin ${CMAKE_INSTALL_BINDIR})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/vrl-config.in ${PROJECT_BINARY_DIR}/package/vrl-config @ONLY)
    install(PROGRAMS ${PROJECT_BINARY_DIR}/package/vrl-config
        DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT development)
    configure_file(${PROJECT_SOURCE_DIR}/docs/vrl-config.1.in ${PROJECT_BINARY_DIR}/package/vrl-config.1 @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/package/vrl-config.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT development)
endif()

# For authors of plug-ins and hosts, with the schema that the plug-in guide links. What belongs to the tool comes with it.
set(guides_folder ${CMAKE_INSTALL_DATADIR}/doc/libvrllib-dev)
foreach(document IN ITEMS format host-guide plugin-guide)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/${document}.md DESTINATION ${guides_folder} COMPONENT development)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/docs/schemas/vrl-table.schema.json
    DESTINATION ${guides_folder}/schemas COMPONENT development)
