#!/usr/bin/env bash
# How light Quaydrop starts, against peers in the same run; prints the ratios (of medians, and of the
# fastest runs, which a loaded machine disturbs least).
#   1. quaydrop --help, type FILE, size FILE against stat FILE (target <= 3 x), cp --help and a bare
#      QCoreApplication (what a Qt command with an application object pays), alone and looking a
#      file's type up through Qt's type database
#   2. quaydrop copy of one 512 MiB file against cp (target <= 1.1 x)
#   3. the resident program at rest: resident memory (target <= 35 MiB) beside a bare QApplication
#      with a tray icon and a hidden window (the floor), and no decoder library mapped; under Xvfb
#      when there is no display
# Every figure comes with the load average: on a loaded machine each grows, the ratios less so.
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
BARE_COMMAND=$(realpath "$BUILD/bench/bare_qt_command")
BARE_RESIDENT=$(realpath "$BUILD/bench/bare_qt_resident")
RUNS=${RUNS:-30}
work=$(mktemp -d /tmp/quaydrop-startbench-XXXXXX)
pid=
trap '[ -n "$pid" ] && kill "$pid" 2>/dev/null && wait "$pid"; rm -rf "$work"' EXIT
load() { cut -d' ' -f1-3 /proc/loadavg; }
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data"
export XDG_CACHE_HOME="$work/home/cache" XDG_RUNTIME_DIR="$work/home/run" DBUS_SESSION_BUS_ADDRESS=disabled:
mkdir -p -m 0700 "$XDG_RUNTIME_DIR"

rest() { # starts "$@" as pid, waits for its "running" line and 3 s more; its resident KiB in rss
  "$@" >/dev/null 2>"$work/resident.log" &
  pid=$!
  for _ in $(seq 100); do grep -q ": running" "$work/resident.log" && break; sleep 0.1; done
  sleep 3
  rss=$(awk '/^VmRSS/ { print $2 }' "/proc/$pid/status")
}

at_rest() {
  mkdir -p "$XDG_CONFIG_HOME/com.velmora.Quaydrop"
  printf '[General]\nkDontShowIntroSlider=true\nshowLoginAtLaunchBoolKey=true\n' >"$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"
  rest "$BARE_RESIDENT"
  b=$rss
  kill "$pid" && wait "$pid" 2>/dev/null || true
  rest "$BIN"
  q=$rss
  p=$(awk '/^Pss:/ { print $2 }' "/proc/$pid/smaps_rollup")
  d=$(awk '/^Private_Dirty:/ { print $2 }' "/proc/$pid/smaps_rollup")
  awk -v q="$q" -v b="$b" -v p="$p" -v d="$d" -v l="$(load)" 'BEGIN {
    printf "resident RSS %.1f MiB (target <= 35 MiB)   bare Qt tray program %.1f MiB   ratio %.2f   (load %s)\n", q / 1024, b / 1024, q / b, l
    printf "  proportional %.1f MiB, its own %.1f MiB\n", p / 1024, d / 1024 }'
  if grep -qE 'lib(vips|poppler|MagickCore|openjp2|turbojpeg)' "/proc/$pid/maps"; then
    echo "decoder libraries mapped: $(grep -oE '[^/ ]*lib(vips|poppler|MagickCore|openjp2|turbojpeg)[^ ]*' "/proc/$pid/maps" | sort -u | xargs)"
  else
    echo "decoder libraries mapped: none; mapped shared libraries: $(grep -c '\.so' <(awk '{ print $6 }' "/proc/$pid/maps" | sort -u))"
  fi
}
if [ "${2:-}" = --at-rest ]; then
  at_rest
  exit
fi

# Median milliseconds of a command: on a shared machine the mean follows the other loads.
mean_ms() {
  hyperfine -N --runs "$RUNS" --warmup 3 --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"median": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1 | awk '{ printf "%.2f", $1 * 1000 }'
}
# The fastest run of the command mean_ms timed last: what it costs when nothing else runs.
fastest_ms() { sed -n 's/.*"min": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1 | awk '{ printf "%.2f", $1 * 1000 }'; }

echo "== start of a command (load $(load))"
printf 'some text\n' >"$work/note.txt"
s=$(mean_ms "stat $work/note.txt"); sf=$(fastest_ms)
c=$(mean_ms "cp --help")
b=$(mean_ms "$BARE_COMMAND"); bf=$(fastest_ms)
awk -v s="$s" -v c="$c" -v b="$b" -v sf="$sf" -v bf="$bf" 'BEGIN {
  printf "peers: stat FILE %.2f ms (fastest %.2f)   cp --help %.2f ms   bare QCoreApplication %.2f ms (fastest %.2f; ratio to stat %.2f, fastest %.2f)\n",
         s, sf, c, b, bf, b / s, bf / sf }'
bt=$(mean_ms "$BARE_COMMAND $work/note.txt"); btf=$(fastest_ms)
awk -v q="$bt" -v s="$s" -v qf="$btf" -v sf="$sf" 'BEGIN {
  printf "bare Qt type lookup (QMimeDatabase by name) %.2f ms (fastest %.2f; ratio to stat %.2f, fastest %.2f: what quaydrop type would cost through Qt)\n", q, qf, q / s, qf / sf }'
for cmd in --help type size; do
  arg=$([ "$cmd" = --help ] || echo "$work/note.txt")
  q=$(mean_ms "$BIN $cmd $arg"); qf=$(fastest_ms)
  awk -v n="quaydrop $cmd" -v q="$q" -v s="$s" -v c="$c" -v b="$b" -v qf="$qf" -v sf="$sf" 'BEGIN {
    printf "%-16s %6.2f ms   ratio to stat %.2f (target <= 3), fastest runs %.2f   to cp --help %.2f   to bare Qt %.2f\n",
           n, q, q / s, qf / sf, q / c, q / b }'
done
echo "   (load $(load))"

echo "== copy of one 512 MiB file"
mkdir -p "$work/src" "$work/out"
head -c $((512 << 20)) /dev/urandom >"$work/src/big.bin"
copy_mean() {
  hyperfine --runs 5 --warmup 1 --prepare "rm -rf $work/out && mkdir -p $work/out" \
    --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1
}
q=$(copy_mean "$BIN copy $work/src/big.bin $work/out")
c=$(copy_mean "cp $work/src/big.bin $work/out/")
awk -v q="$q" -v c="$c" 'BEGIN { printf "quaydrop copy %.3f s   cp %.3f s   ratio %.2f (target <= 1.1)\n", q, c, q / c }'
rm -rf "$work/src" "$work/out"

echo "== the resident program at rest"
if [ -n "${DISPLAY:-}" ]; then
  at_rest
else
  xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" bash "$0" "$BUILD" --at-rest
fi
