# Sourced by the launcher and the demo: makes sure DISPLAY names an X server, starting Xvfb
# on a display of our own when there is none.
norlib_ensure_display() {
  [ -n "${DISPLAY:-}" ] && return 0
  local display_num="${NORLIB_XVFB_DISPLAY:-97}"
  if [ ! -e "/tmp/.X11-unix/X$display_num" ]; then
    (Xvfb ":$display_num" -screen 0 1280x1024x24 -nolisten tcp </dev/null >/dev/null 2>&1 &)
    for _ in $(seq 1 50); do
      [ -e "/tmp/.X11-unix/X$display_num" ] && break
      sleep 0.1
    done
  fi
  export DISPLAY=":$display_num"
}
