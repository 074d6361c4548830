#!/bin/bash
# Checks that every source of ours is laid out as clang-format would do it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=tools/list_sources.sh
source tools/list_sources.sh

list_sources | xargs -0 -r -n 16 -P 2 clang-format-14 --dry-run -Werror --style=file
