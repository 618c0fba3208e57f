#!/usr/bin/env bash
# Packages that are made twice are the same files, whatever the time, the time zone and the umask:
# check_reproducible.sh PACKAGES MAKE_PACKAGES CPACK BUILD
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1 make_packages=$2 cpack=$3 build=$4
(umask 077 && TZ=Asia/Tokyo SOURCE_DATE_EPOCH=1 "$make_packages" "$cpack" "$build" "$directory/again")
[[ $(ls "$directory/again") == "$(ls "$packages")" ]] || fail "other packages: $(ls "$directory/again")"
for package in "$packages"/*; do
    cmp "$package" "$directory/again/${package##*/}" || fail "${package##*/} depends on more than the sources"
done

# All files have the time of the changelog, which is that of the revision.
dpkg-deb -x "$packages"/owb-doc_*.deb "$directory/documents"
changelog=$(zcat "$directory/documents/usr/share/doc/owb-doc/changelog.gz")
revision=$(date -d "$(sed -n 's/^ -- .*>  //p' <<<"$changelog")" +%s)
for package in "$packages"/*.deb "$packages"/*.tar.gz; do
    list=(tar -tvzf "$package")
    [[ $package != *.deb ]] || list=(dpkg-deb -c "$package")
    times=$(TZ=UTC "${list[@]}" | awk '{ print $4, $5 }' | sort -u)
    [[ $times == "$(date -u -d "@$revision" '+%Y-%m-%d %H:%M')" ]] || fail "times in ${package##*/}: $times"
done
