#!/usr/bin/env bash
# quaydrop copy against cp (and rsync) on the same input in one run; prints the ratios.
#   1. one 1 GiB file between two folders: time ratio to cp (target <= 1.05), peak memory (target <= 40 MiB)
#   2. a tree of 20,000 small files: ratio to cp -a (target <= 1.25) and to rsync -a (target <= 1.0)
#   3. progress cadence and cancel latency on the large file
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
PROGRESS=$(realpath "$BUILD/bench/copy_progress")
RUNS=${RUNS:-5}
work=$(mktemp -d /tmp/quaydrop-copybench-XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/src" "$work/out"

mean() { # mean seconds of a command over RUNS runs, with the output folder emptied before each
  hyperfine --runs "$RUNS" --warmup 1 --prepare "rm -rf $work/out && mkdir -p $work/out" \
    --export-json "$work/h.json" "$1" >/dev/null 2>&1
  sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' "$work/h.json" | head -1
}
peak_kib() { # peak resident memory in KiB
  rm -rf "$work/out" && mkdir -p "$work/out"
  /usr/bin/time -f %M "$@" 2>&1 >/dev/null | tail -1
}

echo "== one 1 GiB file"
head -c $((1 << 30)) /dev/urandom >"$work/src/big.bin"
q=$(mean "$BIN copy $work/src/big.bin $work/out")
c=$(mean "cp $work/src/big.bin $work/out/")
qm=$(peak_kib "$BIN" copy "$work/src/big.bin" "$work/out")
cm=$(peak_kib cp "$work/src/big.bin" "$work/out/")
awk -v q="$q" -v c="$c" -v qm="$qm" -v cm="$cm" 'BEGIN {
  printf "time    quaydrop %.3f s   cp %.3f s   ratio %.2f  (target <= 1.05)\n", q, c, q / c
  printf "memory  quaydrop %.1f MiB   cp %.1f MiB  (target <= 40 MiB)\n", qm / 1024, cm / 1024 }'

echo "== progress and cancel on that file"
"$PROGRESS" "$work/src/big.bin" "$work/out"
rm -f "$work/src/big.bin"

echo "== a tree of 20,000 small files"
for d in $(seq 0 199); do
  mkdir -p "$work/src/tree/dir$((d % 20))/sub$d"
  for f in $(seq 0 99); do
    head -c $(((d * 37 + f * 613) % 24576)) /dev/zero >"$work/src/tree/dir$((d % 20))/sub$d/file$f"
  done
done
q=$(mean "$BIN copy $work/src/tree $work/out")
c=$(mean "cp -a $work/src/tree $work/out/")
r=$(mean "rsync -a $work/src/tree $work/out/")
awk -v q="$q" -v c="$c" -v r="$r" 'BEGIN {
  printf "time    quaydrop %.3f s   cp -a %.3f s   rsync -a %.3f s\n", q, c, r
  printf "ratio   to cp -a %.2f (target <= 1.25)   to rsync -a %.2f (target <= 1.0)\n", q / c, q / r }'
