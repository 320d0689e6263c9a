#!/usr/bin/env bash
# scripts/check-format.sh [--fix]
#
# Fails when a C++ source is not laid out as .clang-format says; --fix lays it out.
set -euo pipefail
cd "$(dirname "$0")/.."

formatted=$(mktemp)
trap 'rm -f "$formatted"' EXIT
files=$(git ls-files --cached --others --exclude-standard '*.h' '*.cpp' Interface/ObserverPattern)
different=0
# Formatted from standard input, because ObserverPattern has no suffix that would tell its language.
while read -r file; do
    clang-format --assume-filename="${file%.*}.h" < "$file" > "$formatted"
    if cmp --silent "$file" "$formatted"; then
        continue
    elif [ "${1-}" = --fix ]; then
        cat "$formatted" > "$file"
    else
        echo "$file"
        different=1
    fi
done <<< "$files"

if [ "$different" -ne 0 ]; then
    echo "These differ from .clang-format; run scripts/check-format.sh --fix"
    exit 1
fi
