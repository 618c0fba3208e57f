#!/usr/bin/env bash
# check_rendering.sh DIRECTORY - whether groff renders every man page of a directory without a warning. Skipped (77) without groff.
set -euo pipefail
directory=$1

command -v groff >/dev/null || exit 77

# Pages refer to each other as man3/NAME.3, which is where they are installed.
installed=$(mktemp -d)
trap 'rm -rf "$installed"' EXIT
pages=()
for page in "$directory"/*.[1-8]; do
    section=man${page##*.}
    mkdir -p "$installed/$section"
    cp "$page" "$installed/$section"
    pages+=("$section/${page##*/}")
done
cd "$installed"

failed=0
for page in "${pages[@]}"; do
    warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1) || failed=1
    if [[ -n $warnings ]]; then
        printf '%s\n' "$warnings" >&2
        failed=1
    fi
done
[[ $failed == 0 ]] || {
    echo "check_rendering.sh: $directory: groff warns, see above" >&2
    exit 1
}
