#!/usr/bin/env bash
# Real drops on the drop window over X11 drag and drop, from a drag source of the test's own: a file,
# a folder, several files and text each bring up their panel.
source "$(dirname "$0")/lib.sh"
BIN=$1
SOURCE=$2
private_home
trap 'kill $pid $src 2>/dev/null || true; rm -rf "$E2E_HOME"' EXIT
command -v xdotool >/dev/null || fail "xdotool is missing (scripts/install-deps.sh installs it)"
screen_h=$(xdpyinfo | awk '/dimensions:/ {split($2, d, "x"); print d[2]}')

# Not the first start: the launch-at-login question would sit where the drop window opens.
mkdir -p "$XDG_CONFIG_HOME/com.velmora.Quaydrop"
printf '[General]\nshowLoginAtLaunchBoolKey=true\n' >"$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"

files="$E2E_HOME/files"
mkdir -p "$files/Projects"
printf 'notes\n' >"$files/notes.txt"
printf 'a' >"$files/a.bin"
printf 'b' >"$files/b.bin"

# The drop window opens at a fixed place: (600, 400) in the program's y-up coordinates. Each drop gets
# a fresh start, so that each begins at the drop target.
target_x=600
target_y=$((screen_h - 400 - 45))

drop_and_expect() { # panel, source arguments...
  local expect=$1; shift
  local log="$E2E_HOME/quaydrop.log" out="$E2E_HOME/source.out"
  : >"$out"
  QT_LOGGING_RULES="quaydrop.window.debug=true" QUAYDROP_SHOW_DROP_WINDOW_AT=600,400 "$BIN" 2>"$log" &
  pid=$!
  wait_for "$log" "quaydrop: running" 10 || { cat "$log"; fail "no start"; }
  wait_for "$log" "panel 111 shown" 5 || { cat "$log"; fail "the drop target did not show"; }
  "$SOURCE" "$@" >"$out" 2>/dev/null &
  src=$!
  wait_for "$out" ready 10 || fail "drag source did not start"
  sleep 0.3
  xdotool mousemove 100 100 mousedown 1
  for step in 1 2 3 4 5 6 7 8 9 10; do
    xdotool mousemove $((100 + (target_x - 100) * step / 10)) $((100 + (target_y - 100) * step / 10))
    sleep 0.05
  done
  sleep 0.2
  xdotool mouseup 1
  wait_for "$out" dropped 10 || fail "the drag did not end"
  wait_for "$log" "panel $expect shown" 5 || { cat "$log"; fail "no panel $expect after dropping $*"; }
  local geometry
  geometry=$(xwininfo -name "Quaydrop drop window" | awk '/Width:/ {w=$2} /Height:/ {h=$2} END {print w "x" h}')
  [ "$geometry" = "210x235" ] || fail "the panel's window is $geometry, not 210x235"
  kill "$src" 2>/dev/null || true
  kill -TERM "$pid"
  wait_gone "$pid" 10 || fail "did not stop"
  pass "dropping $* shows panel $expect"
}

drop_and_expect 2 --files "$files/notes.txt"
drop_and_expect 333 --files "$files/Projects"
drop_and_expect 888 --files "$files/a.bin" "$files/b.bin"
drop_and_expect 222 --text "Ships leave the quay at dawn"
echo "4 passed, 0 failed"
