# Language level, warnings and ccache for every target of the project.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

if(CMAKE_BINARY_DIR STREQUAL PROJECT_SOURCE_DIR)
    message(FATAL_ERROR "Build in a folder of its own: cmake --preset release")
endif()
# File names in messages and debug information are relative to the source tree, whoever builds it where; ccache may hand
# the compiler names relative to the build folder.
file(RELATIVE_PATH source_from_build ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR})
string(REGEX REPLACE "/$" "" source_from_build ${source_from_build})
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=" "-ffile-prefix-map=${source_from_build}/=")
# /proc holds inode numbers beyond 32 bits.
add_compile_definitions(_FILE_OFFSET_BITS=64)

# Assertions are decided here for every target, whatever flags the build type has. assert() stays on: it guards memory.
# Boost's assertions are off: Beast's HTTP parser asserts what the peer decides (the number of bytes of a last chunk that
# have arrived), and is correct without.
add_compile_options(-UNDEBUG)
add_compile_definitions(BOOST_DISABLE_ASSERTS)

# Link to owb_warnings from our own targets only: third-party code is compiled without.
add_library(owb_warnings INTERFACE)
target_compile_options(owb_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                       $<$<BOOL:${OWB_WERROR}>:-Werror>)

find_program(OWB_CCACHE ccache)
if(OWB_CCACHE)
    set(CMAKE_C_COMPILER_LAUNCHER ${OWB_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${OWB_CCACHE})
endif()
