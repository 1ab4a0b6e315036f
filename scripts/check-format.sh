#!/usr/bin/env bash
# Fails when a tracked C++ source or header differs from what .clang-format makes of it.
set -euo pipefail
cd "$(dirname "$0")/.."
if ! command -v clang-format >/dev/null; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -q clang-format
fi
git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror
echo "formatting: clean"
