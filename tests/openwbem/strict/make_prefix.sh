#!/usr/bin/env bash
# Installs the imitation of the original: make_prefix.sh CMAKE SOURCE_DIR TOOLCHAIN_OPTION DIRECTORY
set -euo pipefail

cmake=$1 source=$2 toolchain=$3 directory=$4
strict=$source/tests/openwbem/strict

rm -rf "$directory"
"$strict/make_headers.sh" "$source/openwbem/include" "$directory/include/openwbem"
"$cmake" -S "$strict" -B "$directory/build" -G Ninja "$toolchain" -DOWB_SOURCE_DIR="$source" \
    -DHEADERS="$directory/include/openwbem"
"$cmake" --build "$directory/build"
"$cmake" --install "$directory/build" --prefix "$directory"
rm -r "$directory/build"
