#!/usr/bin/env bash
# check_abi.sh LIBRARY SOURCE_DIR [--update] - whether names, layouts and sizes that agents are built against are those of
# owb/libowb.abi; with --update the file is made anew. Types of the client library are its own affair. Skipped (77) without abidw.
set -euo pipefail
library=$1 source=$2 update=${3-}
baseline=$source/owb/libowb.abi

command -v abidw >/dev/null || exit 77

# What is declared, in the order of the text and not of the compiler's units, nor with the names that the compiler was given
# for its sources.
describe() {
    abidw --type-id-style hash --no-corpus-path --no-comp-dir-path --no-show-locs --headers-dir "$source/owb/include" \
        --headers-dir "$source/inventory/include" --drop-private-types --drop-undefined-syms --exported-interfaces-only "$library" |
        sed -e "s/ path='[^']*'//" -e '/^<.*abi-corpus/d' -e '/^  <.*abi-instr/d' |
        awk '/^    (<\/| )/ { printf "\1%s", $0; next } { printf "\n%s", $0 }' | # a declaration is one line
        LC_ALL=C sort -u | tr '\1' '\n'
}

if [[ $update == --update ]]; then
    describe >"$baseline"
elif ! describe | diff -u "$baseline" - >&2; then
    echo "check_abi.sh: $library: agents would have to be built anew; if that is meant: --target update_abi" >&2
    exit 1
fi
