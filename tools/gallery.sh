#!/bin/bash
# Takes pictures of every window in every language, resolution and theme: build/tour/<dpi>-<language>-<window>.png, with
# "-dark" behind the window in the dark theme.
#
#   gallery.sh [DPI...]     default: 96 144 192 288
#
# The tests that go through all windows take them; these are built first if need be.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
build=$root/build/windows

tools/install_packages.sh build run test
if [[ ! -e $build/build.ninja ]]; then
    cmake --preset windows
fi
cmake --build "$build" --parallel 2 --target tour_tests

# The names of the languages, of which the built-in one has no file.
languages=English
for file in Languages/*.lng; do
    languages+=,$(basename "$file" .lng)
done

if [[ $# == 0 ]]; then
    set -- 96 144 192 288
fi
status=0
for dpi in "$@"; do
    rm -f "build/tour/$dpi"-*.png
    for theme in light dark; do
        TAMARIND_WINE=display TAMARIND_DPI=$dpi TAMARIND_THEME=$theme TAMARIND_PICTURES=$languages timeout 300 \
            tools/wine_run.sh "$build/tests/tour_tests.exe" --gtest_brief=1 '--gtest_filter=*TextsWhole' || status=$?
    done
    echo "$dpi dpi: $(find build/tour -name "$dpi-*.png" | wc -l) pictures in build/tour"
done
exit "$status"
