#!/bin/sh
# check_exports.sh NM LIBRARY LIST - compares what a library exports with the names in a list.
set -eu
LC_ALL=C
export LC_ALL
# The namespace of later releases of the client library is OpenWBEM4.
exported=$("$1" -D --defined-only --demangle "$2" | cut -d ' ' -f 3- | sed 's/OpenWBEM[0-9]*::/OpenWBEM::/g' | sort -u)
if [ "$exported" = "$(sort "$3")" ]; then
    exit 0
fi
echo "$2: exports differ from $3:"
echo "$exported"
exit 1
