#!/bin/bash
# Tries the 64-bit packages under Wine as a new user would: unpacks, installs, uses, updates and removes them, and looks
# at what each step leaves in the files and in the registry.
#
#   try_packages.sh FOLDER     FOLDER: where ./package has put them
#
# Needs the package groups build and run, and build/windows/tools/probe.exe. Takes one or two minutes.
set -euo pipefail

tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [[ $# != 1 || ! -d $1 ]]; then
    echo "usage: try_packages.sh FOLDER" >&2
    exit 2
fi
if [[ ${TAMARIND_TRYING-} != yes ]]; then
    TAMARIND_TRYING=yes exec "$tools/with_display.sh" --own "$0" "$@"
fi

only_file() {
    [[ $# == 1 && -e $1 ]] || {
        echo "try_packages.sh: there is not one such file: $*" >&2
        exit 1
    }
    echo "$1"
}
archive=$(only_file "$1"/*-x64-portable.zip)
setup=$(only_file "$1"/*-x64-setup.exe)

rm -rf "$tools/../build/wine/packages"
# shellcheck source=tools/wine_env.sh
source "$tools/wine_env.sh"
ensure_prefix packages
WINEPREFIX=$(cd "$WINEPREFIX" && pwd)
scratch=$(mktemp -d)

drive=$WINEPREFIX/drive_c
settings=$drive/Settings
user=$drive/users/$(id -un)
installed=$user/AppData/Local/Programs/Tamarind\ Editor
shortcut=$user/AppData/Roaming/Microsoft/Windows/Start\ Menu/Programs/Tamarind\ Configuration\ Editor.lnk
apps='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\TamarindEditor'
stranger=65534 # nobody: whose rights root borrows, since nothing is read-only for root
as=()          # what programs are started with
editor=

clean_up() {
    [[ -z $editor ]] || kill "$editor" 2>/dev/null || true
    rm -rf "$scratch"
}
trap clean_up EXIT

faults=0
# expect WHAT COMMAND...: reports whether the command succeeds.
expect() {
    local what=$1
    shift
    if "$@"; then
        echo "  ok: $what"
    else
        echo "  FAULT: $what"
        faults=$((faults + 1))
    fi
}
not() {
    ! "$@"
}

# wait_for COMMAND...: until it succeeds, for up to 20 seconds.
wait_for() {
    local attempt
    for ((attempt = 0; attempt < 200; attempt++)); do
        if "$@" >/dev/null 2>&1; then
            return 0
        fi
        sleep 0.1
    done
    return 1
}

run_wine() {
    timeout 60 "${as[@]}" wine "$@"
}
# exits_with CODE COMMAND...
exits_with() {
    local wanted=$1 status=0
    shift
    "$@" || status=$?
    [[ $status == "$wanted" ]] || {
        echo "  exit status $status"
        return 1
    }
}
# All processes of the prefix have ended: the uninstaller goes on in a copy of itself.
wait_for_wine() {
    timeout 60 "${as[@]}" wineserver -w
}
# As after a restart of Windows, which deletes the copy of itself that the uninstaller went on in.
restart_wine() {
    wait_for_wine
    run_wine wineboot
    wait_for_wine
}

# ---- The editor, from outside

find_window() {
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1)
    [[ -n $window ]]
}
# The caption begins with the data file's name.
find_editor() {
    window=$(xdotool search --onlyvisible --class '^tamarindeditor\.exe$' 2>/dev/null | head -n 1)
    [[ -n $window ]]
}
start_editor() {
    timeout 120 "${as[@]}" wine "$1" &
    editor=$!
    wait_for find_editor || return
    timeout 10 xdotool windowactivate --sync "$window" 2>/dev/null
}
close_editor() {
    local status=0
    run_wine "$probe" close || status=1
    wait "$editor" || status=1
    editor=
    return "$status"
}
holds() {
    grep -q -- "$2" "$1"
}
# The counter in the status bar tells that the editor has taken the keys: at first it counts all keys of all entries.
choose_entry() {
    local all=$1 count
    xdotool key Home Down Down
    count=$(run_wine "$probe" status 2)
    [[ $count =~ ^\ *[1-9] && $count != "$all" ]]
}
# type_value VALUE: the first key of the third entry of the tree gets it, and the file is saved.
type_value() {
    wait_for choose_entry "$(run_wine "$probe" status 2)" || return
    xdotool key Tab Return
    xdotool type "$1"
    xdotool key Return ctrl+s
    wait_for holds "$settings/Wincmd.ini" "=$1"
}
use_editor() {
    expect "the editor starts" start_editor "$1"
    expect "a value is edited and saved" type_value "$2"
    expect "just that line of the file is another" one_line_differs
    expect "the editor closes" close_editor
}
one_line_differs() {
    [[ $(diff "$settings/Wincmd.ini" "$tools/../samples/Wincmd.ini" | grep -c '^[<>]') == 2 ]]
}

has_backup() {
    compgen -G "$settings/Wincmd.ini backups/*.ini" >/dev/null
}

# ---- What is there

lay_out_settings() {
    rm -rf "$settings"
    mkdir -p "$settings"
    cp "$tools/../samples/Wincmd.ini" "$tools/../samples/Wcx_ftp.ini" "$settings"
    # Total Commander's own registry value tells where its settings are.
    "${as[@]}" wine reg add 'HKCU\Software\Ghisler\Total Commander' /v IniFileName /t REG_SZ \
        /d "$(windows_path "$settings/Wincmd.ini")" /f >/dev/null
}
windows_path() {
    local below=${1#"$drive"}
    echo "C:${below//\//\\}"
}
# A line for each file, and for each value in the registry.
list_files() {
    find "$drive" -type f -printf '%P\n' | sort
}
list_registry() {
    wait_for_wine
    awk '/^\[/ { sub(/ [0-9]+$/, ""); key = $0; print; next } /^[@"]/ { print key $0 }' \
        "$WINEPREFIX/user.reg" "$WINEPREFIX/system.reg" | sort
}
# Data and the names of keys, without the wrapping of reg's output.
registry_value() {
    run_wine reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n 's/^ .*REG_[A-Z]* *//p'
}
default_value() {
    run_wine reg query "$1" /ve 2>/dev/null | tr -d '\r' | sed -n 's/^ .*REG_[A-Z]* *//p'
}
# opens_with KEY PROGRAM: whether data files are registered there for that program; none if it is empty.
opens_with() {
    local found
    found=$(default_value "$1\\Fernedit\\Shell\\Open\\Command")
    [[ ${found,,} == "${2,,}" ]] || {
        echo "  $found"
        return 1
    }
}
command_of() {
    echo "\"$(windows_path "$1")\" \"%1\""
}
is_empty() {
    [[ ! -s $1 ]] || {
        cat "$1"
        return 1
    }
}

remember_state() {
    list_files >"$scratch/files"
    list_registry >"$scratch/registry"
}
# no_trace_but PATTERN: what is new since remember_state. Wine itself fills its registry as programs use it; a trace
# of ours is what names us.
no_trace_but() {
    restart_wine
    list_files | comm -13 "$scratch/files" - | grep -vE "$1" >"$scratch/new" || true
    list_registry | comm -13 "$scratch/registry" - | grep -iE 'tamarind|fernedit|tmdf' >>"$scratch/new" || true
    is_empty "$scratch/new"
}
own_files='^Settings/|/tamarind editors\.ini$'

# ---- The attempts

try_portable() {
    echo "The portable copy:"
    lay_out_settings
    python3 -m zipfile -e "$archive" "$drive/portable"
    use_editor "$drive/portable/TamarindEditor.exe" 4711
    expect "its settings are beside it" test -s "$drive/portable/tamarind editors.ini"
    expect "the file has a backup" has_backup
    expect "data files open with it" opens_with HKCR "$(command_of "$drive/portable/TamarindEditor.exe")"
}

# set_own NAME VALUE SECTION: in the portable copy's own settings.
set_own() {
    local file=$drive/portable/tamarind\ editors.ini
    holds "$file" "^\[$3\]" || printf '[%s]\r\n' "$3" >>"$file"
    sed -i "/^$1=/d; s|^\[$3\]|&\r\n$1=${2//\\/\\\\}|" "$file"
}
# shines_at_least PERCENT: the light of the window, on average.
shines_at_least() {
    local light
    light=$(import -window "$window" -colorspace Gray -format '%[fx:round(100*mean)]' info:)
    echo "  light: $light %"
    [[ $light -ge $1 ]]
}
says() {
    [[ $(run_wine "$probe" status "$1") == *"$2"* ]]
}
try_languages_and_themes() {
    local language word counter=3077 # the number of "Key(s)", which stands in the third part of the status bar
    echo "The portable copy in other languages and themes:"
    set_own UseDefaultLanguage 0 ConfigurationEditor
    for language in German French Arabic; do
        word=$(sed -n "s/^$counter=//p" "$drive/portable/Languages/$language.lng" | tr -d '\r')
        set_own LanguageFile "$(windows_path "$drive/portable/Languages/$language.lng")" Common
        set_own Theme 1 ConfigurationEditor
        expect "the editor starts" start_editor "$drive/portable/TamarindEditor.exe"
        expect "it is in $language" says 2 "$word"
        expect "it is light" shines_at_least 70
        expect "the editor closes" close_editor
        set_own Theme 2 ConfigurationEditor
        expect "the editor starts" start_editor "$drive/portable/TamarindEditor.exe"
        expect "it is in $language" says 2 "$word"
        expect "it is dark" not shines_at_least 40
        expect "the editor closes" close_editor
    done
}

# In a folder that cannot be written to. As root the rights of another user are taken for it, with a prefix of his own.
try_read_only() {
    echo "The portable copy in a read-only folder:"
    local WINEPREFIX=$WINEPREFIX drive=$drive settings=$settings probe=$probe
    local folder=$scratch/read-only as=() found
    python3 -m zipfile -e "$archive" "$folder"
    cp "$probe" "$folder/probe.exe"
    probe=$folder/probe.exe
    chmod -R a-w,a+rX "$folder"
    if [[ $(id -u) == 0 ]]; then
        chmod a+x "$scratch"
        WINEPREFIX=$scratch/prefix
        drive=$WINEPREFIX/drive_c
        settings=$drive/Settings
        mkdir "$WINEPREFIX" "$scratch/home"
        chown "$stranger:$stranger" "$WINEPREFIX" "$scratch/home"
        as=(setpriv "--reuid=$stranger" "--regid=$stranger" --clear-groups env "HOME=$scratch/home")
        "${as[@]}" wineboot -i >/dev/null 2>&1
        # Below its prefix Wine starts in the present folder, which that user may not see.
        cd "$folder"
    fi
    lay_out_settings
    [[ $(id -u) != 0 ]] || chown -R "$stranger" "$settings"
    expect "the folder cannot be written to" not "${as[@]}" test -w "$folder"
    use_editor "$folder/TamarindEditor.exe" 4712
    expect "no settings are beside it" not test -e "$folder/tamarind editors.ini"
    found=$(find "$drive/users" -path '*/AppData/Roaming/Tamarind Editors/tamarind editors.ini')
    expect "its settings are in %APPDATA%" test -s "$found"
    wait_for_wine
    cd "$tools"
    chmod -R u+w "$folder"
}

install_silently() {
    run_wine "$setup" /S
}
uninstall_silently() {
    run_wine "$installed/Uninstall.exe" /S && wait_for_wine
}
is_gone() {
    not test -e "$installed/TamarindEditor.exe" && not test -e "$installed/Uninstall.exe" &&
        not test -e "$shortcut" && not run_wine reg query "$apps" >/dev/null 2>&1
}

try_silent_setup() {
    echo "The setup without questions:"
    lay_out_settings
    remember_state
    expect "installs" exits_with 0 install_silently
    list_files | comm -13 "$scratch/files" - | sed -n "s|^${installed#"$drive/"}/||p" >"$scratch/installed"
    python3 -m zipfile -l "$archive" | sed -nE '1d; s/ +[0-9-]+ [0-9:]+ +[0-9]+$//p' >"$scratch/packed"
    echo Uninstall.exe >>"$scratch/packed"
    expect "the files are those of the archive" diff <(sort "$scratch/packed") "$scratch/installed"
    expect "is in the Start menu" test -s "$shortcut"
    expect "is in the list of apps" test "$(registry_value "$apps" DisplayVersion)" = "$version"
    expect "data files open with it" opens_with 'HKCU\Software\Classes' \
        "$(command_of "$installed/TamarindEditor.exe")"
    use_editor "$installed/TamarindEditor.exe" 4713
    expect "installs again over itself" exits_with 0 install_silently
    expect "its settings stay" test -s "$installed/tamarind editors.ini"
    expect "uninstalls" uninstall_silently
    expect "is gone" is_gone
    expect "nothing is left but settings and backups" no_trace_but "$own_files"
    rm -rf "$installed"
}

# What a window of the setup is called.
setup_window='^Tamarind Configuration Editor (Setup|Uninstall) ?$'
# press_until COMMAND...: presses Enter, and again where the window did not take it yet, until the command succeeds.
press_until() {
    local attempt
    for ((attempt = 0; attempt < 40; attempt++)); do
        if find_window "$setup_window"; then
            xdotool windowactivate "$window" key Return 2>/dev/null || true
        fi
        sleep 0.5
        if "$@" >/dev/null 2>&1; then
            return 0
        fi
    done
    return 1
}
is_open() {
    xdotool search --onlyvisible --name "$setup_window" >/dev/null 2>&1
}
try_setup_by_hand() {
    echo "The setup by hand:"
    lay_out_settings
    remember_state
    timeout 120 wine "$setup" &
    local running=$!
    expect "asks for the folder, installs" press_until run_wine reg query "$apps"
    expect "starts the editor at its end" press_until find_editor
    wait "$running" || true
    expect "the editor closes" run_wine "$probe" close
    wait_for_wine
    run_wine "$installed/Uninstall.exe" &
    running=$!
    expect "asks, uninstalls" press_until is_gone
    expect "its window closes" press_until not is_open
    wait "$running" || true
    expect "nothing is left but settings and backups" no_trace_but "$own_files"
    rm -rf "$installed"
}
# Neither half an installation nor half a removal.
try_while_running() {
    local folder
    echo "While the installed editor runs:"
    lay_out_settings
    install_silently
    expect "the editor starts" start_editor "$installed/TamarindEditor.exe"
    list_files >"$scratch/files"
    expect "the setup fails with 3" exits_with 3 install_silently
    # The uninstaller wants the folder without quotation marks, and Wine puts none around two arguments.
    read -r -a folder <<<"$(windows_path "$installed")"
    expect "the uninstaller fails with 3" exits_with 3 \
        run_wine "$installed/Uninstall.exe" /S "_?=${folder[0]}" "${folder[@]:1}"
    expect "no file has come or gone" diff "$scratch/files" <(list_files)
    expect "it still is in the list of apps" test "$(registry_value "$apps" DisplayVersion)" = "$version"
    expect "the editor closes" close_editor
    expect "uninstalls" uninstall_silently
    expect "is gone" is_gone
    rm -rf "$installed"
}

try_impossible_folder() {
    echo "The setup for a folder that cannot be made:"
    lay_out_settings
    remember_state
    expect "fails with 2" exits_with 2 run_wine "$setup" /S '/D=Z:\proc\editor'
    expect "leaves nothing" no_trace_but '^$'
}

try_changed_data_file() {
    echo "A data file with descriptions of the user's own:"
    local file=$installed/Data\ Files/tc\ all\ keys\ english.tmdf
    lay_out_settings
    install_silently
    echo '; mine' >>"$file"
    expect "installs again" exits_with 0 install_silently
    expect "the new data file is there" not holds "$file" '^; mine'
    expect "so is the user's" holds "${file%.tmdf} (changed).tmdf" '^; mine'
    echo '; mine, too' >>"$file"
    expect "uninstalls" uninstall_silently
    expect "is gone" is_gone
    expect "both of the user's are left" test "$(find "$installed" -type f | wc -l)" = 2
    rm -rf "$installed"
}

# forget_type: nobody opens data files.
forget_type() {
    run_wine reg delete 'HKCR\Fernedit' /f >/dev/null 2>&1 || true
    run_wine reg delete 'HKCU\Software\Classes\Fernedit' /f >/dev/null 2>&1 || true
}
# The editor registers itself when nobody waits for it any more.
start_and_close() {
    start_editor "$1" && sleep 2 && close_editor
}

# Wine knows no user who may not write for all users; that the copy registered itself for one is done by hand.
try_association() {
    local portable=$drive/portable/TamarindEditor.exe version_text root
    local classes='HKCU\Software\Classes'
    lay_out_settings
    version_text=$(registry_value 'HKCR\Fernedit\Shell\Open\Command' CurrentVersion)
    for root in HKCR "$classes"; do
        echo "The portable copy first, in $root:"
        forget_type
        if [[ $root == HKCR ]]; then
            start_and_close "$portable"
        else
            set_registry_value "$root\\Fernedit\\Shell\\Open\\Command" CurrentVersion REG_SZ "$version_text"
            run_wine reg add "$root\\Fernedit\\Shell\\Open\\Command" /ve /t REG_SZ \
                /d "$(command_of "$portable")" /f >/dev/null
        fi
        expect "data files open with the portable copy" opens_with "$root" "$(command_of "$portable")"
        install_silently
        expect "then with the installed one" opens_with "$classes" \
            "$(command_of "$installed/TamarindEditor.exe")"
        expect "which starts" start_and_close "$installed/TamarindEditor.exe"
        expect "and is uninstalled" uninstall_silently
        expect "then with the portable copy again" opens_with "$root" "$(command_of "$portable")"
        rm -rf "$installed"
    done

    echo "The installed copy first:"
    forget_type
    install_silently
    start_and_close "$portable"
    expect "data files open with the portable copy" opens_with HKCR "$(command_of "$portable")"
    expect "the installed one is uninstalled" uninstall_silently
    expect "data files open with the portable copy still" opens_with HKCR "$(command_of "$portable")"
    expect "the user's own entry is gone" opens_with "$classes" ""
    rm -rf "$installed"
    forget_type
}

version=$(basename "$setup")
version=${version#TamarindEditor-}
version=${version%-x64-setup.exe}
probe=$tools/../build/windows/tools/probe.exe

try_silent_setup
try_setup_by_hand
try_while_running
try_impossible_folder
try_changed_data_file
try_portable
try_languages_and_themes
try_association
try_read_only
wait_for_wine
if [[ $faults != 0 ]]; then
    echo "$faults faults" >&2
    exit 1
fi
echo "No faults"
