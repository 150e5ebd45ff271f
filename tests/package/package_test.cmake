# Installs the built tree, moves the copy elsewhere, and builds and runs a host and a plug-in against it.
# Needs: built, sources, scratch, version, libdir, config, generator, make, compiler, flags, readelf, nm.

cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

file(REMOVE_RECURSE ${scratch})
file(MAKE_DIRECTORY ${scratch})
set(installed ${scratch}/installed)
set(moved ${scratch}/moved/elsewhere)
run(${CMAKE_COMMAND} --install ${built} --config ${config} --prefix ${installed})
file(MAKE_DIRECTORY ${scratch}/moved)
file(RENAME ${installed} ${moved})

# The library, its two links, and nothing else beside the CMake package.
file(GLOB libraries RELATIVE ${moved}/${libdir} LIST_DIRECTORIES FALSE ${moved}/${libdir}/*)
list(SORT libraries)
expect_equal("libraries" "${libraries}" "lib_wn_vrllib.so;lib_wn_vrllib.so.2;lib_wn_vrllib.so.${version}")
foreach(link IN ITEMS lib_wn_vrllib.so lib_wn_vrllib.so.2)
    file(REAL_PATH ${moved}/${libdir}/${link} target)
    file(REAL_PATH ${moved}/${libdir}/lib_wn_vrllib.so.${version} library)
    expect_equal("target of ${link}" "${target}" "${library}")
endforeach()
run(${readelf} -d ${moved}/${libdir}/lib_wn_vrllib.so)
if(NOT output MATCHES "SONAME[^\n]*\\[lib_wn_vrllib\\.so\\.2\\]" OR output MATCHES "RPATH|RUNPATH")
    message("${output}")
    message(FATAL_ERROR "wrong SONAME, or a path inside the library")
endif()

# The headers of the interface are where they are included from; the private ones are not installed.
if(NOT EXISTS ${moved}/include/vrllib/vrllib.h)
    message(FATAL_ERROR "no include/vrllib/vrllib.h")
endif()
file(GLOB_RECURSE private RELATIVE ${moved}
    ${moved}/include/vrllib/platform/* ${moved}/include/wildcard.h ${moved}/include/thrown_text.h
    ${moved}/include/config_reader.h ${moved}/include/default_config.h ${moved}/include/load_steps.h
    ${moved}/include/load_targets.h ${moved}/include/macros.h ${moved}/include/loader_state.h
    ${moved}/include/configuration_state.h ${moved}/include/fixed_text.h ${moved}/include/type_factory.h)
expect_equal("private headers" "${private}" "")

# No file of the package knows where it was built or first installed.
expect_no_path_of_the_build(${moved} ${built})

build_project(${sources}/host ${scratch}/host ${moved})
build_project(${sources}/plugin ${scratch}/plugin ${moved})
expect_exports(${scratch}/plugin/lib_wn_packagePlugin.so.5.1.3 "getAPIversion;initLibraryBB")

file(WRITE ${scratch}/VRLConfig.ini
    "sodlldir_clear\n"
    "sodlldir_linux = ${scratch}/plugin\n"
    "sodllpostfix_linux = .so.\${version}\n"
    "sodllfile = packagePlugin\n")
run(${scratch}/host/package_host ${scratch}/VRLConfig.ini)
expect_equal("output of the host" "${output}" "  packageWaveguide\n${story}")

# A symbol that would only be missed when a host loads the plug-in is refused when it is linked.
file(WRITE ${scratch}/unresolved/CMakeLists.txt
    "cmake_minimum_required(VERSION 3.25)\n"
    "project(unresolved LANGUAGES CXX)\n"
    "find_package(vrllib 2.1 REQUIRED)\n"
    "vrl_add_plugin(\${name} unresolved.cpp VERSION 7)\n")
file(WRITE ${scratch}/unresolved/unresolved.cpp "int absent();\nint present() { return absent(); }\n")
configure_project(${scratch}/unresolved ${scratch}/unresolved/build ${moved} -D name=unresolved)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${scratch}/unresolved/build --config ${config}
    RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
if(result EQUAL 0 OR NOT out MATCHES "absent" OR EXISTS ${scratch}/unresolved/build/lib_wn_unresolved.so.7)
    message(FATAL_ERROR "an undefined symbol is not refused (${result}):\n${out}")
endif()

# So is a name that cannot be part of a file name.
execute_process(COMMAND ${CMAKE_COMMAND} -D name=a/b ${scratch}/unresolved/build
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE out)
string(REGEX REPLACE "[ \n]+" " " out "${out}")
if(result EQUAL 0 OR NOT out MATCHES "vrl_add_plugin: \"a/b\" cannot be part of a file name. Use letters")
    message(FATAL_ERROR "a wrong name is not refused (${result}):\n${out}")
endif()
