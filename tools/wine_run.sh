#!/bin/bash
# Runs a Windows test program and passes on its exit status. ctest starts every Windows test through it.
#
#   wine_run.sh PROGRAM [ARGUMENT...]
#
# TAMARIND_WINE=headless (the default): without an X server, in the prefix "headless".
# TAMARIND_WINE=display: with an X server and a window manager of its own, in the prefix "windowed".
# TAMARIND_DPI: screen resolution of the display, if it is not 96; each has a prefix of its own.
set -eu

tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tools/wine_env.sh
source "$tools/wine_env.sh"

case ${TAMARIND_WINE:-headless} in
headless)
    unset DISPLAY
    ensure_prefix headless
    exec wine "$@"
    ;;
display)
    dpi=${TAMARIND_DPI:-96}
    if [[ $dpi == 96 ]]; then
        ensure_prefix windowed
    else
        ensure_prefix "windowed-$dpi" "$dpi"
    fi
    if ((dpi > 200)); then
        export TAMARIND_SCREEN=3840x2400 # what a screen of that resolution has
    fi
    TAMARIND_WINE=inside exec "$tools/with_display.sh" --own "$0" "$@"
    ;;
inside)
    status=0
    wine "$@" || status=$?
    # The processes that Wine started for the desktop need the X server until they end.
    timeout 30 wineserver -w || true
    exit "$status"
    ;;
*)
    echo "wine_run.sh: TAMARIND_WINE is neither headless nor display" >&2
    exit 2
    ;;
esac
