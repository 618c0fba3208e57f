#!/usr/bin/env bash
# lintian has no complaint that is not answered beside its override: check_lintian.sh PACKAGES
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v lintian >/dev/null || skip "there is no lintian"
# It leaves some of its files behind.
output=$(TMPDIR=$folder lintian --allow-root --fail-on error,warning "$1"/*.deb 2>&1) || fail "$output"
