#!/usr/bin/env bash
# An installation works without OpenSSL, except for TLS, and then says what is missing: check_tls.sh TREE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1
start_daemon "$tree"
echo "no library" >"$directory/libssl.so.3"
if [[ -n $OWB_EMULATOR ]]; then
    emulator[-1]=$directory:${emulator[-1]} # the last argument is the library path
else
    export LD_LIBRARY_PATH=$directory
fi
expect "$("${emulator[@]}" "$tree/bin/owbctl" --url "$url" get 4)" LastBootUpTime "what owbctl reads"
if output=$("${emulator[@]}" "$tree/bin/owbctl" --url https://127.0.0.1:1 get 4 2>&1); then
    fail "owbctl read over TLS"
fi
expect "$output" "cannot load TLS: $directory/libssl.so.3: file too short" "the message of owbctl"
