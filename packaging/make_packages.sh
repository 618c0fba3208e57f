#!/usr/bin/env bash
# Makes the packages of a build in a directory, which it replaces: make_packages.sh CPACK BUILD DIRECTORY
set -euo pipefail

cpack=$1 build=$2 directory=$3
umask 022 # for the modes of directories and of the parts of a package
rm -rf "$directory"
if ! output=$("$cpack" --config "$build/CPackConfig.cmake" -G "DEB;TGZ" -B "$directory" 2>&1); then
    printf '%s\n' "$output" "make_packages: cpack failed, see above" >&2
    exit 1
fi
rm -rf "$directory/_CPack_Packages"
