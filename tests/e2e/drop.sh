#!/usr/bin/env bash
# Real drops on the drop window over X11 drag and drop, from a drag source of the test's own: a file,
# a folder, text and a promised file each bring up their panel; the small targets
# below open the quick-move picker and make aliases.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
screen_h=$(xdpyinfo | awk '/dimensions:/ {split($2, d, "x"); print d[2]}')

files="$E2E_HOME/files"
mkdir -p "$files/Projects"
printf 'notes\n' >"$files/notes.txt"

# The drop window opens at a fixed place: (600, 400) in the program's y-up coordinates. Each drop gets
# a fresh start, so that each begins at the drop target.
target_x=600
target_y=$((screen_h - 400 - 45))

# (Which view each kind of drop brings is tst_intake's; here the drops go over real X11. A file dropped
# on the raised window: watcher.sh.)
# A folder's panel looks like another file's: only the log tells them apart.
drag_onto "$target_x" "$target_y" --files "$files/Projects"
wait_for "$log" "panel 333 shown" 5 || { cat "$log"; fail "no folder panel after dropping a folder"; }
stop_both
pass "dropping a folder shows the folder panel"
temp="$XDG_CACHE_HOME/com.velmora.Quaydrop/QDTempOperations"
drag_onto "$target_x" "$target_y" --text "Ships leave the quay at dawn"
wait_for "$log" "panel 222 shown" 5 || { cat "$log"; fail "no panel 222 after dropping text"; }
[ "$(cat "$temp/_tempDroppedStr.txt")" = "Ships leave the quay at dawn" ] || fail "the dropped text is not in _tempDroppedStr.txt"
stop_both
pass "dropping text shows panel 222 and keeps the text in _tempDroppedStr.txt"

# A file the source writes only once told where (X Direct Save): it lands in a fresh folder of the
# temp folder, and its panel shows once it is complete.
drag_onto "$target_x" "$target_y" --promise "Quay report.txt"
wait_for "$log" "panel 2 shown" 5 || { cat "$log"; fail "no panel 2 after dropping a promised text file"; }
written=$(sed -n 's/^wrote //p' "$out")
case "$written" in
  "$temp"/*/"Quay report.txt") ;;
  *) fail "the promised file went to '$written'" ;;
esac
[ -s "$written" ] || fail "the promised file is not there"
stop_both
[ ! -e "$written" ] || fail "the promised file outlived the program's stop"
pass "a promised file is written into the temp folder and shows its panel"

# The small targets below the window's own, a row each: above the quick-move picker (destinations.sh),
# below an alias.
window_top=$((screen_h - 400 - 90))
drag_onto $((target_x)) $((window_top + 81)) --files "$files/notes.txt" "$files/Projects"
wait_until 5 test -L "$files/Projects alias" || fail "no alias of the folder"
[ "$(readlink "$files/notes.txt alias")" = "$files/notes.txt" ] || fail "no alias of the file"
[ "$(readlink "$files/Projects alias")" = "$files/Projects" ] || fail "no alias of the folder"
pass "dropping on the alias target makes aliases beside the items"
# No notification server runs here: the result is told in the program's own balloon.
wait_until 3 has_window '^Quaydrop$' || { cat "$log"; fail "no balloon told that the aliases were made"; }
grep -q "no notification server" "$log" || fail "the balloon came without its reason in the log"
sleep 5.5
! has_window '^Quaydrop$' || fail "the balloon stayed longer than five seconds"
stop_both
pass "without a notification server a balloon tells it, for five seconds"
