#!/usr/bin/env bash
# Under a window manager (openbox, which reparents and focuses windows as desktops do): toggle, close
# and the panel for files show the window every time, and the toggled window takes the keys.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
openbox >/dev/null 2>&1 &
also=$!
sleep 0.5
kill -0 "$also" || fail "openbox did not start"
start_quaydrop "quaydrop.window.debug=true"
mkdir -p "$E2E_HOME/files"
for n in a b c; do echo "$n" >"$E2E_HOME/files/$n.txt"; done
xdotool mousemove 500 400

for round in $(seq 8); do
  "$BIN" toggle 2>>"$log"
  wait_until 5 window_shown || fail "round $round: toggle did not show the window"
  sleep 0.5
  "$BIN" toggle 2>>"$log"
  wait_until 5 eval '! window_shown' || fail "round $round: toggle again did not close it"
  sleep 1
  before=$(grep -c "panel 888 shown" "$log" || true)
  "$BIN" panel "$E2E_HOME"/files/*.txt 2>>"$log"
  wait_until 5 eval '[ "$(grep -c "panel 888 shown" "$log")" -gt "$before" ]' || fail "round $round: no panel"
  # Mapped for a moment is not enough: the window must still be there once the manager is done.
  sleep 0.5
  window_shown || fail "round $round: the panel for three files is not on screen"
  "$BIN" toggle 2>>"$log"
  wait_until 5 eval '! window_shown' || fail "round $round: the panel did not close"
done
pass "eight rounds of toggle, close and panel, each on screen"

"$BIN" toggle 2>>"$log"
wait_until 5 window_shown || fail "toggle did not show the window"
sleep 0.3
xdotool key Escape
wait_until 5 eval '! window_shown' || fail "Escape did not reach the toggled window"
pass "the toggled window takes the keys: Escape closes it"
stop_quaydrop
