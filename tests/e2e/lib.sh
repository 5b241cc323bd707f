# Helpers for the end-to-end scripts: a private home for each run, and checks that fail loudly.
set -euo pipefail

fail() { echo "FAIL: $*" >&2; exit 1; }
pass() { echo "PASS: $*"; }

private_home() {
  E2E_HOME=$(mktemp -d /tmp/quaydrop-e2e-XXXXXX)
  export HOME="$E2E_HOME"
  export XDG_CONFIG_HOME="$E2E_HOME/config" XDG_DATA_HOME="$E2E_HOME/data" XDG_CACHE_HOME="$E2E_HOME/cache"
  export XDG_RUNTIME_DIR="$E2E_HOME/run"
  mkdir -p -m 0700 "$XDG_RUNTIME_DIR"
}

# wait_for FILE TEXT SECONDS
wait_for() {
  for _ in $(seq $(($3 * 10))); do
    grep -q -- "$2" "$1" 2>/dev/null && return 0
    sleep 0.1
  done
  return 1
}

# wait_gone PID SECONDS
wait_gone() {
  for _ in $(seq $(($2 * 10))); do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  return 1
}
