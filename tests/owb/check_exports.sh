#!/bin/sh
# check_exports.sh NM LIBRARY LIST - compares what a library exports with the names in a list.
set -eu
LC_ALL=C
export LC_ALL
# Later releases of the client library call their namespace OpenWBEM4.
exported=$("$1" -D --defined-only --demangle "$2" | cut -d ' ' -f 3- | sed 's/OpenWBEM[0-9]*::/OpenWBEM::/g' | sort -u)
if [ "$exported" = "$(sort "$3")" ]; then
    exit 0
fi
echo "$2 does not export what $3 lists; it exports:"
echo "$exported"
exit 1
