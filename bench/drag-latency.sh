#!/usr/bin/env bash
# How fast a drag raises the drop window, and what the resident program costs while nothing happens.
#   1. 50 real drags from a Qt drag source (which starts its drag once the pressed pointer moved, as
#      applications do), driven by xdotool: from the drag's start (the new owner of XdndSelection) to
#      the drop window mapped. Targets: median <= 3 ms, 99th percentile <= 8 ms. The floor beside it is
#      a bare xcb client mapping a window at the same moment: ratio = quaydrop / floor. The machine's
#      load average is printed with the figures: on a loaded machine every figure grows.
#   2. Resident and idle for 60 s: CPU time (target <= 0.05 s), wake-ups, resident memory (target <= 60 MiB).
# Runs on $DISPLAY, or starts Xvfb when there is none.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=$(realpath "${1:-$root/build}")
if [ -z "${DISPLAY:-}" ]; then
  echo "no display: running under Xvfb"
  exec xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" bash "$0" "$BUILD"
fi
BIN="$BUILD/src/app/quaydrop"
SOURCE="$BUILD/tests/e2e/qd_dragsource"
PROBE="$BUILD/bench/drag_watch_probe"
DRAGS=${DRAGS:-50}
IDLE_SECONDS=${IDLE_SECONDS:-60}
work=$(mktemp -d /tmp/quaydrop-dragbench-XXXXXX)
trap 'kill $pid $src $probe 2>/dev/null || true; rm -rf "$work"' EXIT
export HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_CACHE_HOME="$work/cache"
export XDG_RUNTIME_DIR="$work/run" DBUS_SESSION_BUS_ADDRESS=disabled:
mkdir -p -m 0700 "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME/com.velmora.Quaydrop"
printf '[General]\nshowLoginAtLaunchBoolKey=true\nkDontShowIntroSlider=true\n' >"$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"
printf 'notes\n' >"$work/notes.txt"

wait_line() { # file, pattern, seconds
  for _ in $(seq $(($3 * 50))); do grep -q -- "$2" "$1" 2>/dev/null && return 0; sleep 0.02; done
  return 1
}
mapped() { xwininfo -name "Quaydrop drop window" 2>/dev/null | grep -q IsViewable; }

"$BIN" 2>"$work/quaydrop.log" &
pid=$!
wait_line "$work/quaydrop.log" "quaydrop: running" 10 || { cat "$work/quaydrop.log"; exit 1; }
"$PROBE" "$DRAGS" >"$work/probe.out" &
probe=$!
wait_line "$work/probe.out" ready 5
"$SOURCE" --files "$work/notes.txt" >"$work/source.out" 2>/dev/null &
src=$!
wait_line "$work/source.out" ready 10
sleep 0.5

echo "== $DRAGS drags (load average $(cut -d' ' -f1-3 /proc/loadavg))"
for i in $(seq "$DRAGS"); do
  xdotool mousemove 100 100 mousedown 1
  for _ in $(seq 40); do
    xdotool mousemove_relative -- 1 4
    grep -q "^drag $i " "$work/probe.out" && break
    sleep 0.02
  done
  # Let go far away, then wander off so that the window closes before the next drag.
  xdotool mousemove 1000 700
  sleep 0.05
  xdotool mouseup 1
  for _ in $(seq 50); do
    mapped || break
    xdotool mousemove_relative -- 5 5
    sleep 0.02
  done
done
# A drag is reported once both windows came, or when the next drag starts.
for _ in $(seq 100); do kill -0 "$probe" 2>/dev/null || break; sleep 0.05; done
kill "$probe" 2>/dev/null || true
kill "$src" 2>/dev/null || true

awk '$1 == "drag" && $4 != "-" { q[++n] = $4 } $1 == "drag" && $6 != "-" { f[++m] = $6 }
  $1 == "drag" && $4 == "-" { missed++ }
  function sort(a, k,   i, j, t) { for (i = 2; i <= k; i++) for (j = i; j > 1 && a[j-1] > a[j]; j--) { t = a[j]; a[j] = a[j-1]; a[j-1] = t } }
  function pct(a, k, p,   r) { r = int(p * k + 0.999999); if (r < 1) r = 1; return a[r] }
  END {
    if (n == 0) { print "no drag raised the window"; exit 1 }
    sort(q, n); sort(f, m)
    printf "drag start to window mapped  median %.1f ms  p99 %.1f ms  max %.1f ms  (%d drags, %d raised nothing)\n",
           pct(q, n, 0.5), pct(q, n, 0.99), q[n], n + missed, missed
    printf "floor (bare xcb client)      median %.1f ms  p99 %.1f ms\n", pct(f, m, 0.5), pct(f, m, 0.99)
    printf "ratio to the floor           median %.1f\n", pct(q, n, 0.5) / pct(f, m, 0.5)
    printf "targets: median <= 3 ms %s, p99 <= 8 ms %s\n", pct(q, n, 0.5) <= 3 ? "met" : "MISSED", pct(q, n, 0.99) <= 8 ? "met" : "MISSED"
  }' "$work/probe.out"

echo "== idle for $IDLE_SECONDS s"
sleep 2
ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }
# Per thread, as "tid switches": pool threads that end meanwhile take their counts with them.
switches() { for t in /proc/$pid/task/*; do echo "${t##*/} $(awk '/^voluntary_ctxt_switches/ {print $2}' "$t/status")"; done; }
t0=$(ticks); switches >"$work/switches.0"
sleep "$IDLE_SECONDS"
t1=$(ticks); switches >"$work/switches.1"
s0=0
s1=$(awk 'NR == FNR {before[$1] = $2; next} $1 in before {s += $2 - before[$1]} !($1 in before) {s += $2} END {print s + 0}' \
  "$work/switches.0" "$work/switches.1")
rss=$(awk '/VmRSS/ {print $2}' "/proc/$pid/status")
awk -v t=$((t1 - t0)) -v hz="$(getconf CLK_TCK)" -v s=$((s1 - s0)) -v rss="$rss" -v secs="$IDLE_SECONDS" 'BEGIN {
  printf "CPU time %.3f s over %d s (target <= 0.05 s)   wake-ups %d   resident memory %.1f MiB (target <= 60 MiB)\n",
         t / hz, secs, s, rss / 1024 }'
kill -TERM "$pid"
wait "$pid" 2>/dev/null || true
