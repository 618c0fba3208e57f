#!/usr/bin/env bash
# A C++ agent that uses classes of the client library builds through pkg-config and through CMake, and finds the library
# when it runs: check_client_agent.sh TREE CMAKE SOURCE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 cmake=$2 source=$3
cd "$directory"
cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.16)
project(agent LANGUAGES CXX)
find_package(owb REQUIRED)
add_executable(agent $source)
target_link_libraries(agent PRIVATE owb::client)
END
output=$("$cmake" -S . -B build -G Ninja -DCMAKE_PREFIX_PATH="$tree" -DCMAKE_CXX_FLAGS="$OWB_TARGET_FLAGS" \
    -DCMAKE_EXE_LINKER_FLAGS="$link_flags" 2>&1 &&
    "$cmake" --build build 2>&1) || fail "$output"
"${emulator[@]}" build/agent || fail "the agent that CMake builds fails"

export PKG_CONFIG_PATH=$tree/share/pkgconfig
read -r -a options < <(pkg-config --cflags --libs owb-client)
read -r -a target_flags <<<"$OWB_TARGET_FLAGS"
"$CXX" "${target_flags[@]}" "$source" "${options[@]}" ${link_flags:+"$link_flags"} -Wl,-rpath,"$(pkg-config --variable=libdir owb)" -o agent
"${emulator[@]}" ./agent || fail "the agent that is built with pkg-config's options fails"
