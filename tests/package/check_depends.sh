#!/usr/bin/env bash
# The packages depend on versions of the C and C++ library with every symbol in use, and on the packages of all other
# libraries: check_depends.sh PACKAGES
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=$1

expect_highest() { # FILE PREFIX VERSION: no version of a symbol is above
    local highest
    highest=$(readelf -V "$1" | sed -n "s/.*Name: ${2}_\([0-9.]*\) .*/\1/p" | cat - <(echo "$3") | sort -V | tail -1)
    [[ $highest == "$3" ]] || fail "${1##*/} uses ${2}_$highest, above ${2}_$3"
}

declare -A package_of=([libc.so.6]=libc6 [libm.so.6]=libc6 [ld-linux.so.2]=libc6 [ld-linux-armhf.so.3]=libc6 [libgcc_s.so.1]=libgcc-s1
    [libstdc++.so.6]=libstdc++6 [libz.so.1]=zlib1g [libssl.so.3]=libssl3 [libcrypto.so.3]=libssl3 [libcrypt.so.1]=libcrypt1 [libowb.so.1]=libowb1
    [libowclient.so.1]=libowb1 [libSblimUtilities.so.0]=libowb1)

for name in libowb1 owb-tools owb-exporter owb-snmp; do
    depends="libowb1 $(dpkg-deb -f "$packages/$name"_*.deb Depends)"
    expect "$depends" "libc6 (>= 2.34)" "Depends of $name"
    expect "$depends" "libstdc++6 (>= 11)" "Depends of $name"
    libgcc=$(sed -n 's/.*libgcc-s1 (>= \([0-9.]*\)).*/\1/p' <<<"$depends")
    mkdir "$directory/$name"
    dpkg-deb -x "$packages/$name"_*.deb "$directory/$name"
    count=0
    while read -r file; do
        expect_highest "$file" GLIBC 2.34
        expect_highest "$file" GLIBCXX 3.4.29 # these two came with GCC 11
        expect_highest "$file" GCC "$libgcc"
        expect_highest "$file" CXXABI 1.3.13
        expect_highest "$file" OPENSSL 3.0.0
        for library in $(readelf -d "$file" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
            expect "$depends" "${package_of[$library]:-(the package of $library)}" "Depends of $name"
        done
        count=$((count + 1))
    done < <(find "$directory/$name/usr/lib" "$directory/$name/usr/"*bin -type f \( -name '*.so.*' -o -path '*bin/*' \) 2>/dev/null)
    [[ $count -ge 1 ]] || fail "$name has $count programs and libraries"
done
