#!/usr/bin/env bash
# Installs the build and moves the result, as an installation may be moved: make_tree.sh CMAKE BUILD TREE
set -euo pipefail

cmake=$1 build=$2 tree=$3
rm -rf "$tree" "$tree.made"
"$cmake" --install "$build" --prefix "$tree.made" >/dev/null
mv "$tree.made" "$tree"
