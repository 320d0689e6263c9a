#!/usr/bin/env bash
# check-thread-ends.sh OBJDUMP FILE...
#
# No library or program has thread-local objects with destructors: MinGW's run time calls them at the
# end of a thread when the memory of the objects may have gone.
set -euo pipefail

objdump=$1
shift

failed=0
for file in "$@"; do
    case $file in
    *.dll | *.exe) imports=$("$objdump" --private-headers "$file") ;;
    *) imports=$(nm --dynamic --undefined-only "$file") ;;
    esac
    if grep -q '__cxa_thread_atexit' <<< "$imports"; then
        echo "$file: a thread-local object has a destructor, which Windows calls too late" >&2
        failed=1
    fi
done
exit "$failed"
