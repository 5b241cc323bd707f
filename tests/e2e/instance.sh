#!/usr/bin/env bash
# quaydrop toggle and quaydrop panel FILE... through the running program of the display: the first
# command starts it, later ones reach the same process; bad input is refused with its exit code.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
export QT_LOGGING_RULES="quaydrop.window.debug=true"
resident_pid() { head -n1 "$XDG_RUNTIME_DIR"/com.velmora.Quaydrop.*.instance.lock 2>/dev/null; }

xdotool mousemove 500 400
# The program started by the command writes its log where the command's standard error goes.
"$BIN" toggle 2>>"$log" || { cat "$log"; fail "toggle with nothing running"; }
wait_for "$log" "quaydrop: running" 15 || { cat "$log"; fail "toggle did not start Quaydrop"; }
pid=$(resident_pid)
wait_for "$log" "panel 111 shown" 5 || { cat "$log"; fail "toggle did not open the window"; }
wait_until 5 window_shown || fail "the window is not on screen after toggle"
"$BIN" toggle 2>>"$log"
wait_until 5 eval '! window_shown' || fail "toggle again did not close the window"
pass "toggle starts Quaydrop, opens the window and closes it again"

mkdir -p "$E2E_HOME/files/with space"
printf 'a' >"$E2E_HOME/files/a.txt"
printf 'b' >"$E2E_HOME/files/with space/b
c.txt"
cp "$E2E_HOME/files/a.txt" "$E2E_HOME/files/$(printf 'caf\xe9.txt')"
cd "$E2E_HOME/files"
"$BIN" panel a.txt "with space/b
c.txt" "$(printf 'caf\xe9.txt')" 2>>"$log" || fail "panel for three files"
wait_for "$log" "panel 888 shown" 5 || { cat "$log"; fail "the panel for several files did not show"; }
[ "$(resident_pid)" = "$pid" ] || fail "a second Quaydrop was started"
window_shown || fail "the panel's window is not on screen"
pass "panel for three files (a space, a line break, a name that is not UTF-8) in the running Quaydrop"
"$BIN" toggle 2>>"$log"

status=0
"$BIN" panel a.txt missing.txt 2>"$E2E_HOME/err" || status=$?
[ $status = 2 ] || fail "a missing file gave exit $status, not 2"
grep -q "missing.txt: No such file or directory" "$E2E_HOME/err" || fail "no clear error: $(cat "$E2E_HOME/err")"
status=0
env -u DISPLAY -u WAYLAND_DISPLAY "$BIN" panel a.txt 2>"$E2E_HOME/err" || status=$?
[ $status = 1 ] && grep -q "no display" "$E2E_HOME/err" || fail "without a display: exit $status, $(cat "$E2E_HOME/err")"
pass "a missing file exits 2, no display exits 1, each with a clear line"

mkdir many && (cd many && seq -f 'f%05g' 10000 | xargs touch)
before=$(grep -c "panel 888 shown" "$log")
timeout 20 "$BIN" panel many/* 2>>"$log" || fail "panel for 10,000 files did not return"
more_panels() { [ "$(grep -c "panel 888 shown" "$log")" -gt "$before" ]; }
wait_until 10 more_panels || { tail "$log"; fail "no panel for 10,000 files"; }
[ "$(resident_pid)" = "$pid" ] || fail "Quaydrop did not survive 10,000 files"
pass "panel for 10,000 files"
stop_quaydrop
