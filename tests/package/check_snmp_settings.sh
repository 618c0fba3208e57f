#!/usr/bin/env bash
# snmpd with Debian's settings and those of owb-snmp: the subagent may connect, and local users may read the context "owb" and
# no more of the default context than before. The commented rule for managers on the network works, too:
# check_snmp_settings.sh TREE TOOLS
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$1 tools=$2
[[ -e $tools/packages ]] || skip "net-snmp is not in $tools: run scripts/unpack snmp"
port=$(python3 -c 'import socket; s = socket.socket(type=socket.SOCK_DGRAM); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
contact=.1.3.6.1.2.1.1.4.0 interfaces=.1.3.6.1.2.1.2.1.0

LD_LIBRARY_PATH=$(echo "$tools"/usr/lib/*-linux-gnu*) # of the host's architecture
export LD_LIBRARY_PATH SNMP_PERSISTENT_DIR=$directory/state SNMPCONFPATH=$directory/none MIBS=
mkdir "$directory/settings"
sed -e "s/Debian-snmp owb-agentx/$(id -un) $(id -gn)/" -e 's/^# rouser /rouser /' "$tree/etc/snmp/snmpd.conf.d/owb.conf" >"$directory/settings/owb.conf"
# In place of a subagent, snmpd forwards the context to its default context.
sed -e '/^agentaddress/d' -e "s|^includeDir .*|includeDir $directory/settings|" "$tools/etc/snmp/snmpd.conf" \
    >"$directory/snmpd.conf"
cat >>"$directory/snmpd.conf" <<END_OF_SETTINGS
agentXSocket unix:$directory/agentx/master
proxy -Cn owb -v 2c -c everything 127.0.0.1:$port .1.3.6.1
rocommunity everything 127.0.0.1
createUser monitor SHA-256 authentication AES encryption
END_OF_SETTINGS
"$tools/usr/sbin/snmpd" -f -I -smux -C -c "$directory/snmpd.conf" -Lf "$directory/log" "udp:127.0.0.1:$port" &
daemon=$!

user=(-v3 -l authPriv -u monitor -a SHA-256 -A authentication -x AES -X encryption)
ask() { # COMMAND COMMUNITY|"" ARGUMENTS...: without a community, as a user of version 3
    local access=(-v2c -c "$2")
    [[ -n $2 ]] || access=("${user[@]}" -n owb)
    "$tools/usr/bin/$1" "${access[@]}" -t 0.1 -r 100 -Oqv "127.0.0.1:$port" "${@:3}" 2>&1
}

value=$(ask snmpget public "$contact") || fail "snmpd does not answer: $value $(<"$directory/log")"
[[ $(ask snmpget owb "$interfaces") =~ ^[0-9]+$ ]] || fail "local users cannot read the context owb: $(<"$directory/log")"
[[ $(ask snmpget "" "$interfaces") =~ ^[0-9]+$ ]] || fail "the rule for managers does not work: $(<"$directory/log")"
expect "$(ask snmpget owb .1.3.6.1.6.3.10.2.1.1.0)" "No Such" "what is outside of the view"
expect "$(ask snmpget public "$interfaces")" "No Such" "what Debian's settings hide"
if output=$(ask snmpset owb "$contact" s changed); then
    fail "local users can write: $output"
fi
expect "$output" noAccess "the error"
[[ $(stat -c %a "$directory/agentx/master") == 660 ]] || fail "other modes of the socket"
[[ $(stat -c %a "$directory/agentx") == 750 ]] || fail "other modes of the directory of the socket"
[[ $(grep -cE 'line|[Ee]rror' "$directory/log") -eq 0 ]] || fail "$(<"$directory/log")"
