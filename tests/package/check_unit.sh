#!/usr/bin/env bash
# systemd accepts the unit, and rates its exposure no higher than the documentation says:
# check_unit.sh TREE UNIT EXPOSURE, ten times the rating
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v systemd-analyze >/dev/null || skip "there is no systemd-analyze"
tree=$1 unit=$directory/$2 exposure=$3
# systemd expects the program in directories of the system, where it is not installed.
sed "s|^ExecStart=|&$tree/sbin/|" "$tree/lib/systemd/system/$2" >"$unit"
output=$(systemd-analyze --man=no verify "$unit" 2>&1) || fail "$output"
[[ -z $output ]] || fail "$output"
output=$(systemd-analyze security --no-pager --offline=true --threshold="$exposure" "$unit" 2>&1) || fail "$output"

# The value of a setting of the unit.
setting() { sed -n "s/^$1=//p" "$unit"; }
[[ $(setting Restart) == on-failure ]] || fail "it is not restarted after a failure"
starts=$(($(setting StartLimitIntervalSec) / $(setting RestartSec)))
((starts < $(setting StartLimitBurst))) || fail "$starts starts in the interval reach the start limit"
((starts >= 6)) || fail "six crashes a minute are not followed by six starts"
[[ -n $(setting MemoryMax) ]] || fail "no memory limit"
# snmpd itself drops a subagent that blocks.
[[ $2 == owb-agentx.service || -n $(setting WatchdogSec) ]] || fail "no watchdog"
