#!/bin/bash
# Runs clang-tidy on the program's sources, each by itself: the builds put several into one, and would not notice a
# missing include. Code that needs no window is read as the native build compiles it, the rest as the Windows build
# does.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=tools/list_sources.sh
source tools/list_sources.sh

# Configured for the commands of the single sources, never built.
for build in native windows; do
    cmake --preset "$build" -B "build/tidy/$build" -DCMAKE_UNITY_BUILD=OFF >/dev/null
done

# The sources among those listed that the build compiles.
sources_of() {
    local build=$1 file
    while IFS= read -r -d '' file; do
        if grep -qF "/$file\"" "build/tidy/$build/compile_commands.json"; then
            printf '%s\0' "$file"
        fi
    done
}

# tidy BUILD [ARGUMENT...]: checks the sources on standard input, two at a time.
tidy() {
    local build=$1
    shift
    # One file a time keeps both processors busy to the end; the count of suppressed warnings is of no interest.
    xargs -0 -r -n 1 -P 2 clang-tidy-14 --quiet -p "build/tidy/$build" "$@" \
        2> >(grep -vE '(warnings?|errors?) generated' >&2)
}

native=()
windows=()
while IFS= read -r -d '' file; do
    case $file in
    *.h) ;;
    *_win32.cpp | ui/* | app/* | tools/*) windows+=("$file") ;;
    *) native+=("$file") ;;
    esac
done < <(list_sources core model ui app tools)

# Clang finds the Windows headers by itself, but not the C++ library of the cross compiler, and does not know GCC's flag
# for objects that are optimised at linking.
cxx=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
windows_arguments=(
    --extra-arg-before=--target=x86_64-w64-mingw32
    "--extra-arg=-isystem$cxx"
    "--extra-arg=-isystem$cxx/x86_64-w64-mingw32"
    "--extra-arg=-isystem$cxx/backward"
    --extra-arg=-Wno-ignored-optimization-argument
)
# The analyzer looks at this many states of a function, a tenth of what it would: the rest takes half of the time in the
# longest sources and has found nothing yet.
for argument in -Xclang -analyzer-config -Xclang max-nodes=20000; do
    windows_arguments+=("--extra-arg=$argument")
done

status=0
if [[ ${#native[@]} -gt 0 ]]; then
    # Sanitizers watch this code at run time; the analyzer would take longer than all other checks together.
    printf '%s\0' "${native[@]}" | sources_of native | tidy native '--checks=-clang-analyzer-*' || status=1
fi
if [[ ${#windows[@]} -gt 0 ]]; then
    printf '%s\0' "${windows[@]}" | sources_of windows | tidy windows "${windows_arguments[@]}" || status=1
fi
exit "$status"
