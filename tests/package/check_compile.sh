#!/usr/bin/env bash
# What packages contain does not depend on the directory and the time of the build, or on ccache:
# check_compile.sh CMAKE SOURCE_DIR TOOLCHAIN_OPTION BUILD
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

cmake=$1 source=$2 toolchain=$3 build=$4
# One has __DATE__ and __TIME__, the other, of a bundled library, generated headers.
objects=(owb/CMakeFiles/owb.dir/src/OWB_getGroup.cpp.o)
[[ ! -d $build/libxcrypt ]] || objects+=(cimom/CMakeFiles/owb_crypt.dir/usr/src/libxcrypt/lib/crypt.c.o)

compile() { # DIRECTORY: copies the sources and compiles the objects
    mkdir -p "$1"
    tar -c -C "$source" --exclude=./build --exclude=./.git . | tar -x -C "$1"
    local output
    output=$(SOURCE_DATE_EPOCH=1000000000 "$cmake" -S "$1" -B "$1/build/packages" -G Ninja "$toolchain" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE="-O0 -g" -DCMAKE_CXX_FLAGS_RELEASE="-O0 -g" -DOWB_COMMIT_DATE=ON -DOWB_TESTS=OFF -DOWB_BENCH=OFF \
        2>&1 && ninja -C "$1/build/packages" "${objects[@]}" 2>&1) || fail "$output"
}

CCACHE_BASEDIR=$directory compile "$directory/first" # ccache passes relative names to the compiler
CCACHE_DISABLE=1 compile "$directory/another/directory"
for object in "${objects[@]}"; do
    cmp "$directory"/{first,another/directory}"/build/packages/$object" || fail "${object##*/} depends on more than the sources"
done
date=$(strings "$directory/first/build/packages/${objects[0]}")
expect "$date" "Sep  9 2001" "the date of the library"

# The linker reserves the length of this path in the program that is installed.
expect "$(readelf -d "$build/bin/owbctl")" "Library runpath: [\$ORIGIN/" "the dynamic section of owbctl"
