#!/usr/bin/env bash
# How light Quaydrop starts, against peers in the same run; prints the ratios.
#   1. quaydrop --help, type FILE, size FILE against stat FILE (target <= 3 x) and cp --help
#   2. quaydrop copy of one 512 MiB file against cp (target <= 1.1 x)
#   3. the resident program at rest: resident memory (target <= 35 MiB) and no decoder
#      library mapped; under Xvfb when there is no display
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
RUNS=${RUNS:-30}
work=$(mktemp -d /tmp/quaydrop-startbench-XXXXXX)
pid=
trap '[ -n "$pid" ] && kill "$pid" 2>/dev/null && wait "$pid"; rm -rf "$work"' EXIT
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data"
export XDG_CACHE_HOME="$work/home/cache" XDG_RUNTIME_DIR="$work/home/run" DBUS_SESSION_BUS_ADDRESS=disabled:
mkdir -p -m 0700 "$XDG_RUNTIME_DIR"

at_rest() {
  mkdir -p "$XDG_CONFIG_HOME/com.velmora.Quaydrop"
  printf '[General]\nkDontShowIntroSlider=true\n' >"$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"
  "$BIN" 2>"$work/resident.log" &
  pid=$!
  for _ in $(seq 100); do grep -q "quaydrop: running" "$work/resident.log" && break; sleep 0.1; done
  sleep 3
  q=$(awk '/^VmRSS/ { print $2 }' "/proc/$pid/status")
  p=$(awk '/^Pss:/ { print $2 }' "/proc/$pid/smaps_rollup")
  d=$(awk '/^Private_Dirty:/ { print $2 }' "/proc/$pid/smaps_rollup")
  awk -v q="$q" -v p="$p" -v d="$d" 'BEGIN {
    printf "resident RSS %.1f MiB (target <= 35 MiB); proportional %.1f MiB, its own %.1f MiB\n", q / 1024, p / 1024, d / 1024 }'
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

mean_ms() { # mean milliseconds of a command
  hyperfine -N --runs "$RUNS" --warmup 3 --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1 | awk '{ printf "%.2f", $1 * 1000 }'
}

echo "== start of a command"
printf 'some text\n' >"$work/note.txt"
s=$(mean_ms "stat $work/note.txt")
c=$(mean_ms "cp --help")
for cmd in --help type size; do
  arg=$([ "$cmd" = --help ] || echo "$work/note.txt")
  q=$(mean_ms "$BIN $cmd $arg")
  awk -v n="quaydrop $cmd" -v q="$q" -v s="$s" -v c="$c" 'BEGIN {
    printf "%-16s %6.2f ms   stat FILE %.2f ms  ratio %.2f (target <= 3)   cp --help %.2f ms  ratio %.2f\n",
           n, q, s, q / s, c, q / c }'
done

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
