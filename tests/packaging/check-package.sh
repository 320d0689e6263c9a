#!/usr/bin/env bash
# check-package.sh BUILD_FOLDER VERSION
#
# Installs a build, checks the version of what was installed, has a project that knows nothing of this
# one find it, and runs that project's host programs.
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

workbench=$work/prefix/bin/workbench
[ ! -x "$workbench" ] || quietly "$workbench" --self-test

# Copied, so that no header of this tree is in reach of an include.
mkdir -p "$work/source/tests"
cp -r "$root/tests/packaging/consumer/." "$work/source"
cp -r "$root/tests/packaging" "$root/tests/support" "$work/source/tests"

export CCACHE_DIR=${CCACHE_DIR:-$build/ccache}
quietly cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
    -DCMAKE_PREFIX_PATH="$work/prefix" -DINSTALLED_VERSION="$version"
quietly cmake --build "$work/build" --parallel 2

"$work/build/linked"
"$work/build/loaded"
