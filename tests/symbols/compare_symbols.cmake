# Compares the exported symbols of LIBRARY with the list KEPT. Writes those that were found to FOUND, ready to become the
# new list when the interface was extended by design.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} --dynamic --defined-only --format=just-symbols ${LIBRARY}
    OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" names "${names}")
# The standard library makes its own instances visible wherever they are used; they are not ours.
list(FILTER names EXCLUDE REGEX "^_ZZ?(T[ISV])?N?K?(S[a-z]|9__gnu_cxx)")
list(SORT names)
list(JOIN names "\n" text)
file(WRITE ${FOUND}.mangled "${text}\n")
execute_process(COMMAND ${CXXFILT} INPUT_FILE ${FOUND}.mangled OUTPUT_FILE ${FOUND} COMMAND_ERROR_IS_FATAL ANY)

if(text MATCHES "getAPIversion|initLibrary")
    message(FATAL_ERROR "The library exports a name of the plug-in contract.")
endif()
if(NOT "resetUniqueIDs" IN_LIST names)
    message(FATAL_ERROR "resetUniqueIDs is not exported under its plain name.")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${FOUND} ${KEPT} RESULT_VARIABLE differ)
if(differ)
    execute_process(COMMAND diff ${KEPT} ${FOUND})
    message(FATAL_ERROR "The exported symbols differ from the kept list ${KEPT}; found are those in ${FOUND}.")
endif()
