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

enabled=$root/etc/systemd/system/multi-user.target.wants/owbcimomd.service
run_dpkg -i "$packages"/*.deb
[[ $(states) == "installed installed installed installed " ]] || fail "after installing: $(states)"
expect "$(<"$root/etc/passwd")" $'owbcimom:x:' "passwd"
[[ ! -e $enabled && ! -L $enabled ]] || fail "installing enabled the service"
run_dpkg -i "$packages"/*.deb # again, as for a new version

user=$(<"$root/etc/passwd")
mkdir -p "$root/var/lib/owb"
touch "$root/var/lib/owb/state.json"
if command -v systemctl >/dev/null; then
    systemctl --quiet --root="$root" enable owbcimomd.service
    [[ -L $enabled ]] || fail "the service cannot be enabled"
fi
run_dpkg -r owb-tools owb-doc libowb-dev libowb1
[[ ! -L $enabled ]] || fail "the service is still enabled after removal"
[[ ! -e $root/usr/sbin/owbcimomd && -e $root/var/lib/owb/state.json ]] || fail "removing left a program or deleted the state"

run_dpkg -P owb-tools
[[ ! -e $root/var/lib/owb ]] || fail "purging left the state"
[[ $(<"$root/etc/passwd") == "$user" ]] || fail "the user has changed: $(<"$root/etc/passwd")"
[[ -z $(find "$root/usr" -name '*owb*') ]] || fail "not removed: $(find "$root/usr" -name '*owb*')"
