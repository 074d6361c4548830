#!/bin/bash
# Runs a command with an X display.
#
#   with_display.sh [--own] COMMAND [ARGUMENT...]
#
# Uses the present display if there is one; otherwise, or with --own, an X server and a window manager that live only as
# long as the command. The exit status is the command's.
#
# TAMARIND_SCREEN: the size of the screen of such a server in pixels, if it is not 1600x1200.
set -u

own=false
if [[ ${1-} == --own ]]; then
    own=true
    shift
fi
if [[ $# == 0 ]]; then
    echo "usage: with_display.sh [--own] COMMAND [ARGUMENT...]" >&2
    exit 2
fi
if ! $own && [[ -n ${DISPLAY-} ]] && xdpyinfo >/dev/null 2>&1; then
    exec "$@"
fi

scratch=$(mktemp -d)
server=
manager=
command=

end_process() {
    [[ -n $1 ]] || return 0
    kill "$1" 2>/dev/null
    wait "$1" 2>/dev/null
}
clean_up() {
    trap - EXIT INT TERM HUP
    end_process "$command"
    end_process "$manager"
    end_process "$server"
    rm -rf "$scratch"
}
trap clean_up EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

fail() {
    echo "with_display.sh: $1" >&2
    cat "$scratch"/*.log >&2
    exit 1
}

# wait_for COMMAND...: until it succeeds, for up to 20 seconds.
wait_for() {
    local attempt
    for ((attempt = 0; attempt < 400; attempt++)); do
        if "$@" >/dev/null 2>&1; then
            return 0
        fi
        sleep 0.05
    done
    return 1
}
server_answered() {
    [[ -s $scratch/display ]] || ! kill -0 "$server"
}

# Both end with this script, even if it is killed. The server itself picks a number that is free.
setpriv --pdeathsig TERM Xvfb -displayfd 3 -screen 0 "${TAMARIND_SCREEN:-1600x1200}x24" -nolisten tcp -noreset \
    3>"$scratch/display" >"$scratch/xvfb.log" 2>&1 </dev/null &
server=$!
wait_for server_answered
[[ -s $scratch/display ]] || fail "the X server does not start"
DISPLAY=:$(<"$scratch/display")
export DISPLAY
unset WAYLAND_DISPLAY XAUTHORITY

# The window manager as the system configures it, whatever the user has set up for himself.
XDG_CONFIG_HOME=$scratch XDG_CACHE_HOME=$scratch XDG_DATA_HOME=$scratch \
    setpriv --pdeathsig TERM openbox --sm-disable >"$scratch/openbox.log" 2>&1 </dev/null &
manager=$!
manager_is_ready() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}
wait_for manager_is_ready || fail "the window manager does not start"

# Every desktop has a resource database. Without one Xlib looks for files in the home folder again
# each time Wine asks how to draw text: thousands of times in one start of the editor.
xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER $'Xft.antialias:\t1\nXft.hinting:\t1\n'

# In the background, since bash answers signals only while it waits.
"$@" <&0 &
command=$!
wait "$command"
status=$?
command=
exit "$status"
