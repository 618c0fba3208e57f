#!/usr/bin/env bash
# The toolchain file compiles for 32 bits, with the flags of the command line too: check_toolchain.sh CMAKE TOOLCHAIN. Its own
# choice of a compiler is tested, so the environment names none. Without its compiler the test is skipped.
set -euo pipefail

cmake=$1 toolchain=$2
unset CC CXX
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

cat >"$directory/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(agent C CXX)
include(CheckSourceCompiles)
file(READ agent.c source)
foreach(language IN ITEMS C CXX)
    check_source_compiles(${language} "${source}" ${language}_CHECK_COMPILES)
    if(NOT ${language}_CHECK_COMPILES)
        message(FATAL_ERROR "a check in ${language} compiles otherwise than the program")
    endif()
endforeach()
add_executable(c_agent agent.c)
add_executable(cxx_agent agent.cpp)
END
cat >"$directory/agent.c" <<'END'
#include <errno.h> /* includes headers of the architecture */
#if __SIZEOF_POINTER__ != 4
#error "the flags of the target are lost"
#endif
#ifndef OF_THE_COMMAND_LINE
#error "the flags of the command line are lost"
#endif
int main(void) { return 0; }
END
cp "$directory/agent.c" "$directory/agent.cpp"

# Twice: a later run reads the flags from the cache.
flags=-DOF_THE_COMMAND_LINE
output=$("$cmake" -S "$directory" -B "$directory/build" -G Ninja --toolchain "$toolchain" -DCMAKE_C_FLAGS=$flags \
    -DCMAKE_CXX_FLAGS=$flags 2>&1 && "$cmake" "$directory/build" 2>&1 && "$cmake" --build "$directory/build" 2>&1) || {
    echo "$output" >&2
    [[ $output != *"No compiler for "* ]] || exit 77
    exit 1
}
