#!/usr/bin/env bash
# scripts/check-headers.sh [QT_INCLUDE_FOLDER]
#
# Compiles every header alone, included twice, with nothing before it.
set -euo pipefail
cd "$(dirname "$0")/.."
qt=${1:-$(qmake -query QT_INSTALL_HEADERS)}

flags=(-x c++ -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Werror -I.
    -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_GUI_LIB -DQT_WIDGETS_LIB)
for module in Core Gui Widgets Network Svg Test DBus; do
    flags+=(-isystem "$qt/Qt$module")
done
flags+=(-isystem "$qt")

check() {
    local header=$1
    shift
    printf '#include "%s"\n#include "%s"\n' "$header" "$header" | g++ "$@" - \
        || { echo "$header does not compile alone" && return 1; }
}
export -f check

git ls-files --cached --others --exclude-standard '*.h' Interface/ObserverPattern \
    | xargs -P "$(nproc)" -I{} bash -c 'check "$@"' check {} "${flags[@]}"
