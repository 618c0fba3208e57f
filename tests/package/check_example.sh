#!/usr/bin/env bash
# A copy of the example builds against an installation and works with its object manager:
# check_example.sh make|cmake TREE CMAKE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tool=$1 tree=$2 cmake=$3
cp -r "$tree/share/doc/owb/examples" "$directory/examples"

with_make() {
    make -C "$directory/examples" PKG_CONFIG_PATH="$tree/share/pkgconfig" CFLAGS="-Wall -Wextra -Wpedantic -Werror" &&
        agent=$directory/examples/agent
}

with_cmake() {
    "$cmake" -S "$directory/examples" -B "$directory/build" -G Ninja -DCMAKE_PREFIX_PATH="$tree" \
        -DCMAKE_C_FLAGS="$OWB_TARGET_FLAGS -Werror" &&
        "$cmake" --build "$directory/build" &&
        agent=$directory/build/agent
}

"with_$tool" >"$directory/built" 2>&1 || fail "$(<"$directory/built")"
for library in libowb.so.1 libowclient.so.1; do
    expect "$(ldd "$agent")" "$library => $tree/" "what the agent loads"
done

start_daemon "$tree"
cd "$directory" # without a trace switch
output=$("$agent" "$url" ops@example.net) || fail "the agent failed: $output"
expect "$output" "object manager at $url" "the agent's output"
expect "$output" "row 0  LastBootUpTime = " "the agent's output"
expect "$output" "Up for " "the agent's output"
expect "$output" "00000001020304.500000:000 is 93784 seconds, or 9378450 hundredths." "the agent's output"
expect "$output" "The contact is now ops@example.net." "the agent's output"
expect "$output" "row 0  Name = lo" "the agent's output"
expect "$(OWB_URL=$url "$agent")" "object manager at $url" "the agent's output"
expect "$("$tree/bin/owbctl" --url "$url" get 2)" "ops@example.net" "what owbctl reads"

if output=$("$agent" "${url}_of_nobody" 2>&1); then
    fail "the agent succeeded without an object manager"
fi
expect "$output" "agent: cannot read operating system: request failed (status 5)" "the agent's output"
