#!/usr/bin/env bash
# Runs a test executable as an unprivileged user, for cases that root cannot see (root reads every
# folder). The executable is copied where that user can reach it, whatever the build folder's modes.
set -euo pipefail
exe=$1
shift
scratch=$(mktemp -d /tmp/quaydrop-unpriv-XXXXXX)
trap 'rm -rf "$scratch"' EXIT
chmod 0755 "$scratch"
cp "$exe" "$scratch/"
chmod 0755 "$scratch/$(basename "$exe")"
cd "$scratch"
setpriv --reuid=nobody --regid=nogroup --clear-groups env HOME=/tmp TMPDIR=/tmp "$scratch/$(basename "$exe")" "$@"
