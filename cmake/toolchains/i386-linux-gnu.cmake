# 32-bit x86 Linux, on an amd64 host with a multilib compiler (Debian: g++-12-multilib).
#
# A toolchain file is named by its triplet and sets, for the rest of the project:
#   OWB_TRIPLET              the triplet, which Debian's library directories carry
#   OWB_DEBIAN_ARCHITECTURE  Debian's name of the architecture
#   OWB_TARGET_FLAGS         what the compiler needs to compile for it
#   OWB_WIDE_FLAGS           what it needs to compile for 64 bits, for tests; unset if it cannot
#   OWB_SYSROOT              the directory of fetched libraries and headers (OwbToolchain.cmake); unset if there is none
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(OWB_TRIPLET i386-linux-gnu)
set(OWB_DEBIAN_ARCHITECTURE i386)
set(OWB_TARGET_FLAGS -m32)
set(OWB_WIDE_FLAGS -m64)

# The multilib package belongs to one version of the compiler, which need not be the default one.
if(NOT CMAKE_C_COMPILER AND NOT CMAKE_CXX_COMPILER AND NOT DEFINED ENV{CC} AND NOT DEFINED ENV{CXX}
   AND EXISTS /usr/bin/gcc-12 AND EXISTS /usr/bin/g++-12)
    set(CMAKE_C_COMPILER gcc-12)
    set(CMAKE_CXX_COMPILER g++-12)
endif()
# gcc-multilib links asm/ into /usr/include. It conflicts with cross compilers; without it the host's headers serve.
if(NOT EXISTS /usr/include/asm AND EXISTS /usr/include/x86_64-linux-gnu/asm)
    string(APPEND OWB_TARGET_FLAGS " -idirafter /usr/include/x86_64-linux-gnu")
endif()

# The libraries of multilib and those of Debian's packages for the architecture.
list(APPEND CMAKE_LIBRARY_PATH /usr/lib32 /lib32 /usr/lib/${OWB_TRIPLET})
include(${CMAKE_CURRENT_LIST_DIR}/../OwbToolchain.cmake)
