#!/usr/bin/env bash
# check_abi.sh LIBRARY SOURCE_DIR ARCHITECTURE [--update] - compares the names, layouts and sizes of the library's interface with
# owb/libowb.ARCHITECTURE.abi; --update rewrites that file. Ignores types of the client library. Exits with 77 (skipped) without
# abidw, and for other architectures.
set -euo pipefail
library=$1 source=$2 architecture=$3 update=${4-}
baseline=$source/owb/libowb.$architecture.abi

skip() {
    echo "check_abi.sh: skipped: $*"
    exit 77
}

command -v abidw >/dev/null || skip "there is no abidw"
[[ -e $baseline || $update == --update ]] || skip "the interface has no description for $architecture"

# The declarations, sorted and without file names, so that the output does not depend on the compilation units.
describe() {
    abidw --type-id-style hash --no-corpus-path --no-comp-dir-path --no-show-locs --headers-dir "$source/owb/include" \
        --headers-dir "$source/inventory/include" --drop-private-types --drop-undefined-syms --exported-interfaces-only "$library" |
        sed -e "s/ path='[^']*'//" -e '/^<.*abi-corpus/d' -e '/^  <.*abi-instr/d' |
        awk '/^    (<\/| )/ { printf "\1%s", $0; next } { printf "\n%s", $0 }' | # one line for each declaration
        LC_ALL=C sort -u | tr '\1' '\n'
}

if [[ $update == --update ]]; then
    describe >"$baseline"
elif ! describe | diff -u "$baseline" - >&2; then
    echo "check_abi.sh: $library: agents would need to be recompiled; if intended, build the target update_abi" >&2
    exit 1
fi
