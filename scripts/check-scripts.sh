#!/usr/bin/env bash
# scripts/check-scripts.sh: shellcheck over every shell script.
set -euo pipefail
cd "$(dirname "$0")/.."

mapfile -t scripts < <(git ls-files --cached --others --exclude-standard '*.sh' .ci/run)
shellcheck --external-sources "${scripts[@]}"
