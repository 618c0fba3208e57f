#!/usr/bin/env bash
# An installation is complete, and finds its libraries wherever it is moved: check_tree.sh TREE SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 source=$2
libdir=lib/$OWB_TRIPLET

dynamic_of() { # FILE TAG
    readelf -d "$1" | sed -n "s/.*($2).*\[\(.*\)\]/\1/p"
}

expect_dynamic() { # FILE TAG VALUE
    local value
    value=$(dynamic_of "$tree/$1" "$2")
    [[ $value == "$3" ]] || fail "$2 of $1 is \"$value\", not \"$3\""
}

expect_dynamic "$libdir/libowb.so" SONAME libowb.so.1
expect_dynamic "$libdir/owb/libowclient.so" SONAME libowclient.so.1
expect_dynamic "$libdir/owb/libSblimUtilities.so" SONAME libSblimUtilities.so.0
# shellcheck disable=SC2016 # for the dynamic linker
{
    expect_dynamic "$libdir/libowb.so" RUNPATH '$ORIGIN/owb'
    expect_dynamic bin/owbctl RUNPATH '$ORIGIN/../'"$libdir"':$ORIGIN/../'"$libdir/owb"
    expect_dynamic sbin/owb-exporter RUNPATH '$ORIGIN/../'"$libdir"':$ORIGIN/../'"$libdir/owb"
    expect_dynamic sbin/owbcimomd RUNPATH '$ORIGIN/../'"$libdir/owb"
}
# Only the module needs OpenSSL.
module=$(echo "$tree/$libdir"/owb/owtls.so.*)
expect "$(dynamic_of "$module" NEEDED)" libssl.so.3 "the libraries that the module needs"
for library in libowb libowclient; do
    needed=$(dynamic_of "$(find "$tree/$libdir" -name $library.so.1)" NEEDED)
    [[ $needed != *ssl* && $needed != *crypto* ]] || fail "$library needs OpenSSL: $needed"
done

# Each public header of the client library, each man page, each document.
diff -r "$source/openwbem/include" "$tree/include/owb/openwbem" || fail "headers differ"
for page in "$source"/docs/man/*.[1-8]; do
    cmp "$page" "$tree/share/man/man${page##*.}/${page##*/}" || fail "a man page is missing"
done
for document in README.md CHANGELOG.md "$source"/docs/*.md; do
    document=${document#"$source/"}
    cmp "$source/$document" "$tree/share/doc/owb/$document" || fail "a document is missing"
done
# The other files. The bundled libraries are apart from an installed original.
files_below "$tree" | grep -vE '^(include/owb/openwbem|share/man|share/doc/owb/docs)/' >"$directory/files"
sed -e "s|.* ||" -e "s|LIBDIR|$libdir|" "$source/tests/package/files.txt" | LC_ALL=C sort | diff - "$directory/files" ||
    fail "the installed files are not those of files.txt"
