#!/usr/bin/env bash
# The page board against its peer tools, on inputs made here, in one run; prints the ratios.
#   1. thumbnails of 200 photos of 12 megapixels (4000 x 3000) at 160 pixels against vipsthumbnail
#      (target <= 1.5), and the longest the event loop waited meanwhile (the window answers input)
#   2. 50 of those photos, each turned or flipped, exported as one PDF against img2pdf on the unturned
#      files: time (target <= 1.0) and size (target <= 1.01 x the JPEGs)
set -euo pipefail

BUILD=${1:-build}
BENCH=$(realpath "$BUILD/bench/board_bench")
RUNS=${RUNS:-3}
work=$(mktemp -d /tmp/quaydrop-boardbench-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/photos" "$work/out" && mkdir -m 700 "$work/run"
export XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=offscreen DBUS_SESSION_BUS_ADDRESS=disabled: QUAYDROP_WORKER=$(realpath "$BUILD/src/worker/quaydrop-worker")

echo "== making 200 photos of 4000 x 3000"
for seed in 1 2 3 4; do
  convert -size 1000x750 -seed "$seed" plasma:fractal -blur 0x1 -resize 4000x3000! -quality 92 "$work/base$seed.jpg"
  for v in $(seq 1 50); do
    vips linear "$work/base$seed.jpg" "$work/photos/photo_${seed}_$(printf %02d "$v").jpg[Q=90]" \
      "$(awk -v v="$v" 'BEGIN { print 0.75 + v * 0.005 }')" "$((v % 20))" --uchar
  done
done
ls "$work"/photos/*.jpg | wc -l | xargs echo "photos:"

best() { sort -n | head -1; }

echo "== thumbnails of 200 photos"
cd "$work/photos"
b=$(for r in $(seq "$RUNS"); do "$BENCH" thumbnails photo_*.jpg; done | sort -n | head -1)
q=${b% *}
wait_ms=${b#* }
t=$(for r in $(seq "$RUNS"); do rm -rf "$work/out"/*; /usr/bin/time -f %e vipsthumbnail photo_*.jpg -s 160 -o "$work/out/%s.jpg" 2>&1 | tail -1; done | best)
awk -v q="$q" -v t="$t" -v w="$wait_ms" 'BEGIN {
  printf "time    board %.3f s   vipsthumbnail %.3f s   ratio %.2f (target <= 1.5)\n", q, t, q / t
  printf "input   longest wait of the event loop while loading: %d ms\n", w }'

echo "== 50 turned and flipped JPEGs into one PDF"
set -- $(ls photo_*.jpg | head -50)
q=$(for r in $(seq "$RUNS"); do rm -f "$work/out/board.pdf"; "$BENCH" export "$work/out/board.pdf" "$@"; done | best)
i=$(for r in $(seq "$RUNS"); do rm -f "$work/out/img2pdf.pdf"; /usr/bin/time -f %e img2pdf -o "$work/out/img2pdf.pdf" "$@" 2>&1 | tail -1; done | best)
jpegs=$(cat "$@" | wc -c)
pdf=$(stat -c %s "$work/out/board.pdf")
awk -v q="$q" -v i="$i" -v j="$jpegs" -v p="$pdf" 'BEGIN {
  printf "time    board %.3f s   img2pdf %.3f s   ratio %.2f (target <= 1.0)\n", q, i, q / i
  printf "size    PDF %d bytes   JPEGs %d bytes   ratio %.4f (target <= 1.01)\n", p, j, p / j }'
