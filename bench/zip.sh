#!/usr/bin/env bash
# quaydrop zip against zip -r -6 on the same input in one run; prints times, sizes and ratios.
#   1. a tree of 2,000 files, about 300 MB, half text and half photo-like data: time <= 0.7 x, size <= 1.02 x
#   2. one 1 GiB file: time within 1.1 x of zip -6; and one 256 MiB log of words (all of it compressible)
#   3. progress cadence and cancel latency on that file (at least one update a second, cancel <= 200 ms)
# FILES, BIG_MIB and LOG_MIB make it smaller for a quick look; RUNS repeats each timing (best run counts).
# The machine's load average is printed before and after: other work on it slows both sides.
set -euo pipefail

BUILD=${1:-build}
BIN=$(realpath "$BUILD/src/app/quaydrop")
PROGRESS=$(realpath "$BUILD/bench/zip_progress")
FILES=${FILES:-2000}
BIG_MIB=${BIG_MIB:-1024}
LOG_MIB=${LOG_MIB:-256}
RUNS=${RUNS:-1}
work=$(mktemp -d /tmp/quaydrop-zipbench-XXXXXX)
trap 'rm -rf "$work"' EXIT
# An older archive would go to the trash: keep that trash inside the work folder.
export XDG_DATA_HOME=$work/share

best() { # best wall time in seconds of RUNS runs of the command, with the archive removed before each
  local archive=$1 bestns=0 start end
  shift
  for ((i = 0; i < RUNS; i++)); do
    rm -f "$archive"
    start=$(date +%s%N)
    "$@" >/dev/null 2>&1
    end=$(date +%s%N)
    if ((bestns == 0 || end - start < bestns)); then bestns=$((end - start)); fi
  done
  echo "scale=3; $bestns / 1000000000" | bc
}

echo "load average: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) cores"
echo "== a tree of $FILES files"
mkdir -p "$work/t/Trip"
python3 - "$work/t/Trip" "$FILES" <<'EOF'
import os, random, sys
root, count = sys.argv[1], int(sys.argv[2])
rng = random.Random(7)
words = open('/usr/share/dict/words').read().split() if os.path.exists('/usr/share/dict/words') else \
    [''.join(rng.choice('abcdefghijklmnopqrstuvwxyz') for _ in range(rng.randint(2, 10))) for _ in range(5000)]
for i in range(count):
    folder = os.path.join(root, 'day%02d' % (i % 40))
    os.makedirs(folder, exist_ok=True)
    if i % 2:  # a photo: data a deflater cannot shrink, as in a JPEG
        with open(os.path.join(folder, 'IMG_%04d.jpg' % i), 'wb') as f:
            f.write(os.urandom(rng.randint(150_000, 450_000)))
    else:      # notes, logs, code: text that compresses well
        with open(os.path.join(folder, 'notes_%04d.txt' % i), 'w') as f:
            f.write(' '.join(rng.choice(words) for _ in range(rng.randint(3_000, 8_000))))
EOF
du -sh "$work/t/Trip" | cut -f1 | sed 's/^/input: /'
cat "$work"/t/Trip/*/* >/dev/null # warm the caches for both
q=$(cd "$work/t" && best Trip.zip "$BIN" zip Trip)
qs=$(stat -c %s "$work/t/Trip.zip")
z=$(cd "$work/t" && best ref.zip zip -r -6 -q ref.zip Trip)
zs=$(stat -c %s "$work/t/ref.zip")
unzip -tqq "$work/t/Trip.zip"
awk -v q="$q" -v z="$z" -v qs="$qs" -v zs="$zs" 'BEGIN {
  printf "time    quaydrop zip %.2f s   zip -r -6 %.2f s   ratio %.2f  (target <= 0.7)\n", q, z, q / z
  printf "size    quaydrop zip %.1f MB   zip -r -6 %.1f MB   ratio %.3f (target <= 1.02)\n", qs / 1e6, zs / 1e6, qs / zs }'
rm -rf "$work/t"

echo "== one file of $BIG_MIB MiB"
mkdir -p "$work/b"
# Half compressible, half not, in 1 MiB runs: neither best nor worst case for a deflater.
python3 - "$work/b/big.bin" "$BIG_MIB" <<'EOF'
import os, sys
text = (b'the quick brown fox jumps over the lazy dog %d\n' * 30000)[:1 << 20]
with open(sys.argv[1], 'wb') as f:
    for i in range(int(sys.argv[2])):
        f.write(os.urandom(1 << 20) if i % 2 else text.replace(b'%d', b'%07d' % i)[:1 << 20])
EOF
q=$(cd "$work/b" && best big.zip "$BIN" zip big.bin)
qs=$(stat -c %s "$work/b/big.zip")
z=$(cd "$work/b" && best ref.zip zip -6 -q ref.zip big.bin)
zs=$(stat -c %s "$work/b/ref.zip")
unzip -tqq "$work/b/big.zip"
awk -v q="$q" -v z="$z" -v qs="$qs" -v zs="$zs" 'BEGIN {
  printf "time    quaydrop zip %.2f s   zip -6 %.2f s   ratio %.2f  (target <= 1.1)\n", q, z, q / z
  printf "size    quaydrop zip %.1f MB   zip -6 %.1f MB   ratio %.3f\n", qs / 1e6, zs / 1e6, qs / zs }'
rm -f "$work/b/big.zip" "$work/b/ref.zip"

echo "== one log of $LOG_MIB MiB, words only"
python3 - "$work/b/big.log" "$LOG_MIB" <<'EOF'
import random, sys
rng = random.Random(11)
words = [''.join(rng.choice('abcdefghijklmnopqrstuvwxyz') for _ in range(rng.randint(2, 10))) for _ in range(5000)]
with open(sys.argv[1], 'w') as f:
    for i in range(int(sys.argv[2]) * 16):
        f.write(' '.join(rng.choice(words) for _ in range(11000))[:1 << 16])
EOF
q=$(cd "$work/b" && best big.zip "$BIN" zip big.log)
qs=$(stat -c %s "$work/b/big.zip")
z=$(cd "$work/b" && best ref.zip zip -6 -q ref.zip big.log)
zs=$(stat -c %s "$work/b/ref.zip")
unzip -tqq "$work/b/big.zip"
awk -v q="$q" -v z="$z" -v qs="$qs" -v zs="$zs" 'BEGIN {
  printf "time    quaydrop zip %.2f s   zip -6 %.2f s   ratio %.2f\n", q, z, q / z
  printf "size    quaydrop zip %.1f MB   zip -6 %.1f MB   ratio %.3f\n", qs / 1e6, zs / 1e6, qs / zs }'
rm -f "$work/b/big.log" "$work/b/big.zip" "$work/b/ref.zip"

echo "== progress and cancel on that file"
"$PROGRESS" "$work/b/big.bin" "$work/b/progress.zip"
echo "load average: $(cut -d' ' -f1-3 /proc/loadavg)"
