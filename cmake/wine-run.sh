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

if [ -z "${DISPLAY:-}" ]; then
  display_num="${NORLIB_XVFB_DISPLAY:-97}"
  if [ ! -e "/tmp/.X11-unix/X$display_num" ]; then
    (Xvfb ":$display_num" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &)
    for _ in $(seq 1 50); do
      [ -e "/tmp/.X11-unix/X$display_num" ] && break
      sleep 0.1
    done
  fi
  export DISPLAY=":$display_num"
fi

mkdir -p "$WINEPREFIX"
# The server and Wine's services outlive this program: start them with their output
# detached, or whoever reads ours (ctest) would wait for them to end.
server_id="server-$(printf '%x-%x' $(stat -c '%d %i' "$WINEPREFIX"))"
running=""
for socket in "/tmp/.wine-$(id -u)/$server_id/socket" /tmp/wine-*/"$server_id/socket"; do
  [ -S "$socket" ] && running=1
done
if [ -z "$running" ]; then
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    wineboot -i </dev/null >/dev/null 2>&1
  fi
  # A persistent server saves the cold start of every test process.
  wineserver -p </dev/null >/dev/null 2>&1
  wine cmd /c exit </dev/null >/dev/null 2>&1
fi
exec wine "$@"
