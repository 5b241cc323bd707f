#!/usr/bin/env bash
# The status item in a real tray host (trayer, an XEmbed tray): the icon is there, a click opens the
# panel under it and kept on the screen, a second click closes it, another window taking the focus
# closes it; with the icon hidden a second start brings icon and panel back.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
command -v trayer >/dev/null || fail "trayer is missing (scripts/install-deps.sh installs it)"
trayer --edge top --align right --widthtype pixel --width 100 --heighttype pixel --height 26 \
  --SetDockType false --SetPartialStrut false --expand false 2>/dev/null &
also=$!
wait_until 30 sh -c 'xdotool search --classname trayer >/dev/null 2>&1' || fail "the tray host did not start"

panel_visible() { xdotool search --onlyvisible --name '^Quaydrop options$' 2>/dev/null | head -1; }
icon_window() { # the icon: our small window inside the tray's panel
  for w in $(xdotool search --classname quaydrop 2>/dev/null); do
    eval "$(xdotool getwindowgeometry --shell "$w")"
    [ "$WIDTH" -le 40 ] && [ "$Y" -le 26 ] && [ "$X" -ge 1180 ] && { echo "$w"; return; }
  done
}
has_panel() { [ -n "$(panel_visible)" ]; }
no_panel() { [ -z "$(panel_visible)" ]; }
has_icon() { [ -n "$(icon_window)" ]; }

start_quaydrop
! grep -q "no system tray" "$log" || fail "the tray host was not found"
wait_until 15 has_icon || fail "no icon in the tray"
pass "the icon sits in the tray"

icon=$(icon_window)
xdotool mousemove --window "$icon" 8 8 click 1
wait_until 5 has_panel || fail "a click on the icon opened no panel"
eval "$(xdotool getwindowgeometry --shell "$(panel_visible)")"
[ "$Y" -ge 26 ] || fail "the panel is not under the tray (y=$Y)"
[ $((X + WIDTH)) -le 1280 ] || fail "the panel leaves the screen at the right ($X + $WIDTH)"
pass "a click opens the panel under the icon, on the screen ($X,$Y ${WIDTH}x$HEIGHT)"

sleep 0.5
xdotool mousemove --window "$icon" 8 8 click 1
wait_until 5 no_panel || fail "a second click did not close the panel"
pass "a second click closes it"

sleep 0.5
xdotool mousemove --window "$icon" 8 8 click 1
wait_until 5 has_panel || fail "the panel did not open again"
xmessage -geometry +100+400 "another program" 2>/dev/null &
also="$also $!"
wait_until 5 sh -c 'xdotool search --name "^xmessage$" >/dev/null 2>&1'
xdotool windowfocus --sync "$(xdotool search --name '^xmessage$' | head -1)"
wait_until 5 no_panel || fail "the panel stayed when another window took the focus"
pass "another window taking the focus closes it"

stop_quaydrop

# Hidden by the user: no icon; a second start brings it back with the panel open.
write_conf shouldHideStatusBarItem=true
log="$E2E_HOME/hidden.log"
start_quaydrop
sleep 1
has_icon && fail "the hidden icon showed"
"$BIN" 2>"$E2E_HOME/again.log" || fail "the second start failed"
wait_until 5 has_icon || fail "a second start did not bring the icon back"
wait_until 5 has_panel || fail "a second start did not open the panel"
grep -q 'shouldHideStatusBarItem=false' "$conf" || fail "the icon is still stored as hidden"
pass "a second start brings the hidden icon back with its panel"
