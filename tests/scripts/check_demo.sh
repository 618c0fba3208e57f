#!/usr/bin/env bash
# scripts/demo prints values of this host, with the programs of a preset: check_demo.sh SOURCE_DIR PROGRAMS
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

programs=$2
cp "$1/scripts/demo" "$directory/scripts"
cat >"$directory/scripts/build" <<'END'
#!/bin/bash
echo "build $*" >>"$calls"
END
export calls

expect_demo() { # CALL
    [[ $status -eq 0 ]] || fail "status $status: $output"
    expect_calls "$1"
    expect "$output" "demo: owbcimomd serves this host's live data on /tmp/owb-demo." "the output"
    expect "$output" "Group 4  QAV_OperatingSystem  (" "the output"
    expect "$output" "(row 0)
Property             Asked for  Before  After
PrimaryOwnerContact  yes        -       ops@example.net" "the output"
    expect "$output" "demo: done." "the output"
    [[ $output != *": cannot "* ]] || fail "an error: $output"
}

# With an emulator, the scripts that start it are used.
mkdir -p "$directory/build/release"
ln -s "$programs" "$directory/build/release/bin"
run "$directory/scripts/demo"
expect_demo "build release owbcimomd owbctl"

mkdir -p "$directory/build/armhf"
ln -s "$programs" "$directory/build/armhf/emulated"
run "$directory/scripts/demo" --preset armhf
expect_demo "build armhf owbcimomd owbctl"

run "$directory/scripts/demo" --preset armhf --nonsense
expect_run 1 "demo: unknown argument: --nonsense; known: --preset PRESET, --snmp, --metrics"

cp "$1/scripts/build" "$directory/scripts"
run "$directory/scripts/demo" --preset amrhf
[[ $status -eq 1 ]] || fail "status $status for an unknown preset"
expect "$output" "build: unknown preset: amrhf; known: release, " "the output"
