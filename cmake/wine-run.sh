#!/usr/bin/env bash
# Runs a Windows program under Wine for ctest and the demo: a prefix of the build's own,
# one persistent wineserver for the whole run, and Xvfb when there is no display.
set -u
build_dir="${NORLIB_BUILD_DIR:-$(cd "$(dirname "$0")/.." && pwd)/build}"
export WINEPREFIX="${NORLIB_WINEPREFIX:-$build_dir/wineprefix}"
export WINEDEBUG="${WINEDEBUG:--all}"
# A crashing test must end, not wait in the debugger.
export WINEDLLOVERRIDES="mscoree=d;mshtml=d;winedbg.exe=d"
export WINEARCH="${WINEARCH:-win64}"

. "$(dirname "$0")/xvfb.sh"
norlib_ensure_display

mkdir -p "$WINEPREFIX"
# The server and Wine's services outlive this program: start them with their output
# detached, or whoever reads ours (ctest) would wait for them to end. A persistent server
# saves the cold start of every test process; it exits at once when one already serves the
# prefix (a socket left by a killed one does not count: the server decides).
started=""
wineserver -p </dev/null >/dev/null 2>&1 && started=1
# The registry files appear only when the server saves them: a mark of our own says the
# prefix is made.
if [ ! -f "$WINEPREFIX/.norlib-prefix-made" ]; then
  wineboot -i </dev/null >/dev/null 2>&1
  # No window manager under Xvfb: Wine draws the title bars itself.
  wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f </dev/null >/dev/null 2>&1 &&
    touch "$WINEPREFIX/.norlib-prefix-made"
fi
# Wine draws the title-bar buttons with the symbol font Marlett and finds its fonts in the
# prefix: without it the buttons show letters. The font comes with Wine's fonts package.
fonts_dir="$WINEPREFIX/drive_c/windows/Fonts"
symbol_font="${NORLIB_WINE_FONTS:-/usr/share/wine/fonts}/marlett.ttf"
if [ ! -f "$fonts_dir/marlett.ttf" ] && [ -f "$symbol_font" ]; then
  # Tests start in parallel: each copies to a name of its own and renames, so none reads half a font.
  mkdir -p "$fonts_dir" && cp "$symbol_font" "$fonts_dir/.marlett.$$" &&
    mv -f "$fonts_dir/.marlett.$$" "$fonts_dir/marlett.ttf"
fi
[ -n "$started" ] && wine cmd /c exit </dev/null >/dev/null 2>&1
exec wine "$@"
