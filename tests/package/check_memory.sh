#!/usr/bin/env bash
# valgrind finds no error and no leak in the example agent: check_memory.sh TREE SYSROOT
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 sysroot=$2
command -v valgrind >/dev/null || skip "there is no valgrind"
[[ -d $sysroot/libc ]] || skip "there is no C library with symbols, which scripts/sysroot fetches"

# valgrind needs the symbols of the dynamic linker, and searches them next to it.
libc=$directory/libc
mkdir -p "$libc/.debug"
cp -L "$sysroot/libc/lib/$OWB_TRIPLET"/*.so.* "$libc"
for library in ld-linux.so.2 libc.so.6; do
    id=$(readelf -n "$libc/$library" | sed -n 's/.*Build ID: //p')
    ln -s "$sysroot/libc/usr/lib/debug/.build-id/${id:0:2}/${id:2}.debug" "$libc/.debug/${id:2}.debug"
done

cp -r "$tree/share/doc/owb/examples" "$directory/examples"
make -C "$directory/examples" PKG_CONFIG_PATH="$tree/share/pkgconfig" LDFLAGS="-Wl,--dynamic-linker=$libc/ld-linux.so.2" \
    >"$directory/built" 2>&1 || fail "$(<"$directory/built")"

start_daemon "$tree"
cd "$directory" # without a trace switch
LD_LIBRARY_PATH=$libc:$LD_LIBRARY_PATH valgrind --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,possible \
    "$directory/examples/agent" "$url" ops@example.net >output 2>&1 || {
    [[ $(<output) != *"failed to start tool"* ]] || skip "this valgrind does not run programs for $OWB_PROCESSOR"
    fail "$(<output)"
}
expect "$(<output)" "The contact is now ops@example.net." "the agent's output"
expect "$(<output)" "ERROR SUMMARY: 0 errors" "the output of valgrind"
