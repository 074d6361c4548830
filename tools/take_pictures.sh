#!/bin/bash
# Takes the pictures of the help and of the documents anew, from the built program with the sample settings:
# help/main-window.png, filter.png, value-bar.png, pending-changes.png and ignored-lines.png, and all but the last of these, edit,
# options, dark and right-to-left in docs/pictures/.
#
#   take_pictures.sh [PROGRAM_FOLDER]     default: build/windows/bin
#
# The program runs under Wine on a display of its own, in a prefix of its own, so that neither the user's settings nor
# his desktop are in the pictures.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=tools/wine_env.sh
source "$root/tools/wine_env.sh"

max_bytes=60000
colors=64 # of a picture; enough for text, icons and a color or two

if [[ ${1-} != --inside ]]; then
    program=$(cd "${1:-$root/build/windows/bin}" && pwd)
    if [[ ! -e $program/TamarindEditor.exe ]]; then
        echo "take_pictures.sh: there is no TamarindEditor.exe in $program; ./run --build makes it" >&2
        exit 1
    fi
    ensure_prefix pictures
    exec "$root/tools/with_display.sh" --own "$0" --inside "$program"
fi
program=$2
drive=$WINEPREFIX/drive_c
scratch=$(mktemp -d)
editor=

# What Wine started for the desktop ends a moment after the editor.
stop_editor() {
    if [[ -n $editor ]]; then
        kill "$editor" 2>/dev/null || true
        wait "$editor" 2>/dev/null || true
        editor=
    fi
    timeout 30 wineserver -w || true
}

clean_up() {
    stop_editor
    rm -rf "$scratch"
}
trap clean_up EXIT

# wait_for SECONDS COMMAND...
wait_for() {
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        if ((SECONDS >= end)); then
            echo "take_pictures.sh: waited in vain for $*" >&2
            return 1
        fi
        sleep 0.2
    done
}

# lay_out [LANGUAGE]: a fresh program folder and fresh settings, with paths as a user would have them, in English or
# in the language of that file.
lay_out() {
    local uses_default=1
    [[ -z ${1-} ]] || uses_default=0
    rm -rf "$drive/Tamarind" "$drive/totalcmd"
    mkdir -p "$drive/Tamarind" "$drive/totalcmd"
    cp "$program/TamarindEditor.exe" "$drive/Tamarind"
    cp -r "$root/Data Files" "$root/Languages" "$drive/Tamarind"
    cp "$root"/samples/*.ini "$drive/totalcmd"
    # Twips; 15 are a pixel.
    cat >"$drive/Tamarind/tamarind editors.ini" <<SETTINGS
[Common]
LanguageFile=C:\\Tamarind\\Languages\\${1-}
[ConfigurationEditor]
UseDefaultLanguage=$uses_default
MainWindowLeft=1500
MainWindowTop=1500
MainWindowWidth=11000
MainWindowHeight=8700
SplitPosition=3750
DescriptionPanelHeight=5250
SETTINGS
    set_registry_value 'HKCU\Software\Ghisler\Total Commander' IniFileName REG_SZ 'C:\totalcmd\Wincmd.ini'
}

find_window() {
    window=$(xdotool search --onlyvisible --class '^tamarindeditor\.exe$' 2>/dev/null | head -n 1)
    [[ -n $window && $(xdotool getwindowname "$window") == *Wincmd.ini ]]
}

is_active() {
    [[ $(xdotool getactivewindow 2>/dev/null) == "$window" ]]
}

start_editor() {
    timeout 120 wine 'C:\Tamarind\TamarindEditor.exe' &
    editor=$!
    wait_for 60 find_window
    wait_for 20 is_active
}

# shot FILE: the window with its frame, as it is on the screen.
shot() {
    local info left right top bottom
    info=$(xwininfo -id "$window")
    number_of() {
        sed -n "s/^ *$1: *//p" <<<"$info"
    }
    IFS=', ' read -r left right top bottom < <(xprop -id "$window" _NET_FRAME_EXTENTS | sed 's/.*= //')
    local width=$(($(number_of Width) + left + right))
    local height=$(($(number_of Height) + top + bottom))
    local x=$(($(number_of 'Absolute upper-left X') - left))
    local y=$(($(number_of 'Absolute upper-left Y') - top))
    import -window root -crop "${width}x$height+$x+$y" +repage "$1"
}

# What is drawn has come to rest when two shots in a row are the same.
is_at_rest() {
    shot "$scratch/one.png"
    sleep 0.3
    shot "$scratch/other.png"
    [[ $(compare -metric AE "$scratch/one.png" "$scratch/other.png" null: 2>&1) == 0 ]]
}

# take FILE...: makes these pictures, all the same, of the window; paths are relative to the root.
take() {
    local bytes file
    wait_for 20 is_at_rest
    convert "$scratch/one.png" +dither -colors "$colors" -strip -define png:compression-level=9 \
        "PNG8:$scratch/picture.png"
    bytes=$(stat -c %s "$scratch/picture.png")
    if ((bytes > max_bytes)); then
        echo "take_pictures.sh: $1 has $bytes bytes, more than $max_bytes" >&2
        return 1
    fi
    for file in "$@"; do
        mkdir -p "$(dirname "$root/$file")"
        cp "$scratch/picture.png" "$root/$file"
        echo "$file: $bytes bytes"
    done
}

data_file="$root/Data Files/tc all keys english.tmdf"

# place_of LINE: the number of this line among those that are read, from 1 on.
place_of() {
    tr -d '\r' | grep -nxF -m 1 -- "$1" | cut -d : -f 1
}

# select_category NAME, in the tree, which has the focus at the start; the first entry stands for all categories.
select_category() {
    local steps
    steps=$(grep '^\[' "$data_file" | grep -vi '^\[TargetIniFile\]' | place_of "[$1]")
    xdotool key Home
    xdotool key --repeat "$steps" --delay 30 Down
}

# select_key CATEGORY NAME, from the tree on.
select_key() {
    local steps
    steps=$(tr -d '\r' <"$data_file" | sed -n "/^\[$1\]\$/,/^\$/s/^\([^=]*\)=.*/\1/p" | place_of "$2")
    # Line 1 is the category's target section, and the first key is selected already.
    xdotool key Tab Home
    xdotool key --repeat $((steps - 2)) --delay 30 Down
}

# open_window KEY...: presses the keys one after the other; the window that comes up is the one to be taken.
open_window() {
    local key main=$window
    for key in "$@"; do
        xdotool key "$key"
    done
    is_other_active() {
        window=$(xdotool getactivewindow 2>/dev/null)
        [[ -n $window && $window != "$main" ]]
    }
    wait_for 20 is_other_active
}

category='Display: sizes and dates'

lay_out
start_editor
select_category "$category"
select_key "$category" GetDirSize
xdotool key Return
take docs/pictures/edit.png
xdotool type --delay 30 1
xdotool key Return
take help/main-window.png docs/pictures/main-window.png
# The letters are those of the English texts.
open_window alt+v o
take docs/pictures/options.png
stop_editor

lay_out
start_editor
select_category "$category"
select_key "$category" GetDirSize
xdotool key Up Up Up F4
take help/value-bar.png docs/pictures/value-bar.png
xdotool key Escape Down Down Down
for keys in "Return 1 Return" "Down Delete" "Down Down Return 2 Return"; do
    # shellcheck disable=SC2086
    xdotool key --delay 100 $keys
done
open_window ctrl+shift+s
take help/pending-changes.png docs/pictures/pending-changes.png
stop_editor

lay_out
start_editor
xdotool key ctrl+e
xdotool type --delay 30 'file list'
xdotool key Down Down Down
take help/filter.png docs/pictures/filter.png
stop_editor

# One of the first categories: a mirrored tree that has scrolled is not drawn well under Wine.
category='Layout (bars and lines)'

lay_out Arabic.lng
start_editor
select_category "$category"
select_key "$category" DriveBarFlat
take docs/pictures/right-to-left.png
stop_editor

lay_out
printf 'Theme=2\r\n' >>"$drive/Tamarind/tamarind editors.ini"
start_editor
select_category 'Display: sizes and dates'
select_key 'Display: sizes and dates' GetDirSize
take docs/pictures/dark.png
stop_editor

lay_out
printf '[Layout]\r\nButtonBar=0\r\nold notes of mine\r\n' >>"$drive/totalcmd/Wincmd.ini"
start_editor
open_window alt+v g
take help/ignored-lines.png
