#!/usr/bin/env bash
# Installs what is missing, builds the x86_64 library and its samples, and runs them under
# Wine: the console sample prints what it saved and loaded; the window, editor and dialog
# samples act on their own for a few seconds and, headless (Xvfb), leave screenshots in build/.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cd "$root"
./scripts/deps.sh
cmake --preset x64 >/dev/null
cmake --build --preset x64 -j "$(nproc 2>/dev/null || echo 2)" --target arraydemo guidemo editdemo mdidemo dlgdemo test_printer
export NORLIB_BUILD_DIR="$root/build/x64"
. "$root/cmake/xvfb.sh"
norlib_ensure_display
cd "$NORLIB_BUILD_DIR"

"$root/cmake/wine-run.sh" bin/arraydemo.exe cities.lst

wait_for() { # a mark the sample leaves, at most 30 s
  for _ in $(seq 1 300); do [ -e "$1" ] && return 0; sleep 0.1; done
  return 1
}
shoot() { # name [crop geometry]
  sleep 0.5
  import -window root -crop "${2:-600x460+20+20}" "$root/build/$1" && echo "screenshot: build/$1"
}
rm -f guidemo.dialog guidemo.done
"$root/cmake/wine-run.sh" bin/guidemo.exe --demo 2 &
sample=$!
wait_for guidemo.dialog && shoot guidemo-dialog.png
wait_for guidemo.done && shoot guidemo.png
wait "$sample"

rm -f editdemo.typed editdemo.done
"$root/cmake/wine-run.sh" bin/editdemo.exe --demo 2 &
sample=$!
wait_for editdemo.typed && shoot editdemo-typing.png 620x490+20+20
wait_for editdemo.done && shoot editdemo.png 620x490+20+20
wait "$sample"

# The MDI sample prints its editor to the default printer: the test printer that the printer
# tests install in the build's prefix, whose output lands in printer-job.ps.
"$root/cmake/wine-run.sh" bin/test_printer.exe --gtest_filter='PrinterTest.Names*' >/dev/null
rm -f mdidemo.tile mdidemo.cascade mdidemo.printed printer-job.ps
"$root/cmake/wine-run.sh" bin/mdidemo.exe --demo 2 &
sample=$!
wait_for mdidemo.tile && shoot mdidemo-tile.png 760x540+20+20
wait_for mdidemo.cascade && shoot mdidemo-cascade.png 760x540+20+20
wait "$sample"
wait_for printer-job.ps && sleep 1 &&
  "$root/scripts/printer.sh" png printer-job.ps "$root/build/mdidemo-printed.png" 50 &&
  echo "printed page: build/mdidemo-printed.png"

rm -f dlgdemo.find dlgdemo.replace dlgdemo.string dlgdemo.open dlgdemo.new dlgdemo.saveas \
  dlgdemo.message
"$root/cmake/wine-run.sh" bin/dlgdemo.exe --demo 2 &
sample=$!
for dialog in find replace string open new saveas message; do
  wait_for "dlgdemo.$dialog" && shoot "$dialog.png" 440x320+40+40
done
wait "$sample"
