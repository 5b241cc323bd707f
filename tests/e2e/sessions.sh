#!/usr/bin/env bash
# One program per display, not per user: two X servers that share one runtime folder each run their
# own Quaydrop, and a second start on one of them reaches the program of that display only.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
xvfbs=() apps=()
trap 'leave "${apps[@]}" "${xvfbs[@]}"' EXIT

start_display() { # start_display NAME: a new Xvfb; its number is read by display_number NAME
  Xvfb -displayfd 9 -screen 0 1024x768x24 -nolisten tcp 9>"$E2E_HOME/display.$1" >/dev/null 2>&1 &
  xvfbs+=($!)
}
display_number() {
  for _ in $(seq 100); do [ -s "$E2E_HOME/display.$1" ] && break; sleep 0.1; done
  tr -d '[:space:]' <"$E2E_HOME/display.$1"
}
start_display a
start_display b
a=$(display_number a) b=$(display_number b)
[ -n "$a" ] && [ -n "$b" ] || fail "Xvfb did not start"

DISPLAY=":$a" "$BIN" 2>"$E2E_HOME/a.log" &
apps+=($!)
wait_for "$E2E_HOME/a.log" "quaydrop: running" 10 || { cat "$E2E_HOME/a.log"; fail "no start on :$a"; }
DISPLAY=":$b" "$BIN" 2>"$E2E_HOME/b.log" &
apps+=($!)
wait_for "$E2E_HOME/b.log" "quaydrop: running" 10 || { cat "$E2E_HOME/b.log"; fail "the second display's program did not start"; }
grep -q "already running" "$E2E_HOME/b.log" && fail "the second display found the first display's program"
sleep 0.5
kill -0 "${apps[0]}" && kill -0 "${apps[1]}" || fail "one of the two programs did not stay up"
pass "two displays sharing one runtime folder run a program each"

DISPLAY=":$a.0" timeout 10 "$BIN" 2>"$E2E_HOME/again.log" || fail "second start failed: $(cat "$E2E_HOME/again.log")"
grep -q "already running" "$E2E_HOME/again.log" || fail "the second start on :$a did not find its program"
wait_for "$E2E_HOME/a.log" "a second start was passed to this process" 5 || fail ":$a's program did not hear it"
sleep 0.3
grep -q "a second start was passed" "$E2E_HOME/b.log" && fail ":$b's program heard a start meant for :$a"
pass "a second start reaches the program of its own display only"
