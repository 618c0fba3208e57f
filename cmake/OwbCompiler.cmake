# How targets are compiled. A target links owb_warnings if its sources are ours, and owb_flags if they are of others.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON) # static libraries are parts of shared ones
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON) # no program depends on the name of the build directory
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

find_program(OWB_CCACHE ccache)
mark_as_advanced(OWB_CCACHE)
foreach(language IN ITEMS C CXX)
    if(OWB_CCACHE AND NOT DEFINED CMAKE_${language}_COMPILER_LAUNCHER)
        set(CMAKE_${language}_COMPILER_LAUNCHER ${OWB_CCACHE})
    endif()
endforeach()

add_library(owb_flags INTERFACE)
# File names in messages and debug information are relative to the source tree, whoever builds it where; ccache may pass
# the compiler names relative to the build directory.
file(RELATIVE_PATH source_from_build ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
string(REGEX REPLACE "/$" "" source_from_build ${source_from_build})
target_compile_options(owb_flags INTERFACE "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=" "-ffile-prefix-map=${source_from_build}/="
                       "-ffile-prefix-map=${PROJECT_BINARY_DIR}/=")
# /proc has inode numbers beyond 32 bits.
target_compile_definitions(owb_flags INTERFACE _FILE_OFFSET_BITS=64)
# assert() guards memory and stays on in every build type. Boost's assertions are off: Beast's HTTP parser asserts what
# the peer decides (how many bytes of a last chunk have arrived), and is correct without.
target_compile_options(owb_flags INTERFACE -UNDEBUG)
target_compile_definitions(owb_flags INTERFACE BOOST_DISABLE_ASSERTS)

if(OWB_HARDEN)
    # A definition precedes all options, so that a target can undefine it.
    target_compile_definitions(owb_flags INTERFACE _FORTIFY_SOURCE=2)
    target_compile_options(owb_flags INTERFACE -fstack-protector-strong)
    target_link_options(owb_flags INTERFACE LINKER:-z,relro,-z,now)
endif()
if(OWB_SANITIZE OR OWB_FUZZ)
    target_compile_options(owb_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # the instrumentation causes false alarms
        target_compile_options(owb_flags INTERFACE -Wno-maybe-uninitialized)
    endif()
    target_link_options(owb_flags INTERFACE -fsanitize=address,undefined)
endif()
if(OWB_FUZZ)
    target_compile_options(owb_flags INTERFACE -fsanitize=fuzzer-no-link)
    # With clang, the sanitizers' functions are in the program, not in a library that a library could link to.
    target_link_options(owb_flags INTERFACE LINKER:-z,undefs)
endif()
if(OWB_COVERAGE)
    include(OwbCoverage)
endif()

add_library(owb_warnings INTERFACE)
target_link_libraries(owb_warnings INTERFACE owb_flags)
# Clang's -Wshadow reports enumerators of classes, too.
target_compile_options(owb_warnings INTERFACE -Wall -Wextra -Wpedantic $<$<CXX_COMPILER_ID:GNU>:-Wshadow> -Wconversion
                       $<$<BOOL:${OWB_WERROR}>:-Werror>)
