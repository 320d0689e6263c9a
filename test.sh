#!/usr/bin/env bash
# ./test.sh [--all | STAGE...]
#
# Installs what is missing, builds the development preset and runs the suite, in minutes.
#
#   --all       every stage below but the first, which --release and --asan make up for; that of
#               Windows only if its Qt is there; what continuous integration runs
#   --suite     the suite but the tests labelled "long", as without any argument
#   --release   the release build, with the benchmarks, and the suite on it
#   --packages  the Debian packages, installed and used in a bare Debian 12; needs root
#   --asan      the suite under AddressSanitizer and UndefinedBehaviorSanitizer
#   --tsan      the tests labelled "threads" under ThreadSanitizer
#   --fuzz      every fuzz target for a minute, under both of those
#   --windows   the build for Windows and its suite under Wine, and a zip that a Windows PC can run;
#               the first time it builds a Qt, which takes 40 minutes of one core
#   --lint      format, static analysis, scripts, headers, Windows cross-check
#   --help      this text
#
# Stops at the first stage that fails. docs/testing.md tells more.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/scripts/common.sh"

fuzzers=(fuzz_ipimport fuzz_iplineedit)

# Seconds that the storm (tests/storm) lasts, unless the environment says so.
given_storm=${TSA_STORM_SECONDS:-}
declare -A storm=([suite]=10 [release]=20 [asan]=60 [tsan]=60)

stages=()
for argument in "$@"; do
    case $argument in
    -h | --help) usage && exit ;;
    --all)
        stages=(release packages asan tsan fuzz lint)
        if scripts/windows/setup.sh --warm; then
            stages+=(windows)
        else
            echo "windows is left out: its Qt is not built yet, which ./test.sh --windows does"
        fi
        storm[asan]=300
        storm[tsan]=300
        ;;
    --suite | --release | --packages | --asan | --tsan | --fuzz | --windows | --lint) stages+=("${argument#--}") ;;
    *) usage >&2 && exit 2 ;;
    esac
done
[ ${#stages[@]} -gt 0 ] || stages=(suite)

set_up build test
for name in "${stages[@]}"; do
    export TSA_STORM_SECONDS=${given_storm:-${storm[$name]:-60}}
    case $name in
    suite)
        stage "suite: development build, every test but the long ones"
        build dev
        suite dev
        ;;
    release)
        stage "release: optimised build with the benchmarks, every test"
        set_up bench
        build bench
        suite bench
        ;;
    packages)
        scripts/check-debs.sh || fail "the packages do not work in a bare Debian" \
            "see build/debs/check.log, or enter it: chroot build/debs/root"
        ;;
    asan)
        stage "asan: every test under AddressSanitizer and UndefinedBehaviorSanitizer"
        build asan
        suite asan
        ;;
    tsan)
        stage "tsan: the tests labelled threads, under ThreadSanitizer"
        configure tsan
        mapfile -t threads < <(labelled tsan threads)
        [ ${#threads[@]} -gt 0 ] || fail "no test has the label threads" \
            "give it to the tests that use several threads, in their CMakeLists.txt"
        build tsan "${threads[@]}"
        suite tsan --label-regex '^threads$'
        ;;
    fuzz)
        stage "fuzz: every fuzz target for a minute"
        set_up fuzz
        build fuzz fuzzers
        scripts/run-fuzzers.sh build/fuzz 60 "${fuzzers[@]}" || fail "a fuzz target failed" \
            "run it on that input alone: build/fuzz/bin/TARGET FILE"
        ;;
    windows)
        stage "windows: cross-build, every test under Wine, the zip"
        scripts/windows/setup.sh || fail "the Qt for Windows is not there" "mend what is said above"
        build windows
        suite windows
        scripts/windows/check-zip.sh || fail "the zip does not work" \
            "unpack it and start the workbench: it is in build/windows/packages"
        ;;
    lint)
        stage "lint: format, static analysis, scripts, headers, Windows cross-check"
        set_up lint
        build lint autogen test_mocs
        suite lint --label-regex '^lint$'
        ;;
    esac
done
