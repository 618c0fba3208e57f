#!/usr/bin/env bash
# check_groups.sh GROUPS_DOCUMENT FILE [--update] - whether a file holds what the program prints; --update writes the file.
set -euo pipefail
groups_document=$1 file=$2 update=${3-}

text=$("$groups_document")
if [[ $update == --update ]]; then
    printf '%s\n' "$text" >"$file"
elif ! printf '%s\n' "$text" | diff -u "$file" - >&2; then
    echo "check_groups.sh: $file: out of date: cmake --build --preset release --target update_groups" >&2
    exit 1
fi
