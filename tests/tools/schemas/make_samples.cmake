# Makes the folder in which the command lines of the schemas are run.
# Needs: samples, plugins, writer, demo, program.
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
file(WRITE ${samples}/broken.ini "${none}sodllfile = foundrySampleFab\nsodllfile = noSuchLibrary\n")
file(COPY ${plugins}/lib_wn_foundrySampleFab.so.5.1.3 DESTINATION ${samples})
file(WRITE ${samples}/notes.txt "no plug-in\n")
file(WRITE ${samples}/mzi.yml "
name: mzi
instances:
  split: {component: sfSplitter, settings: {length: 16, unknown: null}, info: {made: [1, 2]}}
  upper: {component: sfStraight, settings: {length: 0.5}}
nets:
- {p1: 'split,out0', p2: 'upper,in0'}
placements: {upper: {x: 20, y: 10, rotation: 0, mirror: false}}
ports: {in: 'split,in0', up: 'upper,out0'}
")
file(WRITE ${samples}/wrong.yml "instances: {a: {component: nothing, settings: {}}}\n")
run(${writer} ${samples})
file(WRITE ${samples}/demo.vrl.exceptions.yml "exceptions:
- {rule: cross-section-mismatch, element: arms/lower, reason: known}
- {rule: open-port, reason: old}
")
run(${demo} build ${config} ${samples}/demo.vrl)

# Two imports of one circuit, with other names at its boundary and another note.
set(ENV{HOME} ${samples}/home)
foreach(design IN ITEMS imported renamed)
    file(WRITE ${samples}/${design}.yml "
instances: {a: {component: sfStraight, info: {made: ${design}, at: null}}}
placements: {a: {x: [1, 2]}}
ports: {in: 'a,in0', ${design}: 'a,out0'}
")
    run(${program} import ${samples}/${design}.yml -o ${samples}/${design}.vrl)
endforeach()
