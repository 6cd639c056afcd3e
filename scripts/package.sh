#!/usr/bin/env bash
# Builds the Debian package of Quillotune into ./build and checks it with lintian.
#   scripts/package.sh            -> build/quillotune_<version>_<arch>.deb
# Install it with: sudo apt install ./build/quillotune_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
./scripts/build.sh
# lintian is needed only here, not for the build or the tests.
if ! command -v lintian >/dev/null 2>&1; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends lintian
fi
cd build
rm -f quillotune_*.deb
cpack -G DEB
deb=$(ls quillotune_*.deb)
echo "package: build/$deb"
# Errors fail the script; warnings are printed.
lintian --fail-on error --suppress-tags dir-or-file-in-opt "$deb"
