#!/usr/bin/env bash
# An image dragged out of a web page in a real browser (Chromium or Firefox ESR), served from
# 127.0.0.1: the very first drag after Quaydrop starts raises the drop window, and the drop there
# brings the image file into the temp folder and the panel of an image from another application
# (444). Chromium offers no image type and no file, only X Direct Save (which it answers with "F")
# and the bytes; Firefox writes the file through X Direct Save.
# Usage: browser.sh QUAYDROP chromium|firefox-esr. Exits 77, skipped, when the browser is missing.
source "$(dirname "$0")/lib.sh"
BIN=$1
BROWSER=$2
command -v "$BROWSER" >/dev/null || { echo "SKIP: $BROWSER is not installed (scripts/install-deps.sh installs it)"; exit 77; }
private_home
pid= web= browser=
# The browser runs in a session of its own: its helper processes end with it, before its profile goes.
stop_all() {
  kill $pid $web 2>/dev/null || true
  if [ -n "$browser" ]; then
    kill -- -"$browser" 2>/dev/null || true
    for _ in $(seq 50); do kill -0 -- -"$browser" 2>/dev/null || break; sleep 0.1; done
    kill -KILL -- -"$browser" 2>/dev/null || true
  fi
  rm -rf "$E2E_HOME" 2>/dev/null || true
}
trap stop_all EXIT

site="$E2E_HOME/site"
mkdir -p "$site"
convert -size 320x240 gradient:'#c33'-'#33c' "$site/harbour.png"
cat >"$site/index.html" <<'EOF'
<!doctype html>
<html><body style="margin:0">
<img src="harbour.png" alt="harbour" style="position:fixed;left:0;top:0;width:100vw;height:100vh">
</body></html>
EOF
(cd "$site" && exec python3 -u -m http.server 0 --bind 127.0.0.1 >"$E2E_HOME/web.log" 2>&1) &
web=$!
wait_for "$E2E_HOME/web.log" "Serving HTTP" 10 || fail "the web server did not start"
port=$(sed -n 's/.* port \([0-9]*\) .*/\1/p' "$E2E_HOME/web.log" | head -1)
url="http://127.0.0.1:$port/"

case "$BROWSER" in
  chromium)
    setsid chromium --no-sandbox --disable-gpu --disable-quic --no-first-run --no-default-browser-check \
      --disable-background-networking --disable-component-update --disable-sync --password-store=basic \
      --user-data-dir="$E2E_HOME/profile" --window-position=40,40 --window-size=640,480 --app="$url" \
      >"$E2E_HOME/browser.log" 2>&1 &
    class=chromium ;;
  firefox-esr)
    mkdir -p "$E2E_HOME/profile"
    cat >"$E2E_HOME/profile/user.js" <<'EOF'
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("datareporting.policy.firstRunURL", "");
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("app.update.disabledForTesting", true);
user_pref("browser.sessionstore.resume_from_crash", false);
EOF
    MOZ_CRASHREPORTER_DISABLE=1 setsid firefox-esr --no-remote --new-instance --profile "$E2E_HOME/profile" \
      --width 640 --height 480 "$url" >"$E2E_HOME/browser.log" 2>&1 &
    class=firefox ;;
  *) fail "unknown browser $BROWSER" ;;
esac
browser=$!
# Shown, and the picture fetched.
wait_for "$E2E_HOME/web.log" "GET /harbour.png" 60 || { tail -5 "$E2E_HOME/browser.log"; fail "$BROWSER did not load the page"; }
window=$(xdotool search --sync --onlyvisible --class "$class" | tail -1)
[ -n "$window" ] || fail "no window of $BROWSER"
xdotool windowmove "$window" 40 40
sleep 2 # the page painted

write_conf
log="$E2E_HOME/quaydrop.log"
start_quaydrop "quaydrop.window.debug=true;quaydrop.drag.debug=true"

# At once: the first drag after the start, from the middle of the picture, downward as a hand goes.
eval "$(xdotool getwindowgeometry --shell "$window")"
xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) mousedown 1
for _ in $(seq 40); do
  xdotool mousemove_relative -- 2 4
  sleep 0.04
  grep -q "panel 111 shown" "$log" && break
done
grep -q "panel 111 shown" "$log" || { cat "$log"; fail "the first drag of an image out of $BROWSER raised nothing"; }
sleep 0.4
grep -q "the drag offers nothing the window takes" "$log" && { cat "$log"; fail "the image out of $BROWSER was refused"; }
read -r wx wy _ <<<"$(window_geometry)"
pass "the first drag of an image out of $BROWSER raises the drop window"

# Onto the window's own target, and let go.
glide_to $((wx + 45)) $((wy + 28))
sleep 0.4
xdotool mousemove_relative -- 1 1
sleep 0.3
xdotool mouseup 1
wait_for "$log" "panel 444 shown" 15 || { cat "$log"; fail "dropping the image out of $BROWSER showed no panel 444"; }
temp="$XDG_CACHE_HOME/com.velmora.Quaydrop/QDTempOperations"
received=$(find "$temp" -mindepth 2 -maxdepth 2 -type f -name 'harbour*.png' | head -1)
[ -n "$received" ] || fail "no image file in the temp folder: $(find "$temp" | tr '\n' ' ')"
cmp -s "$received" "$site/harbour.png" || fail "the file received from $BROWSER is not the page's image"
pass "dropping it writes $(basename "$received") into the temp folder and shows panel 444"
