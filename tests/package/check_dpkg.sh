#!/usr/bin/env bash
# dpkg installs, removes and purges the packages below a temporary root: check_dpkg.sh PACKAGES
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1
[[ $EUID -eq 0 ]] || skip "only root may run dpkg"
command -v systemd-sysusers >/dev/null || skip "there is no systemd-sysusers, which owb-tools depends on"

root=$directory/root
mkdir -p "$root"/{etc,var/lib/dpkg/{info,updates}}
touch "$root/var/lib/dpkg/status"
dpkg --root="$root" --add-architecture "$OWB_DEBIAN_ARCHITECTURE"

run_dpkg() { # ARGUMENTS: without dependencies; maintainer scripts run outside of the root
    dpkg --root="$root" --log=/dev/null --force-depends --force-script-chrootless "$@" >"$directory/dpkg" 2>&1 ||
        fail "dpkg $*: $(<"$directory/dpkg")"
}

states() {
    # shellcheck disable=SC2016 # dpkg's own names
    dpkg-query --admindir="$root/var/lib/dpkg" -W -f='${db:Status-Status} '
}

names=(libowb-dev libowb1 owb-doc owb-exporter owb-snmp owb-tools)
services=(owbcimomd owb-agentx owb-exporter)
wanted=$root/etc/systemd/system/multi-user.target.wants
run_dpkg -i "$packages"/*.deb
[[ $(states) == "${names[*]/*/installed} " ]] || fail "after installing: $(states)"
for user in owbcimom owb-agentx owb-exporter; do
    expect "$(<"$root/etc/passwd")" "$user:x:" "passwd"
done
[[ ! -e $wanted ]] || fail "installing enabled a service"
group=$(sed -n 's/^owb-agentx:x:\([0-9]*\):.*/\1/p' "$root/etc/group")
[[ $(stat -c '%a %u %g' "$root/var/agentx") == "750 0 $group" ]] || fail "other users of the directory of snmpd's socket"
run_dpkg -i "$packages"/*.deb # again, as for a new version

users=$(<"$root/etc/passwd")
mkdir -p "$root/var/lib/owb"
touch "$root/var/lib/owb/state.json"
if command -v systemctl >/dev/null; then
    systemctl --quiet --root="$root" enable "${services[@]}"
    [[ $(find "$wanted" -type l | wc -l) -eq ${#services[@]} ]] || fail "the services cannot be enabled"
fi
run_dpkg -r "${names[@]}"
[[ ! -e $wanted || -z $(ls "$wanted") ]] || fail "still enabled after removal: $(ls "$wanted")"
[[ ! -e $root/usr/sbin/owbcimomd && -e $root/var/lib/owb/state.json ]] || fail "removing left a program or deleted the state"

run_dpkg -P "${names[@]}"
[[ ! -e $root/var/lib/owb ]] || fail "purging left the state"
[[ $(<"$root/etc/passwd") == "$users" ]] || fail "the user has changed: $(<"$root/etc/passwd")"
left=$(find "$root" -name '*owb*' ! -path "$root/var/lib/dpkg/*")
[[ -z $left ]] || fail "not removed: $left"
