# OWB_PROGRAMS is the directory from which tests start our programs. The kernel does not run those of another architecture:
# with an emulator, that directory has scripts that run it. CTest needs none, for it runs test programs with the emulator.
set(OWB_PROGRAMS ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
if(CMAKE_CROSSCOMPILING_EMULATOR)
    set(OWB_PROGRAMS ${PROJECT_BINARY_DIR}/emulated)
endif()

# owb_emulated(TARGET...) makes the scripts of programs.
function(owb_emulated)
    if(CMAKE_CROSSCOMPILING_EMULATOR)
        list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "' '" emulator)
        foreach(target IN LISTS ARGN)
            file(GENERATE OUTPUT ${OWB_PROGRAMS}/${target}
                 CONTENT "#!/bin/sh\nexec '${emulator}' '$<TARGET_FILE:${target}>' \"$@\"\n"
                 FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
        endforeach()
    endif()
endfunction()
owb_emulated(owbcimomd owbcimom-passwd owbctl owb-exporter owb-agentx)
