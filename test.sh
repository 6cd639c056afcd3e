#!/usr/bin/env bash
# Installs what is missing, builds Quillotune and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/setup.sh
./scripts/build.sh
cd build
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)" "$@"
