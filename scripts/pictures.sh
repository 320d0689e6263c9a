#!/usr/bin/env bash
# scripts/pictures.sh [--references [NAME...] | --all FOLDER]
#
# Takes pictures of the panel and the workbench, with the fonts of tests/pictures/fonts.conf.
#
#   (nothing)              takes those that README.md and docs/*.md show, into docs/images
#   --references [NAME...] takes the references that tst_pictures compares with, and those named,
#                          such as tree/selected-en; run it when the look is meant to change
#   --all FOLDER           takes every state in both languages at 100, 150 and 200 per cent
#   --help                 prints this text
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/common.sh"

log=build/pictures.log

# unattended COMMAND...: runs a command without a display, with a home of its own.
unattended() {
    QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 FONTCONFIG_FILE=$PWD/tests/pictures/fonts.conf \
        logged "$log" scripts/with-own-home.sh build/pictures-home "$@" \
        || fail "no pictures, see $log" "mend what it says"
}

# take FOLDER SUFFIX NAME-LANGUAGE...: takes pictures of the panel.
take() {
    local folder=$1 suffix=$2 language name names
    shift 2
    for language in en zh_CN; do
        names=()
        for name in "$@"; do
            [ "${name%"-$language"}" = "$name" ] || names+=("${name%"-$language"}")
        done
        [ ${#names[@]} -eq 0 ] \
            || unattended build/dev/bin/pictures "$folder" "$language" "$suffix" "${names[@]}"
    done
}

take_shown() {
    local names tour=build/pictures-tour
    mapfile -t names < <(sed -nE 's/images/\n&/gp' README.md docs/*.md \
        | sed -nE 's,^images/([a-z-]+/[a-z0-9-]+-(en|zh_CN))\.png.*,\1,p' | sort -u)
    [ ${#names[@]} -gt 0 ] || fail "the pages show no picture" "mend the pattern in scripts/pictures.sh"
    take docs/images "" "${names[@]}"
    build dev workbench TargetSelectArea
    unattended build/dev/bin/workbench --tour "$tour"
    cp "$tour"/*-lan-usb-mode.png docs/images/workbench.png
    cp "$tour"/*-network.png docs/images/workbench-network.png
    unattended build/dev/bin/workbench --script examples/scripts/faults.script --pictures "$tour"
    cp "$tour"/*-faults.png docs/images/workbench-faults.png
    take_replay "$tour"
    rm -rf "$tour"
}

# take_replay FOLDER: takes a picture of a recorded fault, and one of a replay with a difference.
take_replay() {
    local recording=$1/fault.jsonl
    unattended build/dev/bin/workbench --record "$recording" --pictures "$1" \
        --script examples/scripts/record-a-fault.script
    cp "$1"/*-record.png docs/images/workbench-record.png
    sed -i 's/Far left/Far right/' "$recording"
    # The difference makes the exit code 1.
    unattended sh -c "! build/dev/bin/workbench --replay $recording --pictures $1"
    cp "$1/replay.png" docs/images/workbench-replay.png
}

take_references() {
    local folder=tests/pictures/references names
    mapfile -t names < <({
        [ ! -d "$folder" ] || (cd "$folder" && find . -name '*.png' | sed -E 's,^\./,,; s,\.png$,,')
        printf '%s\n' "$@"
    } | sed '/^$/d' | sort -u)
    take "$folder" "" "${names[@]}"
}

take_all() {
    local language scale suffix
    for language in en zh_CN; do
        for scale in 1 1.5 2; do
            suffix=
            [ "$scale" = 1 ] || suffix=@${scale}x
            QT_SCALE_FACTOR=$scale QT_SCALE_FACTOR_ROUNDING_POLICY=PassThrough \
                unattended build/dev/bin/pictures "$1" "$language" "$suffix"
        done
    done
}

case ${1-} in
-h | --help) usage && exit ;;
"" | --references) ;;
--all) [ $# -eq 2 ] || { usage >&2 && exit 2; } ;;
*) usage >&2 && exit 2 ;;
esac

set_up build run
build dev pictures
case ${1-} in
"") take_shown ;;
--references) take_references "${@:2}" ;;
--all) take_all "$2" ;;
esac
