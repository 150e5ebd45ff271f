# Makes a plug-in of a table, builds it against an installed copy, and writes its table again: the same, byte for byte. The
# table is that of SampleFab, and further blocks with names and texts of which not every one is C++.
# Needs: vrl, built, plugins, steps, scratch, config, generator, compiler, flags.

cmake_minimum_required(VERSION 3.25)

include(${steps})

file(REMOVE_RECURSE ${scratch})
run(${CMAKE_COMMAND} --install ${built} --config ${config} --prefix ${scratch}/installed)
file(WRITE ${scratch}/VRLConfig.ini "sodlldir_clear
sodlldir_linux = ${plugins}
sodllpostfix_linux = .so.\${version}
sodllfile = foundrySampleFab
")
run(${vrl} describe SampleFab --table --config ${scratch}/VRLConfig.ini)
file(READ ${CMAKE_CURRENT_LIST_DIR}/more_blocks.yml more)
set(table "${output}${more}")
file(WRITE ${scratch}/blocks.yml "${table}")
run(${vrl} new-plugin table ${scratch}/project --from ${scratch}/blocks.yml)

# All sources at once, which takes a quarter of the time.
run(${CMAKE_COMMAND} -E env CMAKE_PREFIX_PATH=${scratch}/installed
    ${CMAKE_COMMAND} -S ${scratch}/project -B ${scratch}/project/build -G ${generator}
    -D CMAKE_CXX_COMPILER=${compiler}
    -D CMAKE_BUILD_TYPE=${config}
    -D CMAKE_UNITY_BUILD=ON
    "-DCMAKE_CXX_FLAGS=${flags} -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror"
    -D VRL_PROGRAM=${vrl})
run(${CMAKE_COMMAND} --build ${scratch}/project/build)
set(config_file ${scratch}/project/build/VRLConfig.ini)
run(${scratch}/project/build/tests/table_host ${config_file})
run(${vrl} describe SampleFab --table --config ${config_file})
expect_equal("table of the plug-in that was made of a table" "${output}" "${table}")

run(${CMAKE_COMMAND} -E chdir ${scratch}/project/build ${vrl} validate --seconds 100 lib_wn_table.so.5.1.3)
string(REGEX REPLACE "(machine +pass +)[^\n]+" "\\1(this one)" output "${output}")
if("$ENV{VRL_REWRITE_GOLDENS}" STREQUAL "1")
    file(WRITE ${CMAKE_CURRENT_LIST_DIR}/table_conforms.txt "${output}")
endif()
file(READ ${CMAKE_CURRENT_LIST_DIR}/table_conforms.txt expected)
expect_equal("conformance of the plug-in" "${output}" "${expected}")
