#!/usr/bin/env bash
# check-exports.sh LIBRARY
#
# The library exports one symbol, under the name that hosts resolve, and stays mapped once loaded.
set -euo pipefail

library=$1
header=$(dirname "$0")/../../Interface/TargetSelectArea.h
signature='TargetSelectArea_Init(IAbstractLayerInterface**, QWidget*)'

fail() {
    echo "$1" >&2
    exit 1
}

symbols=$(nm --dynamic --defined-only --format=posix "$library" | cut -d' ' -f1)
[ "$(c++filt "$symbols")" = "$signature" ] \
    || fail "exported instead of the one function:"$'\n'"$(c++filt <<< "$symbols")"
grep -q "\"$symbols\"" "$header" \
    || fail "TARGETSELECTAREA_INIT_SYMBOL is not $symbols"
readelf --dynamic --wide "$library" | grep 'FLAGS_1.*NODELETE' > /dev/null \
    || fail "the library could be unmapped while its work thread runs: NODELETE is missing"
