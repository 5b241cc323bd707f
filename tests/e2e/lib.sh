# Helpers for the end-to-end scripts: a private home for each run, and checks that fail loudly.
set -euo pipefail
# A command that fails unchecked ends the script: say which, so that the failure is never silent.
trap 'echo "FAIL: line $LINENO: $BASH_COMMAND exited with $?" >&2' ERR

fail() { echo "FAIL: $*" >&2; exit 1; }
pass() { echo "PASS: $*"; }

private_home() {
  E2E_HOME=$(mktemp -d /tmp/quaydrop-e2e-XXXXXX)
  export HOME="$E2E_HOME"
  export XDG_CONFIG_HOME="$E2E_HOME/config" XDG_DATA_HOME="$E2E_HOME/data" XDG_CACHE_HOME="$E2E_HOME/cache"
  export XDG_RUNTIME_DIR="$E2E_HOME/run"
  mkdir -p -m 0700 "$XDG_RUNTIME_DIR"
}

# The start of a script: BIN and SOURCE (the drag source, or another helper) from the arguments, a
# private home with the settings file, the log and the source's output in it, and on exit the program,
# the source and the processes in also stopped.
e2e_begin() {
  BIN=$1 SOURCE=${2:-}
  private_home
  write_conf
  log="$E2E_HOME/quaydrop.log" out="$E2E_HOME/source.out" pid= src= also=
  trap 'leave $pid $src $also' EXIT
}

# The settings file, past the first start's questions (the login question would sit where the drop
# window opens); each argument is one more line of it. conf names it.
write_conf() {
  conf="$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"
  mkdir -p "$(dirname "$conf")"
  printf '[General]\nshowLoginAtLaunchBoolKey=true\nkDontShowIntroSlider=true\n' >"$conf"
  local line
  for line in "$@"; do echo "$line" >>"$conf"; done
}

# start_quaydrop [LOGGING_RULES]: $BIN in the background, its log in $log, its process in pid.
start_quaydrop() {
  QT_LOGGING_RULES="${1:-}" "$BIN" 2>"$log" &
  pid=$!
  wait_for "$log" "quaydrop: running" 10 || { cat "$log"; fail "no start"; }
}
stop_quaydrop() {
  kill -TERM "$pid"
  wait_gone "$pid" 10 || fail "did not stop"
}

# wait_until SECONDS COMMAND...: true as soon as COMMAND is.
wait_until() {
  local n=$(($1 * 10))
  shift
  for _ in $(seq "$n"); do "$@" && return 0; sleep 0.1; done
  return 1
}
has_window() { xdotool search --onlyvisible --name "$1" >/dev/null 2>&1; }

# How often the drop target was shown, by $log; raised_since N: more often than N.
shown_count() { grep -c "panel 111 shown" "$log" 2>/dev/null || true; }
raised_since() { [ "$(shown_count)" -gt "$1" ]; }

# The drop window as "x y width height map-state".
window_geometry() {
  xwininfo -name "Quaydrop drop window" 2>/dev/null |
    awk '/Absolute upper-left X/ {x=$4} /Absolute upper-left Y/ {y=$4} /Width:/ {w=$2} /Height:/ {h=$2} /Map State/ {m=$3}
         END {print x, y, w, h, m}'
}
window_shown() { [ "$(window_geometry | cut -d' ' -f5)" = IsViewable ]; }

# glide_to X Y: the pointer there in ten steps, as a hand moves during a drag.
glide_to() {
  eval "$(xdotool getmouselocation --shell)"
  local i
  for i in $(seq 10); do
    xdotool mousemove_relative -- $((($1 - X) * i / 10 - ($1 - X) * (i - 1) / 10)) $((($2 - Y) * i / 10 - ($2 - Y) * (i - 1) / 10))
    sleep 0.04
  done
}

# For the EXIT trap: stops the given processes, waits for them to go (a program on its way out still
# writes to its home), then removes the private home.
leave() {
  local p
  kill "$@" 2>/dev/null || true
  for p in "$@"; do wait_gone "$p" 3 || kill -KILL "$p" 2>/dev/null || true; done
  rm -rf "$E2E_HOME" 2>/dev/null || { sleep 1; rm -rf "$E2E_HOME"; } || true
}

# wait_for FILE TEXT SECONDS
wait_for() {
  for _ in $(seq $(($3 * 10))); do
    grep -q -- "$2" "$1" 2>/dev/null && return 0
    sleep 0.1
  done
  return 1
}

# wait_gone PID SECONDS
wait_gone() {
  for _ in $(seq $(($2 * 10))); do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}

# The drag source of the tests (qd_dragsource, $SOURCE) up with these arguments: its output in $out
# ("ready", "dropped" once a drag ends), its process in src.
start_source() {
  : >"$out"
  "$SOURCE" "$@" >"$out" 2>/dev/null &
  src=$!
  wait_for "$out" ready 10 || fail "drag source did not start"
}

# The button released, and the source's drag seen to end.
let_go() {
  local drops=$(grep -c dropped "$out" || true)
  xdotool mouseup 1
  wait_until 10 eval '[ "$(grep -c dropped "$out" || true)" -gt '"$drops"' ]' || fail "the drag did not end"
}

# drag_until_raised DX DY [WHAT]: a press where the pointer is, over the source, then steps of (DX, DY)
# as a hand moves, until the drop window is raised (a loaded machine may start the drag late).
drag_until_raised() {
  local before=$(shown_count)
  xdotool mousedown 1
  for _ in $(seq 30); do
    xdotool mousemove_relative -- "$1" "$2"
    sleep 0.04
    raised_since "$before" && return
  done
  wait_until 5 raised_since "$before" || { cat "$log"; fail "${3:-a drag}: the drag raised nothing"; }
}

# Real drops on the drop window: the program started with its drop target up, then a drag from the
# source (with these arguments) to (x, y), let go there; the caller sets BIN, SOURCE, log and out.
drag_onto() { # x, y, source arguments...
  local x=$1 y=$2; shift 2
  QUAYDROP_SHOW_DROP_WINDOW_AT=600,400 start_quaydrop "quaydrop.window.debug=true"
  wait_for "$log" "panel 111 shown" 5 || { cat "$log"; fail "the drop target did not show"; }
  start_source "$@"
  sleep 0.3
  xdotool mousemove 100 100 mousedown 1
  for step in 1 2 3 4 5 6 7 8 9 10; do
    xdotool mousemove $((100 + (x - 100) * step / 10)) $((100 + (y - 100) * step / 10))
    sleep 0.05
  done
  sleep 0.2
  let_go
}

stop_both() {
  kill "$src" 2>/dev/null || true
  stop_quaydrop
}
