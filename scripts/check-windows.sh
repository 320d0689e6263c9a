#!/usr/bin/env bash
# scripts/check-windows.sh [QT_INCLUDE_FOLDER]
#
# Compiles the product and the libraries that it stands on as Windows code, without linking: the
# installed Qt headers are those of Linux, but choose by the compiler's target. The stand-in host
# and the validator stay out.
set -euo pipefail
cd "$(dirname "$0")/.."
qt=${1:-$(qmake -query QT_INSTALL_HEADERS)}

prefix=x86_64-w64-mingw32
flags=(-std=c++17 -Wall -Wextra -Werror -I. -DTARGETSELECTAREA_BUILD '-DTSA_VERSION=""'
    '-DTARGETSELECTRECORD_VERSION=""')
for module in Core Gui Widgets Network Svg; do
    flags+=(-isystem "$qt/Qt$module")
done
flags+=(-isystem "$qt")

check() {
    local file=$1
    shift
    # Each shared library is compiled as itself and sees the others' symbols as imported.
    case $file in
    host/common/*) set -- "$@" -DHOSTCOMMON_BUILD ;;
    host/widgets/*) set -- "$@" -DHOSTWIDGETS_BUILD ;;
    esac
    if ! output=$("$prefix-g++-posix" "$@" -fsyntax-only -x c++ "$file" 2>&1); then
        printf '%s\n%s\n' "$output" "$file does not compile for Windows"
        return 1
    fi
}
export prefix
export -f check

git ls-files --cached --others --exclude-standard \
    {base,plugin,processortree,search,ipmanage,sdk,host/common,host/widgets}/'*.cpp' \
    ':!sdk/validate' ':!*_linux.cpp' \
    | xargs -P "$(nproc)" -I{} bash -c 'check "$@"' check {} "${flags[@]}"

# The name under which a host resolves the export is the one that this compiler gives it.
object=$(mktemp)
trap 'rm -f "$object"' EXIT
"$prefix-g++-posix" "${flags[@]}" -c plugin/TargetSelectAreaInit.cpp -o "$object"
symbol=$(sed -n 's/.*"\(_Z[^"]*\)".*/\1/p' Interface/TargetSelectArea.h)
if ! "$prefix-objdump" --section=.drectve --full-contents "$object" | grep 'export' > /dev/null; then
    echo "TargetSelectArea_Init is not exported on Windows"
    exit 1
fi
if ! "$prefix-nm" --defined-only "$object" | grep " T $symbol\$" > /dev/null; then
    echo "$symbol is not what Windows calls TargetSelectArea_Init"
    exit 1
fi
