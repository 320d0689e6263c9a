#!/usr/bin/env bash
# scripts/check-scripts.sh: shellcheck over every shell script.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files --cached --others --exclude-standard '*.sh' .ci/run \
    | xargs shellcheck --external-sources
