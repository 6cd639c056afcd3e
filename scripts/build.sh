#!/usr/bin/env bash
# Configures (once) and builds everything into ./build.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ ! -f build/build.ninja ]; then
  cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build build -j "$(nproc)"
