#!/usr/bin/env bash
# scripts/test builds and runs what it is asked for: check_test.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

cp "$1/scripts/test" "$directory/scripts"
for script in format unpack build; do
    printf '#!/bin/bash\necho "%s $*" >>"%s"\n' $script "$calls" >"$directory/scripts/$script"
    chmod +x "$directory/scripts/$script"
done
mkdir "$directory/tests"
printf '%s\n' "# Tests that cannot run" "" 'Sun\..* reason' 'moon	another reason' >"$directory/tests/not_emulated.txt"
export tests=" Test  #1: Sun.Rises
  Test #20: Sun.Sets (Disabled)
  Test #21: moonlight
  Test #22: moon" failing=
fake ctest <<<'[[ $* != *--show-only* ]] || echo "$tests"; [[ -z $failing ]]'

expect_runs() { # CALLS: without the option for the number of processors
    [[ $(sed 's/ --parallel [0-9]*//; s/ *$//' "$calls") == "$1" ]] || fail "$(diff <(echo "$1") "$calls")"
}

run "$directory/scripts/test"
expect_runs "format --check
unpack
build release
ctest --preset release"
expect "$output" "test: all passed (release)" "the output"

run "$directory/scripts/test" --full -R Sun
expect_runs "format --check
unpack
build release
ctest --preset release -R Sun
build asan
ctest --preset asan -R Sun"

run "$directory/scripts/test" --preset armhf
expect_runs 'format --check
unpack
build armhf
ctest --preset armhf --show-only
ctest --preset armhf --exclude-regex ^(Sun\..*|moon)$'
expect "$output" "test: leaving out 3 of 4 tests, see tests/not_emulated.txt" "the output"

run "$directory/scripts/test" --preset armhf --part owb --part sblim
expect_runs 'format --check
unpack
build armhf tests/owb/all tests/sblim/all
ctest --preset armhf --label-regex ^owb$|^sblim$ --show-only
ctest --preset armhf --label-regex ^owb$|^sblim$ --exclude-regex ^(Sun\..*|moon)$'

# A 64-bit host leaves out other tests, a 32-bit host none.
echo 'Sun.Sets a reason' >"$directory/tests/not_64_bit.txt"
fake getconf <<<'echo 64'
run "$directory/scripts/test" --preset native
expect "$(<"$calls")" "--exclude-regex ^(Sun.Sets)\$" "the calls"
expect "$output" "test: leaving out 1 of 4 tests, see tests/not_64_bit.txt" "the output"
fake getconf <<<'echo 32'
run "$directory/scripts/test" --preset native
[[ $(<"$calls") != *exclude* ]] || fail "it leaves out tests on a 32-bit host: $(<"$calls")"

tests="  Test #1: Sun.Rises"
run "$directory/scripts/test" --preset armhf
[[ $status -eq 1 ]] || fail "status $status for a name without a test"
expect "$output" "test: tests/not_emulated.txt: no test has the name moon" "the output"

failing=yes
run "$directory/scripts/test"
[[ $status -eq 1 ]] || fail "status $status after a failed test"
expect "$output" "test: preset release failed" "the output"
