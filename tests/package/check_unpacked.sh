#!/usr/bin/env bash
# The contents of the packages work below any root: check_unpacked.sh PACKAGES VERSION
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1 version=$2
root=$directory/root
unpack "$packages" "$root"
expect "$("${emulator[@]}" "$root/usr/bin/owbctl" --version)" "v${version%.*}" "owbctl --version"
expect "$("${emulator[@]}" "$root/usr/sbin/owbcimomd" --version)" "$version" "owbcimomd --version"
expect "$("${emulator[@]}" "$root/usr/sbin/owbcimom-passwd" --version)" "$version" "owbcimom-passwd --version"
start_daemon "$root/usr"
expect "$("${emulator[@]}" "$root/usr/bin/owbctl" --url "$url" get 4)" LastBootUpTime "what owbctl reads"

mkdir "$directory/tarball"
tar -xzf "$packages/owb-$version-linux-$OWB_DEBIAN_ARCHITECTURE.tar.gz" -C "$directory/tarball" --strip-components=1
expect "$("${emulator[@]}" "$directory/tarball/bin/owbctl" --url "$url" get 4)" LastBootUpTime "what owbctl of the tarball reads"
[[ -s $directory/tarball/share/doc/owb/copyright ]] || fail "the tarball has no copyright"
