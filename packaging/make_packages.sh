#!/usr/bin/env bash
# Makes the packages of a build in a folder, which is replaced: make_packages.sh CPACK BUILD FOLDER
set -euo pipefail

cpack=$1 build=$2 folder=$3
rm -rf "$folder"
if ! output=$("$cpack" --config "$build/CPackConfig.cmake" -G "DEB;TGZ" -B "$folder" 2>&1); then
    printf '%s\n' "$output" "make_packages: cpack failed, see above" >&2
    exit 1
fi
rm -rf "$folder/_CPack_Packages"
