#!/usr/bin/env bash
# check_groups.sh SERVED_PROPERTIES GROUPS_DOCUMENT FILE [--update] - whether a file is what the programs print now;
# with --update it is made so.
set -euo pipefail
served_properties=$1 groups_document=$2 file=$3 update=${4-}

text=$("$served_properties" | "$groups_document")
if [[ $update == --update ]]; then
    printf '%s\n' "$text" >"$file"
elif ! printf '%s\n' "$text" | diff -u "$file" - >&2; then
    echo "check_groups.sh: $file: out of date: cmake --build --preset release --target update_groups" >&2
    exit 1
fi
