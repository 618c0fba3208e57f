#!/usr/bin/env bash
# Builds an imitation of the original and runs all checks with it: check_all.sh CMAKE CTEST SOURCE_DIR TOOLCHAIN_OPTION OWBCIMOMD
# END_TO_END_TEST
source "$(dirname "${BASH_SOURCE[0]}")/../../package/common.sh"

cmake=$1 ctest=$2 source=$3 toolchain=$4 manager=$5 end_to_end=$6
strict=$source/tests/openwbem/strict
# Outside of the build directory: CMake never installs a RUNPATH into a source tree.
prefix=$directory/prefix

"$strict/make_prefix.sh" "$cmake" "$source" "$toolchain" "$prefix" >"$directory/made" 2>&1 || fail "$(<"$directory/made")"
"$strict/check_restrictions.sh" "$prefix"
"$strict/check_errors.sh" "$cmake" "$source" "$toolchain" "$prefix"
"$strict/check_build.sh" "$cmake" "$ctest" "$source" "$toolchain" "$prefix" "$manager" "$end_to_end"
