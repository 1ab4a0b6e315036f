#!/usr/bin/env bash
# Installs what is missing, builds the x86_64 library and its samples, and runs the sample
# program under Wine (headless under Xvfb when there is no display).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"
./scripts/deps.sh
cmake --preset x64 >/dev/null
cmake --build --preset x64 -j "$(nproc 2>/dev/null || echo 2)" --target arraydemo
export NORLIB_BUILD_DIR="$root/build/x64"
cd "$NORLIB_BUILD_DIR"
"$root/cmake/wine-run.sh" bin/arraydemo.exe cities.lst
