# Debian packages, one for each component of the installation: `cmake --build <folder> --target package` writes
# libvrllib2, libvrllib-dev and, where the tool is built, vrl. The sample plug-ins are not packaged.

if(NOT PROJECT_IS_TOP_LEVEL OR NOT VRL_INSTALL OR WIN32)
    return()
endif()

set(library_package libvrllib${PROJECT_VERSION_MAJOR})
set(same_version "${library_package} (= ${PROJECT_VERSION})")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vrllib)
set(CPACK_PACKAGE_VENDOR vrllib)
set(CPACK_PACKAGE_CONTACT "The developers of vrllib <vrllib@vorlane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own, the first line of its description
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL library development)
if(TARGET vrl)
    list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The packages that a file needs are found by its own dependencies; that on our library is named below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Object model of a photonic design flow, shared library
Foundries and their cross sections, building blocks with ports and ranged
parameters, netlists of blocks, and a saved form of all of these. Plug-ins
bring their foundries, blocks and views into its factories.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvrllib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "g++, cmake (>= 3.23), pkgconf")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Object model of a photonic design flow, development files
Headers, the packages for CMake and pkg-config, and vrl-config, which builds
plug-ins without a build system.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME vrl)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${same_version}")
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS "librsvg2-bin")
set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS "texlive-latex-base, texlive-latex-recommended, texlive-pictures, texlive-fonts-recommended")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Command line for saved photonic designs and their plug-ins
Shows, checks, compares, draws and converts designs of vrllib, reports why a
plug-in is not seen, checks plug-ins and starts new ones.")

include(CPack)
