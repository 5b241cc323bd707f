#!/usr/bin/env bash
# Renders the pictures in docs/screenshots from the built program, on a virtual display.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
tool="$root/build/tests/gui/qd_screenshots"
[ -x "$tool" ] || { echo "build first: make test (or cmake --build build)" >&2; exit 1; }
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
HOME="$home" XDG_RUNTIME_DIR="$home" DBUS_SESSION_BUS_ADDRESS=disabled: \
  xvfb-run -a -s "-screen 0 1280x800x24" "$tool" "$root/docs/screenshots" "${1:-en}"
HOME="$home" XDG_RUNTIME_DIR="$home" XDG_CONFIG_HOME="$home/config" DBUS_SESSION_BUS_ADDRESS=disabled: \
  xvfb-run -a -s "-screen 0 1280x800x24" bash "$root/scripts/tray-picture.sh" "$root/build/src/app/quaydrop" "$root/docs/screenshots"
echo "pictures written to docs/screenshots"
