# shellcheck shell=bash disable=SC2034 # url and link_flags are for some tests
# Sourced by the tests of this directory, and by those of the build against an installed client library. When a test ends, its
# directory $directory is removed and its daemon stopped.
set -euo pipefail

directory=$(mktemp -d)
daemon=
read -r -a emulator <<<"$OWB_EMULATOR" # precedes programs of the build
link_flags=${OWB_EMULATOR:+-Wl,-rpath-link,${LD_LIBRARY_PATH:-}} # only a linker of the host reads LD_LIBRARY_PATH

clean_up() {
    if [[ -n $daemon ]]; then
        kill "$daemon" 2>/dev/null || true
        wait
    fi
    rm -rf "$directory"
}
trap clean_up EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# This status marks a skipped test for CTest.
skip() {
    echo "skipped: $*"
    exit 77
}

expect() { # TEXT PART WHAT
    [[ $1 == *"$2"* ]] || fail "$3 lacks \"$2\": $1"
}

# Starts the object manager of a prefix, on a private socket, and sets $url to its URL.
start_daemon() { # PREFIX
    local socket=$directory/socket line=
    mkfifo "$directory/log"
    "${emulator[@]}" "$1/sbin/owbcimomd" --socket "$socket" --state "$directory/state.json" 2>"$directory/log" &
    daemon=$!
    exec 3<"$directory/log"
    read -r -t 60 line <&3 || true
    [[ $line == *" owbcimomd: ready on $socket" ]] || fail "the object manager of $1 did not start: ${line:-no output}"
    url=owbinary.wbem://localhost:${socket//\//%2f}
}

files_below() { # DIRECTORY: all but directories, sorted
    (cd "$1" && find . ! -type d | sed 's/^\.\///' | LC_ALL=C sort)
}

# Unpacks all packages of a directory below one root.
unpack() { # PACKAGES ROOT
    local package
    for package in "$1"/*.deb; do
        dpkg-deb -x "$package" "$2"
    done
}
