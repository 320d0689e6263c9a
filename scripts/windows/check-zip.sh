#!/usr/bin/env bash
# scripts/windows/check-zip.sh
#
# Packs the build for Windows into a zip, unpacks it in a folder with Chinese letters, and has the
# workbench in it test itself and the validator test the library, under Wine with nothing but what
# the zip holds.
set -euo pipefail
cd "$(dirname "$0")/../.."

build=$PWD/build/windows
rm -rf "$build/packages" "$build/unpacked"
log=$build/zip.log
if ! cpack --preset windows > "$log" 2>&1; then
    tail -n 20 "$log" >&2
    exit 1
fi
unpacked="$build/unpacked/工程 目录"
mkdir -p "$unpacked"
zip=("$build"/packages/*.zip)
(cd "$unpacked" && cmake -E tar xf "${zip[0]}")
bin=("$unpacked"/*/bin)

# run PROGRAM.exe ARGUMENT...: runs a program of the zip; what it writes is in $log.
run() {
    WINEPATH='' QT_QPA_PLATFORM=offscreen scripts/with-own-home.sh "$build/homes/zip" \
        "$PWD/scripts/windows/wine.sh" "${bin[0]}/$1" "${@:2}" > "$log" 2>&1 || {
        tail -n 20 "$log" >&2
        exit 1
    }
}
run workbench.exe --self-test
grep 'shows .* processors' "$log"
run targetselect-validate.exe --level 1 "${bin[0]}/TargetSelectArea.dll"
tail -n 1 "$log"
echo "zip: ${zip[0]#"$PWD/"}, $(du -h "${zip[0]}" | cut -f1)"
