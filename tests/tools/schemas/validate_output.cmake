# Runs a command line and validates what it writes.
# Needs: samples, program, python, schema, status, line.
cmake_minimum_required(VERSION 3.25)

separate_arguments(words UNIX_COMMAND "${line}")
set(ENV{HOME} ${samples}/home)
unset(ENV{VRLLOAD})
execute_process(COMMAND ${program} ${words} WORKING_DIRECTORY ${samples}
    RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT result EQUAL status)
    message(FATAL_ERROR "vrl ${line}: ended with ${result} and not with ${status}\n${out}${err}")
endif()

string(MD5 name "${line}")
file(WRITE ${samples}/${name}.json "${out}")
get_filename_component(folder ${schema} DIRECTORY)  # where the other schemas are that it refers to
execute_process(COMMAND ${python} -W ignore -m jsonschema --base-uri file://${folder}/ -i ${samples}/${name}.json ${schema}
    RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "vrl ${line}: not as ${schema} says (package python3-jsonschema)\n${out}${err}")
endif()
