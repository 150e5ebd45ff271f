# The target docs: the reference of the public headers, where Doxygen is installed. It fails where a comment is wrong.

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()
find_package(Doxygen 1.9.4 QUIET)
if(NOT DOXYGEN_FOUND)
    return()
endif()

configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
add_custom_target(docs
    COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/docs
    COMMENT "Writing docs/html/index.html"
    VERBATIM)

if(VRL_BUILD_TESTS)
    add_test(NAME Docs.BuildWithoutWarnings
        COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/docs/Doxyfile WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
endif()
