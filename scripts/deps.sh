#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need, when missing.
set -euo pipefail
packages=(cmake make g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix
  binutils-mingw-w64-x86-64 binutils-mingw-w64-i686 googletest
  wine wine64 fonts-wine xvfb xauth imagemagick
  ghostscript)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo_cmd apt-get update -q
  $sudo_cmd apt-get install -y -q "${missing[@]}"
fi
