#!/usr/bin/env bash
# check-exports.sh LIBRARY OBJDUMP
#
# The library exports one symbol, under the name that hosts resolve, and stays mapped once loaded.
set -euo pipefail

library=$1
objdump=$2
header=$(dirname "$0")/../../Interface/TargetSelectArea.h
signature='TargetSelectArea_Init(IAbstractLayerInterface**, QWidget*)'

fail() {
    echo "$1" >&2
    exit 1
}

case $library in
*.dll)
    # The names behind the head of the table of names, which stands at the table's end.
    symbols=$("$objdump" --private-headers "$library" \
        | sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/ s/^\t\[ *[0-9]*\] \(.*\)/\1/p' | sed 's/.* //')
    ;;
*) symbols=$(nm --dynamic --defined-only --format=posix "$library" | cut -d' ' -f1) ;;
esac
[ "$(c++filt "$symbols")" = "$signature" ] \
    || fail "exported instead of the one function:"$'\n'"$(c++filt <<< "$symbols")"
grep -q "\"$symbols\"" "$header" \
    || fail "TARGETSELECTAREA_INIT_SYMBOL is not $symbols"
# A library for Windows sees to that itself; tst_boundary_loaded goes on after it is freed.
case $library in *.dll) exit ;; esac
readelf --dynamic --wide "$library" | grep 'FLAGS_1.*NODELETE' > /dev/null \
    || fail "the library could be unmapped while its work thread runs: NODELETE is missing"
