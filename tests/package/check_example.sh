#!/usr/bin/env bash
# A copy of the example builds against an installation and works with its object manager:
# check_example.sh make|cmake TREE CMAKE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tool=$1 tree=$2 cmake=$3
cp -r "$tree/share/doc/owb/examples" "$directory/examples"

# The Makefile knows the option for a compiler of amd64; a cross compiler may need others.
with_make() {
    make -C "$directory/examples" CC="$CC${OWB_EMULATOR:+ $OWB_TARGET_FLAGS}" PKG_CONFIG_PATH="$tree/share/pkgconfig" \
        CFLAGS="-Wall -Wextra -Wpedantic -Werror" LDFLAGS="$link_flags" &&
        agent=$directory/examples/agent
}

with_cmake() {
    "$cmake" -S "$directory/examples" -B "$directory/build" -G Ninja -DCMAKE_PREFIX_PATH="$tree" \
        -DCMAKE_C_FLAGS="$OWB_TARGET_FLAGS -Werror" -DCMAKE_EXE_LINKER_FLAGS="$link_flags" &&
        "$cmake" --build "$directory/build" &&
        agent=$directory/build/agent
}

"with_$tool" >"$directory/built" 2>&1 || fail "$(<"$directory/built")"
LD_DEBUG=files "${emulator[@]}" "$agent" owbinary.wbem://localhost:none >"$directory/loaded" 2>&1 || true # ldd runs no emulated programs
for library in libowb.so.1 libowclient.so.1; do
    grep -q "calling init: $tree/.*/$library\$" "$directory/loaded" || fail "the agent loads another $library: $(<"$directory/loaded")"
done

start_daemon "$tree"
cd "$directory" # without a trace switch
output=$("${emulator[@]}" "$agent" "$url" ops@example.net) || fail "the agent failed: $output"
expect "$output" "object manager at $url" "the agent's output"
expect "$output" "row 0  LastBootUpTime = " "the agent's output"
expect "$output" "Up for " "the agent's output"
expect "$output" "00000001020304.500000:000 is 93784 seconds, or 9378450 hundredths." "the agent's output"
expect "$output" "The contact is now ops@example.net." "the agent's output"
expect "$output" "row 0  Name = lo" "the agent's output"
expect "$(OWB_URL=$url "${emulator[@]}" "$agent")" "object manager at $url" "the agent's output"
expect "$("${emulator[@]}" "$tree/bin/owbctl" --url "$url" get 2)" "ops@example.net" "what owbctl reads"

if output=$("${emulator[@]}" "$agent" "${url}_of_nobody" 2>&1); then
    fail "the agent succeeded without an object manager"
fi
expect "$output" "agent: cannot read operating system: request failed (status 5)" "the agent's output"
