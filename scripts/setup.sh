#!/usr/bin/env bash
# Installs the Debian 12 packages the build, the program and the tests need, when missing.
set -euo pipefail
packages=(
  cmake ninja-build g++ pkg-config clang-format ccache
  qt6-base-dev qt6-base-dev-tools libgl-dev qt6-translations-l10n qt6-image-formats-plugins
  libtag1-dev libmpv-dev
  python3 python3-mutagen python3-xlrd python3-olefile
  xvfb xauth fonts-dejavu-core fonts-liberation2 poppler-utils
  dosfstools
  qt6-svg-dev help2man desktop-file-utils appstream dpkg-dev file
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update
  $sudo apt-get install -y --no-install-recommends "${missing[@]}"
fi
