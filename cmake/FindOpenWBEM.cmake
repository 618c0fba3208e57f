# Finds an installed OpenWBEM 3.x client library that links for the target architecture.
#
# OpenWBEM_ROOT may name its prefix. Sets OpenWBEM_FOUND, OpenWBEM_INCLUDE_DIR, OpenWBEM_LIBRARY and, for a message
# when nothing was found, OpenWBEM_LOOKED_FOR. Defines the target OpenWBEM_installed.
include(CMakePushCheckState)
include(CheckCXXSourceCompiles)

set(OpenWBEM_LOOKED_FOR "OW_CIMClient.hpp in include or include/openwbem, and libowclient, below")
foreach(prefix IN ITEMS ${OpenWBEM_ROOT} $ENV{OpenWBEM_ROOT} ${CMAKE_PREFIX_PATH} ${CMAKE_SYSTEM_PREFIX_PATH})
    string(APPEND OpenWBEM_LOOKED_FOR " ${prefix}")
endforeach()

find_path(OpenWBEM_INCLUDE_DIR OW_CIMClient.hpp PATH_SUFFIXES openwbem)
find_library(OpenWBEM_LIBRARY owclient)
mark_as_advanced(OpenWBEM_INCLUDE_DIR OpenWBEM_LIBRARY)

# The original needs these behind it; where they were not built apart, they do not exist.
set(OpenWBEM_LIBRARIES ${OpenWBEM_LIBRARY})
foreach(companion IN ITEMS openwbem owxml owhttpclient owhttpcommon)
    find_library(OpenWBEM_${companion}_LIBRARY ${companion})
    mark_as_advanced(OpenWBEM_${companion}_LIBRARY)
    if(OpenWBEM_${companion}_LIBRARY)
        list(APPEND OpenWBEM_LIBRARIES ${OpenWBEM_${companion}_LIBRARY})
    endif()
endforeach()

if(OpenWBEM_INCLUDE_DIR AND OpenWBEM_LIBRARY)
    cmake_push_check_state(RESET)
    set(CMAKE_REQUIRED_INCLUDES ${OpenWBEM_INCLUDE_DIR})
    set(CMAKE_REQUIRED_LIBRARIES ${OpenWBEM_LIBRARIES})
    check_cxx_source_compiles("
        #include <OW_CIMClient.hpp>
        int main() { OpenWBEM::CIMClient client(\"ipc://localhost\", \"root\", OpenWBEM::ClientAuthCBIFCRef()); }
        " OpenWBEM_LINKS)
    cmake_pop_check_state()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenWBEM REQUIRED_VARS OpenWBEM_LIBRARY OpenWBEM_INCLUDE_DIR OpenWBEM_LINKS)

# A pair that does not do must not keep the next run, with another prefix, from looking.
if(NOT OpenWBEM_FOUND)
    unset(OpenWBEM_INCLUDE_DIR CACHE)
    unset(OpenWBEM_LIBRARY CACHE)
    unset(OpenWBEM_LINKS CACHE)
endif()

if(OpenWBEM_FOUND AND NOT TARGET OpenWBEM_installed)
    add_library(OpenWBEM_installed INTERFACE)
    target_include_directories(OpenWBEM_installed SYSTEM INTERFACE ${OpenWBEM_INCLUDE_DIR})
    target_link_libraries(OpenWBEM_installed INTERFACE ${OpenWBEM_LIBRARIES})
endif()
