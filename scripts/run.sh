#!/usr/bin/env bash
# Starts the resident program. With no display it starts Xvfb first and says so; the program then
# stays up until it is killed (or quit from its tray menu), and Xvfb goes with it.
set -euo pipefail

BIN=${1:-build/src/app/quaydrop}
shift || true

xvfb_pid=
tray_pid=
app_pid=
cleanup() {
  [ -n "$app_pid" ] && kill -TERM "$app_pid" 2>/dev/null || true
  [ -n "$app_pid" ] && wait "$app_pid" 2>/dev/null || true
  [ -n "$tray_pid" ] && kill "$tray_pid" 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
}
trap cleanup EXIT
trap 'exit 0' TERM INT

if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  export XDG_RUNTIME_DIR="/tmp/quaydrop-runtime-$(id -u)"
  mkdir -p -m 0700 "$XDG_RUNTIME_DIR"
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  display_file=$(mktemp)
  Xvfb -displayfd 9 -screen 0 1440x900x24 -nolisten tcp 9>"$display_file" 2>/dev/null &
  xvfb_pid=$!
  for _ in $(seq 100); do
    [ -s "$display_file" ] && break
    sleep 0.1
  done
  number=$(tr -d '[:space:]' <"$display_file")
  rm -f "$display_file"
  if [ -z "$number" ]; then
    echo "quaydrop: no display was found and Xvfb did not start" >&2
    exit 1
  fi
  export DISPLAY=":$number"
  # Nothing on a private X server has a session bus; do not let anything auto-start one.
  export DBUS_SESSION_BUS_ADDRESS=${DBUS_SESSION_BUS_ADDRESS:-disabled:}
  # A desktop has a tray; so does this display, when a small tray host is at hand.
  tray_note=
  if command -v trayer >/dev/null; then
    trayer --edge top --align right --widthtype pixel --width 120 --heighttype pixel --height 26 \
      --SetDockType false --SetPartialStrut false --expand false >/dev/null 2>&1 &
    tray_pid=$!
    tray_note=" with a tray (trayer) at its top right"
  fi
  echo "quaydrop: no display found; started Xvfb on $DISPLAY$tray_note"
fi

"$BIN" "$@" &
app_pid=$!
set +e
wait "$app_pid"
status=$?
app_pid=
exit $status
