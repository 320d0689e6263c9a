#!/usr/bin/env bash
# scripts/windows/check-zip.sh
#
# Packs the build for Windows into a zip, unpacks it elsewhere, and has the workbench in it test itself
# under Wine with nothing but what the zip holds.
set -euo pipefail
cd "$(dirname "$0")/../.."

build=$PWD/build/windows
rm -rf "$build/packages" "$build/unpacked"
log=$build/zip.log
if ! cpack --preset windows > "$log" 2>&1; then
    tail -n 20 "$log" >&2
    exit 1
fi
mkdir "$build/unpacked"
zip=("$build"/packages/*.zip)
(cd "$build/unpacked" && cmake -E tar xf "${zip[0]}")
workbench=("$build"/unpacked/*/bin/workbench.exe)

WINEPATH='' QT_QPA_PLATFORM=offscreen scripts/with-own-home.sh "$build/homes/zip" \
    "$PWD/scripts/windows/wine.sh" "${workbench[0]}" --self-test > "$log" 2>&1 || {
    tail -n 20 "$log" >&2
    exit 1
}
grep 'shows .* processors' "$log"
echo "zip: ${zip[0]#"$PWD/"}, $(du -h "${zip[0]}" | cut -f1)"
