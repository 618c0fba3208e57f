#!/usr/bin/env bash
# A 64-bit program is told why it cannot use the library: check_wide_consumer.sh TREE CMAKE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 cmake=$2
if output=$("$cmake" -S "$tree/share/doc/owb/examples" -B "$folder/build" -G Ninja \
    -DCMAKE_PREFIX_PATH="$tree" -DCMAKE_C_FLAGS=-m64 2>&1); then
    fail "a 64-bit program found the library"
fi
words=$(tr -s '[:space:]' ' ' <<<"$output") # the message is wrapped
expect "$words" "libowb is a 32-bit x86 library: compile what links to it with -m32" "the error"
