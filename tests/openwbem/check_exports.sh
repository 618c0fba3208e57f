#!/bin/sh
# check_exports.sh NM LIBRARY - a library exports only names of the namespace OpenWBEM.
set -eu
exported=$("$1" -D --defined-only --demangle "$2" | cut -d ' ' -f 3-)
own=$(echo "$exported" | grep -c 'OpenWBEM::' || true)
foreign=$(echo "$exported" | grep -v '^\(vtable for \|typeinfo for \|typeinfo name for \)\{0,1\}OpenWBEM::' || true)
if [ "$own" -gt 100 ] && [ -z "$foreign" ]; then
    exit 0
fi
echo "$2 exports $own names of OpenWBEM, and:"
echo "$foreign"
exit 1
