# For toolchain files, after OWB_TRIPLET: libraries and headers that scripts/sysroot has fetched are found before those of the
# host. An installed libssl-dev of the architecture is taken first.
cmake_path(SET OWB_SYSROOT NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${OWB_TRIPLET})
if(EXISTS ${OWB_SYSROOT}/packages AND NOT EXISTS /usr/lib/${OWB_TRIPLET}/libssl.so)
    list(APPEND CMAKE_FIND_ROOT_PATH ${OWB_SYSROOT})
else()
    unset(OWB_SYSROOT)
endif()
