#!/usr/bin/env bash
# ./bench.sh [ARGUMENT...]
#
# Installs what is missing, builds the bench preset and prints the table of ratios. Arguments go to
# benchmarks/report.py.
#
#   --help   this text
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/scripts/common.sh"

for argument in "$@"; do
    case $argument in
    -h | --help) usage && exit ;;
    esac
done

set_up build bench
build bench benchmarks/all
QT_QPA_PLATFORM=offscreen scripts/with-own-home.sh build/bench/home \
    python3 benchmarks/report.py --build build/bench "$@" \
    || fail "the benchmarks failed" "mend what they say, or run one of build/bench/bin/bench_* alone"
