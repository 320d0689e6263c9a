#!/usr/bin/env bash
# scripts/with-xvfb.sh COMMAND...
#
# Runs COMMAND on a virtual display of its own, with a window manager, and ends both afterwards.
# DISPLAY names that display; Wayland and the session bus are hidden, so that nothing reaches the
# user's own session. No OpenGL either: widgets do not need it, and its drivers keep memory.
set -euo pipefail

if [ $# -eq 0 ] || [ "$1" = --help ]; then
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
    [ $# -gt 0 ]
    exit
fi

folder=$(mktemp -d)
server=
manager=
end() {
    for pid in $manager $server; do
        kill "$pid" 2> /dev/null || true
        wait "$pid" 2> /dev/null || true
    done
    rm -rf "$folder"
}
trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

stop() {
    echo "with-xvfb: $1" >&2
    tail -n 5 "$folder"/*.log >&2
    exit 1
}

# The server chooses a free display, and says which once it takes connections.
mkfifo "$folder/display"
Xvfb -displayfd 3 -screen 0 1600x1000x24 -nolisten tcp -noreset \
    3> "$folder/display" > "$folder/server.log" 2>&1 &
server=$!
number=
read -r -t 30 number < "$folder/display" || true
[ -n "$number" ] || stop "Xvfb does not start; run scripts/setup.sh test"
export DISPLAY=:$number
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$folder}
export DBUS_SESSION_BUS_ADDRESS=disabled: QT_XCB_GL_INTEGRATION=none
unset WAYLAND_DISPLAY XAUTHORITY

openbox --sm-disable > "$folder/manager.log" 2>&1 &
manager=$!
# A window manager that is ready has announced itself on the root window.
for ((try = 0; try < 300; ++try)); do
    if xprop -root _NET_SUPPORTING_WM_CHECK 2> /dev/null | grep 'window id' > /dev/null; then
        break
    fi
    kill -0 "$manager" 2> /dev/null || stop "openbox does not start; run scripts/setup.sh test"
    read -r -t 0.1 _ <> <(:) || true
done

"$@"
