#!/usr/bin/env bash
# check_options.sh PAGE PROGRAM [COMMAND...] - whether a man page names exactly the options in the help of a program and of
# its COMMANDs ("get", "time epoch").
set -euo pipefail
page=$1 program=$2
shift 2

# The options in a text, one a line.
options() {
    grep -oE '(^|[^[:alnum:]-])--?[[:alpha:]][[:alnum:]-]*' | grep -oE -- '--?[[:alpha:]].*' | sort -u
}

shown=$({
    "$program" --help
    for command in "$@"; do
        read -ra words <<<"$command"
        "$program" "${words[@]}" --help
    done
} | options)
named=$(sed 's/^\.\\".*//; s/\\f.//g; s/\\-/-/g' "$page" | options)
if ! diff <(echo "$shown") <(echo "$named") >&2; then
    echo "check_options.sh: $page: options differ from those of $program: < shown by --help, > named in the page" >&2
    exit 1
fi
