#!/usr/bin/env bash
# scripts/run-fuzzers.sh BUILD_FOLDER SECONDS TARGET...
#
# Runs fuzz targets side by side for SECONDS each, from copies of their corpora, and prints one line
# about each. Fails when one finds something, and says in which file the input is.
set -euo pipefail
cd "$(dirname "$0")/.."

[ $# -ge 3 ] || { sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0" >&2 && exit 2; }
build=$1
seconds=$2
shift 2

work=$(mktemp -d)
declare -A pids
trap '[ ${#pids[@]} -eq 0 ] || kill "${pids[@]}" 2> /dev/null || true; rm -rf "$work"' EXIT

export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
export UBSAN_OPTIONS=print_stacktrace=1
# As in tests/CMakeLists.txt, which says why.
export ASAN_OPTIONS=intercept_tls_get_addr=0
export LSAN_OPTIONS=suppressions=$PWD/tests/support/lsan.supp:print_suppressions=0

# fuzz TARGET: becomes the target; its output goes to a log, its findings to a folder of their own.
fuzz() {
    local target=$1
    local found=$build/found/$target corpus=$work/$target
    mkdir -p "$found"
    cp -r "fuzz/corpus/${target#fuzz_}" "$corpus"
    exec scripts/with-own-home.sh "$work/home-$target" \
        "$build/bin/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$found/" "$corpus" \
        < /dev/null > "$build/$target.log" 2>&1
}

for target in "$@"; do
    fuzz "$target" &
    pids[$target]=$!
done

failed=0
for target in "$@"; do
    log=$build/$target.log
    status=0
    wait "${pids[$target]}" || status=$?
    unset "pids[$target]"
    if [ "$status" -eq 0 ]; then
        executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        coverage=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -n 1)
        echo "$target: $executions executions, coverage $coverage"
        continue
    fi
    failed=1
    input=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    {
        grep -E -m1 -A12 'ERROR:|runtime error:' "$log" || tail -n 20 "$log"
        echo "$target: failed on ${input:-an input that was not kept}, see $log"
    } >&2
done
exit "$failed"
