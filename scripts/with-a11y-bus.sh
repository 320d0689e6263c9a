#!/usr/bin/env bash
# scripts/with-a11y-bus.sh COMMAND...
#
# Runs COMMAND in a session with an accessibility bus, as screen readers use it, and ends both buses
# afterwards. Applications present themselves there whether or not somebody listens. The session is
# one of its own; the user's has no part in it.
set -euo pipefail

if [ $# -eq 0 ] || [ "$1" = --help ]; then
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p; }' "$0"
    [ $# -gt 0 ]
    exit
fi

folder=$(mktemp -d)
session=
launcher=
end() {
    for pid in $launcher $session; do
        kill "$pid" 2> /dev/null || true
        wait "$pid" 2> /dev/null || true
    done
    rm -rf "$folder"
}
trap end EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

stop() {
    echo "with-a11y-bus: $1; run scripts/setup.sh test" >&2
    tail -n 5 "$folder"/*.log >&2
    exit 1
}

mkfifo "$folder/address"
dbus-daemon --session --nofork --nopidfile --address="unix:path=$folder/session" --print-address=3 \
    3> "$folder/address" > "$folder/session.log" 2>&1 &
session=$!
address=
read -r -t 30 address < "$folder/address" || true
[ -n "$address" ] || stop "the session bus does not start"
export DBUS_SESSION_BUS_ADDRESS=$address

# The launcher starts the accessibility bus, which ends with it, and waits for it to be there.
GSETTINGS_BACKEND=memory /usr/libexec/at-spi-bus-launcher --launch-immediately \
    > "$folder/launcher.log" 2>&1 &
launcher=$!
busctl=(dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus)
for ((try = 0; try < 300; ++try)); do
    if "${busctl[@]}" org.a11y.Bus.GetAddress > "$folder/reply.log" 2>&1; then
        break
    fi
    kill -0 "$launcher" 2> /dev/null || stop "the accessibility bus does not start"
    read -r -t 0.1 _ <> <(:) || true
done
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

"$@"
