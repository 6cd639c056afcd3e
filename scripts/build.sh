#!/usr/bin/env bash
# Configures (once) and builds everything into ./build.
# With ccache on the machine, compilations are cached; checkouts side by side under one
# parent folder share the cache (CCACHE_BASEDIR), which makes a second checkout cheap.
set -euo pipefail
cd "$(dirname "$0")/.."
launcher=()
if command -v ccache >/dev/null 2>&1; then
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$(dirname "$PWD")}"
  export CCACHE_NOHASHDIR=1
  # The test programs use precompiled headers: ccache caches them only with this.
  export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
fi
if [ ! -f build/build.ninja ]; then
  cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}"
fi
cmake --build build -j "$(nproc)"
