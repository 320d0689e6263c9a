#!/usr/bin/env bash
# scripts/pictures.sh
#
# Takes the pictures for the documentation, in both languages: of the whole panel at 100 and 200 per
# cent in docs/images/area, of its dialogs in docs/images/dialogs, of its tree panel in
# docs/images/tree-panel and its search in docs/images/search likewise, of its tree at 100, 150 and
# 200 per cent in docs/images/tree.
set -euo pipefail
# shellcheck source=scripts/common.sh
source "$(dirname "$0")/common.sh"

set_up build run
build dev area_pictures dialog_pictures panel_pictures search_pictures tree_pictures

# take PROGRAM FOLDER SCALE...
take() {
    local name=$1 folder=$2 language scale suffix
    shift 2
    for language in en zh_CN; do
        for scale in "$@"; do
            suffix=-$language
            [ "$scale" = 1 ] || suffix=$suffix@${scale}x
            QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$scale LC_ALL=C.UTF-8 \
                QT_SCALE_FACTOR_ROUNDING_POLICY=PassThrough \
                logged build/pictures.log \
                "build/dev/bin/$name" "docs/images/$folder" "$language" "$suffix" \
                || fail "no pictures, see build/pictures.log" "mend what it says"
        done
    done
}

take area_pictures area 1 2
take dialog_pictures dialogs 1 2
take panel_pictures tree-panel 1 2
take search_pictures search 1 2
take tree_pictures tree 1 1.5 2
