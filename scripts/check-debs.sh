#!/usr/bin/env bash
# scripts/check-debs.sh [MIRROR]
#
# Makes the Debian packages, installs them into a bare Debian 12 below build/debs, builds the installed
# example there in both ways, starts it and the workbench without a display, and validates the library
# and the example's handler. Takes minutes and some 1.5 GB, needs root and a mirror of Debian.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/common.sh"

case ${1:-} in
-h | --help) usage && exit ;;
-*) usage >&2 && exit 2 ;;
esac
mirror=${1:-http://deb.debian.org/debian}
work=$PWD/build/debs
root=$work/root
log=$work/check.log
mkdir -p "$work"

[ "$(id -u)" -eq 0 ] || fail "root is needed for a Debian of its own" "start it with sudo"
set_up build package

stage "packages: the Debian packages of this version"
build package
rm -rf build/package/packages
logged "$log" cpack --preset package -G DEB || fail "cpack failed, see $log" "mend what it says"
packages=(build/package/packages/*.deb)
[ ${#packages[@]} -eq 2 ] || fail "not two packages: ${packages[*]}" "see cmake/TsaPackages.cmake"
for package in "${packages[@]}"; do
    printf '%s: ' "${package##*/}"
    dpkg-deb --field "$package" Depends
done

stage "debian: a bare one, with what the packages name"
rm -rf "$root"
logged "$log" debootstrap --variant=minbase bookworm "$root" "$mirror" \
    || fail "debootstrap failed, see $log" "name a mirror that can be reached: $0 MIRROR"
inside() {
    logged "$log" chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/root "$@" \
        || fail "in $root: $* failed, see $log" "enter it with: chroot $root"
}
cp "${packages[@]}" "$root/root"
inside sh -c 'apt-get -q -y install --no-install-recommends /root/libtargetselectarea1_*.deb'
inside sh -c '! ldd /usr/lib/*/libTargetSelectArea.so.1 | grep "not found"'
inside sh -c 'apt-get -q -y install --no-install-recommends /root/*.deb g++ make cmake pkg-config'

stage "host: the workbench, and the example in both ways"
inside workbench --self-test
inside cp -r /usr/share/doc/TargetSelectArea/examples/minimal-host /root/host
inside cmake -S /root/host -B /root/host/build
inside cmake --build /root/host/build
inside ctest --test-dir /root/host/build --no-tests=error --output-on-failure
inside make -C /root/host check

stage "validator: the installed library, and the example's handler"
inside sh -c 'targetselect-validate --level 10 /usr/lib/*/libTargetSelectArea.so.1'
inside cp -r /usr/share/doc/TargetSelectArea/examples /root/examples
inside cmake -S /root/examples/host-plugin -B /root/examples/build
inside cmake --build /root/examples/build
inside ctest --test-dir /root/examples/build --no-tests=error --output-on-failure
