#!/usr/bin/env bash
# check-package.sh BUILD_FOLDER
#
# Installs a build, has a project that knows nothing of this one find it, and runs that project's
# host programs.
set -euo pipefail

build=$1
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$build/package
rm -rf "$work"
mkdir -p "$work"

quietly() {
    "$@" > "$work/output.log" 2>&1 || { cat "$work/output.log" && exit 1; }
}

quietly cmake --install "$build" --prefix "$work/prefix"

# Copied, so that no header of this tree is in reach of an include.
mkdir -p "$work/source/tests"
cp -r "$root/tests/packaging/consumer/." "$work/source"
cp -r "$root/tests/packaging" "$root/tests/support" "$work/source/tests"

export CCACHE_DIR=${CCACHE_DIR:-$build/ccache}
quietly cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
    -DCMAKE_PREFIX_PATH="$work/prefix"
quietly cmake --build "$work/build" --parallel 2

"$work/build/linked"
"$work/build/loaded"
