#!/bin/bash
# Starts the editor, tells what its window shows, takes a screenshot and closes it. Needs a display and the Wine
# environment; ./run calls it where nobody sees the window.
set -euo pipefail

build=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/windows
probe=$build/tools/probe.exe
screenshot=$build/screenshot.png

wine "$build/bin/TamarindEditor.exe" "$@" &
editor=$!
trap 'kill "$editor" 2>/dev/null || true' EXIT

# is_running: false as soon as the editor has ended.
is_running() {
    kill -0 "$editor" 2>/dev/null
}

# wait_for SECONDS COMMAND...: until the command succeeds; not longer than the editor runs.
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        if ! is_running || ((SECONDS >= end)); then
            return 1
        fi
        sleep 0.2
    done
}

find_window() {
    window=$(xdotool search --onlyvisible --class '^tamarindeditor\.exe$' 2>/dev/null | head -n 1)
    [[ -n $window ]]
}

# The counter is the part of the status bar that begins with a number.
find_counter() {
    local part text
    for part in 0 1 2; do
        text=$(wine "$probe" status "$part" 2>/dev/null) || continue
        if [[ $text =~ ^[[:space:]]*[0-9] ]]; then
            counter=$text
            return 0
        fi
    done
    return 1
}

window=
counter=
if ! wait_for 60 find_window; then
    echo "The editor shows no window." >&2
    exit 1
fi
status=0
if ! wait_for 20 find_counter; then
    echo "The status bar shows no counter." >&2
    status=1
fi
echo "Caption: $(xdotool getwindowname "$window")"
echo "Counter: $counter"
import -window root "$screenshot"
echo "Screenshot: $screenshot"

wine "$probe" close || status=1
is_gone() {
    ! is_running
}
if ! wait_for 20 is_gone && is_running; then
    echo "The editor does not close." >&2
    exit 1
fi
trap - EXIT
wait "$editor" || status=$?
# What Wine started for the desktop needs the display until it has ended.
timeout 30 wineserver -w || true
exit "$status"
