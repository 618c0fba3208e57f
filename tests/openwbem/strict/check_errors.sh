#!/usr/bin/env bash
# CMake reports why an installed client library does not work: check_errors.sh CMAKE SOURCE_DIR TOOLCHAIN_OPTION PREFIX
source "$(dirname "${BASH_SOURCE[0]}")/../../package/common.sh"

cmake=$1 source=$2 toolchain=$3 prefix=$4

configure() { # MODE PREFIX: always in the same directory, since errors are not cached
    "$cmake" -S "$source" -B "$directory/build" -G Ninja "$toolchain" -DOWB_OPENWBEM="$1" \
        -DOpenWBEM_ROOT="$2" -DOWB_TESTS=OFF -DOWB_BENCH=OFF 2>&1 | tr -s '[:space:]' ' ' # CMake wraps messages
}

expect_error() { # PREFIX TEXT...
    local output text
    if output=$(configure SYSTEM "$1"); then
        fail "configuring with $1 succeeded: $output"
    fi
    for text in "${@:2}" "-DOpenWBEM_ROOT=DIR"; do
        expect "$output" "$text" "the error for $1"
    done
}

copy_of_prefix() { # NAME
    mkdir "$directory/$1"
    cp -r "$prefix/include" "$prefix/lib" "$directory/$1"
}

found() { # NAME
    echo "Found: $directory/$1/include/openwbem/OW_CIMClient.hpp $directory/$1/lib/libowclient.so"
}

mkdir "$directory/empty"
expect_error "$directory/empty" "no OpenWBEM 3.x for $OWB_PROCESSOR was found" \
    "OW_CIMClient.hpp in include or include/openwbem, and libowclient, below $directory/empty"

mkdir "$directory/headers"
cp -r "$prefix/include" "$directory/headers"
expect_error "$directory/headers" "no OpenWBEM 3.x for $OWB_PROCESSOR was found" \
    "Found only: $directory/headers/include/openwbem/OW_CIMClient.hpp"

copy_of_prefix broken
echo '#error "of another compiler"' >>"$directory/broken/include/openwbem/OW_Array.hpp"
broken_says=("is unusable for $OWB_PROCESSOR" "$(found broken)" "does not compile:" 'error: #error "of another compiler"')
expect_error "$directory/broken" "${broken_says[@]}"
output=$(configure AUTO "$directory/broken")
for text in "${broken_says[@]}" "Client library: bundled"; do
    expect "$output" "$text" "the output of AUTO for $directory/broken"
done

copy_of_prefix alone
rm "$directory"/alone/lib/libowxml.so*
expect_error "$directory/alone" "$(found alone)" "libowhttpcommon.so Missing in its directory, and needed unless it contains them: libowxml" \
    "does not link:" "libowxml.so.4, needed by $directory/alone/lib/libowclient.so, not found"

if [[ -n $OWB_WIDE_FLAGS ]]; then
    copy_of_prefix wide
    echo 'int nothing;' >"$directory/wide.c"
    rm "$directory"/wide/lib/libowclient.so*
    "$CC" "$OWB_WIDE_FLAGS" -shared -nostdlib -Wl,-soname,libowclient.so.4 -o "$directory/wide/lib/libowclient.so" "$directory/wide.c"
    expect_error "$directory/wide" "is unusable for $OWB_PROCESSOR" "$(found wide)" "does not link:" \
        "libowclient.so: error adding symbols: file in wrong format"
fi

# Headers may also be directly in include/.
mkdir "$directory/plain"
ln -s "$prefix/lib" "$directory/plain/lib"
ln -s "$prefix/include/openwbem" "$directory/plain/include"
expect "$(configure SYSTEM "$directory/plain")" "Client library: $directory/plain/lib/libowclient.so" "the output of SYSTEM"
