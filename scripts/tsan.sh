#!/usr/bin/env bash
# Builds the tests of the reading threads with ThreadSanitizer into ./build-tsan and runs
# them: the folder scan, the re-read, the refresh and the searches for lyrics, pictures
# and "lrc" frames with several readers. Any data race ends the run with a report and a
# non-zero exit code.
#
#   ./scripts/tsan.sh             (a tree of 2,000 generated files; a few minutes)
#   QLT_TREE_FILES=10000 ./scripts/tsan.sh
#
# Qt and TagLib themselves are not instrumented: what is checked is our code and every
# inline function of their headers that it calls (string sharing, atomics), with the
# locks of the reader pool as the only ordering between the threads.
set -euo pipefail
cd "$(dirname "$0")/.."
launcher=()
if command -v ccache >/dev/null 2>&1; then
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
fi
if [ ! -f build-tsan/build.ninja ]; then
  cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" \
    -DCMAKE_CXX_FLAGS="-fsanitize=thread -Wno-tsan" -DCMAKE_C_FLAGS="-fsanitize=thread" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=thread"
fi
cmake --build build-tsan -j "$(nproc)" --target test_scan_parallel test_refresh test_search_parallel quillotune-cli
export TSAN_OPTIONS="halt_on_error=1 abort_on_error=0 exitcode=66 second_deadlock_stack=1 suppressions=$PWD/scripts/tsan.supp ${TSAN_OPTIONS:-}"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
export QLT_TREE_FILES="${QLT_TREE_FILES:-2000}"
./build-tsan/tests/test_scan_parallel
./build-tsan/tests/test_refresh
./build-tsan/tests/test_search_parallel
echo "ThreadSanitizer: no data race found."
