# Sourced by the launcher and the demo: makes sure DISPLAY names an X server, starting Xvfb
# on a display of our own when there is none.

# A server that died (a killed session, a reboot without a clean /tmp) leaves its socket
# and lock behind; only a lock whose process still runs means the display is served.
norlib_display_alive() {
  local lock="/tmp/.X$1-lock" pid
  [ -e "/tmp/.X11-unix/X$1" ] && [ -f "$lock" ] || return 1
  pid="$(tr -d ' \n' <"$lock" 2>/dev/null)"
  [ -n "$pid" ] && kill -0 "$pid" 2>/dev/null
}

norlib_ensure_display() {
  [ -n "${DISPLAY:-}" ] && return 0
  local display_num="${NORLIB_XVFB_DISPLAY:-97}"
  # Tests start in parallel: one of them at a time may look at the display and start it.
  exec 8>"/tmp/.norlib-xvfb-$display_num.lock"
  flock 8
  if ! norlib_display_alive "$display_num"; then
    rm -f "/tmp/.X11-unix/X$display_num" "/tmp/.X$display_num-lock"
    # The server names its display on this pipe only once it accepts clients; a client
    # that comes earlier (Wine's desktop) fails and stays broken for the whole run.
    local ready
    ready="$(mktemp -u /tmp/.norlib-xvfb-ready.XXXXXX)"
    mkfifo "$ready"
    (Xvfb ":$display_num" -screen 0 1280x1024x24 -nolisten tcp -displayfd 9 9>"$ready" \
      </dev/null >/dev/null 2>&1 8>&- &)
    read -r -t 20 _ <"$ready" || true
    rm -f "$ready"
  fi
  flock -u 8
  exec 8>&-
  export DISPLAY=":$display_num"
}
