#!/usr/bin/env bash
# The image worker against libvips's own tools on the same input, in one run; prints the ratios.
#   1. a 16,000 x 16,000 PNG converted to JPEG at quality 75 (compression 25 %), against `vips copy`
#      at its default quality 75 (target <= 1.3 x the time), and resized to 100 wide, against
#      vipsthumbnail (target <= 1.3 x); peak memory of the program and its worker (target <= 250 MB)
#   2. what the first job after idle pays for starting the worker (target <= 120 ms), beside the start
#      of vipsheader on the same file, and whether an idle worker has gone after its 30 s
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
WORKER=$(realpath "$BUILD/src/app/quaydrop-worker")
START=$(realpath "$BUILD/bench/worker_start")
SIDE=${SIDE:-16000}
RUNS=${RUNS:-3}
work=$(mktemp -d /tmp/quaydrop-workerbench-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/out"
export QUAYDROP_VERBOSE=0 DBUS_SESSION_BUS_ADDRESS=disabled:

# The worker's own peak is written beside the program's: the program runs it through this.
cat >"$work/timed-worker" <<EOF
#!/bin/sh
exec /usr/bin/time -f %M -o "$work/worker.kib" "$WORKER" "\$@"
EOF
chmod +x "$work/timed-worker"

mean() { # mean seconds over RUNS runs, the output folder emptied before each
  hyperfine --runs "$RUNS" --warmup 1 --prepare "rm -rf $work/out && mkdir -p $work/out" \
    --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1
}
peak_mb() { # peak resident megabytes of a command or of its worker, whichever is larger
  rm -rf "$work/out" "$work/worker.kib" && mkdir -p "$work/out"
  local own
  own=$(QUAYDROP_WORKER="$work/timed-worker" /usr/bin/time -f %M "$@" 2>&1 >/dev/null | tail -1)
  awk -v a="$own" -v b="$(cat "$work/worker.kib" 2>/dev/null || echo 0)" 'BEGIN { printf "%.0f", (a > b ? a : b) * 1.024 / 1000 }'
}

echo "== making a PNG of $SIDE x $SIDE"
vips sines "$work/s.v" "$SIDE" "$SIDE" --hfreq 3 --vfreq 2 --uchar
vips colourspace "$work/s.v" "$work/big.png" srgb
rm -f "$work/s.v"
ls -l "$work/big.png" | awk '{ printf "%.0f MB\n", $5 / 1e6 }'

echo "== convert to JPEG"
q=$(mean "$BIN convert jpg --compression 25 --dest $work/out $work/big.png")
v=$(mean "vips copy $work/big.png $work/out/big.jpg")
qm=$(peak_mb "$BIN" convert jpg --compression 25 --dest "$work/out" "$work/big.png")
vm=$(peak_mb vips copy "$work/big.png" "$work/out/big.jpg")
awk -v q="$q" -v v="$v" -v qm="$qm" -v vm="$vm" 'BEGIN {
  printf "time    quaydrop %.2f s   vips copy %.2f s   ratio %.2f (target <= 1.3)\n", q, v, q / v
  printf "memory  quaydrop %d MB   vips copy %d MB (target <= 250 MB)\n", qm, vm }'

echo "== resize to 100 wide"
q=$(mean "$BIN resize --width 100 --dest $work/out $work/big.png")
v=$(mean "vipsthumbnail $work/big.png -s 100x100000 -o $work/out/%s_t.png")
qm=$(peak_mb "$BIN" resize --width 100 --dest "$work/out" "$work/big.png")
vm=$(peak_mb vipsthumbnail "$work/big.png" -s 100x100000 -o "$work/out/%s_t.png")
awk -v q="$q" -v v="$v" -v qm="$qm" -v vm="$vm" 'BEGIN {
  printf "time    quaydrop %.2f s   vipsthumbnail %.2f s   ratio %.2f (target <= 1.3)\n", q, v, q / v
  printf "memory  quaydrop %d MB   vipsthumbnail %d MB (target <= 250 MB)\n", qm, vm }'

echo "== starting the worker"
vips resize "$work/big.png" "$work/small.jpg" 0.025
p=$(hyperfine -N --runs 20 --warmup 3 --export-json "$work/h.json" "vipsheader $work/small.jpg" >/dev/null 2>&1 &&
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1)
QUAYDROP_WORKER="$WORKER" "$START" "$work/small.jpg" 20 --idle >"$work/start.txt"
awk -v p="$p" '/^cold/ { c = $2 } /^warm/ { w = $2 } /^alive/ { alive = $0 } END {
  printf "first job after idle pays %.1f ms (cold %.1f, warm %.1f; target <= 120 ms)   vipsheader %.1f ms   ratio %.2f\n",
         c - w, c, w, p * 1000, (c - w) / (p * 1000)
  print alive " (target 0)" }' "$work/start.txt"
