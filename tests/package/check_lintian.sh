#!/usr/bin/env bash
# lintian reports nothing but what an override explains: check_lintian.sh PACKAGES
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

command -v lintian >/dev/null || skip "there is no lintian"
# It does not remove all of its files.
output=$(TMPDIR=$directory lintian --allow-root --fail-on error,warning "$1"/*.deb 2>&1) || fail "$output"
