#!/usr/bin/env bash
# 64-bit programs are installed with their libraries, and with nothing that agents need: check_private_libraries.sh TREE VERSION
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 version=$2
for program in bin/owbctl sbin/owbcimomd sbin/owbcimom-passwd sbin/owb-exporter sbin/owb-agentx; do
    expect "$("$tree/$program" --version 2>&1)" "${version%.*}" "what $program prints" # from a directory that was moved
done
libraries=$(cd "$tree" && find . -name '*.so*' | LC_ALL=C sort)
unexpected=$(grep -vE '^\./lib(/[^/]*-linux-gnu[^/]*)?/owb/[^/]*\.so\.' <<<"$libraries" || true)
[[ -n $libraries && -z $unexpected ]] || fail "libraries elsewhere, or to link to: $unexpected"
for name in include share/man/man3 share/pkgconfig share/cmake; do
    [[ ! -e $tree/$name ]] || fail "$name is installed"
done
start_daemon "$tree"
expect "$("$tree/bin/owbctl" --url "$url" get 4)" "Group 4  QAV_OperatingSystem  (1 row" "what owbctl reads"
