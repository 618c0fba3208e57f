#!/usr/bin/env bash
# scripts/sysroot unpacks packages of another architecture, without root, and completes what was interrupted:
# check_sysroot.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v dpkg-deb >/dev/null || skip "there is no dpkg-deb"
sysroot=$directory/build/sysroot/i386-linux-gnu
packages="libssl-dev libssl3 zlib1g-dev zlib1g libc6 libc6-dbg"
announcement="sysroot: fetching $packages for i386, into build/sysroot/i386-linux-gnu"
export network=up broken_index=

# A repository. Its packages have one file each, and a link as in zlib1g-dev.
for package in $packages; do
    mkdir -p "$directory/$package"/{DEBIAN,usr/lib,lib}
    echo "$package" >"$directory/$package/lib/$package"
    ln -s "/lib/$package" "$directory/$package/usr/lib/$package.link"
    printf '%s\n' "Package: $package" "Version: 1" "Architecture: i386" "Maintainer: A <a@b>" "Description: fake" \
        >"$directory/$package/DEBIAN/control"
    dpkg-deb --build "$directory/$package" "$directory/${package}_1_i386.deb" >/dev/null
done
fake apt-get <<'END_OF_FAKE'
while [[ $1 == -* ]]; do
    [[ $1 != -c ]] || private=$(<"$2")
    shift 2
done
[[ $private == *'APT::Architecture "i386"'* && $private == *"$directory/build/sysroot/i386-linux-gnu.apt/lists"* ]] || exit 99
[[ ${private,,} != *insecure* && ${private,,} != *unauthenticated* ]] || exit 99
case $1 in
update)
    [[ $private == *"#clear APT::Update::Post-Invoke;"* ]] || touch "$directory/hook"
    [[ $network == up ]] || echo "W: Failed to fetch http://example.net/InRelease" >&2 # apt succeeds nevertheless
    [[ -z $broken_index ]] || { echo "E: Failed to fetch http://example.net/Packages" >&2; exit 100; } ;;
download)
    shift
    for package; do
        [[ $network != down || -e ${package}_1_i386.deb ]] || { echo "E: Unable to locate package $package" >&2; exit 100; }
        cp "$directory/${package}_1_i386.deb" .
        [[ $network != breaking ]] || exit 100
    done ;;
esac
END_OF_FAKE

expect_unpacked() { # the C library apart, all links within the directory
    for package in $packages; do
        root=$sysroot
        [[ $package != libc6* ]] || root=$sysroot/libc
        [[ $(<"$root/usr/lib/$package.link") == "$package" ]] || fail "$package is not unpacked"
    done
    [[ -z $(find "$sysroot" -lname '/*') ]] || fail "a link leads out of the directory"
    [[ ! -e $directory/hook ]] || fail "it runs the system's hooks, which change the system"
}

run "$directory/scripts/sysroot"
expect_run 0 "$announcement"
expect_unpacked
[[ ! -e $sysroot.apt ]] || fail "it keeps its package lists"

network=down
run "$directory/scripts/sysroot" i386-linux-gnu
expect_run 0 ""
expect_calls ""

# Packages of another version of the script, and an index that is not needed and cannot be loaded.
echo "libssl-dev" >"$sysroot/packages"
network=up broken_index=yes
run "$directory/scripts/sysroot"
expect_run 0 "$announcement
sysroot: apt-get update: E: Failed to fetch http://example.net/Packages
sysroot: trying to download nevertheless"
expect_unpacked
broken_index=

rm -r "$sysroot"
network=down
run "$directory/scripts/sysroot"
expect_run 1 "$announcement
sysroot: apt-get update: W: Failed to fetch http://example.net/InRelease
sysroot: trying to download nevertheless
E: Unable to locate package libssl-dev
sysroot: cannot download packages for i386: apt-get failed, see above; it needs a network"

# The connection breaks after the first package.
network=breaking
run "$directory/scripts/sysroot"
[[ $status -eq 1 && ! -e $sysroot ]] || fail "half of the packages are unpacked: $output"
[[ -e $sysroot.apt/debs/libssl-dev_1_i386.deb ]] || fail "it does not keep what it downloaded"
network=up
run "$directory/scripts/sysroot"
expect_run 0 "$announcement"
expect_unpacked

# A package that cannot be unpacked is downloaded again.
rm -r "$sysroot"
mkdir -p "$sysroot.apt/debs"
echo damaged >"$sysroot.apt/debs/libssl_1_i386.deb"
run "$directory/scripts/sysroot"
[[ $status -eq 1 && ! -e $sysroot ]] || fail "a damaged package is taken: $output"
expect "$output" "sysroot: cannot unpack libssl_1_i386.deb, see above; retry" "the output"
run "$directory/scripts/sysroot"
expect_run 0 "$announcement"
expect_unpacked

run "$directory/scripts/sysroot" x86_64-linux-gnu
[[ $status -eq 1 ]] || fail "status $status for an unknown triplet"
expect "$output" "sysroot: usage: scripts/sysroot [TRIPLET], one of: " "the output"
