#!/usr/bin/env bash
# Makes a prefix with the stand-in for an installed original: make_prefix.sh CMAKE SOURCE_DIR TOOLCHAIN FOLDER
set -euo pipefail

cmake=$1 source=$2 toolchain=$3 folder=$4
strict=$source/tests/openwbem/strict

rm -rf "$folder"
"$strict/make_headers.sh" "$source/openwbem/include" "$folder/include/openwbem"
"$cmake" -S "$strict" -B "$folder/build" -G Ninja --toolchain "$toolchain" -DOWB_SOURCE_DIR="$source" \
    -DHEADERS="$folder/include/openwbem"
"$cmake" --build "$folder/build"
"$cmake" --install "$folder/build" --prefix "$folder"
rm -r "$folder/build"
