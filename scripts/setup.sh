#!/usr/bin/env bash
# scripts/setup.sh PURPOSE...
#
# Installs the Debian 12 packages that are missing for each PURPOSE: build, run, test, lint, bench,
# fuzz, package, windows. Says nothing when none is. Every package that the project needs stands here
# and nowhere else.
set -euo pipefail

build=(g++ cmake ninja-build ccache qtbase5-dev libqt5svg5-dev qttools5-dev qttools5-dev-tools)
run=(xvfb openbox x11-utils fonts-dejavu-core fonts-noto-cjk)
test=("${run[@]}" lld xdotool at-spi2-core dbus-daemon dbus-bin binutils make pkg-config python3)
lint=(clang-format clang-tidy clazy doxygen shellcheck g++-mingw-w64-x86-64-posix git python3)
package=(debootstrap doxygen dpkg-dev file)
bench=(libbenchmark-dev libkf5itemmodels-dev python3)
fuzz=(clang libclang-rt-14-dev)
windows=(g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine64 dpkg-dev locales
    make perl python3 xz-utils)

usage() {
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
}

wanted=()
for purpose in "$@"; do
    case $purpose in
    build) wanted+=("${build[@]}") ;;
    run) wanted+=("${run[@]}") ;;
    test) wanted+=("${test[@]}") ;;
    lint) wanted+=("${lint[@]}") ;;
    bench) wanted+=("${bench[@]}") ;;
    fuzz) wanted+=("${fuzz[@]}") ;;
    windows) wanted+=("${windows[@]}") ;;
    package) wanted+=("${package[@]}") ;;
    -h | --help) usage && exit ;;
    *) usage >&2 && exit 2 ;;
    esac
done

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2> /dev/null)" = installed ]
}

missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo > /dev/null; then
        echo "setup: as root, run: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
        -o DPkg::Lock::Timeout=300 "$@" > "$log" 2>&1 < /dev/null
}
apt update || cat "$log" >&2
if ! apt install --no-install-recommends "${missing[@]}"; then
    cat "$log" >&2
    echo "setup: these are packages of Debian 12; elsewhere, install what matches them by hand" >&2
    exit 1
fi
