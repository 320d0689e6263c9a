#!/usr/bin/env bash
# check-package.sh BUILD_FOLDER VERSION
#
# Installs a build, checks the version of what was installed, its headers against what its libraries export,
# and the links of its pages, has projects that know nothing of this one find it (the tests' own and the
# installed examples), and runs their host programs and the validator.
set -euo pipefail

build=$1
version=$2
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$build/package
rm -rf "$work"
mkdir -p "$work"

fail() {
    echo "$1" >&2
    exit 1
}

quietly() {
    "$@" > "$work/output.log" 2>&1 || { cat "$work/output.log" && exit 1; }
}

quietly cmake --install "$build" --prefix "$work/prefix"

# The plain name, by which a host loads the panel, leads to the file of this version; linked programs
# ask for any of its major version.
for library in TargetSelectArea HostCommon HostWidgets; do
    plain=$(find "$work/prefix" -name "lib$library.so")
    [ "$(basename "$(realpath "$plain")")" = "lib$library.so.$version" ] \
        || fail "lib$library.so is no link to lib$library.so.$version"
    readelf --dynamic --wide "$plain" | grep -F "soname: [lib$library.so.${version%%.*}]" > /dev/null \
        || fail "the soname of lib$library.so is not lib$library.so.${version%%.*}"
done

"$root/tests/packaging/check-interface.py" "$work/prefix" > "$work/interface.log" \
    || fail "$(cat "$work/interface.log")"

# Each relative link of the installed pages has its target there.
pages=0
while IFS= read -r page; do
    pages=$((pages + 1))
    while IFS= read -r target; do
        [ -e "$(dirname "$page")/$target" ] \
            || fail "${page#"$work/prefix/"} links to $target, which is not installed"
    done < <(grep -oE '\]\([^)#[:space:]]+' "$page" | cut -c3- | grep -vE '^[a-z]+:' || true)
done < <(find "$work/prefix" -name '*.md')
[ "$pages" -ge 5 ] || fail "$pages pages are installed"

workbench=$work/prefix/bin/workbench
[ ! -x "$workbench" ] || quietly "$workbench" --self-test

export CCACHE_DIR=${CCACHE_DIR:-$build/ccache}
flags="-Wall -Wextra -Werror"

# build_with_cmake SOURCE BUILD PREFIX [OPTION...]: a project that has the package and nothing else.
build_with_cmake() {
    quietly cmake -S "$1" -B "$2" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_PREFIX_PATH="$3" "${@:4}"
    quietly cmake --build "$2" --parallel 2
}

# check_example PREFIX NAME: builds and runs the example that is installed there, in both ways.
check_example() {
    local example=$work/$2 pc
    cp -r "$(dirname "$(find "$1" -path '*/minimal-host/main.cpp')")" "$example"
    [ "$(cat "$example"/*.h "$example"/*.cpp | wc -l)" -lt 200 ] \
        || fail "the example has 200 lines or more, and the pages say less"
    build_with_cmake "$example" "$example/build" "$1"
    quietly ctest --test-dir "$example/build" --no-tests=error --output-on-failure
    pc=$(dirname "$(find "$1" -name TargetSelectArea.pc)")
    PKG_CONFIG_PATH=$pc quietly make -C "$example" CXX="ccache c++" CXXFLAGS="$flags" check
}

# check_validator PREFIX NAME: validates the library that is installed there, and the handler of the example.
check_validator() {
    local examples=$work/$2
    cp -r "$(dirname "$(dirname "$(find "$1" -path '*/host-plugin/HostPlugin.cpp')")")" "$examples"
    build_with_cmake "$examples/host-plugin" "$examples/build" "$1"
    quietly ctest --test-dir "$examples/build" --no-tests=error --output-on-failure
    quietly "$1/bin/targetselect-validate" --level 1 "$(find "$1" -name libTargetSelectArea.so)"
}

check_example "$work/prefix" example
check_validator "$work/prefix" examples

# Copied, so that no header of this tree is in reach of an include.
mkdir -p "$work/source/tests"
cp -r "$root/tests/packaging/consumer/." "$work/source"
cp -r "$root/tests/packaging" "$root/tests/support" "$work/source/tests"

build_with_cmake "$work/source" "$work/build" "$work/prefix" -DINSTALLED_VERSION="$version"

"$work/build/linked"
"$work/build/loaded"

# The archives are complete and work wherever they are unpacked.
quietly cpack --config "$build/CPackConfig.cmake" -G TGZ -B "$work/archives"
rm -rf "$work/prefix"
mkdir "$work/elsewhere"
for component in runtime development; do
    tar -xzf "$work/archives"/*-"$component".tar.gz -C "$work/elsewhere" \
        || fail "there is no archive of the component $component"
done
if named=$(grep -rIl -e "$build" -e "$root" "$work/elsewhere"); then
    fail "these name a folder of this machine:"$'\n'"$named"
fi
workbench=$work/elsewhere/bin/workbench
[ ! -x "$workbench" ] || quietly "$workbench" --self-test
check_example "$work/elsewhere" example-elsewhere
check_validator "$work/elsewhere" examples-elsewhere
