#!/usr/bin/env bash
# scripts/setup prints what it will install, and installs only that: check_setup.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

fake dpkg-query <<<'[[ " $not_installed " == *" ${*: -1} "* ]] || echo installed'
fake sudo <<<'[[ $sudo == allowed ]] && shift && exec "$@"'
fake apt-get <<'END_OF_FAKE'
[[ $* != "$failing" ]] || { echo "E: no network"; exit 100; }
[[ $1 != --simulate ]] || printf '%s\n' 'Inst libfake (1 Debian [amd64])' 'Inst abigail-tools (2 Debian [amd64])' 'Conf libfake (1)'
END_OF_FAKE
fake apt-cache <<<'printf "%s\n" "Size: 1600000" "Installed-Size: 1000" "" "Size: 11000000" "Installed-Size: 40000"'

export not_installed="" failing="" sudo=allowed
run "$directory/scripts/setup"
expect_run 0 ""
[[ $(<"$calls") != *apt* ]] || fail "it runs apt without need: $(<"$calls")"

# Without an OpenSSL of the architecture it fetches one. After a failure it does not try again.
not_installed=libssl-dev:i386
cat >"$directory/scripts/sysroot" <<<'#!/bin/bash
echo sysroot >>"$directory/calls"; exit "$sysroot_fails"'
export sysroot_fails=0
run "$directory/scripts/setup"
expect_run 0 ""
[[ $(<"$calls") == *sysroot ]] || fail "it does not fetch OpenSSL: $(<"$calls")"
sysroot_fails=1
run "$directory/scripts/setup"
expect_run 0 "setup: building without TLS; once there is a network, run scripts/sysroot"
run "$directory/scripts/setup"
expect_run 0 ""
[[ $(<"$calls") != *sysroot* ]] || fail "it tries again after a failure"

not_installed="abigail-tools own-tool"
install="install -y --no-install-recommends --no-remove abigail-tools own-tool"
run "$directory/scripts/setup" own-tool
expect_run 0 "setup: missing: abigail-tools own-tool
setup: 1 of 3: updating the package lists
setup: apt will install: libfake abigail-tools
setup: 13 MB to download at most, 42 MB on disk
setup: 2 of 3: downloading
setup: 3 of 3: installing"
[[ $(grep ^apt "$calls") == "apt-get update
apt-get --simulate $install
apt-cache show --no-all-versions libfake abigail-tools
apt-get --download-only $install
apt-get $install" ]] || fail "other calls: $(grep ^apt "$calls")"

not_installed=abigail-tools failing=update
run "$directory/scripts/setup"
expect_run 1 "setup: missing: abigail-tools
setup: 1 of 3: updating the package lists
E: no network
setup: apt-get update failed, see above"

# A host that compiles for itself needs no second compiler, and no OpenSSL but its own.
native_setup() { # ARGUMENT...: installs the packages that are missing on a new system
    not_installed="g++ g++-12-multilib lib32z1-dev libssl-dev libssl-dev:i386" failing=update
    run "$directory/scripts/setup" "$@"
    expect_run 1 "setup: missing: g++ libssl-dev
setup: 1 of 3: updating the package lists
E: no network
setup: apt-get update failed, see above"
    not_installed=libssl-dev:i386
    run "$directory/scripts/setup" "$@"
    [[ $status -eq 0 && $(<"$calls") != *sysroot* ]] || fail "status $status, calls: $(<"$calls")"
}
rm -rf "$directory/build"
native_setup --native
fake getconf <<<'echo 32'
native_setup
rm "$directory/bin/getconf"

# A user who may not become root.
not_installed=abigail-tools
failing="" sudo=denied
as_user=()
if [[ $EUID -eq 0 ]]; then
    as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    touch "$calls"
    chmod -R a+rwX "$directory"
fi
run "${as_user[@]}" "$directory/scripts/setup"
expect_run 1 "setup: cannot install missing packages: permission denied. Run as root:
    apt-get update && apt-get install -y --no-install-recommends --no-remove abigail-tools"

PATH='' run "$BASH" "$directory/scripts/setup"
[[ $status -eq 1 ]] || fail "status $status without dpkg-query"
expect "$output" "setup: this is not a Debian system; install by hand: cmake ninja-build " "the output"
