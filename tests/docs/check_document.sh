#!/usr/bin/env bash
# check_document.sh PROGRAM FILE TARGET [--update] - whether a file holds what the program prints; --update writes the file,
# as the TARGET of the build does.
set -euo pipefail
program=$1 file=$2 target=$3 update=${4-}

text=$("$program")
if [[ $update == --update ]]; then
    printf '%s\n' "$text" >"$file"
elif ! printf '%s\n' "$text" | diff -u "$file" - >&2; then
    echo "check_document.sh: $file: out of date: cmake --build --preset release --target $target" >&2
    exit 1
fi
