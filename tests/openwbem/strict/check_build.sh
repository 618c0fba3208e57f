#!/usr/bin/env bash
# The bridge, owbctl, the examples and the tests of the bridge build with the imitation of the original, and run:
# check_build.sh CMAKE CTEST SOURCE_DIR TOOLCHAIN_OPTION PREFIX OWBCIMOMD END_TO_END_TEST
#
# The object manager always contains the bundled client library, so the existing program is used. The end-to-end tests call only
# the C interface of the bridge, so their existing program is used, too; it loads the bridge built here.
source "$(dirname "${BASH_SOURCE[0]}")/../../package/common.sh"

cmake=$1 ctest=$2 source=$3 toolchain=$4 prefix=$5 manager=$6 end_to_end=$7
read -r -a target_flags <<<"$OWB_TARGET_FLAGS"
build=$directory/build tree=$directory/tree
libraries=(libowclient libopenwbem libowxml libowhttpclient libowhttpcommon)

quietly() { # COMMAND...
    "$@" >"$directory/output" 2>&1 || fail "$*: $(<"$directory/output")"
}

configure() { # MODE
    # Some distributions link with --as-needed by default.
    quietly "$cmake" -S "$source" -B "$build" -G Ninja "$toolchain" -DOWB_OPENWBEM="$1" \
        -DOpenWBEM_ROOT="$prefix" -DOWB_SBLIM=BUNDLED -DOWB_BENCH=OFF -DOWB_WERROR=ON \
        -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--as-needed -DCMAKE_EXE_LINKER_FLAGS=-Wl,--as-needed
    expect "$(<"$directory/output")" "Client library: $prefix/lib/libowclient.so" "what $1 says"
}

expect_installed_client() { # PROGRAM
    local loaded library
    loaded=$(ldd "$1")
    for library in "${libraries[@]}"; do
        expect "$loaded" "$library.so.4 => $prefix/lib/$library.so.4 " "what $1 loads"
    done
}

targets=(owb owbctl c_agent header_alone header_FIRST header_LAST header_ALONE header_WITHIN_EXTERN_C owb_test owb_trace_test owb_memory_test owb_failing_calls_test
    owb_software_test)

configure AUTO
quietly "$cmake" --build "$build" --target "${targets[@]}"
configure SYSTEM
quietly "$cmake" --build "$build" --target "${targets[@]}"
expect "$(<"$directory/output")" "no work to do" "what SYSTEM builds after AUTO"

for component in library development; do
    quietly "$cmake" --install "$build" --prefix "$tree" --component "$component"
done
quietly "$cmake" --install "$build/owbctl" --prefix "$tree"
bridge=$(find "$tree" -name libowb.so.1)
expect_installed_client "$bridge"
expect_installed_client "$tree/bin/owbctl"
[[ -z $(find "$tree" -name 'libowclient*' -o -name 'OW_*') ]] || fail "a client library is installed in addition to the one found"

quietly "$ctest" --test-dir "$build/tests/owb" --output-on-failure --timeout 60 -j 2 -E _NOT_BUILT
LD_LIBRARY_PATH=${bridge%/*} quietly "$end_to_end"

mkdir -p "$directory/manager/sbin"
ln -s "$manager" "$directory/manager/sbin/owbcimomd"
start_daemon "$directory/manager"
expect "$("$tree/bin/owbctl" --url "$url" get 4)" "Group 4  QAV_OperatingSystem  (1 row" "what owbctl reads"
expect "$("$tree/bin/owbctl" --url "$url" version)" "client library of the system" "the versions"
doctor=$("$tree/bin/owbctl" --url http://127.0.0.1:/tmp/any doctor || true)
expect "$doctor" ", port 5988, since its port is empty" "what the doctor says"

# The command line in docs/client-library.md.
export PKG_CONFIG_PATH=$tree/share/pkgconfig
cp -r "$source/examples" "$directory/examples"
quietly make -C "$directory/examples" CFLAGS="-Wall -Wextra -Wpedantic -Werror"
expect "$("$directory/examples/agent" "$url" ops@example.net)" "The contact is now ops@example.net." "the agent's output"
read -r -a owb < <(pkg-config --cflags --libs owb)
quietly "$CXX" "${target_flags[@]}" -I"$prefix/include/openwbem" "$source/tests/package/client_agent.cpp" -o "$directory/client_agent" \
    "${owb[@]}" -L"$prefix/lib" -Wl,--no-as-needed "${libraries[@]/#lib/-l}" \
    -Wl,-rpath,"$(pkg-config --variable=libdir owb):$prefix/lib"
quietly "$directory/client_agent"
