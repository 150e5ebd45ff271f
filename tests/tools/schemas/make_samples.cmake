# Makes the folder in which the command lines of the schemas are run.
# Needs: samples, plugins, writer, demo.
cmake_minimum_required(VERSION 3.25)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "failed (${result}): ${command}\n${out}${err}")
    endif()
endfunction()

set(none "sodlldir_clear\nsodlldir_linux = ${plugins}\nsodllpostfix_linux = .so.\${version}\n")
set(config ${samples}/home/.config/vorlane/VRLConfig.ini)
file(REMOVE_RECURSE ${samples})
file(WRITE ${samples}/none.ini "${none}")
file(WRITE ${config} "${none}sodllfile = vrlDemoDll\nsodllfile = foundrySampleFab\n")
run(${writer} ${samples})
run(${demo} build ${config} ${samples}/demo.vrl)
