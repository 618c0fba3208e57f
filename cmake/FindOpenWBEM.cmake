# Finds an installed OpenWBEM 3.x client library that compiles and links what the bridge needs, for the target
# architecture.
#
# OpenWBEM_ROOT may name its prefix. Sets OpenWBEM_FOUND, OpenWBEM_INCLUDE_DIR and OpenWBEM_LIBRARY. For messages when
# it is not found: OpenWBEM_LOOKED_FOR and, set only if header and library are there, OpenWBEM_FAILURE. Defines the target
# OpenWBEM_installed.
set(OpenWBEM_LOOKED_FOR "OW_CIMClient.hpp in include or include/openwbem, and libowclient, below")
foreach(prefix IN ITEMS ${OpenWBEM_ROOT} $ENV{OpenWBEM_ROOT} ${CMAKE_PREFIX_PATH} ${CMAKE_SYSTEM_PREFIX_PATH})
    string(APPEND OpenWBEM_LOOKED_FOR " ${prefix}")
endforeach()

find_path(OpenWBEM_INCLUDE_DIR OW_CIMClient.hpp PATH_SUFFIXES openwbem)
find_library(OpenWBEM_LIBRARY owclient)
mark_as_advanced(OpenWBEM_INCLUDE_DIR OpenWBEM_LIBRARY)

if(OpenWBEM_INCLUDE_DIR AND NOT OpenWBEM_LIBRARY)
    string(APPEND OpenWBEM_LOOKED_FOR "\nFound only: ${OpenWBEM_INCLUDE_DIR}/OW_CIMClient.hpp")
elseif(OpenWBEM_LIBRARY AND NOT OpenWBEM_INCLUDE_DIR)
    string(APPEND OpenWBEM_LOOKED_FOR "\nFound only: ${OpenWBEM_LIBRARY}")
endif()

# The original needs these, which are in the same folder; where they were not built apart, they do not exist.
set(OpenWBEM_LIBRARIES ${OpenWBEM_LIBRARY})
set(OpenWBEM_ABSENT)
cmake_path(GET OpenWBEM_LIBRARY PARENT_PATH OpenWBEM_LIBRARY_DIR)
foreach(companion IN ITEMS openwbem owxml owhttpclient owhttpcommon)
    unset(OpenWBEM_COMPANION)
    find_library(OpenWBEM_COMPANION ${companion} PATHS ${OpenWBEM_LIBRARY_DIR} NO_CACHE NO_DEFAULT_PATH)
    if(OpenWBEM_COMPANION)
        list(APPEND OpenWBEM_LIBRARIES ${OpenWBEM_COMPANION})
    else()
        list(APPEND OpenWBEM_ABSENT lib${companion})
    endif()
endforeach()

# What was found, the step that failed, and the first lines of its errors.
function(openwbem_describe_failure output)
    set(step compile)
    if(output MATCHES "Linking CXX executable")
        set(step link)
    endif()
    string(REGEX REPLACE "[][;]" " " output "${output}") # characters of CMake's lists
    string(REGEX MATCHALL "[^\n]*(error: |undefined reference|ld: )[^\n]*" errors "${output}")
    list(FILTER errors EXCLUDE REGEX "^collect2")
    list(SUBLIST errors 0 5 errors)
    list(JOIN errors "\n  " errors)
    list(JOIN OpenWBEM_LIBRARIES "\n  " libraries)
    set(absent)
    if(OpenWBEM_ABSENT)
        list(JOIN OpenWBEM_ABSENT ", " absent)
        set(absent "\nNot beside it, and needed unless they are part of it: ${absent}")
    endif()
    set(OpenWBEM_FAILURE
        "Found:\n  ${OpenWBEM_INCLUDE_DIR}/OW_CIMClient.hpp\n  ${libraries}${absent}\nA program with what the bridge needs does not ${step}:\n  ${errors}"
        PARENT_SCOPE)
endfunction()

unset(OpenWBEM_FAILURE)
if(OpenWBEM_INCLUDE_DIR AND OpenWBEM_LIBRARY AND NOT OpenWBEM_WORKS)
    try_compile(OpenWBEM_WORKS SOURCES ${CMAKE_CURRENT_LIST_DIR}/OpenWBEMProbe.cpp
        CMAKE_FLAGS -DINCLUDE_DIRECTORIES=${OpenWBEM_INCLUDE_DIR}
        LINK_LIBRARIES ${OpenWBEM_LIBRARIES}
        OUTPUT_VARIABLE output
        CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON)
    if(NOT OpenWBEM_WORKS)
        openwbem_describe_failure("${output}")
    endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenWBEM REQUIRED_VARS OpenWBEM_LIBRARY OpenWBEM_INCLUDE_DIR OpenWBEM_WORKS)

# A pair that does not do must not keep the next run, with another prefix, from looking.
if(NOT OpenWBEM_FOUND)
    unset(OpenWBEM_INCLUDE_DIR CACHE)
    unset(OpenWBEM_LIBRARY CACHE)
    unset(OpenWBEM_WORKS CACHE)
endif()

if(OpenWBEM_FOUND AND NOT TARGET OpenWBEM_installed)
    # The original's libraries have no RUNPATH: who is linked to them names them all, whether it calls them or not, and its
    # own RUNPATH leads to them. In the cache, for whatever folder links to the target.
    set(CMAKE_CXX_LINK_LIBRARY_USING_openwbem_needed
        "LINKER:--push-state,--no-as-needed" "<LINK_ITEM>" "LINKER:--pop-state" CACHE INTERNAL "")
    set(CMAKE_CXX_LINK_LIBRARY_USING_openwbem_needed_SUPPORTED TRUE CACHE INTERNAL "")
    list(JOIN OpenWBEM_LIBRARIES "," libraries)
    add_library(OpenWBEM_installed INTERFACE)
    target_include_directories(OpenWBEM_installed SYSTEM INTERFACE ${OpenWBEM_INCLUDE_DIR})
    target_link_libraries(OpenWBEM_installed INTERFACE "$<LINK_LIBRARY:openwbem_needed,${libraries}>")
endif()
