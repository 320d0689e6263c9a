#!/usr/bin/env bash
# scripts/check-format.sh [--fix]
#
# Fails when a C++ source is not laid out as .clang-format says; --fix lays it out, as does
# scripts/format.sh.
set -euo pipefail
cd "$(dirname "$0")/.."

# Formatted from standard input, because ObserverPattern has no suffix that would tell its language.
check() {
    local mode=$1 file formatted status=0
    shift
    formatted=$(mktemp)
    for file in "$@"; do
        [ -f "$file" ] || continue
        clang-format --assume-filename="${file%.*}.h" < "$file" > "$formatted"
        if ! cmp --silent "$file" "$formatted"; then
            echo "$file"
            if [ "$mode" = --fix ]; then
                cat "$formatted" > "$file"
            else
                status=1
            fi
        fi
    done
    rm -f "$formatted"
    return "$status"
}
export -f check

if ! git ls-files -z --cached --others --exclude-standard '*.h' '*.cpp' Interface/ObserverPattern \
    | xargs -0 -n 20 -P "$(nproc)" bash -c 'check "$@"' check "${1:-}"; then
    echo "These differ from .clang-format; run scripts/format.sh"
    exit 1
fi
