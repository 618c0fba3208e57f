#!/usr/bin/env bash
# check_rendering.sh DIRECTORY - whether groff renders every man page of a directory without a warning, and man(1) shows it from
# any current directory. Skipped (77) without groff.
set -euo pipefail
directory=$1

command -v groff >/dev/null || exit 77

failed=0
render() { # COMMAND... : expects a text, and no warning
    local warnings text
    text=$(mktemp)
    warnings=$("$@" 2>&1 >"$text") || failed=1
    [[ -z $warnings && -s $text ]] || {
        echo "check_rendering.sh: $*: ${warnings:-no text}" >&2
        failed=1
    }
    rm "$text"
}

cd /
for page in "$directory"/*.[1-8]; do
    render groff -man -Tutf8 -ww "$page"
    # The minimal images of Debian replace man(1) with a script that prints a note.
    ! man --version >/dev/null 2>&1 || render env MANPAGER=cat man --warnings "$page"
done
exit "$failed"
