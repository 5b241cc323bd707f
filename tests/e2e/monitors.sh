#!/usr/bin/env bash
# Two monitors side by side on one X screen: Xorg with the dummy driver makes a 2048 by 768 screen that
# xrandr --setmonitor splits into LEFT (primary) and RIGHT. A drag on either monitor raises the drop
# window beside the pointer on that monitor; at the boundary it stays on the pointer's monitor; a
# drop at the right monitor's far edge opens its panel there; the pointer crossing to the other
# monitor closes the window only beyond the keep-open margin. Once at scale 1, once with RIGHT at
# scale 2. (Xvfb's +xinerama puts both heads at 0,0 and cannot stand in.)
# Exits 77, skipped, with the reason when Xorg cannot start here.
# QD_MONITORS_SCREENSHOT=PATH also writes a picture of the window on the second monitor.
source "$(dirname "$0")/lib.sh"
e2e_begin "$@"
skip() { echo "SKIP: $*"; exit 77; }
command -v Xorg >/dev/null || skip "Xorg is missing (scripts/install-deps.sh installs xserver-xorg-core)"
[ -e /usr/lib/xorg/modules/drivers/dummy_drv.so ] || skip "the dummy video driver is missing (xserver-xorg-video-dummy)"
command -v xrandr >/dev/null || skip "xrandr is missing (x11-xserver-utils)"
Xorg -config "$(dirname "$0")/dummy-xorg.conf" -logfile "$E2E_HOME/Xorg.log" -noreset -nolisten tcp -displayfd 9 \
  9>"$E2E_HOME/display" >"$E2E_HOME/Xorg.out" 2>&1 &
also=$!
for _ in $(seq 150); do
  [ -s "$E2E_HOME/display" ] && break
  kill -0 "$also" 2>/dev/null || break
  sleep 0.1
done
[ -s "$E2E_HOME/display" ] ||
  skip "Xorg with the dummy driver did not start here: $(grep -h -m2 -e '(EE)' -e 'Fatal' "$E2E_HOME/Xorg.log" "$E2E_HOME/Xorg.out" 2>/dev/null | tr '\n' ' ')"
export DISPLAY=":$(tr -d '[:space:]' <"$E2E_HOME/display")"

# One 2048 by 768 screen, two monitors of 1024 by 768.
output=$(xrandr | awk '/ connected/ {print $1; exit}')
xrandr --newmode 2048x768 0 2048 2048 2048 2048 768 768 768 768 >/dev/null 2>&1 || true
xrandr --addmode "$output" 2048x768 && xrandr --output "$output" --mode 2048x768 || fail "no 2048x768 mode"
xrandr --setmonitor LEFT 1024/271x768/203+0+0 "$output" >/dev/null
xrandr --setmonitor RIGHT 1024/271x768/203+1024+0 none >/dev/null
[ "$(xrandr --listmonitors | head -1)" = "Monitors: 2" ] || fail "xrandr did not make two monitors: $(xrandr --listmonitors)"

printf 'notes\n' >"$E2E_HOME/notes.txt"

# The monitor a point is on, as "left right" edges.
monitor_of() { if [ "$1" -lt 1024 ]; then echo "0 1024"; else echo "1024 2048"; fi; }
scale_of() { if [ "$1" -lt 1024 ]; then echo 1; else echo "$right_scale"; fi; }

# The window lies inside the monitor of the point (x, y), at its size there; not under the pointer.
check_on_monitor() { # what, x, y
  local what=$1 at_x=$2 at_y=$3 lo hi side
  read -r x y w h state <<<"$(window_geometry)"
  [ "$state" = IsViewable ] || fail "$what: the window is not on screen"
  read -r lo hi <<<"$(monitor_of "$at_x")"
  [ "$x" -ge "$lo" ] && [ $((x + w)) -le "$hi" ] && [ "$y" -ge 0 ] && [ $((y + h)) -le 768 ] ||
    fail "$what: the window at $x,$y ${w}x$h is not inside the monitor $lo..$hi of the point $at_x,$at_y"
}

# Presses at (x, y) over the drag source and drags by (dx, dy) per step until the window is up.
drag_from() { # what, x, y, dx, dy; the source's window then at x_source, y_source
  local what=$1
  x_source=$(($2 - 60)) y_source=$(($3 - 60))
  xdotool windowmove "$source_window" "$x_source" "$y_source"
  sleep 0.3
  xdotool mousemove "$2" "$3"
  drag_until_raised "$4" "$5" "$what"
  sleep 0.15
  eval "$(xdotool getmouselocation --shell)"
  read -r x y w h state <<<"$(window_geometry)"
  local side=$((90 * $(scale_of "$X")))
  [ "$w" = "$side" ] && [ "$h" = "$side" ] || fail "$what: the window is ${w}x$h, not ${side}x$side"
  check_on_monitor "$what" "$X" "$Y"
  [ "$X" -ge "$x" ] && [ "$X" -lt $((x + w)) ] && [ "$Y" -ge "$y" ] && [ "$Y" -lt $((y + h)) ] &&
    fail "$what: the window at $x,$y is under the pointer $X,$Y"
  [ "$X" -ge $((x - side)) ] && [ "$X" -le $((x + w + side)) ] && [ $((Y - y - h / 2)) -le $((side * 5 / 2)) ] &&
    [ $((y + h / 2 - Y)) -le $((side * 5 / 2)) ] || fail "$what: the window at $x,$y is far from the pointer $X,$Y"
}

# Lets go over the source (no drop), then wanders off by (dx, dy) in steps until the window closes.
end_and_wander() { # what, dx, dy
  xdotool mousemove $((x_source + 60)) $((y_source + 60))
  sleep 0.1
  let_go
  for _ in $(seq 6); do xdotool mousemove_relative -- "$2" "$3"; sleep 0.05; done
  sleep 0.2
  ! window_shown || fail "$1: the window stayed although the pointer went far away"
}

run_pass() { # scale of RIGHT
  right_scale=$1
  : >"$log"
  QT_SCREEN_SCALE_FACTORS="LEFT=1;RIGHT=$right_scale" start_quaydrop "quaydrop.window.debug=true"
  start_source --files "$E2E_HOME/notes.txt"
  source_window=$(xdotool search --sync --name '^drag source$' | head -1)
  at="at scale $right_scale on RIGHT"

  drag_from "LEFT, middle" 500 400 1 4
  end_and_wander "LEFT, middle" 0 60
  pass "a drag in the middle of LEFT raises the window beside the pointer on LEFT ($at)"

  drag_from "RIGHT, middle" 1500 400 1 4
  if [ -n "${QD_MONITORS_SCREENSHOT:-}" ] && [ "$right_scale" = 1 ]; then
    eval "$(xdotool getmouselocation --shell)" # the pointer, drawn as a ring: a screen grab leaves it out
    import -window root png:- | convert - -crop 2048x280+0+200 +repage -fill none -stroke '#888' \
      -draw 'line 1024,0 1024,280' -stroke '#e33' -strokewidth 2 -draw "circle $X,$((Y - 200)) $((X + 7)),$((Y - 200))" -stroke none -fill '#bbb' -font DejaVu-Sans -pointsize 20 \
      -annotate +16+32 'LEFT (primary)' -annotate +1040+32 'RIGHT' "$QD_MONITORS_SCREENSHOT"
  fi
  end_and_wander "RIGHT, middle" 0 60
  pass "a drag in the middle of RIGHT raises the window beside the pointer on RIGHT ($at)"

  drag_from "LEFT at the boundary" 1012 400 1 4
  end_and_wander "LEFT at the boundary" -60 0
  pass "a drag on LEFT at the boundary keeps the window on LEFT ($at)"

  drag_from "RIGHT at the boundary, upward" 1030 500 0 -4
  # Let go on LEFT, just outside the window: inside the margin the window stays, beyond it goes.
  read -r x y w h _ <<<"$(window_geometry)"
  xdotool mousemove $((x - 20)) $((y + h / 2))
  sleep 0.1
  let_go
  xdotool mousemove_relative -- 0 2
  sleep 0.3
  window_shown || fail "the window closed with the pointer 20 pixels beside it on the other monitor ($at)"
  for _ in $(seq 6); do xdotool mousemove_relative -- -60 0; sleep 0.05; done
  sleep 0.2
  ! window_shown || fail "the window stayed with the pointer far away on the other monitor ($at)"
  pass "across the boundary the window stays within the margin and closes beyond it ($at)"

  # Across the boundary and back, then a drop at RIGHT's far edge: the panel opens on RIGHT.
  drag_from "RIGHT at its far edge" 1990 300 -4 1
  read -r x y w h _ <<<"$(window_geometry)"
  for _ in $(seq 10); do xdotool mousemove_relative -- -100 0; sleep 0.03; done
  eval "$(xdotool getmouselocation --shell)"
  [ "$X" -lt 1024 ] || fail "the drag did not cross to LEFT"
  glide_to $((x + w / 2)) $((y + h / 3))
  sleep 0.3
  xdotool mousemove_relative -- 1 1
  sleep 0.2
  xdotool mouseup 1
  wait_for "$log" "panel 2 shown" 5 || { cat "$log"; fail "the drop at RIGHT's far edge showed no panel ($at)"; }
  sleep 0.3
  read -r x y w h _ <<<"$(window_geometry)"
  [ "$w" = $((210 * right_scale)) ] || fail "the panel is ${w} wide, not $((210 * right_scale)) ($at)"
  check_on_monitor "the panel" 1990 300
  pass "a drop after crossing the boundary opens the panel on RIGHT, inside its edge ($at)"

  stop_both
}

run_pass 1
run_pass 2
