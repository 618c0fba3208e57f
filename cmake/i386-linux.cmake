# 32-bit x86 Linux, built on an amd64 host with a multilib compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
# Flags from the command line replace the initial ones, so -m32 goes in front of those that lack it.
foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_FLAGS_INIT -m32)
    if(DEFINED CMAKE_${language}_FLAGS AND NOT " ${CMAKE_${language}_FLAGS} " MATCHES " -m32 ")
        set(CMAKE_${language}_FLAGS "-m32 ${CMAKE_${language}_FLAGS}")
    endif()
endforeach()
# Where 32-bit libraries are: those of multilib and those of i386 packages.
list(APPEND CMAKE_LIBRARY_PATH /usr/lib32 /lib32 /usr/lib/i386-linux-gnu)
# Where Debian keeps 32-bit libraries, beside those of the host; below any prefix, so that packages hold what was tested.
if(EXISTS /etc/debian_version)
    # No PATH: CMake would take a relative one of the command line for a folder of the build.
    set(CMAKE_INSTALL_LIBDIR lib/i386-linux-gnu CACHE STRING "Folder of libraries, below the prefix")
endif()
