#!/usr/bin/env bash
# The temp folder is emptied when the machine wakes: logind's PrepareForSleep(false) on the system bus.
# The bus is a private dbus-daemon, and logind is the test's own small service on it; a signal from
# anyone else, and the one before sleep, change nothing.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
LOGIN1=$SOURCE

dbus-daemon --config-file="$(dirname "$0")/system-bus.conf" --nofork --print-address=9 9>"$E2E_HOME/bus" 2>"$E2E_HOME/bus.log" &
also=$!
for _ in $(seq 200); do [ -s "$E2E_HOME/bus" ] && break; sleep 0.1; done
export DBUS_SYSTEM_BUS_ADDRESS=$(head -1 "$E2E_HOME/bus")
[ -n "$DBUS_SYSTEM_BUS_ADDRESS" ] || fail "the private system bus did not start: $(cat "$E2E_HOME/bus.log")"

start_quaydrop
grep -q "no system bus\|cannot listen for wake" "$log" && fail "did not listen on the private system bus: $(cat "$log")"

temp="$XDG_CACHE_HOME/com.velmora.Quaydrop/QDTempOperations"
mkdir -p "$temp/promised-drop" && echo data >"$temp/promised-drop/photo.png"
# Not logind: the same signal from a name that is not org.freedesktop.login1.
dbus-send --bus="$DBUS_SYSTEM_BUS_ADDRESS" --type=signal /org/freedesktop/login1 \
  org.freedesktop.login1.Manager.PrepareForSleep boolean:false || fail "dbus-send could not send on the private bus"
"$LOGIN1" sleep || fail "the login1 stand-in failed: $(cat "$E2E_HOME/bus.log")"
sleep 0.5
[ -f "$temp/promised-drop/photo.png" ] || fail "the temp folder was emptied before the wake"
pass "going to sleep, and a stranger's signal, leave the temp folder alone"

"$LOGIN1" wake || fail "the login1 stand-in failed"
wait_for "$log" "woke from sleep" 20 || { cat "$log"; fail "the wake was not heard"; }
[ -z "$(ls -A "$temp")" ] || fail "temp folder not emptied on wake: $(ls -A "$temp")"
[ "$(grep -c 'woke from sleep' "$log")" = 1 ] || fail "one wake was taken for $(grep -c 'woke from sleep' "$log")"
pass "the wake empties the temp folder once"
