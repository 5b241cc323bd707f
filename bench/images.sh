#!/usr/bin/env bash
# Images and PDF against their peer tools, on inputs made here, in one run; prints the ratios.
#   1. 20 JPEG photos of 4000 x 3000 resized to 1600 wide: time against ImageMagick's convert (target <= 1/3)
#      and vipsthumbnail (target <= 1.5), peak memory (target <= 300 MiB), and the pixels against a
#      Lanczos-3 reference made by separate calls of the same library (target <= 1 unit RMS)
#   2. a PDF of 50 pages to PNG at 150 dpi against pdftoppm (target <= 0.6)
#   3. the 20 JPEGs into one PDF against img2pdf: time (target <= 1.0) and size (target <= 1.01 x the JPEGs)
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
MAKE_PDF=$(realpath "$BUILD/bench/make_pdf")
RUNS=${RUNS:-3}
work=$(mktemp -d /tmp/quaydrop-imagebench-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/photos" "$work/out"
export QUAYDROP_VERBOSE=0 DBUS_SESSION_BUS_ADDRESS=disabled:

mean() { # mean seconds over RUNS runs, the output folder emptied before each
  hyperfine --runs "$RUNS" --warmup 1 --prepare "rm -rf $work/out $work/photos/doc && mkdir -p $work/out" \
    --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1
}
peak_kib() {
  rm -rf "$work/out" && mkdir -p "$work/out"
  /usr/bin/time -f %M "$@" 2>&1 >/dev/null | tail -1
}

echo "== making 20 photos of 4000 x 3000"
for seed in 1 2 3 4; do
  convert -size 1000x750 -seed "$seed" plasma:fractal -blur 0x1 -resize 4000x3000! -quality 92 "$work/base$seed.jpg"
  for v in 1 2 3 4 5; do
    vips linear "$work/base$seed.jpg" "$work/photos/photo_${seed}_$v.jpg[Q=90]" "$(awk -v v="$v" 'BEGIN { print 0.8 + v * 0.05 }')" "$((v * 4))" --uchar
  done
done
ls "$work"/photos/*.jpg | wc -l | xargs echo "photos:"

echo "== resize to 1600 wide"
cd "$work/photos"
q=$(mean "$BIN resize --width 1600 --dest $work/out photo_*.jpg")
c=$(mean "bash -c 'for f in photo_*.jpg; do convert \$f -resize 1600x $work/out/\$f; done'")
t=$(mean "vipsthumbnail photo_*.jpg -s 1600x100000 -o $work/out/%s.jpg")
m=$(peak_kib "$BIN" resize --width 1600 --dest "$work/out" photo_*.jpg)
awk -v q="$q" -v c="$c" -v t="$t" -v m="$m" 'BEGIN {
  printf "time    quaydrop %.3f s   convert %.3f s   vipsthumbnail %.3f s\n", q, c, t
  printf "ratio   to convert %.2f (target <= 0.33)   to vipsthumbnail %.2f (target <= 1.5)\n", q / c, q / t
  printf "memory  quaydrop peak %.1f MiB (target <= 300 MiB)\n", m / 1024 }'

# The pixels, on a lossless copy so that no encoder stands between the two.
vips copy photo_1_1.jpg "$work/source.png"
mkdir -p "$work/px"
"$BIN" resize --width 1600 --height 1200 --dest "$work/px" "$work/source.png" >/dev/null 2>&1
vips reduceh "$work/source.png" "$work/h.v" 2.5 --kernel lanczos3
vips reducev "$work/h.v" "$work/reference.png" 2.5 --kernel lanczos3
rms=$(compare -metric RMSE "$work/px/source_1600x1200.png" "$work/reference.png" null: 2>&1 | sed 's/ .*//' || true)
awk -v r="$rms" 'BEGIN { printf "pixels  RMS against a Lanczos-3 reference %.3f units of 255 (target <= 1)\n", r / 257 }'

echo "== a PDF of 50 pages to PNG at 150 dpi"
"$MAKE_PDF" "$work/photos/doc.pdf" 50 2>/dev/null
cp "$work/photos/doc.pdf" "$work/doc.pdf"
q=$(mean "$BIN pdf2img png --dpi 150 $work/photos/doc.pdf")
p=$(mean "pdftoppm -png -r 150 $work/doc.pdf $work/out/page")
awk -v q="$q" -v p="$p" 'BEGIN {
  printf "time    quaydrop %.3f s   pdftoppm %.3f s   ratio %.2f (target <= 0.6)\n", q, p, q / p }'

echo "== 20 JPEGs into one PDF"
q=$(mean "$BIN img2pdf --merge --dest $work/out photo_*.jpg")
i=$(mean "img2pdf photo_*.jpg -o $work/out/img2pdf.pdf")
rm -rf "$work/out" && mkdir -p "$work/out"
"$BIN" img2pdf --merge --dest "$work/out" photo_*.jpg >/dev/null 2>&1
img2pdf photo_*.jpg -o "$work/out/img2pdf.pdf"
ours=$(stat -c %s "$work"/out/photo_1_1.pdf)
theirs=$(stat -c %s "$work/out/img2pdf.pdf")
jpegs=$(cat photo_*.jpg | wc -c)
awk -v q="$q" -v i="$i" -v o="$ours" -v t="$theirs" -v j="$jpegs" 'BEGIN {
  printf "time    quaydrop %.3f s   img2pdf %.3f s   ratio %.2f (target <= 1.0)\n", q, i, q / i
  printf "size    quaydrop %.4f x the JPEGs (target <= 1.01)   img2pdf %.4f x\n", o / j, t / j }'
