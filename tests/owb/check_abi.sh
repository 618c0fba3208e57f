#!/usr/bin/env bash
# check_abi.sh LIBRARY SOURCE_DIR [--update] - whether names, layouts and sizes that agents are built against are those of
# owb/libowb.abi; with --update the file is made anew. Types of the client library are its own affair. Skipped (77) without abidw.
set -euo pipefail
library=$1 source=$2 update=${3-}
baseline=$source/owb/libowb.abi

command -v abidw >/dev/null || exit 77

describe() {
    abidw --no-corpus-path --no-comp-dir-path --no-show-locs --headers-dir "$source/owb/include" \
        --headers-dir "$source/inventory/include" --drop-private-types --drop-undefined-syms --exported-interfaces-only "$library" |
        sed "s/ path='[^']*'//" # of the sources, as the compiler was given them
}

if [[ $update == --update ]]; then
    describe >"$baseline"
elif ! describe | diff -u "$baseline" - >&2; then
    echo "check_abi.sh: $library: agents would have to be built anew; if that is meant: --target update_abi" >&2
    exit 1
fi
