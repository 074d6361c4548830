#!/bin/bash
# Uses the program with random keys and clicks beside another program that writes its file, and compares what is saved.
#
#   long_use.sh [MINUTES [SEED]]     default: 60 minutes, seed 1
#
# The same test takes three minutes among the others.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
tools/install_packages.sh build run test
cmake --preset windows >/dev/null
cmake --build build/windows --parallel 2 --target long_use_tests
TAMARIND_USE_MINUTES=${1:-60} TAMARIND_USE_SEED=${2:-1} TAMARIND_WINE=display \
    exec tools/wine_run.sh build/windows/tests/long_use_tests.exe
