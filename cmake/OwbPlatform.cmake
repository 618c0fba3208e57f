# The platform that is compiled for. A toolchain file describes it (toolchains/i386-linux-gnu.cmake names the variables).
# Without one it is the compiler's, of which Debian's compilers print the triplet; others print none.
if(NOT OWB_TRIPLET)
    separate_arguments(flags UNIX_COMMAND "${CMAKE_CXX_FLAGS}")
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${flags} -print-multiarch OUTPUT_VARIABLE OWB_TRIPLET ERROR_QUIET
                    OUTPUT_STRIP_TRAILING_WHITESPACE)
    unset(flags)
endif()
set(architectures aarch64-linux-gnu=arm64 arm-linux-gnueabihf=armhf i386-linux-gnu=i386 x86_64-linux-gnu=amd64)
if(NOT OWB_DEBIAN_ARCHITECTURE AND ";${architectures}" MATCHES ";${OWB_TRIPLET}=([a-z0-9]+)")
    set(OWB_DEBIAN_ARCHITECTURE ${CMAKE_MATCH_1})
endif()
unset(architectures)

# The library's interface consists of 32-bit words. For a platform of 64 bits the library is a private part of the programs:
# nothing that agents need is installed, and there are no packages.
set(OWB_FOR_AGENTS FALSE)
set(platform_note ", programs only: agents need a library of 32 bits")
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(OWB_FOR_AGENTS TRUE)
    set(platform_note "")
endif()
math(EXPR OWB_WORD_SIZE "8 * ${CMAKE_SIZEOF_VOID_P}")
set(platform "${OWB_TRIPLET}")
if(NOT platform)
    set(platform "${CMAKE_SYSTEM_PROCESSOR}")
endif()
message(STATUS "Platform: ${platform}, ${OWB_WORD_SIZE} bits${platform_note}")
unset(platform)
unset(platform_note)

if(OWB_TRIPLET AND EXISTS /etc/debian_version)
    # Debian's directory of libraries, below any prefix, so that packages hold what was tested. Not of type PATH: CMake
    # would take a relative one of the command line for a directory of the build.
    set(CMAKE_INSTALL_LIBDIR lib/${OWB_TRIPLET} CACHE STRING "Directory of libraries, below the prefix")
endif()
