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

# The installed tree, consumed by a program that only knows find_package.
cmake --install build/x64 >/dev/null
consumer_build="$root/build/consumer-x64"
cmake -S tests/consumer -B "$consumer_build" \
  -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-x86_64-w64-mingw32.cmake" \
  -DCMAKE_PREFIX_PATH="$root/build/install/x64" >/dev/null
cmake --build "$consumer_build" -j "$jobs" >/dev/null
cp "$root"/build/install/x64/bin/*.dll "$consumer_build/"
if output="$("$root/cmake/wine-run.sh" "$consumer_build/consumer.exe" 2>&1)" &&
   grep -q "consumer: ok" <<<"$output"; then
  echo "installed package: consumer passed"
else
  echo "installed package: consumer FAILED"
  echo "$output"
  status=1
fi

# The 32-bit tests run where a 32-bit Wine is installed.
if command -v wine >/dev/null && dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "ok installed"; then
  NORLIB_BUILD_DIR="$root/build/x86" WINEARCH=win32 ctest --test-dir build/x86 -j "$jobs" || status=1
else
  echo "i686 build checked; its tests need a 32-bit Wine (wine32:i386), not installed here"
fi
exit $status
