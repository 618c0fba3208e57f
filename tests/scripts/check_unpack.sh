#!/usr/bin/env bash
# scripts/unpack unpacks packages and what they need, without root, and completes what was interrupted:
# check_unpack.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v dpkg-deb >/dev/null || skip "there is no dpkg-deb"
tools=$directory/build/tools
packages="snmpd snmp python3-pysnmp4-mibs"
announcement="unpack: downloading $packages, to unpack them in build/tools/snmp"
export system_lists=complete network=up broken_index=

# A repository. Its packages have one file each.
for package in $packages libfake; do
    mkdir -p "$directory/$package"/{DEBIAN,usr/bin}
    echo "$package" >"$directory/$package/usr/bin/$package"
    printf '%s\n' "Package: $package" "Version: 1" "Architecture: all" "Maintainer: A <a@b>" "Description: fake" \
        >"$directory/$package/DEBIAN/control"
    dpkg-deb --build "$directory/$package" "$directory/${package}_1_all.deb" >/dev/null
done
fake apt-get <<'END_OF_FAKE'
while [[ $1 == -* && $1 != --simulate ]]; do
    [[ $1 != -c ]] || private=$(<"$2")
    [[ $1 != -[co] ]] || shift
    shift
done
case $1 in
update)
    [[ $private == *"#clear APT::Update::Post-Invoke;"* ]] || touch "$directory/hook"
    [[ $network == up ]] || echo "W: Failed to fetch http://example.net/InRelease" >&2 # apt succeeds nevertheless
    [[ -z $broken_index ]] || exit 100 ;;
--simulate)
    if [[ $system_lists != complete && ( $private != *"$directory/build/tools/apt/lists"* || $network != up ) ]]; then
        echo "E: Unable to locate package snmpd" >&2
        exit 100
    fi
    printf 'Inst %s (1 Debian [all])\n' libjs-fake fonts-fake libfake ;;
download)
    shift
    for package; do
        [[ $network != down || -e ${package}_1_all.deb ]] || exit 100
        cp "$directory/${package}_1_all.deb" .
        [[ $network != breaking ]] || exit 100
    done ;;
esac
END_OF_FAKE

commands() { # the commands of apt-get that ran
    grep -oE '(update|--simulate|download).*' "$calls" || true
}

expect_unpacked() {
    expect_run 0 "$announcement"
    for package in $packages libfake; do
        [[ $(<"$tools/snmp/usr/bin/$package") == "$package" ]] || fail "$package is not unpacked"
    done
}

run "$directory/scripts/unpack" snmp
expect_unpacked
[[ $(commands) == "--simulate install --no-install-recommends $packages
download libfake python3-pysnmp4-mibs snmp snmpd" ]] || fail "other calls: $(commands)"
[[ -z $(find "$tools" -name '*.deb') ]] || fail "it keeps the packages"

network=down
run "$directory/scripts/unpack" snmp
expect_run 0 ""
expect_calls ""

# Packages of another version of the script.
echo "snmpd" >"$tools/snmp/packages"
network=up
run "$directory/scripts/unpack" snmp
expect_unpacked

# The lists of the system are empty, as on a new machine.
rm -r "$tools"
system_lists=empty
run "$directory/scripts/unpack" snmp
expect_unpacked
[[ $(commands) == *$'\nupdate\n--simulate'* ]] || fail "other calls: $(commands)"
[[ ! -e $directory/hook ]] || fail "it runs the system's hooks, which need root"

# An index that is not needed cannot be loaded.
rm -r "$tools"
broken_index=yes
run "$directory/scripts/unpack" snmp
expect_unpacked
broken_index=

rm -r "$tools"
network=down
run "$directory/scripts/unpack" snmp
expect_run 1 "$announcement
W: Failed to fetch http://example.net/InRelease
E: Unable to locate package snmpd
unpack: cannot download $packages: apt-get failed, see above; it needs a network"

# The connection breaks after the first package.
system_lists=complete network=breaking
run "$directory/scripts/unpack" snmp
[[ $status -eq 1 && ! -e $tools/snmp ]] || fail "half of the packages are unpacked: $output"
[[ -e $tools/apt/snmp/libfake_1_all.deb ]] || fail "it does not keep what it downloaded"
network=up
run "$directory/scripts/unpack" snmp
expect_unpacked

# A package that cannot be unpacked is downloaded again.
rm -r "$tools"
mkdir -p "$tools/apt/snmp"
echo damaged >"$tools/apt/snmp/snmp-base_1_all.deb"
run "$directory/scripts/unpack" snmp
[[ $status -eq 1 && ! -e $tools/snmp ]] || fail "a damaged package is taken: $output"
expect "$output" "unpack: cannot unpack snmp-base_1_all.deb, see above; retry" "the output"
run "$directory/scripts/unpack" snmp
expect_unpacked

run "$directory/scripts/unpack" nothing
expect_run 1 "unpack: unknown tools: nothing; known: armhf prometheus snmp"

# Without arguments it unpacks all tools that scripts/test runs.
rm -r "$tools"
for package in prometheus prometheus-node-exporter; do
    sed "s/^Package: .*/Package: $package/" -i "$directory/libfake/DEBIAN/control"
    dpkg-deb --build "$directory/libfake" "$directory/${package}_1_all.deb" >/dev/null
done
run "$directory/scripts/unpack"
[[ $status -eq 0 && -e $tools/snmp/packages && -e $tools/prometheus/packages ]] || fail "it does not unpack all tools: $output"
[[ ! -e $tools/armhf ]] || fail "it unpacks a compiler that scripts/test does not run"

# A program whose library is only in its tree becomes a script that finds it. Others stay as they are.
rm -r "$tools"
if ! cc -shared -fPIC -o "$directory/libfake.so" -x c - <<<'int fake(void) { return 7; }' ||
    ! cc -o "$directory/needs_fake" -x c - -L"$directory" -lfake <<<'int fake(void); int main(void) { return fake(); }'; then
    skip "there is no compiler for programs of this host"
fi
mkdir -p "$directory/libfake/usr/lib/x86_64-linux-gnu"
mv "$directory/libfake.so" "$directory/libfake/usr/lib/x86_64-linux-gnu"
mv "$directory/needs_fake" "$directory/libfake/usr/bin"
sed "s/^Package: .*/Package: libfake/" -i "$directory/libfake/DEBIAN/control"
dpkg-deb --build "$directory/libfake" "$directory/libfake_1_all.deb" >/dev/null
for package in g++-12-arm-linux-gnueabihf qemu-user; do
    cp "$directory/libfake_1_all.deb" "$directory/${package}_1_all.deb"
done
run "$directory/scripts/unpack" armhf
[[ $status -eq 0 ]] || fail "status $status: $output"
run "$tools/armhf/usr/bin/needs_fake"
expect_run 7 ""
[[ ! -e $tools/armhf/usr/bin/libfake.elf ]] || fail "it wraps a program without need"
