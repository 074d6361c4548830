# Wine's environment for this checkout; to be sourced by bash. Every Wine prefix lives in build/wine/, so that nothing
# of the user's own Wine is touched. WINEPREFIX is left alone if it is set already.
# shellcheck shell=bash

tamarind_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

export WINEPREFIX=${WINEPREFIX:-$tamarind_root/build/wine/default}
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
# No offers to download Mono and Gecko, and no menu entries or file types in the user's desktop.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"

# set_registry_value KEY NAME TYPE DATA: writes a value into the registry of the present prefix.
set_registry_value() {
    wine reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null
}

# ensure_prefix [NAME [DPI]]: makes build/wine/NAME the present prefix (without NAME: keeps WINEPREFIX) and creates
# it unless that has been done. Several shells may call it at once. In "headless" Wine needs no X server.
ensure_prefix() {
    if [[ $# -gt 0 ]]; then
        export WINEPREFIX=$tamarind_root/build/wine/$1
    fi
    [[ -e $WINEPREFIX/tamarind_ready_2 ]] || create_prefix "${2:-96}"
}

create_prefix() {
    local lock
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec {lock}>"$WINEPREFIX.lock"
    flock "$lock"
    local status=0
    # Wine's server outlives the commands here and must not inherit the lock.
    if [[ ! -e $WINEPREFIX/tamarind_ready_2 ]]; then
        fill_prefix "$1" {lock}>&- || status=$?
    fi
    exec {lock}>&-
    return "$status"
}

fill_prefix() {
    echo "Creating the Wine prefix $(basename "$WINEPREFIX")" >&2
    env -u DISPLAY wineboot -i >/dev/null 2>&1 </dev/null || return
    if [[ $(basename "$WINEPREFIX") == headless ]]; then
        set_registry_value 'HKCU\Software\Wine\Drivers' Graphics REG_SZ null || return
    fi
    set_registry_value 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD "$1" || return
    # The font that Wine takes for those of Windows has no Arabic and Chinese letters.
    set_registry_value 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' 'Liberation Sans' \
        REG_MULTI_SZ 'DejaVuSans.ttf,DejaVu Sans\0DroidSansFallbackFull.ttf,Droid Sans Fallback' || return
    # The registry is on disk and every process has ended when the server has.
    wineserver -w || return
    touch "$WINEPREFIX/tamarind_ready_2"
}
