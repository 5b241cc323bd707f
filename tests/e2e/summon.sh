#!/usr/bin/env bash
# The ways the window is summoned, on a real X server: a drag from an application on the user's
# exclusion list raises nothing; in hot-key mode drags raise nothing, the key opens the window at the
# pointer, it stays when the pointer leaves, and the key again closes it.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
printf 'notes\n' >"$E2E_HOME/notes.txt"
start() { start_quaydrop "quaydrop.window.debug=true;quaydrop.drag.debug=true"; }

# A whole drag of a file from the source; true when the program saw it start.
drag_a_file() {
  start_source --files "$E2E_HOME/notes.txt"
  sleep 0.3
  xdotool mousemove 100 100 mousedown 1
  for _ in $(seq 20); do xdotool mousemove_relative -- 1 4; sleep 0.05; done
  wait_for "$log" "new drag" 5 || { cat "$log"; fail "the drag was not seen at all"; }
  wait_for "$log" "window under the pointer" 5 || { cat "$log"; fail "the window under the pointer was not asked"; }
  xdotool mousemove_relative -- 0 300
  sleep 0.2
  let_go
  kill "$src" 2>/dev/null || true
}

# The source's windows carry the class "qd_dragsource", which no desktop file claims.
mkdir -p "$XDG_DATA_HOME/com.velmora.Quaydrop"
cat >"$XDG_DATA_HOME/com.velmora.Quaydrop/exclAppList.plist" <<'PLIST'
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><array><string>qd_dragsource</string></array></plist>
PLIST
start
drag_a_file
grep -q 'window under the pointer: .* of "qd_dragsource"' "$log" || { cat "$log"; fail "the source was not recognised"; }
grep -q "panel 111 shown" "$log" && fail "a drag from an excluded application raised the window"
stop_quaydrop
pass "a drag from an application on the exclusion list raises nothing"

write_conf kShowPanelHKEnabled=true
rm "$XDG_DATA_HOME/com.velmora.Quaydrop/exclAppList.plist"
start
wait_for "$log" "hot key Ctrl+Alt+F opens the drop window" 5 || { cat "$log"; fail "the hot key was not grabbed"; }
drag_a_file
grep -q "panel 111 shown" "$log" && fail "a drag raised the window in hot-key mode"
pass "in hot-key mode a drag raises nothing"

xdotool mousemove 500 400
sleep 0.2
xdotool key ctrl+alt+f
wait_for "$log" "panel 111 shown" 5 || { cat "$log"; fail "the hot key did not open the window"; }
sleep 0.2
read -r x y w h state <<<"$(window_geometry)"
[ "$state" = IsViewable ] || fail "the window is not on screen"
[ "$x" = 455 ] && [ $((y + h)) = 400 ] || fail "the window is at $x,$y ${w}x$h, not centred above the pointer at 500,400"
pass "the hot key opens the window with its bottom edge at the pointer"

for _ in 1 2 3 4 5; do xdotool mousemove_relative -- 80 60; sleep 0.05; done
sleep 0.3
window_shown || fail "in hot-key mode the waiting window closed when the pointer left"
xdotool key ctrl+alt+f
sleep 0.5
! window_shown || fail "the hot key again did not close the window"
pass "it stays when the pointer leaves, and the key again closes it"

# Opened by the key, the window has the keyboard: Escape closes it.
xdotool key ctrl+alt+f
wait_until 5 window_shown || fail "the hot key did not open the window again"
sleep 0.3
xdotool key Escape
sleep 0.5
! window_shown || fail "Escape did not close the window the hot key opened"
stop_quaydrop
pass "the window the key opened takes the keyboard: Escape closes it"
