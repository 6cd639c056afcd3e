#!/usr/bin/env bash
# Installs what is missing, builds Quillotune and starts it.
set -euo pipefail
cd "$(dirname "$0")"
./scripts/setup.sh
./scripts/build.sh
exec ./build/bin/quillotune "$@"
