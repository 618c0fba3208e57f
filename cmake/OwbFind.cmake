# What the search for libraries shares.
include_guard(GLOBAL)
include(CMakePushCheckState)
include(CheckCXXSourceCompiles)

# owb_links(RESULT LIBRARY SOURCE [INCLUDES DIRECTORY...]): whether a C++ program links to a library, given by its target or
# file. Libraries are found by name, those of other architectures too. Success is cached, failure is not.
function(owb_links result library source)
    cmake_parse_arguments(PARSE_ARGV 3 arg "" "" "INCLUDES")
    if(TARGET ${library} OR EXISTS "${library}")
        cmake_push_check_state(RESET)
        set(CMAKE_REQUIRED_INCLUDES ${arg_INCLUDES})
        set(CMAKE_REQUIRED_LIBRARIES ${library})
        check_cxx_source_compiles("${source}" ${result})
        cmake_pop_check_state()
    endif()
    owb_forget_failure(${result} ${result})
endfunction()

# owb_forget_failure(SUCCESS VARIABLE...): unless the variable SUCCESS is true, removes cached results, so that the next
# run, with another prefix, searches again.
function(owb_forget_failure success)
    if(NOT ${success})
        foreach(variable IN LISTS ARGN)
            unset(${variable} CACHE)
        endforeach()
    endif()
endfunction()

# owb_describe_search(PACKAGE WHAT): sets PACKAGE_LOOKED_FOR, which says what was searched for and below which prefixes.
macro(owb_describe_search package what)
    set(${package}_LOOKED_FOR "${what}, below")
    foreach(prefix IN ITEMS ${${package}_ROOT} $ENV{${package}_ROOT} ${CMAKE_PREFIX_PATH} ${CMAKE_SYSTEM_PREFIX_PATH})
        string(APPEND ${package}_LOOKED_FOR " ${prefix}")
    endforeach()
endmacro()

# owb_check_choice(OPTION): fails unless the value of an option is one of its STRINGS.
function(owb_check_choice option)
    get_property(choices CACHE ${option} PROPERTY STRINGS)
    if(NOT ${option} IN_LIST choices)
        list(JOIN choices ", " choices)
        message(FATAL_ERROR "${option} is '${${option}}'; it must be one of ${choices}")
    endif()
endfunction()
