#!/usr/bin/env bash
# scripts/package builds for an architecture and names the packages that it makes: check_package.sh SOURCE_DIR
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

cp "$1/scripts/package" "$directory/scripts"
mkdir "$directory/packaging"
cat >"$directory/scripts/build" <<'END'
#!/bin/bash
echo "build $*" >>"$calls"
[[ -n $unknown ]] || { mkdir -p "$directory/build/$1" && touch "$directory/build/$1/CPackConfig.cmake"; }
END
cat >"$directory/packaging/make_packages.sh" <<'END'
#!/bin/bash
echo "make_packages ${*//"$directory"\//}" >>"$calls"
mkdir -p "$3" && touch "$3/owb.deb"
END
chmod +x "$directory/packaging/make_packages.sh"
fake lintian <<<'exit 0'
sed -i '2d' "$directory/bin/lintian" # its calls do not matter
export calls unknown=

run "$directory/scripts/package"
expect_run 0 "package: lintian
package: build/package/owb.deb"
expect_calls "build packages shipped
make_packages cpack build/packages build/package"

run "$directory/scripts/package" armhf
expect_run 0 "package: lintian
package: build/package-armhf/owb.deb"
expect_calls "build packages-armhf shipped
make_packages cpack build/packages-armhf build/package-armhf"

run "$directory/scripts/package" armel
expect_run 1 "package: unknown architecture: armel; known: i386, armhf"
expect_calls ""

rm -r "$directory/build"
unknown=yes
run "$directory/scripts/package" armhf
expect_run 1 "package: cannot make packages: build/packages-armhf does not install to Debian's directory of libraries; \
remove build/packages-armhf and retry"
