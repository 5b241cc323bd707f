#!/usr/bin/env bash
# The drag watcher on a real X server: a drag from another program raises the drop window next to
# the pointer, away from the drag's direction; dropping on it shows the panel; a drag that goes on
# away from it closes it; pressing and moving without a drag raises nothing.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
printf 'notes\n' >"$E2E_HOME/notes.txt"
start_quaydrop "quaydrop.window.debug=true;quaydrop.drag.debug=true"

# Pressing and moving with no drag raises nothing: XdndSelection never changes hands.
xdotool mousemove 600 500 mousedown 1
for _ in 1 2 3 4 5; do xdotool mousemove_relative -- 20 10; sleep 0.03; done
xdotool mouseup 1
sleep 0.3
grep -q "panel 111 shown" "$log" && fail "a press and move without a drag raised the window"
pass "moving with the button down raises nothing"

# A drag of a file from the source, downward: the window opens above the pointer.
start_drag() {
  start_source --files "$E2E_HOME/notes.txt"
  sleep 0.3
  xdotool mousemove 100 100
  drag_until_raised 1 4 "a drag of a file"
}

start_drag
read -r x y w h state <<<"$(window_geometry)"
[ "$state" = IsViewable ] || fail "the raised window is not on screen ($state)"
[ "$w" = 90 ] && [ "$h" = 90 ] || fail "the drop window is ${w}x${h}, not 90x90"
eval "$(xdotool getmouselocation --shell)"
[ $((X - 45 - x)) -ge 0 ] && [ $((X - 45 - x)) -le 9 ] || fail "the window is not centred on the pointer: x=$x, pointer $X"
[ $((y + h)) -lt "$Y" ] || fail "the window is not above the pointer after a downward drag: y=$y, pointer $Y"
pass "a downward drag of a file raises the window above the pointer at x=$x y=$y"

# Onto the window, and let go: the document's panel.
xdotool mousemove_relative -- 0 $((y + 45 - Y))
sleep 0.2
xdotool mousemove_relative -- 1 1
sleep 0.2
let_go
wait_for "$log" "panel 2 shown" 5 || { cat "$log"; fail "dropping on the raised window showed no panel"; }
[ "$(window_geometry | cut -d' ' -f3,4)" = "210 235" ] || fail "the panel's window is not 210x235: $(window_geometry)"
pass "dropping on it shows the document panel"
kill "$src" 2>/dev/null || true

# A new drag while the panel is up raises the window again; ending elsewhere leaves it up until the
# pointer wanders off.
start_drag
sleep 0.2
read -r x y w h state <<<"$(window_geometry)"
[ "$state" = IsViewable ] || fail "a new drag while a panel was up did not raise the window again"
for _ in 1 2 3 4 5 6; do xdotool mousemove_relative -- 0 40; sleep 0.05; done
read -r x y w h state <<<"$(window_geometry)"
[ "$state" = IsViewable ] || fail "the window closed while the drag was still going on"
let_go
for _ in 1 2 3; do xdotool mousemove_relative -- 0 10; sleep 0.05; done
sleep 0.3
read -r x y w h state <<<"$(window_geometry)"
[ "$state" != IsViewable ] || fail "the window stayed although the pointer went far away"
pass "after a drag ends elsewhere, the pointer wandering off closes the window"
