# shellcheck shell=bash disable=SC2034 # url is for those that start a daemon
# Sourced by the tests of this folder and of the build against an installed client library. They work in $folder, which goes with
# them, as does the daemon that they start.
set -euo pipefail

folder=$(mktemp -d)
daemon=

clean_up() {
    if [[ -n $daemon ]]; then
        kill "$daemon" 2>/dev/null || true
        wait
    fi
    rm -rf "$folder"
}
trap clean_up EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# CTest knows a skipped test by this status.
skip() {
    echo "skipped: $*"
    exit 77
}

expect() { # TEXT PART WHAT
    [[ $1 == *"$2"* ]] || fail "$3 lacks \"$2\": $1"
}

# Starts the object manager of a prefix, on a socket of its own, which $url names.
start_daemon() { # PREFIX
    local socket=$folder/socket line=
    mkfifo "$folder/log"
    "$1/sbin/owbcimomd" --socket "$socket" --state "$folder/state.json" 2>"$folder/log" &
    daemon=$!
    exec 3<"$folder/log"
    read -r -t 60 line <&3 || true
    [[ $line == *" owbcimomd: ready on $socket" ]] || fail "the object manager of $1 did not start: ${line:-it said nothing}"
    url=owbinary.wbem://localhost:${socket//\//%2f}
}

files_below() { # FOLDER: all but folders, sorted
    (cd "$1" && find . ! -type d | sed 's/^\.\///' | LC_ALL=C sort)
}

# All packages of a folder, one below the other.
unpack() { # PACKAGES ROOT
    local package
    for package in "$1"/*.deb; do
        dpkg-deb -x "$package" "$2"
    done
}
