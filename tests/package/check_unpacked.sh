#!/usr/bin/env bash
# What the packages hold works below any root: check_unpacked.sh PACKAGES VERSION
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1 version=$2
root=$folder/root
unpack "$packages" "$root"
expect "$("$root/usr/bin/owbctl" --version)" "v${version%.*}" "owbctl --version"
expect "$("$root/usr/sbin/owbcimomd" --version)" "$version" "owbcimomd --version"
expect "$("$root/usr/sbin/owbcimom-passwd" --version)" "$version" "owbcimom-passwd --version"
start_daemon "$root/usr"
expect "$("$root/usr/bin/owbctl" --url "$url" get 4)" LastBootUpTime "what owbctl reads"

mkdir "$folder/tarball"
tar -xzf "$packages/owb-$version-linux-$OWB_DEBIAN_ARCHITECTURE.tar.gz" -C "$folder/tarball" --strip-components=1
expect "$("$folder/tarball/bin/owbctl" --url "$url" get 4)" LastBootUpTime "what owbctl of the tarball reads"
[[ -s $folder/tarball/share/doc/owb/copyright ]] || fail "the tarball has no copyright"
