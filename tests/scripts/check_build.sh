#!/usr/bin/env bash
# scripts/build recognises build directories that cmake cannot use as they are: check_build.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

build=$directory/build/release
echo 'exit 0' | fake cmake
printf '#!/bin/sh\n' >"$directory/scripts/setup"
mkdir -p "$build"

configured() { # SOURCE_DIR TOOLCHAIN
    printf '%s\n' "CMAKE_HOME_DIRECTORY:INTERNAL=$1" "CMAKE_TOOLCHAIN_FILE:FILEPATH=$2" >"$build/CMakeCache.txt"
}

# A directory that was copied with the sources names those that it was copied from.
configured /elsewhere "$directory/bin/cmake"
run "$directory/scripts/build"
expect_run 1 "build: preset release, in build/release
build: cannot use build/release: it was configured for /elsewhere; remove build/release and retry"
expect_calls ""

# The toolchain file that it was configured with has been renamed.
configured "$directory" "$directory/renamed.cmake"
run "$directory/scripts/build" release owbctl
expect_run 0 "build: preset release, targets owbctl, in build/release"
expect_calls "cmake --preset release --fresh
cmake --build --preset release --target owbctl -- --quiet"

configured "$directory" "$directory/bin/cmake"
run "$directory/scripts/build"
expect_run 0 "build: preset release, in build/release"
expect_calls "cmake --preset release
cmake --build --preset release -- --quiet"

rm "$build/CMakeCache.txt"
run "$directory/scripts/build"
expect "$output" "build: build/release is new: expect up to " "the output"

fake cmake <<<'echo "no compiler" >&2; exit 1'
run "$directory/scripts/build" asan
[[ $status -eq 1 ]] || fail "status $status after a failure of cmake"
expect "$output" "no compiler
build: cmake --preset asan failed, see above" "the output"

run "$directory/scripts/build" relaese
[[ $status -eq 1 ]] || fail "status $status for an unknown preset"
expect "$output" "build: unknown preset: relaese; known: release, packages, " "the output"
expect_calls ""
echo '{}' >"$directory/CMakeUserPresets.json"
run "$directory/scripts/build" mine
expect "$output" "build: preset mine, in build/mine" "the output"
rm "$directory/CMakeUserPresets.json"

# For the host itself, without a toolchain file.
printf '#!/bin/sh\necho setup "$@" >>"%s"\n' "$calls" >"$directory/scripts/setup"
echo 'exit 0' | fake cmake
build=$directory/build/native
mkdir -p "$build"
configured "$directory" ""
run "$directory/scripts/build" native owbctl
expect_calls "setup --native
cmake --preset native
cmake --build --preset native --target owbctl -- --quiet"
printf '#!/bin/sh\n' >"$directory/scripts/setup"

# For ARM, it fetches compiler, emulator and libraries. Installed programs are not fetched.
for script in unpack sysroot; do
    printf '#!/bin/sh\necho %s "$@" >>"%s"\n' $script "$calls" >"$directory/scripts/$script"
done
echo 'exit 0' | fake cmake
run "$directory/scripts/build" armhf owbctl
[[ $status -eq 0 ]] || fail "status $status: $output"
[[ $(<"$calls") == *"sysroot arm-linux-gnueabihf
cmake --preset armhf
cmake --build --preset armhf --target owbctl -- --quiet" ]] || fail "other calls: $(<"$calls")"
for program in arm-linux-gnueabihf-g++-12 qemu-arm; do
    echo 'exit 0' | fake $program
done
run "$directory/scripts/build" armhf
[[ $(<"$calls") != *unpack* ]] || fail "it fetches installed programs: $(<"$calls")"
rm "$directory/bin/qemu-arm"
if ! command -v qemu-arm >/dev/null; then
    run "$directory/scripts/build" armhf
    [[ $(<"$calls") == "unpack armhf"* ]] || fail "it does not fetch the emulator: $(<"$calls")"
fi
