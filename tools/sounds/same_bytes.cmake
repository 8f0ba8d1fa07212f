# Runs the sound synthesiser once more into a scratch directory and checks that every cue comes out byte for
# byte as the build made it, so that two builds ship the same files.
#
#   cmake -DTOOL=ks_make_sounds -DBUILT=dir -DSCRATCH=dir -DNAMES=a.wav;b.wav -P same_bytes.cmake

foreach(variable TOOL BUILT SCRATCH NAMES)
    if(NOT DEFINED ${variable})
        message(FATAL_ERROR "same_bytes.cmake needs -D${variable}=...")
    endif()
endforeach()

file(REMOVE_RECURSE ${SCRATCH})
execute_process(COMMAND ${TOOL} ${SCRATCH} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${TOOL} ${SCRATCH} failed: ${result}")
endif()

set(differing)
foreach(name ${NAMES})
    file(SHA256 ${BUILT}/${name} built)
    file(SHA256 ${SCRATCH}/${name} again)
    if(NOT built STREQUAL again)
        list(APPEND differing ${name})
    endif()
endforeach()
file(REMOVE_RECURSE ${SCRATCH})
if(differing)
    message(FATAL_ERROR "A second run gives other bytes for: ${differing}")
endif()
