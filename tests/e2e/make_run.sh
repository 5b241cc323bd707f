#!/usr/bin/env bash
# `make run` with no display: the launcher starts Xvfb, says so in one line, and keeps the program up.
source "$(dirname "$0")/lib.sh"
RUN=$1 BIN=$2
PROJECT=$(cd "$(dirname "$RUN")/.." && pwd)

# `make run` builds the program alone; the tests and benchmarks are `make test`'s.
plan=$(make -n -C "$PROJECT" run BUILD_DIR=/nonexistent/build)
builds=$(grep -- 'cmake --build' <<<"$plan") || fail "make run builds nothing: $plan"
[ "$(wc -l <<<"$builds")" = 1 ] && grep -q -- '--target quaydrop$' <<<"$builds" ||
  fail "make run builds more than the program: $builds"
grep -q 'scripts/run.sh /nonexistent/build/src/app/quaydrop' <<<"$plan" || fail "make run does not start what it built: $plan"
plan=$(make -n -C "$PROJECT" test BUILD_DIR=/nonexistent/build)
grep -- 'cmake --build' <<<"$plan" | grep -q -- '--target' && fail "make test does not build everything: $plan"
pass "make run builds only the program; make test builds everything"
private_home
unset XDG_RUNTIME_DIR
trap 'leave $pid' EXIT

out="$E2E_HOME/run.log"
bash "$RUN" "$BIN" >"$out" 2>&1 &
pid=$!
wait_for "$out" "quaydrop: running" 15 || { cat "$out"; fail "no start"; }
[ "$(grep -c 'started Xvfb on :' "$out")" = 1 ] || { cat "$out"; fail "did not say once that it started Xvfb"; }
display=$(sed -n 's/.*started Xvfb on \(:[0-9]*\).*/\1/p' "$out")
xdpyinfo -display "$display" >/dev/null 2>&1 || fail "no X server answers on $display"
sleep 1
kill -0 "$pid" 2>/dev/null || fail "the launcher did not stay up"
pass "started Xvfb on $display, said so, stayed up"

kill -TERM "$pid"
wait_gone "$pid" 10 || fail "launcher did not stop"
sleep 0.5
! xdpyinfo -display "$display" >/dev/null 2>&1 || fail "Xvfb outlived the launcher"
pass "stopping the launcher stops the program and its Xvfb"
