# Installs the built tree, starts a plug-in project, builds it with the command that the tool names, which runs its tests,
# and looks at what came of it.
# Needs: name, vrl, built, steps, scratch, config, generator, compiler, flags.

cmake_minimum_required(VERSION 3.25)

include(${steps})

file(REMOVE_RECURSE ${scratch})
run(${CMAKE_COMMAND} --install ${built} --config ${config} --prefix ${scratch}/installed)
set(project "${scratch}/a project")
run(${vrl} new-plugin ${name} ${project})
if(NOT output MATCHES "\n  cd '${scratch}/a project' && (cmake --workflow --preset default)\n$")
    message(FATAL_ERROR "wrong last line: ${output}")
endif()
set(command ${CMAKE_MATCH_1})

# The tool under test is the one that the tests of the project find.
get_filename_component(programs ${vrl} DIRECTORY)
get_filename_component(cmake_folder ${CMAKE_COMMAND} DIRECTORY)
run(${CMAKE_COMMAND} -E chdir ${project} ${CMAKE_COMMAND} -E env
    PATH=${programs}:${cmake_folder}:$ENV{PATH}
    CMAKE_PREFIX_PATH=${scratch}/installed
    CMAKE_GENERATOR=${generator}
    CXX=${compiler}
    "CXXFLAGS=${flags} -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror"
    sh -c "${command}")
string(REGEX MATCHALL "${name}\\.[A-Za-z]+ \\.+ +Passed" passed "${output}")
list(TRANSFORM passed REPLACE " .*" "")
expect_equal("tests of the project" "${passed}" "${name}.ServesAHost;${name}.Conforms")

set(plugin ${project}/build/lib_wn_${name}.so.5.1.3)
run(${CMAKE_COMMAND} -E chdir ${project}/build ${vrl} validate lib_wn_${name}.so.5.1.3)
string(REGEX REPLACE "(machine +pass +)[^\n]+" "\\1(this one)" output "${output}")
if("$ENV{VRL_REWRITE_GOLDENS}" STREQUAL "1")
    string(REPLACE "${name}" "PluginName" rewritten "${output}")
    file(WRITE ${CMAKE_CURRENT_LIST_DIR}/conforms.txt "${rewritten}")
endif()
file(READ ${CMAKE_CURRENT_LIST_DIR}/conforms.txt expected)
string(REPLACE "PluginName" "${name}" expected "${expected}")
expect_equal("conformance of the new plug-in" "${output}" "${expected}")
