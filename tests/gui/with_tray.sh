#!/usr/bin/env bash
# Runs a test program on the X server of xvfb-run with a real tray host (trayer, an XEmbed tray) up.
set -euo pipefail
command -v trayer >/dev/null || { echo "trayer is missing (scripts/install-deps.sh installs it)" >&2; exit 1; }
trayer --edge top --align right --widthtype pixel --width 100 --heighttype pixel --height 26 \
  --SetDockType false --SetPartialStrut false --expand false 2>/dev/null &
tray=$!
trap 'kill "$tray" 2>/dev/null || true' EXIT
for _ in $(seq 300); do xdotool search --classname trayer >/dev/null 2>&1 && break; sleep 0.1; done
"$@"
