#!/usr/bin/env bash
# Renders the pictures in docs/screenshots from the built program, on a virtual display.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tool="$root/build/tests/gui/qd_screenshots"
[ -x "$tool" ] || { echo "build first: make test (or cmake --build build)" >&2; exit 1; }
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
# Everything in English (a few pictures in German among them); the image windows in German too.
for language in en de; do
  HOME="$home" XDG_RUNTIME_DIR="$home" DBUS_SESSION_BUS_ADDRESS=disabled: QUAYDROP_WORKER="$root/build/src/app/quaydrop-worker" \
    xvfb-run -a -s "-screen 0 1280x800x24" "$tool" "$root/docs/screenshots" "$language"
done
HOME="$home" XDG_RUNTIME_DIR="$home" XDG_CONFIG_HOME="$home/config" DBUS_SESSION_BUS_ADDRESS=disabled: \
  xvfb-run -a -s "-screen 0 1280x800x24" bash "$root/scripts/tray-picture.sh" "$root/build/src/app/quaydrop" "$root/docs/screenshots"
# The window on the second of two monitors: an Xorg server with the dummy driver, which needs root.
QD_MONITORS_SCREENSHOT="$root/docs/screenshots/two-monitors.png" HOME="$home" XDG_RUNTIME_DIR="$home" \
  DBUS_SESSION_BUS_ADDRESS=disabled: bash "$root/tests/e2e/monitors.sh" "$root/build/src/app/quaydrop" \
  "$root/build/tests/e2e/qd_dragsource" >"$home/monitors.out" 2>&1 ||
  echo "no picture of two monitors: $(tail -1 "$home/monitors.out")"
echo "pictures written to docs/screenshots"
