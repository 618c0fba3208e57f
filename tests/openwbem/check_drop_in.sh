#!/usr/bin/env bash
# The bridge builds against an installed client library, in either place where its headers may be, loads it when it is
# installed itself, and says what it looked for when there is none: check_drop_in.sh CMAKE SOURCE_DIR TOOLCHAIN LIBOWCLIENT
set -euo pipefail

cmake=$1 source=$2 toolchain=$3 library=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

fail() {
    echo "$*" >&2
    exit 1
}

configure() { # PREFIX BUILD_FOLDER
    "$cmake" -S "$source" -B "$2" -G Ninja --toolchain "$toolchain" -DOWB_OPENWBEM=SYSTEM -DOpenWBEM_ROOT="$1" \
        -DOWB_TESTS=OFF -DOWB_BENCH=OFF 2>&1
}

mkdir "$folder/empty"
if output=$(configure "$folder/empty" "$folder/none"); then
    fail "configuring without a client library succeeded"
fi
words=$(tr -s '[:space:]' ' ' <<<"$output") # the message is wrapped
for text in "no OpenWBEM 3.x for i686 was found" "OW_CIMClient.hpp in include or include/openwbem, and libowclient" \
    "$folder/empty" "-DOpenWBEM_ROOT=DIR"; do
    [[ $words == *$text* ]] || fail "the error does not say \"$text\": $output"
done

for headers in include include/openwbem; do
    prefix=$folder/$headers/prefix
    mkdir -p "$prefix/lib" "$prefix/$headers"
    cp "$library" "$prefix/lib/libowclient.so"
    cp -r "$source"/openwbem/include/* "$prefix/$headers"
    rm "$prefix/$headers/OW_ClientTimeouts.hpp" # an extension, which the original lacks
    output=$(configure "$prefix" "$folder/$headers/build") || fail "$output"
    output=$("$cmake" --build "$folder/$headers/build" --target owb 2>&1) || fail "$output"
done

# The bridge finds the library where it was found, and none of its own is installed.
"$cmake" --install "$folder/include/build" --prefix "$folder/installed" --component library >/dev/null
ln -s libowclient.so "$folder/include/prefix/lib/libowclient.so.1"
bridge=$(find "$folder/installed" -name libowb.so.1)
[[ $(ldd "$bridge") == *"libowclient.so.1 => $folder/include/prefix/lib/libowclient.so.1 "* ]] ||
    fail "the installed bridge loads another library: $(ldd "$bridge")"
[[ -z $(find "$folder/installed" -name 'libowclient*') ]] || fail "a client library is installed beside the one found"
