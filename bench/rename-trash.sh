#!/usr/bin/env bash
# quaydrop rename and quaydrop trash of 5,000 files against the shell's best forms on the same files in
# one run: `find -exec mv` (one shell for all names, one mv each) and `gio trash` with all names at once.
# Prints each time and the ratio; the target is within 1.5 x.
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
FILES=${FILES:-5000}
work=$(mktemp -d /tmp/quaydrop-renamebench-XXXXXX)
trap 'rm -rf "$work"' EXIT
# Both trash into a home trash inside the work folder (same file system, so it is a rename there too),
# and quaydrop keeps its undo list there.
export XDG_DATA_HOME=$work/share XDG_CONFIG_HOME=$work/config HOME=$work
mkdir -p "$XDG_DATA_HOME"

fill() { # a fresh folder of FILES small files
  rm -rf "$work/f" && mkdir -p "$work/f"
  (cd "$work/f" && seq -f 'IMG_%05g.jpg' 1 "$FILES" | xargs touch)
}
seconds() { # wall time of the command in seconds
  local start end
  start=$(date +%s%N)
  "$@" >/dev/null
  end=$(date +%s%N)
  echo "scale=3; ($end - $start) / 1000000000" | bc
}

fill
q=$(cd "$work/f" && seconds "$BIN" rename --prefix 'Trip ' ./*)
test "$(find "$work/f" -name 'Trip IMG_*' | wc -l)" -eq "$FILES"
fill
m=$(cd "$work/f" && seconds find . -type f -exec sh -c 'for f; do mv -n -- "$f" "${f%/*}/Trip ${f##*/}"; done' _ {} +)
test "$(find "$work/f" -name 'Trip IMG_*' | wc -l)" -eq "$FILES"
awk -v q="$q" -v m="$m" -v n="$FILES" 'BEGIN {
  printf "rename of %d  quaydrop rename %.2f s   find -exec mv %.2f s   ratio %.2f  (target <= 1.5)\n", n, q, m, q / m }'

fill
q=$(cd "$work/f" && seconds "$BIN" trash ./*)
test -z "$(ls -A "$work/f")"
rm -rf "$XDG_DATA_HOME/Trash"
fill
g=$(cd "$work/f" && seconds gio trash ./*)
test -z "$(ls -A "$work/f")"
awk -v q="$q" -v g="$g" -v n="$FILES" 'BEGIN {
  printf "trash of %d   quaydrop trash %.2f s   gio trash %.2f s       ratio %.2f  (target <= 1.5)\n", n, q, g, q / g }'
