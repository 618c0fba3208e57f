#!/usr/bin/env bash
# Configuring a 64-bit program that uses the library fails and says why: check_wide_consumer.sh TREE CMAKE ADVICE COMPILER [FLAGS]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 cmake=$2 advice=$3 compiler=$4 flags=${5:-}
if output=$("$cmake" -S "$tree/share/doc/owb/examples" -B "$directory/build" -G Ninja \
    -DCMAKE_PREFIX_PATH="$tree" -DCMAKE_C_COMPILER="$compiler" -DCMAKE_C_FLAGS="$flags" 2>&1); then
    fail "a 64-bit program found the library"
fi
words=$(tr -s '[:space:]' ' ' <<<"$output") # the message is wrapped
expect "$words" "libowb is a 32-bit library: compile what links to it $advice" "the error"
