# The end of every toolchain file: compiles with OWB_TARGET_FLAGS and finds the libraries of OWB_TRIPLET.

# Flags from the command line replace the initial ones, so the target's go in front of those that lack them.
foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_FLAGS_INIT ${OWB_TARGET_FLAGS})
    if(DEFINED CMAKE_${language}_FLAGS)
        string(FIND " ${CMAKE_${language}_FLAGS} " " ${OWB_TARGET_FLAGS} " index)
        if(index EQUAL -1)
            set(CMAKE_${language}_FLAGS "${OWB_TARGET_FLAGS} ${CMAKE_${language}_FLAGS}")
        endif()
    endif()
endforeach()

# Libraries and headers that scripts/sysroot has fetched are found before those of the host. An installed libssl-dev of the
# architecture is taken first.
cmake_path(SET OWB_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${OWB_TRIPLET})
if(EXISTS ${OWB_SYSROOT}/packages AND NOT EXISTS /usr/lib/${OWB_TRIPLET}/libssl.so)
    list(APPEND CMAKE_FIND_ROOT_PATH ${OWB_SYSROOT})
    # For the libraries that shared libraries need: only a linker of the host reads their RUNPATH.
    foreach(kind IN ITEMS EXE SHARED MODULE)
        set(CMAKE_${kind}_LINKER_FLAGS_INIT -Wl,-rpath-link,${OWB_SYSROOT}/usr/lib/${OWB_TRIPLET})
    endforeach()
else()
    unset(OWB_SYSROOT)
endif()
