#!/usr/bin/env bash
# `quaydrop size` against `du -s` and `du -s --apparent-size` on the same tree of 50,000 files, in
# one run. Prints each mean time and the ratio to du; the target is within 1.5 x of du.
set -euo pipefail

BIN=${1:-build/src/app/quaydrop}
FILES=${FILES:-50000}
RUNS=${RUNS:-15}
BIN=$(realpath "$BIN")

tree=$(mktemp -d /tmp/quaydrop-bench-XXXXXX)
trap 'rm -rf "$tree"' EXIT

# 500 folders of 100 files, sizes 0..16 KiB, a few hidden entries and links, like a real project tree.
echo "building a tree of $FILES files in $tree ..."
per=100
folders=$((FILES / per))
for ((d = 0; d < folders; d++)); do
  dir="$tree/d$((d % 25))/sub$d"
  mkdir -p "$dir"
  for ((f = 0; f < per; f++)); do
    head -c $(((d * 131 + f * 977) % 16384)) /dev/zero >"$dir/f$f"
  done
  ln -s f0 "$dir/.link"
done

du -s "$tree" >/dev/null # warm the caches for everyone

time_mean() { # prints mean seconds of RUNS runs of the command
  if command -v hyperfine >/dev/null; then
    hyperfine -N --warmup 2 --runs "$RUNS" --export-json /tmp/quaydrop-bench.json "$*" >/dev/null 2>&1
    python3 -c 'import json;print(json.load(open("/tmp/quaydrop-bench.json"))["results"][0]["mean"])' 2>/dev/null ||
      sed -n 's/.*"mean": *\([0-9.e-]*\).*/\1/p' /tmp/quaydrop-bench.json | head -1
  else
    local start end
    start=$(date +%s%N)
    for ((i = 0; i < RUNS; i++)); do "$@" >/dev/null; done
    end=$(date +%s%N)
    echo "scale=6; ($end - $start) / $RUNS / 1000000000" | bc
  fi
}

q=$(time_mean "$BIN" size "$tree")
d=$(time_mean du -s "$tree")
a=$(time_mean du -s --apparent-size "$tree")

echo "quaydrop size:           $("$BIN" size "$tree")"
echo "du -s (KiB):             $(du -s "$tree" | cut -f1)"
printf 'mean time  quaydrop size %.4f s   du -s %.4f s   du -s --apparent-size %.4f s\n' "$q" "$d" "$a"
awk -v q="$q" -v d="$d" -v a="$a" 'BEGIN {
  printf "ratio      quaydrop / du -s = %.2f   quaydrop / du --apparent-size = %.2f   (target <= 1.5)\n", q / d, q / a }'
