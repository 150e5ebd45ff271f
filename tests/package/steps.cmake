# Steps of the tests that use an installed copy.
# Needs: config, generator, make, compiler, flags, nm.

# Runs a command that has to work; `output` is what it wrote to its standard output.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message("${out}${err}")
        message(FATAL_ERROR "failed (${result}): ${command}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()

function(expect_equal what actual expected)
    if(NOT "${actual}" STREQUAL "${expected}")
        message("--- expected:\n${expected}\n--- is:\n${actual}")
        message(FATAL_ERROR "wrong: ${what}")
    endif()
endfunction()

# The files of the package that people and tools read.
function(expect_no_path_of_the_build prefix built)
    file(GLOB_RECURSE files ${prefix}/*.cmake ${prefix}/*.pc ${prefix}/*.map ${prefix}/bin/vrl-config)
    list(LENGTH files count)
    if(count LESS 7)
        message(FATAL_ERROR "files of the package are missing: ${files}")
    endif()
    foreach(file IN LISTS files)
        file(READ ${file} text)
        string(FIND "${text}" "${built}" place)
        expect_equal("place of the build folder in ${file}" "${place}" -1)
    endforeach()
endfunction()

# What the documents of a folder link, other than places in themselves, is installed with them.
function(expect_links_to_lead_somewhere folder)
    file(GLOB_RECURSE documents ${folder}/*.md)
    list(LENGTH documents count)
    if(count LESS 3)
        message(FATAL_ERROR "documents are missing: ${documents}")
    endif()
    foreach(document IN LISTS documents)
        file(READ ${document} text)
        get_filename_component(place ${document} DIRECTORY)
        string(REGEX MATCHALL "\\([a-z][a-z/.-]*\\.(md|json|svg)\\)" links "${text}")
        foreach(link IN LISTS links)
            string(REGEX REPLACE "[()]" "" target "${link}")
            if(NOT EXISTS ${place}/${target})
                message(FATAL_ERROR "${document} links ${target}, which is not installed")
            endif()
        endforeach()
    endforeach()
endfunction()

# configure_project(source binary prefix [option...])
function(configure_project source binary prefix)
    run(${CMAKE_COMMAND} -S ${source} -B ${binary} -G ${generator}
        -D CMAKE_MAKE_PROGRAM=${make}
        -D CMAKE_CXX_COMPILER=${compiler}
        -D CMAKE_CXX_FLAGS=${flags}
        -D CMAKE_BUILD_TYPE=${config}
        -D CMAKE_PREFIX_PATH=${prefix}
        -D CMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
        ${ARGN})
endfunction()

function(build_project source binary prefix)
    configure_project(${source} ${binary} ${prefix})
    run(${CMAKE_COMMAND} --build ${binary} --config ${config})
endfunction()

# Compares what a plug-in exports, besides the type information that it shares with the library. The sanitisers add names
# of their own to each module.
function(expect_exports plugin expected)
    run(${nm} --dynamic --defined-only --format=just-symbols ${plugin})
    string(REGEX MATCHALL "[^\n]+" names "${output}")
    list(FILTER names EXCLUDE REGEX "^(_ZT[IS]|__asan_|__odr_asan)")
    list(SORT names)
    expect_equal("exports of ${plugin}" "${names}" "${expected}")
endfunction()

# What tests/package/host prints of the block of tests/package/plugin.
set(story "=== packageWaveguide ===
  length= 200
ports: in0 out0
The value \"200\" is out of range for Double. Accepted range is [1,100]
variable 'width' not found
")
