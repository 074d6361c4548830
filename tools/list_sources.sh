# To be sourced by bash, with the repository's root as the current folder.
# shellcheck shell=bash

# list_sources [FOLDER...]: prints our C++ sources and headers, each followed by a null byte. New files count before
# they are committed.
list_sources() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -z --cached --others --exclude-standard -- "$@" |
            while IFS= read -r -d '' file; do
                if [[ $file == *.@(h|cpp) && -e $file ]]; then
                    printf '%s\0' "$file"
                fi
            done
    else
        find "${@:-.}" -name build -prune -o -type f '(' -name '*.h' -o -name '*.cpp' ')' -print0
    fi
}
