#!/usr/bin/env bash
# No package is made without a maintainer: check_maintainer.sh CPACK BUILD
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

cpack=$1 build=$2
if output=$("$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$directory" -D CPACK_PACKAGE_CONTACT= 2>&1); then
    fail "there is a package without a maintainer"
fi
expect "$output" "the packages have no maintainer: set OWB_MAINTAINER to NAME <ADDRESS>" "the error"
