#!/usr/bin/env bash
# Installs what is missing, builds both targets, runs every test of the x86_64 build under
# Wine, and checks that the installed package serves a program built outside the tree.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"
./scripts/deps.sh

jobs="$(nproc 2>/dev/null || echo 2)"
for preset in x64 x86; do
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$jobs"
done

export NORLIB_BUILD_DIR="$root/build/x64"
# Create the Wine prefix once, before ctest's clock runs for the first test.
"$root/cmake/wine-run.sh" cmd /c exit >/dev/null 2>&1 || true
status=0
ctest --preset x64 -j "$jobs" || status=1

# The installed tree, consumed by programs that only know find_package and a copy of the
# toolchain file on its own: the consumer, and the getting-started guide's program.
cmake --install build/x64 >/dev/null
toolchain_copy="$root/build/toolchain-alone"
mkdir -p "$toolchain_copy"
cp "$root/build/install/x64/lib/cmake/Norlib2/toolchain-x86_64-w64-mingw32.cmake" "$toolchain_copy/"
outside() { # name source-dir program-and-arguments... ; passes when the program says "name: ok"
  local name="$1" source="$2" output
  shift 2
  local build="$root/build/outside-$name"
  cmake -S "$source" -B "$build" -DCMAKE_TOOLCHAIN_FILE="$toolchain_copy/toolchain-x86_64-w64-mingw32.cmake" \
    -DCMAKE_PREFIX_PATH="$root/build/install/x64" >/dev/null &&
    cmake --build "$build" -j "$jobs" >/dev/null &&
    output="$(cd "$build" && "$root/cmake/wine-run.sh" "$@" 2>&1)" &&
    grep -q "$name: ok" <<<"$output" && { echo "installed package: $name passed"; return 0; }
  echo "installed package: $name FAILED"
  echo "${output:-}"
  return 1
}
outside consumer tests/consumer ./consumer.exe || status=1
outside sketch docs/getting-started ./sketch.exe --selftest || status=1

# The 32-bit tests run where a 32-bit Wine is installed.
if command -v wine >/dev/null && dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "ok installed"; then
  NORLIB_BUILD_DIR="$root/build/x86" WINEARCH=win32 ctest --test-dir build/x86 -j "$jobs" || status=1
else
  echo "i686 build checked; its tests need a 32-bit Wine (wine32:i386), not installed here"
fi
exit $status
