#!/usr/bin/env bash
# A user's way through the destinations, end to end on a real display: a folder stored from the
# command line, renamed, a real drop on the quick-move target, the picker, the folder's subfolders in
# their popup chosen by keyboard, and the file arriving there.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
screen_h=$(xdpyinfo | awk '/dimensions:/ {split($2, d, "x"); print d[2]}')

files="$E2E_HOME/files"
mkdir -p "$files/Target/Archive" "$files/Target/Inbox"
printf 'notes\n' >"$files/notes.txt"
"$BIN" destinations add "$files/Target" >/dev/null || fail "could not add a destination"
"$BIN" destinations rename "$files/Target" "Quay work" >/dev/null || fail "could not rename it"
[ "$("$BIN" destinations list)" = "Quay work	$files/Target" ] || fail "the list is: $("$BIN" destinations list)"
pass "a destination added and renamed from the command line"

window_top=$((screen_h - 400 - 90))
# The quick-move target is the upper of the two rows below the window's own target.
drag_onto 600 $((window_top + 63)) --files "$files/notes.txt"
wait_for "$log" "quick-move picker shown" 5 || { cat "$log"; fail "no quick-move picker"; }
[ "$(window_geometry | cut -d' ' -f3,4)" = "210 300" ] || fail "the picker's window is not 210x300: $(window_geometry)"
sleep 0.5
# First row, its subfolders (Archive, Inbox), the second of them.
for key in Down Right Down Down Return; do xdotool key $key; sleep 0.7; done
wait_until 5 test -f "$files/Target/Inbox/notes.txt" || { cat "$log"; fail "the file did not arrive in the chosen subfolder"; }
[ ! -e "$files/notes.txt" ] || fail "the moved file is still at its source"
[ "$(cat "$files/Target/Inbox/notes.txt")" = notes ] || fail "the file arrived changed"
pass "a drop, the picker, a subfolder from the popup: the file arrives"
stop_both

# The same list in a window of its own.
"$BIN" --destinations 2>"$E2E_HOME/manager.log" &
pid=$!
wait_until 5 has_window '^Destinations$' || { cat "$E2E_HOME/manager.log"; fail "quaydrop --destinations opened no window"; }
kill "$pid"
pass "quaydrop --destinations opens the destination manager"
