#!/bin/bash
# Makes the help: OUTPUT_FOLDER/Readme.chm, and the same pages for a browser in OUTPUT_FOLDER/help.
#
#   make_help.sh OUTPUT_FOLDER
#
# Fails when a page, a link or a picture is missing. A folder help that is there is replaced. If SOURCE_DATE_EPOCH is
# set, the same pages make the same bytes.
set -euo pipefail
shopt -s extglob

if [[ $# != 1 ]]; then
    echo "usage: make_help.sh OUTPUT_FOLDER" >&2
    exit 2
fi
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
mkdir -p "$1"
output=$(cd "$1" && pwd)
if [[ $output == "$root" ]]; then
    echo "make_help.sh: the pages' own folder cannot be replaced" >&2
    exit 2
fi

python3 "$root/tools/check_help.py" "$root/help"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$root"/help/* "$scratch"
log=$scratch/chmcmd.log
# The compiler looks for files from the current folder on, and does not fail when it lacks one.
if ! (cd "$scratch" && chmcmd Readme.hhp >"$log" 2>&1) || [[ ! -s $scratch/Readme.chm ]]; then
    cat "$log" >&2
    exit 1
fi
chmls -n list "$scratch/Readme.chm" >"$scratch/list" 2>/dev/null
for file in "$scratch"/*.@(html|css|png|hhc|hhk); do
    if ! grep -qxF "/${file##*/}" "$scratch/list"; then
        cat "$log" >&2
        echo "make_help.sh: ${file##*/} is not in Readme.chm" >&2
        exit 1
    fi
done

if [[ -n ${SOURCE_DATE_EPOCH-} ]]; then
    python3 "$root/tools/set_chm_time.py" "$scratch/Readme.chm" "$SOURCE_DATE_EPOCH"
fi

rm -rf "$output/help"
mkdir "$output/help"
cp "$scratch"/*.html "$scratch"/*.css "$scratch"/*.png "$output/help"
cp "$scratch/Readme.chm" "$output/Readme.chm"
