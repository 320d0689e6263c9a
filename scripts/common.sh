# What run.sh, test.sh and bench.sh share; they source it. Works from the repository's root.
# shellcheck shell=bash

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

cores=$(nproc)

# stage TEXT...: the header line of a stage.
stage() {
    printf '== %s\n' "$*"
}

# fail WHAT TO_DO: stops with two lines.
fail() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    printf '%s: %s\n' "${0##*/}" "$2" >&2
    exit 1
}

# usage: the comment at the head of the calling script is its help.
usage() {
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
}

# set_up PURPOSE...: installs missing packages.
set_up() {
    scripts/setup.sh "$@" || fail "packages are missing" \
        "install them as said above, then start again"
}

# logged FILE COMMAND...: runs a command whose output nobody wants to see unless it fails.
logged() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" > "$log" 2>&1; then
        grep -E -A8 'error|FAILED|Error' "$log" | head -n 60 >&2 || true
        return 1
    fi
}

# configure PRESET: makes the build folder, and again after a change of the presets; of all other
# changes the build folder takes notice by itself.
configure() {
    local preset=$1 log=build/$1-build.log stamp=build/$1/configured
    if [ "$stamp" -nt CMakePresets.json ]; then
        # Tests that are new since then are to be known, too.
        logged "$log" ninja -C "build/$preset" build.ninja \
            || fail "configuring '$preset' failed, see $log" "mend what it says"
        return
    fi
    logged "$log" cmake --preset "$preset" \
        || fail "configuring '$preset' failed, see $log" \
            "mend what it says, or remove build/$preset to start afresh"
    touch "$stamp"
}

# build PRESET [TARGET...]: configures and builds; prints nothing when that works.
build() {
    local preset=$1 log=build/$1-build.log targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    configure "$preset"
    logged "$log" cmake --build "build/$preset" --parallel "$cores" "${targets[@]}" \
        || fail "building '$preset' failed, see $log" \
            "mend the first error, then run: cmake --build build/$preset"
}

# labelled PRESET LABEL: the names of the tests with a label, which are those of their targets.
labelled() {
    ctest --test-dir "build/$1" --show-only --label-regex "^$2\$" \
        | sed -n 's/^ *Test *#[0-9]*: //p'
}

# suite PRESET CTEST_ARGUMENT...: runs tests and prints ctest's closing lines, and what failed.
suite() {
    local preset=$1 log=build/$1-ctest.log status=0
    shift
    # The suite of dev leaves out the tests that compute for long. The others wait most of the time.
    local jobs=$((cores + 1))
    [ "$preset" != dev ] || jobs=$((2 * cores))
    ctest --test-dir "build/$preset" --output-on-failure --no-tests=error \
        --parallel "$jobs" "$@" < /dev/null > "$log" 2>&1 || status=$?
    if [ "$status" -ne 0 ]; then
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$log" | head -n 400 >&2 || true
        fail "tests of '$preset' failed, see $log" \
            "run the failed ones again: ctest --test-dir build/$preset --rerun-failed --output-on-failure"
    fi
    sed -n '/tests passed/,$p' "$log" | grep -v '^$'
}
