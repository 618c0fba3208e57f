#!/usr/bin/env bash
# systemd understands the unit, and finds it no more exposed than the documentation says: check_unit.sh TREE
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v systemd-analyze >/dev/null || skip "there is no systemd-analyze"
tree=$1
unit=$folder/owbcimomd.service
# The program is looked for in folders of the system, where it is not installed.
sed "s|^ExecStart=|&$tree/sbin/|" "$tree/lib/systemd/system/owbcimomd.service" >"$unit"
output=$(systemd-analyze --man=no verify "$unit" 2>&1) || fail "$output"
[[ -z $output ]] || fail "$output"
output=$(systemd-analyze security --no-pager --offline=true --threshold=32 "$unit" 2>&1) || fail "$output"

# The value of a setting of the unit.
setting() { sed -n "s/^$1=//p" "$unit"; }
[[ $(setting Restart) == on-failure ]] || fail "it is not started again when it fails"
starts=$(($(setting StartLimitIntervalSec) / $(setting RestartSec)))
((starts < $(setting StartLimitBurst))) || fail "$starts starts, as many as can be, exhaust the start limit"
((starts >= 6)) || fail "six crashes a minute are not answered by as many starts"
[[ -n $(setting MemoryMax) && -n $(setting WatchdogSec) ]] || fail "no bound of its memory, or no watchdog"
