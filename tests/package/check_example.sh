#!/usr/bin/env bash
# A user's copy of the example builds against what is installed and works with its object manager:
# check_example.sh make|cmake TREE CMAKE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tool=$1 tree=$2 cmake=$3
cp -r "$tree/share/doc/owb/examples" "$folder/examples"

with_make() {
    make -C "$folder/examples" PKG_CONFIG_PATH="$tree/share/pkgconfig" CFLAGS="-Wall -Wextra -Wpedantic -Werror" &&
        agent=$folder/examples/agent
}

with_cmake() {
    "$cmake" -S "$folder/examples" -B "$folder/build" -G Ninja -DCMAKE_PREFIX_PATH="$tree" \
        -DCMAKE_C_FLAGS="$OWB_TARGET_FLAGS -Werror" &&
        "$cmake" --build "$folder/build" &&
        agent=$folder/build/agent
}

"with_$tool" >"$folder/built" 2>&1 || fail "$(<"$folder/built")"
for library in libowb.so.1 libowclient.so.1; do
    expect "$(ldd "$agent")" "$library => $tree/" "what the agent loads"
done

start_daemon "$tree"
cd "$folder" # where no trace is wanted
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
    fail "the agent did not notice that there is no object manager"
fi
expect "$output" "agent: cannot read operating system: request failed (status 5)" "the agent's output"
