#!/usr/bin/env bash
# check_tls_steps.sh README PROGRAMS - runs the commands of "From another host, with TLS" as they are printed, and compares what
# they print. Only names that exist on another host differ: the host, the port, the socket and the password.
set -euo pipefail
readme=$(realpath "$1") PATH=$(realpath "$2"):$PATH
fail() {
    echo "check_tls_steps.sh: $*" >&2
    exit 1
}

directory=$(mktemp -d)
manager=
trap '[[ -z $manager ]] || { kill "$manager"; wait "$manager" || true; }; rm -rf "$directory"' EXIT
cd "$directory"
export HOME=$directory
unset OWB_URL OWB_TLS_CA OWB_TLS_CERT OWB_TLS_KEY OWB_TLS_VERIFY

# The indented lines, with one line for each command.
awk '/^### / { inside = $0 == "### From another host, with TLS" } /^#/ && !/^### / { inside = 0 }
     inside && sub(/^    /, "")' "$readme" | sed -e ':again' -e '/\\$/{N;s/\\\n *//;b again}' |
    sed -e 's/\bbox\b/localhost/g' -e 's/PASSWORD/secret/' >steps
step() { # PATTERN: the only command with it
    local found
    found=$(grep -e "^\$ .*$1" steps) || fail "no step with '$1'"
    [[ $(wc -l <<<"$found") -eq 1 ]] || fail "several steps with '$1'"
    echo "${found#??}"
}

eval "$(step 'openssl req')" 2>log || fail "$(cat log)"
eval "$(step owbcimom-passwd)" <<<secret >/dev/null
serve=$(step owbcimomd)
eval "exec ${serve/0.0.0.0:5989/127.0.0.1:0} --socket '$directory/socket' --state '$directory/state'" 2>log &
manager=$!
until grep -q ready log; do
    kill -0 "$manager" 2>/dev/null || fail "$(cat log)"
    sleep 0.02
done
ready=$(sed -n 's/^[^ ]* owbcimomd: ready/owbcimomd: ready/p' log)
port=$(sed 's/.*:\([0-9]*\) (TLS)$/\1/' <<<"$ready")
shown=$(sed -e "s|$directory/socket|/tmp/OpenWBEM_UDS|" -e "s/127.0.0.1:$port/0.0.0.0:5989/" <<<"$ready")
grep -qxF "$shown" steps || fail "README does not show '$shown'"

client=$(step 'export OWB_TLS_CA')
eval "${client/:5989/:$port}"
read=$(grep -x '\$ owbctl get 4' steps)
eval "${read#??}" >out
grep -q '^Group 4 ' out || fail "$(cat out)"
eval "$(step 'owbctl set')" >out || fail "$(cat out)"
[[ $(owbctl get 2) == *ops@example.net* ]] || fail "nothing was written"

openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout other.key -out other.pem -subj /CN=other 2>log
status=0
eval "$(step 'OWB_TLS_CA=other.pem')" 2>error || status=$?
[[ $status -eq 15 ]] || fail "status $status with another issuer's certificate"
[[ $(wc -l <error) -eq 1 ]] && grep -qxFf error steps || fail "README does not show '$(cat error)'"
