#!/usr/bin/env bash
# scripts/windows/setup.sh [--warm]
#
# Installs what the build for Windows needs: from Debian 12 the MinGW-w64 compiler and Wine, and a Qt
# for them, built from Debian's own Qt sources. That takes about 40 minutes of one core, once: the
# result is kept under ~/.cache, named after the versions and the flags, and build/windows-qt links
# to it.
#
#   --warm   builds nothing; returns whether the Qt is there already
set -euo pipefail
cd "$(dirname "$0")/../.."

warm=
case ${1:-} in
--warm) warm=1 ;;
'') ;;
*)
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
    [ "$1" = --help ] && exit
    exit 2
    ;;
esac

target=x86_64-w64-mingw32
# Debian's sources leave out wintab.h, so there are no events of tablets. What the project does not
# use is left out as well: it would double the time.
flags=(
    -opensource -confirm-license -silent -release -shared
    -xplatform win32-g++ -device-option "CROSS_COMPILE=$target-" -no-feature-tabletevent
    -no-opengl -no-dbus -no-ssl -no-icu -no-libjpeg
    -no-feature-sql -no-feature-printer -no-feature-concurrent -no-feature-xml
    -qt-zlib -qt-pcre -qt-libpng -qt-freetype -qt-harfbuzz
    -nomake examples -nomake tests
)

say() {
    printf 'windows setup: %s\n' "$*"
}

# version_of PACKAGE [FIELD]: the version of an installed package, or of its source.
version_of() {
    dpkg-query --show --showformat="\${${2:-Version}}" "$1" 2> /dev/null
}

# find_key: names the Qt by all that it depends on. Its version is that of the Qt installed for
# Linux, whose tools make the translations.
find_key() {
    base_version=$(version_of qtbase5-dev source:Version) || return 1
    svg_version=$(version_of libqt5svg5-dev source:Version) || return 1
    compiler_version=$(version_of g++-mingw-w64-x86-64-posix) || return 1
    local sum
    sum=$(printf '%s\n' "$base_version" "$svg_version" "$compiler_version" "${flags[@]}" | sha256sum)
    cache=${XDG_CACHE_HOME:-$HOME/.cache}/targetselectarea
    qt=$cache/windows-qt-${base_version%%[+-]*}-${sum:0:12}
}

if [ -n "$warm" ]; then
    find_key && [ -e "$qt/complete" ]
    exit
fi

scripts/setup.sh build test windows
find_key

# name_compilers: has the compiler called by the name that Qt's build knows, which may belong to the
# variant without POSIX threads.
name_compilers() {
    local tool
    mkdir -p "$work/bin"
    for tool in gcc g++ cpp; do
        ln -sf "$(command -v "$target-$tool-posix")" "$work/bin/$target-$tool"
    done
    PATH=$work/bin:$PATH
}

# fetch PACKAGE VERSION FOLDER: unpacks a Debian source package.
fetch() {
    [ ! -e "$work/$3.unpacked" ] || return 0
    rm -rf "${work:?}/$3"
    (cd "$work" && "${apt[@]}" --quiet source --download-only "$1=$2" \
        && dpkg-source --no-check --extract "$1"_*.dsc "$3") >> "$log" 2>&1
    touch "$work/$3.unpacked"
}

# find_sources: reads the list of the sources where the packages come from, without touching the
# system's own lists.
find_sources() {
    local state=$work/apt
    mkdir -p "$state/lists/partial"
    apt-get indextargets --format "\$(REPO_URI) \$(CODENAME)" 'Created-By: Packages' \
        | grep '/debian' | sort --unique | sed 's/.*/deb-src & main/' > "$state/sources.list"
    apt=(apt-get -o "Dir::Etc::SourceList=$state/sources.list" -o Dir::Etc::SourceParts=/dev/null
        -o "Dir::State::Lists=$state/lists" -o "Dir::Cache=$state" -o APT::Sandbox::User=root)
    "${apt[@]}" --quiet update >> "$log" 2>&1
}

build_qt() {
    rm -rf "$qt"
    mkdir -p "$work"
    name_compilers
    say "taking Debian's sources of Qt $base_version"
    [ -e "$work/qtsvg.unpacked" ] || find_sources
    fetch qtbase-opensource-src "$base_version" qtbase
    fetch qtsvg-opensource-src "$svg_version" qtsvg
    # A second plugin for windows that are drawn by another library, which nobody asks for.
    sed -i 's/SUBDIRS += direct2d/SUBDIRS +=/' "$work/qtbase/src/plugins/platforms/platforms.pro"
    mkdir -p "$work/build-base" "$work/build-svg"
    # A build that was stopped goes on where it was.
    if [ ! -e "$work/configured" ]; then
        say "configuring"
        (cd "$work/build-base" && ../qtbase/configure -prefix "$qt" -ccache "${flags[@]}") >> "$log" 2>&1
        touch "$work/configured"
    fi
    say "building qtbase, the long part"
    (cd "$work/build-base" && make && make install) >> "$log" 2>&1
    say "building qtsvg"
    (cd "$work/build-svg" && "$qt/bin/qmake" ../qtsvg && make && make install) \
        >> "$log" 2>&1
    # Qt's own texts in Chinese: files that are the same on every system.
    (cd "$work" && apt-get --quiet download qttranslations5-l10n \
        && dpkg-deb --extract qttranslations5-l10n_*.deb translations) >> "$log" 2>&1
    mkdir -p "$qt/translations"
    cp "$work/translations/usr/share/qt5/translations/qtbase_zh_CN.qm" "$qt/translations"
    touch "$qt/complete"
}

if [ ! -e "$qt/complete" ]; then
    work=$qt.build
    log=$work.log
    MAKEFLAGS=--jobs=$(nproc)
    export CCACHE_SLOPPINESS=pch_defines,time_macros MAKEFLAGS
    say "building Qt for Windows once, see $log"
    # A function stops at its first error only where nobody looks at its result.
    set +e
    (set -e && build_qt)
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        tail -n 30 "$log" >&2
        say "Qt does not build, see $log; the next start goes on from there" >&2
        exit 1
    fi
    rm -rf "$work"
    say "done after $((SECONDS / 60)) minutes: $qt"
fi
mkdir -p build
ln -sfn "$qt" build/windows-qt
