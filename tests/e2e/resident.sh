#!/usr/bin/env bash
# The resident program on an X server with no tray host: it starts, says it has no tray, stays up,
# turns a second start into a message to itself, and stops cleanly on SIGTERM.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
write_conf kQuaydropIsOffKey=false # left off in the last session: on again after launch
start_quaydrop
grep -q "no system tray is running" "$log" || fail "the missing tray host was not reported"
[ "$(grep -c 'no system tray' "$log")" = 1 ] || fail "the missing tray host was reported more than once"
pass "started without a tray host and said so"

temp="$XDG_CACHE_HOME/com.velmora.Quaydrop/QDTempOperations"
[ -d "$temp" ] || fail "temp folder not created at launch"
[ "$(stat -c %a "$temp")" = 700 ] || fail "temp folder is not private"
grep -q 'kQuaydropIsOffKey=true' "$conf" || fail "switch not reset to on"
pass "temp folder private, switch on"

sleep 1
kill -0 "$pid" 2>/dev/null || fail "did not stay resident"
# Decoders live in the image worker: none is mapped into the resident program before an image action.
decoders=$(grep -oE '/[^ ]*lib(vips|poppler|MagickCore|openjp2|turbojpeg|heif)[^ /]*\.so[^ ]*' "/proc/$pid/maps" | sort -u || true)
[ -z "$decoders" ] || fail "decoder libraries mapped in the resident program: $decoders"
pgrep -f "quaydrop-worker" -P "$pid" >/dev/null && fail "a worker was started before any image action"
# The printing system and GSettings are opened when a print or a GNOME shortcut first needs them.
ondemand=$(grep -oE '/[^ ]*lib(cups|gio-2\.0|gnutls)[^ /]*\.so[^ ]*' "/proc/$pid/maps" | sort -u || true)
[ -z "$ondemand" ] || fail "libraries mapped at rest that only printing or GNOME shortcuts need: $ondemand"
pass "no decoder, printing or GSettings library mapped and no worker running at rest"

second_log="$E2E_HOME/second.log"
# (That it says so and the first hears it: sessions.sh, for each of two displays.)
timeout 10 "$BIN" 2>"$second_log" || fail "second start failed: $(cat "$second_log")"
[ "$(pgrep -c -f "^$BIN\$" || true)" -le 1 ] || fail "a second process stayed"
pass "a second start reaches the first and leaves"
# No tray to click: the second start is the way to the options, as a window of its own.
wait_until 5 has_window '^Quaydrop options$' || fail "the options did not open as a window"
pass "without a tray a second start opens the options"

mkdir -p "$temp/promised-drop" && echo data >"$temp/promised-drop/file.png" && touch "$temp/.hidden"
kill -TERM "$pid"
wait_gone "$pid" 10 || fail "did not stop on SIGTERM"
wait "$pid" && status=0 || status=$?
[ "$status" = 0 ] || fail "exit status $status after SIGTERM"
[ -z "$(ls -A "$temp")" ] || fail "temp folder not emptied at stop: $(ls -A "$temp")"
pass "SIGTERM stops it cleanly and empties the temp folder"
