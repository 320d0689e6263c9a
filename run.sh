#!/usr/bin/env bash
# ./run.sh [--dev] [WORKBENCH_ARGUMENT...]
#
# Installs what is missing, builds, and opens the workbench with the sample project and the panel
# docked in it. Without a display it starts a virtual one, drives a short tour through the real
# window and leaves numbered pictures and the call trace in build/tour.
#
#   --dev    builds the development preset, with assertions, instead of the release one
#   --help   this text
#
# What else is given goes to the workbench, as in: ./run.sh --project mine.json --gui-thread-events
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/scripts/common.sh"

preset=release
project=host/workbench/projects/sample.json
arguments=()
for argument in "$@"; do
    case $argument in
    -h | --help) usage && exit ;;
    --dev) preset=dev ;;
    *) arguments+=("$argument") ;;
    esac
done
case " ${arguments[*]-} " in
*" --project"*) ;;
*) arguments=(--project "$project" "${arguments[@]}") ;;
esac

set_up build run
build "$preset" workbench TargetSelectArea
workbench=build/$preset/bin/workbench

if [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ]; then
    exec "$workbench" "${arguments[@]}"
fi

export QT_QPA_PLATFORM=xcb
case " ${arguments[*]} " in
*" --tour"* | *" --self-test "* | *" --help "*)
    exec scripts/with-xvfb.sh "$workbench" "${arguments[@]}"
    ;;
esac

tour=build/tour
rm -rf "$tour"
mkdir -p "$tour"
stage "no display: touring the workbench on a virtual one"
logged "$tour/output.log" \
    scripts/with-xvfb.sh "$workbench" "${arguments[@]}" --tour "$tour" \
    || fail "the tour failed, see $tour/output.log" \
        "mend what it says, or set DISPLAY to see the window"
pictures=$(find "$tour" -name '*.png' | wc -l)
[ "$pictures" -gt 0 ] || fail "the tour left no picture in $tour" "see $tour/output.log"
echo "$pictures pictures, the call trace (trace.txt) and the log are in $PWD/$tour"
