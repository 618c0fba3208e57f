#!/usr/bin/env bash
# Installs the build and moves the result, since what is installed may be anywhere: make_tree.sh CMAKE BUILD TREE
set -euo pipefail

cmake=$1 build=$2 tree=$3
rm -rf "$tree" "$tree.made"
"$cmake" --install "$build" --prefix "$tree.made" >/dev/null
mv "$tree.made" "$tree"
