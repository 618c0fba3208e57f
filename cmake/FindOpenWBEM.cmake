# Finds an installed OpenWBEM 3.x client library that compiles and links what the bridge needs, for the target
# architecture.
#
# OpenWBEM_ROOT may name its prefix. Sets OpenWBEM_FOUND, OpenWBEM_INCLUDE_DIR and OpenWBEM_LIBRARY. For messages when
# it is not found: OpenWBEM_LOOKED_FOR and, set only if header and library are there, OpenWBEM_FAILURE. Defines the target
# OpenWBEM_installed.
include(OwbFind)
owb_describe_search(OpenWBEM "OW_CIMClient.hpp in include or include/openwbem, and libowclient")

find_path(OpenWBEM_INCLUDE_DIR OW_CIMClient.hpp PATH_SUFFIXES openwbem)
find_library(OpenWBEM_LIBRARY owclient)
mark_as_advanced(OpenWBEM_INCLUDE_DIR OpenWBEM_LIBRARY)

if(OpenWBEM_INCLUDE_DIR AND NOT OpenWBEM_LIBRARY)
    string(APPEND OpenWBEM_LOOKED_FOR "\nFound only: ${OpenWBEM_INCLUDE_DIR}/OW_CIMClient.hpp")
elseif(OpenWBEM_LIBRARY AND NOT OpenWBEM_INCLUDE_DIR)
    string(APPEND OpenWBEM_LOOKED_FOR "\nFound only: ${OpenWBEM_LIBRARY}")
endif()

# The original's libowclient needs these libraries, in the same directory. Some builds have them all in one.
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

# Sets OpenWBEM_FAILURE: what was found, the step that failed, and the first lines of its errors.
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
        set(absent "\nMissing in its directory, and needed unless it contains them: ${absent}")
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

owb_forget_failure(OpenWBEM_FOUND OpenWBEM_INCLUDE_DIR OpenWBEM_LIBRARY OpenWBEM_WORKS)

if(OpenWBEM_FOUND AND NOT TARGET OpenWBEM_installed)
    # The original's libraries have no RUNPATH. A program that links to them must list them all as needed, even those that
    # it does not call, and find them by its own RUNPATH. Cached, for every directory that links to the target.
    set(CMAKE_CXX_LINK_LIBRARY_USING_openwbem_needed
        "LINKER:--push-state,--no-as-needed" "<LINK_ITEM>" "LINKER:--pop-state" CACHE INTERNAL "")
    set(CMAKE_CXX_LINK_LIBRARY_USING_openwbem_needed_SUPPORTED TRUE CACHE INTERNAL "")
    list(JOIN OpenWBEM_LIBRARIES "," libraries)
    add_library(OpenWBEM_installed INTERFACE)
    target_include_directories(OpenWBEM_installed SYSTEM INTERFACE ${OpenWBEM_INCLUDE_DIR})
    target_link_libraries(OpenWBEM_installed INTERFACE "$<LINK_LIBRARY:openwbem_needed,${libraries}>")
endif()
