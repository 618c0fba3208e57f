# Finds an installed libSblimUtilities that links for the target architecture and has the functions we call. Our own
# header, below SblimUtilities_HEADERS, declares them: an installed library may come without one.
#
# SblimUtilities_ROOT may name its prefix. Sets SblimUtilities_FOUND, SblimUtilities_LIBRARY and, for a message when
# nothing was found, SblimUtilities_LOOKED_FOR. Defines the target SblimUtilities_installed.
include(CMakePushCheckState)
include(CheckCXXSourceCompiles)

set(SblimUtilities_LOOKED_FOR "libSblimUtilities with runcommand() and freeresultbuf(), below")
foreach(prefix IN ITEMS ${SblimUtilities_ROOT} $ENV{SblimUtilities_ROOT} ${CMAKE_PREFIX_PATH} ${CMAKE_SYSTEM_PREFIX_PATH})
    string(APPEND SblimUtilities_LOOKED_FOR " ${prefix}")
endforeach()

find_library(SblimUtilities_LIBRARY NAMES SblimUtilities libSblimUtilities.so.0)
mark_as_advanced(SblimUtilities_LIBRARY)

if(SblimUtilities_LIBRARY)
    cmake_push_check_state(RESET)
    set(CMAKE_REQUIRED_INCLUDES ${SblimUtilities_HEADERS})
    set(CMAKE_REQUIRED_LIBRARIES ${SblimUtilities_LIBRARY})
    check_cxx_source_compiles("
        #include <sblim_utilities.h>
        int main() {
            char** lines;
            const int status = runcommand(\"true\", nullptr, &lines, nullptr);
            freeresultbuf(lines);
            return status;
        }
        " SblimUtilities_LINKS)
    cmake_pop_check_state()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SblimUtilities REQUIRED_VARS SblimUtilities_LIBRARY SblimUtilities_LINKS)

# A library that does not do must not keep the next run, with another prefix, from looking.
if(NOT SblimUtilities_FOUND)
    unset(SblimUtilities_LIBRARY CACHE)
    unset(SblimUtilities_LINKS CACHE)
endif()

if(SblimUtilities_FOUND AND NOT TARGET SblimUtilities_installed)
    add_library(SblimUtilities_installed INTERFACE)
    target_include_directories(SblimUtilities_installed INTERFACE ${SblimUtilities_HEADERS})
    target_link_libraries(SblimUtilities_installed INTERFACE ${SblimUtilities_LIBRARY})
endif()
