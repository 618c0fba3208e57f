# 32-bit ARM Linux (Debian: armhf), on an amd64 host. i386-linux-gnu.cmake describes the variables that it sets.
#
# An installed compiler and an installed emulator (Debian: g++-12-arm-linux-gnueabihf, qemu-user) are taken first, else those
# of scripts/unpack armhf: the compiler's packages conflict with gcc-multilib.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(OWB_TRIPLET arm-linux-gnueabihf)
set(OWB_DEBIAN_ARCHITECTURE armhf)
# Headers that serve all architectures, such as Boost's, are the host's. Without notes on what GCC 7 changed in the ABI.
set(OWB_TARGET_FLAGS "-idirafter /usr/include -Wno-psabi")

cmake_path(SET OWB_UNPACKED NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/tools/armhf)
foreach(program IN ITEMS ${OWB_TRIPLET}-g++-12 qemu-arm)
    find_program(OWB_${program} ${program} PATHS ${OWB_UNPACKED}/usr/bin NO_CACHE NO_CMAKE_FIND_ROOT_PATH)
endforeach()
set(OWB_COMPILER ${OWB_${OWB_TRIPLET}-g++-12})
if(NOT OWB_COMPILER)
    message(FATAL_ERROR "No compiler for ${OWB_TRIPLET} was found; scripts/unpack armhf fetches one.")
endif()

set(OWB_LIBRARIES /usr/${OWB_TRIPLET}/lib)
cmake_path(IS_PREFIX OWB_UNPACKED ${OWB_COMPILER} is_unpacked)
if(is_unpacked)
    string(PREPEND OWB_TARGET_FLAGS "--sysroot=${OWB_UNPACKED} ")
    string(PREPEND OWB_LIBRARIES ${OWB_UNPACKED})
endif()
if(NOT CMAKE_C_COMPILER AND NOT CMAKE_CXX_COMPILER AND NOT DEFINED ENV{CC} AND NOT DEFINED ENV{CXX})
    string(REPLACE g++ gcc CMAKE_C_COMPILER ${OWB_COMPILER})
    set(CMAKE_CXX_COMPILER ${OWB_COMPILER})
endif()
include(${CMAKE_CURRENT_LIST_DIR}/../OwbToolchain.cmake)

# CMake and CTest run programs with it. It starts the loader, for its option -L would hide directories of the host. The loader
# then ignores LD_LIBRARY_PATH.
if(OWB_qemu-arm AND NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${OWB_qemu-arm} ${OWB_LIBRARIES}/ld-linux-armhf.so.3 --library-path)
    if(OWB_SYSROOT)
        string(APPEND OWB_LIBRARIES :${OWB_SYSROOT}/usr/lib/${OWB_TRIPLET})
    endif()
    list(APPEND CMAKE_CROSSCOMPILING_EMULATOR ${OWB_LIBRARIES})
endif()
