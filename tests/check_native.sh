#!/usr/bin/env bash
# Without a toolchain file the build is for the compiler's own platform, for agents only if it has 32 bits:
# check_native.sh CMAKE SOURCE_DIR. Compilers of 32 bits and of 64 bits take the place of a host's own.
source "$(dirname "${BASH_SOURCE[0]}")/package/common.sh"

cmake=$1 source=$2

compilers() { # NAME FLAGS: makes CC and CXX
    local variable
    mkdir "$directory/$1"
    for variable in CC CXX; do
        printf '#!/bin/sh\nexec %s %s "$@"\n' "${!variable}" "$2" >"$directory/$1/$variable"
        chmod +x "$directory/$1/$variable"
    done
}

configure() { # NAME [ARGUMENT...]: sets $build and $output
    build=$directory/$1/build
    output=$(CC=$directory/$1/CC CXX=$directory/$1/CXX "$cmake" -S "$source" -B "$build" --fresh -G Ninja -DOWB_TESTS=OFF \
        -DOWB_BENCH=OFF "${@:2}" 2>&1) || fail "$output"
}

expect_packages() { # ARCHITECTURE
    expect "$(<"$build/CPackConfig.cmake")" "set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE \"$1\")" "the configuration of the packages"
}

compilers wide "$OWB_WIDE_FLAGS"
configure wide
expect "$output" "-- Platform: x86_64-linux-gnu, 64 bits, programs only: agents need a library of 32 bits" "the output"
[[ ! -e $build/CPackConfig.cmake ]] || fail "there are packages for 64 bits"
"$cmake" --install "$build" --prefix "$directory/tree" --component development >/dev/null
[[ -z $(find "$directory/tree" -type f 2>/dev/null) ]] || fail "files for agents are installed: $(find "$directory/tree" -type f)"

# The presets have a toolchain file, which does nothing on a host of 32 bits.
printf '#!/bin/sh\necho 32\n' >"$directory/getconf"
chmod +x "$directory/getconf"
PATH=$directory:$PATH
compilers narrow "$OWB_TARGET_FLAGS"
for toolchain in "" "$source/cmake/OwbDefaultToolchain.cmake"; do
    # A host of 32 bits has its libraries where CMake searches.
    configure narrow -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_LIBRARY_PATH="/usr/lib32;/lib32"
    expect "$output" "-- Platform: i386-linux-gnu, 32 bits
" "the output with the toolchain file \"$toolchain\""
    if [[ -e /etc/debian_version ]]; then
        expect_packages i386
        expect "$(<"$build/cmake_install.cmake")$(<"$build/owb/cmake_install.cmake")" "lib/i386-linux-gnu/libowb.so" "the installation"
    fi
done
! grep -q -e "$OWB_TARGET_FLAGS" "$build/build.ninja" || fail "the toolchain file adds flags on a host of 32 bits"

if [[ -e /etc/debian_version ]]; then
    configure narrow -DOWB_TRIPLET=arm-linux-gnueabihf -DCMAKE_LIBRARY_PATH="/usr/lib32;/lib32"
    expect_packages armhf
fi
