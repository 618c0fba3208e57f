#!/usr/bin/env bash
# Configuring says why an installed client library does not do: check_refusals.sh CMAKE SOURCE_DIR TOOLCHAIN PREFIX
source "$(dirname "${BASH_SOURCE[0]}")/../../package/common.sh"

cmake=$1 source=$2 toolchain=$3 prefix=$4

configure() { # MODE PREFIX: in one folder, as nothing of a refusal is remembered
    "$cmake" -S "$source" -B "$folder/build" -G Ninja --toolchain "$toolchain" -DOWB_OPENWBEM="$1" \
        -DOpenWBEM_ROOT="$2" -DOWB_TESTS=OFF -DOWB_BENCH=OFF 2>&1 | tr -s '[:space:]' ' ' # CMake wraps messages
}

expect_refusal() { # PREFIX TEXT...
    local output text
    if output=$(configure SYSTEM "$1"); then
        fail "configuring with $1 succeeded: $output"
    fi
    for text in "${@:2}" "-DOpenWBEM_ROOT=DIR"; do
        expect "$output" "$text" "the error for $1"
    done
}

copy_of_prefix() { # NAME
    mkdir "$folder/$1"
    cp -r "$prefix/include" "$prefix/lib" "$folder/$1"
}

found() { # NAME
    echo "Found: $folder/$1/include/openwbem/OW_CIMClient.hpp $folder/$1/lib/libowclient.so"
}

mkdir "$folder/empty"
expect_refusal "$folder/empty" "no OpenWBEM 3.x for $OWB_PROCESSOR was found" \
    "OW_CIMClient.hpp in include or include/openwbem, and libowclient, below $folder/empty"

mkdir "$folder/headers"
cp -r "$prefix/include" "$folder/headers"
expect_refusal "$folder/headers" "no OpenWBEM 3.x for $OWB_PROCESSOR was found" \
    "Found only: $folder/headers/include/openwbem/OW_CIMClient.hpp"

copy_of_prefix broken
echo '#error "of another compiler"' >>"$folder/broken/include/openwbem/OW_Array.hpp"
broken_says=("is unusable for $OWB_PROCESSOR" "$(found broken)" "does not compile:" 'error: #error "of another compiler"')
expect_refusal "$folder/broken" "${broken_says[@]}"
output=$(configure AUTO "$folder/broken")
for text in "${broken_says[@]}" "Client library: bundled"; do
    expect "$output" "$text" "what AUTO says of $folder/broken"
done

copy_of_prefix alone
rm "$folder"/alone/lib/libowxml.so*
expect_refusal "$folder/alone" "$(found alone)" "libowhttpcommon.so Missing in its directory, and needed unless it contains them: libowxml" \
    "does not link:" "libowxml.so.4, needed by $folder/alone/lib/libowclient.so, not found"

if [[ -n $OWB_WIDE_FLAGS ]]; then
    copy_of_prefix wide
    echo 'int nothing;' >"$folder/wide.c"
    rm "$folder"/wide/lib/libowclient.so*
    "$CC" "$OWB_WIDE_FLAGS" -shared -nostdlib -Wl,-soname,libowclient.so.4 -o "$folder/wide/lib/libowclient.so" "$folder/wide.c"
    expect_refusal "$folder/wide" "is unusable for $OWB_PROCESSOR" "$(found wide)" "does not link:" \
        "libowclient.so: error adding symbols: file in wrong format"
fi

# Headers may also be where other libraries have theirs.
mkdir "$folder/plain"
ln -s "$prefix/lib" "$folder/plain/lib"
ln -s "$prefix/include/openwbem" "$folder/plain/include"
expect "$(configure SYSTEM "$folder/plain")" "Client library: $folder/plain/lib/libowclient.so" "what SYSTEM says"
