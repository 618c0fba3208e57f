# shellcheck shell=bash disable=SC2034 # status and output are for the tests
# Sourced by the tests of scripts. They run a copy of a script in the temporary $directory, with fake programs first on PATH
# that append their arguments to $directory/calls.
source "$(dirname "${BASH_SOURCE[0]}")/../package/common.sh"

export directory
calls=$directory/calls
mkdir "$directory/bin" "$directory/scripts"
PATH=$directory/bin:$PATH
cp "$1/CMakePresets.json" "$directory"
cp "$1/scripts/"{build,setup,sysroot,unpack} "$directory/scripts"

fake() { # NAME: makes a program from the standard input
    { printf '#!/bin/bash\necho "%s $*" >>"$directory/calls"\n' "$1" && cat; } >"$directory/bin/$1"
    chmod +x "$directory/bin/$1"
}

# Runs a command. Sets $status, and $output to what it prints on both streams; empties the calls before.
run() { # COMMAND...
    : >"$calls"
    status=0
    output=$("$@" 2>&1) || status=$?
}

expect_run() { # STATUS OUTPUT
    [[ $status -eq $1 ]] || fail "status $status, not $1: $output"
    [[ $output == "$2" ]] || fail "$(diff <(echo "$2") <(echo "$output"))"
}

expect_calls() { # CALLS
    [[ $(<"$calls") == "$1" ]] || fail "$(diff <(echo "$1") "$calls")"
}
