#!/usr/bin/env bash
# scripts/pictures.sh
#
# Takes the pictures of the panel's dialogs in docs/images/dialogs: in both languages, at 100 and
# at 200 per cent.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/common.sh"

set_up build run
build dev dialog_pictures
for language in en zh_CN; do
    for scale in 1 2; do
        suffix=-$language
        [ "$scale" -eq 1 ] || suffix=$suffix@${scale}x
        QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale LC_ALL=C.UTF-8 \
            logged build/pictures.log \
            build/dev/bin/dialog_pictures docs/images/dialogs "$language" "$suffix" \
            || fail "no pictures, see build/pictures.log" "mend what it says"
    done
done
