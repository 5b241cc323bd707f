#!/usr/bin/env bash
# The image editor against its peer tools, on inputs made here, in one run; prints the figures and ratios.
#   1. a 24-megapixel JPEG opened in the editor to its first painted frame: <= 400 ms, and within 1.5 x
#      vipsthumbnail making a 2,000-pixel preview of it (both as whole processes)
#   2. a repaint of the stroke layer at 1,600 x 1,200 with 2,000 segments painted, over 200 repaints: <= 8 ms
#   3. a 4,000 x 3,000 picture with 2,000 segments saved at full size: <= 1.5 s
#   4. a lossless quarter turn of the 24-megapixel JPEG against jpegtran -rotate 90: within 1.5 x, and the
#      DCT data identical (both sides re-packed by jpegtran -copy none -optimize and compared byte for byte)
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
PROBE=$(realpath "$BUILD/bench/editor_probe")
RUNS=${RUNS:-5}
work=$(mktemp -d /tmp/quaydrop-editorbench-XXXXXX)
trap 'rm -rf "$work"' EXIT
export QUAYDROP_VERBOSE=0 DBUS_SESSION_BUS_ADDRESS=disabled: QT_QPA_PLATFORM=offscreen
export QUAYDROP_WORKER=$(realpath "$BUILD/src/app/quaydrop-worker")
export HOME="$work/home" XDG_RUNTIME_DIR="$work/home"
mkdir -p "$work/home" && chmod 700 "$work/home"

mean() { # mean seconds of a command over RUNS runs
  hyperfine --runs "$RUNS" --warmup 1 --prepare "rm -f $work/_Quaydrop-* $work/rotated.jpg" \
    --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1
}

echo "== making a 24-megapixel photo (6000 x 4000) and one of 4000 x 3000"
convert -size 1500x1000 -seed 3 plasma:fractal -blur 0x1 -resize 6000x4000! -quality 92 "$work/big.jpg"
convert "$work/big.jpg" -resize 4000x3000! -quality 92 "$work/photo.jpg"

echo "== opening in the editor to the first painted frame"
q=$(mean "$PROBE open $work/big.jpg")
t=$(mean "vipsthumbnail $work/big.jpg -s 2000 -o $work/thumb.jpg")
inproc=$("$PROBE" open "$work/big.jpg" | awk '{ print $2 }')
awk -v q="$q" -v t="$t" -v i="$inproc" 'BEGIN {
  printf "time    editor %.0f ms (window to first frame %.0f ms; target <= 400)   vipsthumbnail %.0f ms\n", q * 1000, i, t * 1000
  printf "ratio   to vipsthumbnail %.2f (target <= 1.5)\n", q / t }'

echo "== repainting the stroke layer, 2,000 segments, 1,600 x 1,200"
"$PROBE" repaint | awk '{ printf "time    %.2f ms a repaint over 200, the slowest %.2f ms (target <= 8); whole layer redrawn %.1f ms (%d segments)\n", $2, $4, $6, $8 }'

echo "== saving 4,000 x 3,000 with 2,000 segments"
"$PROBE" save "$work/photo.jpg" | awk '{ printf "time    %.0f ms, of which the layer at full size %.0f ms (target <= 1500)\n", $2, $4 }'

echo "== a lossless quarter turn of the 24-megapixel JPEG"
q=$(mean "$BIN rotate --turns 1 $work/big.jpg")
j=$(mean "jpegtran -rotate 90 -copy all -outfile $work/rotated.jpg $work/big.jpg")
"$BIN" rotate --turns 1 "$work/big.jpg" >/dev/null 2>&1
jpegtran -rotate 90 -copy all -outfile "$work/rotated.jpg" "$work/big.jpg"
jpegtran -copy none -optimize -outfile "$work/a.jpg" "$work/_Quaydrop-big.jpg"
jpegtran -copy none -optimize -outfile "$work/b.jpg" "$work/rotated.jpg"
same=$(cmp -s "$work/a.jpg" "$work/b.jpg" && echo identical || echo DIFFERENT)
awk -v q="$q" -v j="$j" -v s="$same" 'BEGIN {
  printf "time    quaydrop %.0f ms   jpegtran %.0f ms   ratio %.2f (target <= 1.5)\n", q * 1000, j * 1000, q / j
  printf "data    DCT coefficients %s to jpegtran'"'"'s\n", s }'
