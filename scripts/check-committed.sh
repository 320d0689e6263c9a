#!/usr/bin/env bash
# scripts/check-committed.sh
#
# Fails when a file is committed that .gitignore names, such as a product of the build.
set -euo pipefail
cd "$(dirname "$0")/.."

committed=$(git ls-files --cached --ignored --exclude-per-directory=.gitignore)
if [ -n "$committed" ]; then
    printf '%s\n' "$committed"
    echo "These are committed although .gitignore names them; remove them with git rm --cached"
    exit 1
fi
