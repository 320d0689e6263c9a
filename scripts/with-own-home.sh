#!/usr/bin/env bash
# scripts/with-own-home.sh FOLDER COMMAND...
#
# Runs COMMAND with a home, settings, data, cache and runtime folder of its own below FOLDER, which is
# emptied first: nothing that the user has set up takes part, and nothing of the user's is written.
set -euo pipefail

if [ $# -lt 2 ]; then
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
    [ "${1-}" = --help ]
    exit
fi

rm -rf "$1"
mkdir -p "$1"/{home,config,data,cache,state}
# Programs refuse a runtime folder that others can read.
mkdir -m 700 "$1/runtime"
folder=$(cd "$1" && pwd)
shift

export HOME=$folder/home
export XDG_CONFIG_HOME=$folder/config XDG_DATA_HOME=$folder/data XDG_CACHE_HOME=$folder/cache
export XDG_STATE_HOME=$folder/state XDG_RUNTIME_DIR=$folder/runtime
exec "$@"
