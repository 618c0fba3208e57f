#!/usr/bin/env bash
# Derives headers in the form of the original: make_headers.sh SOURCE_DIRECTORY OUTPUT_DIRECTORY. They include only the
# headers that their declarations need, lack the extension and the directory detail/, and OpenWBEM is an alias.
set -euo pipefail

ours=$1 directory=$2

mkdir -p "$directory"
cp "$ours"/OW_* "$directory"
rm "$directory/OW_ClientTimeouts.hpp" # an extension
for header in "$ours"/detail/OW_*.hpp; do
    cp "$header" "$directory/OW_COW${header##*/OW_}"
done
cd "$directory"

sed -i -e 's|"\.\./OW_|"OW_|' -e 's|"detail/OW_|"OW_COW|' -e 's/^namespace OpenWBEM {/namespace OpenWBEM4 {/' \
    -e 's/^} \/\/ namespace OpenWBEM$/} \/\/ namespace OpenWBEM4/' -- *.hpp
sed -i -e 's/^#define OW_PACKAGE .*/#define OW_PACKAGE "openwbem"/' \
    -e 's/ __attribute__((visibility("default")))$//' \
    -e '$i #ifdef __cplusplus\nnamespace OpenWBEM4 {}\nnamespace OpenWBEM = OpenWBEM4;\n#endif\n' OW_config.h

# Types that a header only passes or returns stay incomplete.
replace() { # HEADER INCLUDED BY
    grep -q "^#include \"OW_$2.hpp\"$" "OW_$1.hpp" || {
        echo "make_headers.sh: OW_$1.hpp does not include OW_$2.hpp" >&2
        exit 1
    }
    sed -i "s|^#include \"OW_$2.hpp\"$|#include \"OW_$3.hpp\"|" "OW_$1.hpp"
}
replace CIMClass CIMName CIMFwd
replace CIMInstance CIMName CIMFwd
replace CIMInstance CIMProperty CIMFwd
replace CIMObjectPath CIMName COWSafeBool
replace CIMProperty CIMDataType CIMNULL
replace CIMProperty CIMName COWSafeBool
replace CIMValue Bool CommonFwd
replace CIMValue Char16 CommonFwd
replace String Array Exception

# Copy-on-write calls a function that only OW_vector.hpp declares. Without argument-dependent lookup, as for numbers, the
# declaration must come first.
copied='T(items()[fresh->size])'
grep -qF "$copied" OW_Array.hpp || {
    echo "make_headers.sh: OW_Array.hpp does not copy by $copied" >&2
    exit 1
}
sed -i 's/T(items()\[fresh->size\])/T(copyForWriting(items()[fresh->size]))/' OW_Array.hpp
cat >OW_vector.hpp <<'END'
#ifndef OW_VECTOR_HPP_INCLUDED
#define OW_VECTOR_HPP_INCLUDED
#include "OW_config.h"

namespace OpenWBEM4 {

template <class T>
const T& copyForWriting(const T& shared) {
    return shared;
}

} // namespace OpenWBEM4
#endif
END
