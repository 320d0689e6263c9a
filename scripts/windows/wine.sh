#!/usr/bin/env bash
# scripts/windows/wine.sh PROGRAM.exe ARGUMENT...
#
# Runs a program of the build for Windows under Wine, with Qt and the compiler's own libraries found
# unless WINEPATH, the search path of Windows, is given.
# Each run has a Windows of its own, with registry and user folders, below HOME: it is a thin copy of
# one that the first run makes below build/, and it ends with the program. It is English with code page
# 1252, or Chinese with 936 if TSA_CODE_PAGE says so.
set -euo pipefail

if [ $# -eq 0 ] || [ "$1" = --help ]; then
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
    [ $# -gt 0 ]
    exit
fi

root=$(cd "$(dirname "$0")/../.." && pwd)
template=$root/build/windows-wine
wine=/usr/lib/wine/wine64
export WINEDEBUG=${WINEDEBUG:--all} WINEARCH=win64
# Neither a browser nor .NET is asked for, and nothing is added to the user's menus.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=;${WINEDLLOVERRIDES-}"
# Qt writes to the debugger otherwise.
export QT_FORCE_STDERR_LOGGING=1
# The platform without a display reads fonts from one folder, and its own font is the first of them.
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-$template/fonts}
# Wine keeps the variables of Linux's own Qt from the program, but passes these by that name.
for name in "${!QT_@}"; do
    export "WINE$name=${!name}"
done

# in_windows FOLDER...: a search path of Windows.
in_windows() {
    local folder path=
    for folder in "$@"; do
        path+="${path:+;}Z:${folder//\//\\}"
    done
    printf '%s' "$path"
}

# make_template: the Windows that others are copies of.
make_template() {
    (
        flock 9
        [ -e "$template/ready" ] && exit
        rm -rf "$template"/{prefix,fonts}
        mkdir "$template/fonts"
        ln -s /usr/share/fonts/truetype/dejavu/DejaVuSans{,-*,Mono*}.ttf "$template/fonts"
        start=(env -u DISPLAY "WINEPREFIX=$template/prefix")
        "${start[@]}" "$wine" wineboot --init > "$template/log" 2>&1 9>&-
        "${start[@]}" "$server" --wait 9>&-
        # The desktop and the like lead to the home of whoever made it.
        while read -r link; do
            rm "$link"
            mkdir "$link"
        done < <(find "$template/prefix/drive_c/users" -type l)
        touch "$template/ready"
    ) 9> "$template/lock"
}

# make_chinese: makes the Chinese locale, which Wine needs to be Chinese, and which Debian installs
# on request only.
make_chinese() {
    (
        flock 9
        [ -e "$template/locales/zh_CN.UTF-8" ] && exit
        mkdir -p "$template/locales/new"
        localedef -i zh_CN -f UTF-8 "$template/locales/new/zh_CN.UTF-8"
        mv "$template/locales/new/zh_CN.UTF-8" "$template/locales"
    ) 9> "$template/lock"
}

server=${wine%/*}/wineserver64
mkdir -p "$template"
if [ ! -e "$template/ready" ]; then
    make_template
fi

folder=$HOME
case $folder in
"$root"/build/*) ;;
*) folder=$(mktemp -d) && made=$folder ;;
esac
export WINEPREFIX=$folder/windows
end() {
    "$server" --kill 2> /dev/null || true
    "$server" --wait 2> /dev/null || true
    [ -z "${made-}" ] || rm -rf "$made"
}
trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
if [ ! -e "$WINEPREFIX" ]; then
    mkdir -p "$WINEPREFIX/drive_c"
    cp -a "$template"/prefix/{*.reg,dosdevices,.update-timestamp} "$WINEPREFIX"
    for entry in "$template"/prefix/drive_c/*; do
        case ${entry##*/} in
        users) cp -a "$entry" "$WINEPREFIX/drive_c" ;;
        *) ln -s "$entry" "$WINEPREFIX/drive_c" ;;
        esac
    done
fi

if [ -z "${WINEPATH+given}" ]; then
    gcc=x86_64-w64-mingw32-gcc-posix
    runtime=$(dirname "$("$gcc" -print-file-name=libgcc_s_seh-1.dll)")
    threads=$(dirname "$("$gcc" -print-file-name=libwinpthread-1.dll)")
    WINEPATH=$(in_windows "$root/build/windows/bin" "$(realpath "$root/build/windows-qt")/bin" \
        "$(realpath "$runtime")" "$(realpath "$threads")")
fi
export WINEPATH

# The names of files stay UTF-8.
case ${TSA_CODE_PAGE:-1252} in
1252) language=(LC_ALL=C.UTF-8) ;;
936)
    [ -e "$template/locales/zh_CN.UTF-8" ] || make_chinese
    language=(LC_ALL=zh_CN.UTF-8 "LOCPATH=$template/locales")
    ;;
*)
    echo "wine: code page $TSA_CODE_PAGE is neither 1252 nor 936" >&2
    exit 2
    ;;
esac
env "${language[@]}" "$wine" "$@"
