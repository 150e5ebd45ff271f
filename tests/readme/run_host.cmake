# Runs HOST in a fresh FOLDER on a configuration that loads vrlDemoDll from PLUGINS, and compares its whole output.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(WRITE ${FOLDER}/VRLConfig.ini
    "sodlldir_clear\nsodlldir_linux = ${PLUGINS}\nsodllpostfix_linux = .so.\${version}\nsodllfile = vrlDemoDll\n")
execute_process(COMMAND ${HOST} VRLConfig.ini WORKING_DIRECTORY ${FOLDER}
    OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
string(REGEX REPLACE "Can't load [^\n]*lib_wn_vrldll[^\n]*\n" "" out "${out}")  # this host has no vrldll
if(NOT status EQUAL 0 OR NOT err STREQUAL "" OR NOT out STREQUAL "vrlDemoDll: kinds of building block: 1
Parameters{--}
Port{N1 -> N}
Building blocks{
 delay = demoDelayLine(in0=N1) cmpID=1
 }
")
    message(FATAL_ERROR "status ${status}\nstandard output:\n${out}standard error:\n${err}")
endif()
if(NOT EXISTS ${FOLDER}/circuit.vrl)
    message(FATAL_ERROR "no circuit.vrl was written")
endif()
