#!/usr/bin/env bash
# The imitation is as restrictive as the original, else the other checks prove nothing: check_restrictions.sh PREFIX
source "$(dirname "${BASH_SOURCE[0]}")/../../package/common.sh"

prefix=$1
read -r -a target_flags <<<"$OWB_TARGET_FLAGS"

compiles() { # SOURCE
    "$CXX" "${target_flags[@]}" -std=c++17 -fsyntax-only -I"$prefix/include/openwbem" -x c++ - <<<"$1" 2>"$directory/errors"
}

expect_rejected() { # SOURCE
    ! compiles "$1" || fail "compiles: $1"
}

expect_accepted() { # SOURCE
    compiles "$1" || fail "does not compile: $1: $(<"$directory/errors")"
}

array='#include <OW_Array.hpp>'
vector='#include <OW_vector.hpp>'
own='struct Own {}; OpenWBEM::Array<Own> two(2, Own());'
expect_accepted "$vector"$'\n'"$array"$'\n'"$own"
expect_rejected "$array"$'\n'"$own"
expect_rejected "$array"$'\n'"$vector"$'\n'"$own"

for unused in Bool:OW_CIMValue Char16:OW_CIMValue CIMProperty:OW_CIMInstance CIMInstance:OW_CIMClient; do
    class=OpenWBEM::${unused%:*}
    expect_accepted "#include <${unused#*:}.hpp>"$'\n'"$class* none;"
    expect_rejected "#include <${unused#*:}.hpp>"$'\n'"int size = sizeof($class);"
done
expect_rejected '#include <OW_String.hpp>'$'\n''namespace OpenWBEM { class String; }' # an alias
[[ -z $(find "$prefix/include" -name detail -o -name 'OW_ClientTimeouts*') ]] || fail "files that the original lacks"

for library in "$prefix"/lib/libo*.so; do
    dynamic=$(readelf -d "$library")
    [[ $dynamic != *RPATH* && $dynamic != *RUNPATH* ]] || fail "$library has a RUNPATH"
    expect "$dynamic" "soname: [${library##*/}.4]" "$library"
done
dynamic=$(readelf -d "$prefix/lib/libowclient.so")
for companion in libopenwbem libowxml libowhttpclient; do
    expect "$dynamic" "[$companion.so.4]" "the needed libraries of libowclient"
done
