#!/usr/bin/env bash
# Each file of an installation is in exactly one package, and the packages declare their dependencies:
# check_packages.sh PACKAGES TREE SOURCE_DIR BUILD VERSION
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1 tree=$2 source=$3 build=$4 version=$5

architecture() { # NAME
    [[ $1 == owb-doc ]] && echo all || echo "$OWB_DEBIAN_ARCHITECTURE"
}

package() { # NAME
    echo "$packages/${1}_${version}_$(architecture "$1").deb"
}

field() { # NAME FIELD
    dpkg-deb -f "$(package "$1")" "$2"
}

expect_field() { # NAME FIELD VALUE
    local value
    value=$(field "$1" "$2")
    [[ $value == "$3" ]] || fail "$2 of $1 is \"$value\", not \"$3\""
}

names=(libowb-dev libowb1 owb-doc owb-exporter owb-snmp owb-tools)
files=("$packages"/*.deb)
[[ ${#files[@]} -eq ${#names[@]} ]] || fail "other packages: ${files[*]}"
for name in "${names[@]}"; do
    mkdir "$directory/$name"
    dpkg-deb -x "$(package "$name")" "$directory/$name"
    files_below "$directory/$name" >"$directory/$name.files"
    expect_field "$name" Architecture "$(architecture "$name")"
    expect_field "$name" Version "$version"
    [[ $(dpkg-deb -c "$(package "$name")" | awk '{print $2}' | sort -u) == root/root ]] || fail "$name has a file of a user"
    docs=$directory/$name/usr/share/doc/$name
    [[ -s $docs/copyright ]] || fail "$name has no copyright"
    changelog=$(zcat "$docs/changelog.gz")
    expect "$changelog" "owb ($version)" "the changelog of $name"
    expect "$changelog" " -- $(field "$name" Maintainer)  " "the changelog of $name" # who made this revision
done
expect_field libowb-dev Depends "libowb1 (= $version)"
expect "$(field owb-tools Depends)" "libowb1 (= $version), " "Depends of owb-tools"
[[ $(field libowb1 Description | head -1) != $(field owb-tools Description | head -1) ]] || fail "packages have one summary"
expect "$(dpkg-deb -I "$(package libowb1)" triggers)" "activate-noawait ldconfig" "the triggers of libowb1"
expect "$(dpkg-deb -I "$(package libowb1)" shlibs)" "libowb 1 libowb1 (>= $version)" "shlibs of libowb1"

# files.txt lists the files of each package, whatever the architecture. Of pages, headers and documents it lists none.
for name in "${names[@]}"; do
    sed -n -e "s|LIBDIR|lib/$OWB_TRIPLET|" -e "s|^$name  *||p" "$source/tests/package/files.txt" | LC_ALL=C sort >"$directory/expected"
    grep -vE '/(changelog\.gz|copyright)$|^usr/share/(lintian|man)/|^usr/include/owb/openwbem/|/doc/owb-doc/docs/' "$directory/$name.files" |
        sed -e 's|^usr/||' -e "s|^share/doc/$name/|share/doc/owb/|" | LC_ALL=C sort | diff "$directory/expected" - ||
        fail "$name has other files than files.txt lists"
done
expect "$(<"$directory/libowb-dev.files")" usr/include/owb/openwbem/ "the list of libowb-dev"
expect "$(<"$directory/owb-doc.files")" usr/share/doc/owb-doc/docs/groups.md "the list of owb-doc"
for page in libowb-dev/man3/owb.3 owb-tools/man1/owbctl.1 owb-tools/man8/owbcimomd.8 owb-snmp/man8/owb-agentx.8 \
    owb-exporter/man8/owb-exporter.8; do
    expect "$(<"$directory/${page%%/*}.files")" "usr/share/man/${page#*/}.gz" "the list of ${page%%/*}"
done
expect "$(dpkg-deb -I "$(package owb-snmp)" conffiles)" /etc/snmp/snmpd.conf.d/owb.conf "the settings of owb-snmp"

# Together they contain the installed files and Debian's additions; no file is in two packages.
cat "$directory"/*.files | LC_ALL=C sort >"$directory/all"
[[ -z $(uniq -d "$directory/all") ]] || fail "in two packages: $(uniq -d "$directory/all")"
grep -vE '/(changelog\.gz|copyright)$|^usr/share/lintian/' "$directory/all" |
    sed -e 's|^usr/||' -e 's,^share/doc/\(libowb-dev\|owb-doc\)/,share/doc/owb/,' -e '/\/man\//s/\.gz$//' |
    LC_ALL=C sort >"$directory/packaged"
files_below "$tree" | grep -vxF share/doc/owb/copyright >"$directory/installed"
diff "$directory/installed" "$directory/packaged" || fail "the packages and an installation differ"

# No file names a directory of the build machine.
for path in "$source" "$build"; do
    found=$(grep -rlF "$path" "$directory"/*/usr || true)
    [[ -z $found ]] || fail "$path is named in $found"
done
