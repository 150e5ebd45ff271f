# What `cmake --install` gives: the headers, the library with its links, and a CMake package that works wherever the
# tree is moved to. No path of the build stands in it.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vrllib)

install(TARGETS vrllib EXPORT vrllibTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT vrllibTargets NAMESPACE vrllib:: DESTINATION ${package_folder})

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/vrllibConfig.cmake.in ${PROJECT_BINARY_DIR}/package/vrllibConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/vrllibConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/package/vrllibConfig.cmake
    ${PROJECT_BINARY_DIR}/package/vrllibConfigVersion.cmake
    DESTINATION ${package_folder})
