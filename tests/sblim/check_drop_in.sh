#!/usr/bin/env bash
# An agent builds with an installed utilities library, which has no header. If none works, CMake reports the reason:
# check_drop_in.sh CMAKE SOURCE_DIR TOOLCHAIN_OPTION LIBRARY
set -euo pipefail

cmake=$1 source=$2 toolchain=$3 library=$4
read -r -a target_flags <<<"$OWB_TARGET_FLAGS"
read -r -a emulator <<<"$OWB_EMULATOR"
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# An agent with this project as a subdirectory.
mkdir "$directory/agent"
cat >"$directory/agent/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(agent C CXX)
add_subdirectory($source owb)
add_executable(command_agent $source/tests/sblim/c_agent.c)
target_link_libraries(command_agent PRIVATE Sblim::utilities)
END

configure() { # PREFIX MODE
    "$cmake" -S "$directory/agent" -B "$1/build" -G Ninja "$toolchain" -DOWB_SBLIM="$2" \
        -DSblimUtilities_ROOT="$1" -DOWB_TESTS=OFF -DOWB_BENCH=OFF 2>&1
}

expect_error() { # PREFIX
    local output unwrapped text
    if output=$(configure "$1" SYSTEM); then
        fail "configuring without a working library succeeded: $output"
    fi
    unwrapped=$(tr -s '[:space:]' ' ' <<<"$output") # the message is wrapped
    for text in "no libSblimUtilities for $OWB_PROCESSOR was found" "libSblimUtilities with runcommand() and freeresultbuf()" "$1" \
        "-DSblimUtilities_ROOT=DIR"; do
        [[ $unwrapped == *$text* ]] || fail "the error does not contain \"$text\": $output"
    done
}

expect_library() { # PREFIX MODE SHOWN
    local output
    output=$(configure "$1" "$2") || fail "$output"
    [[ $output == *"Utilities library: $3"* ]] || fail "not \"$3\" with $2: $output"
}

# No library, a library without one of the functions, a library for another architecture.
prefixes=(none half)
mkdir -p "$directory"/{none,half,other}/lib
echo 'int runcommand(void) { return 0; }' >"$directory/half.c"
"$CC" "${target_flags[@]}" -shared -o "$directory/half/lib/libSblimUtilities.so" "$directory/half.c"
if [[ -n $OWB_WIDE_FLAGS ]]; then
    echo 'int runcommand(void) { return 0; } void freeresultbuf(void) {}' >"$directory/other.c"
    "$CC" -c "$OWB_WIDE_FLAGS" -ffreestanding -o "$directory/other.o" "$directory/other.c"
    ar cr "$directory/other/lib/libSblimUtilities.a" "$directory/other.o"
    prefixes+=(other)
fi
for prefix in "${prefixes[@]}"; do
    expect_error "$directory/$prefix"
    expect_library "$directory/$prefix" AUTO bundled # the same directory: errors are not cached
done

# The file names of a development package and of a runtime package.
for name in libSblimUtilities.so libSblimUtilities.so.0; do
    prefix=$directory/$name/prefix
    mkdir -p "$prefix/lib"
    cp "$library" "$prefix/lib/$name"
    [[ -e $prefix/lib/libSblimUtilities.so.0 ]] || ln -s "$name" "$prefix/lib/libSblimUtilities.so.0"
    expect_library "$prefix" BUNDLED bundled
    expect_library "$prefix" SYSTEM "$prefix/lib/$name"
    rm -r "$prefix/build"
    expect_library "$prefix" AUTO "$prefix/lib/$name"
    output=$("$cmake" --build "$prefix/build" --target command_agent 2>&1) || fail "$output"
    # Checks the RPATH in the install script: building the object manager would take minutes.
    grep -q "NEW_RPATH .*$prefix/lib[:\"]" "$prefix/build/owb/cimom/cmake_install.cmake" ||
        fail "an installed owbcimomd would not find $prefix/lib"
    "${emulator[@]}" "$prefix/build/command_agent" || fail "the agent fails with $name"
done
