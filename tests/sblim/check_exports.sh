#!/bin/sh
# check_exports.sh NM READELF LIBRARY - the library has its soname, exports only its two functions and needs only the C
# library.
set -eu
nm=$1 readelf=$2 library=$3
exported=$("$nm" -D --defined-only "$library" | cut -d ' ' -f 2- | sort | tr '\n' ' ')
soname=$("$readelf" -d "$library" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')
# Ignore sanitizers and the dynamic loader.
needed=$("$readelf" -d "$library" | sed -n 's/.*Shared library: \[\(.*\)\]/\1/p' | grep -v -e '^lib[a-z]*san\.' -e '^ld-linux' |
    tr '\n' ' ')
[ "$exported" = "T freeresultbuf T runcommand " ] && [ "$soname" = libSblimUtilities.so.0 ] && [ "$needed" = "libc.so.6 " ] && exit 0
echo "$library, soname '$soname', exports '$exported' and needs '$needed'"
exit 1
