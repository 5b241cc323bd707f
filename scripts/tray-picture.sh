#!/usr/bin/env bash
# Run inside a virtual display by scripts/screenshots.sh: the program in a real tray host, its panel
# opened by a click on the icon, photographed with the corner of the screen it hangs in.
set -euo pipefail
bin=$1 out=$2
conf="$XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf"
mkdir -p "$(dirname "$conf")"
printf '[General]\nshowLoginAtLaunchBoolKey=true\nkDontShowIntroSlider=true\n' >"$conf"
trayer --edge top --align right --widthtype pixel --width 100 --heighttype pixel --height 26 \
  --SetDockType false --SetPartialStrut false --expand false 2>/dev/null &
tray=$!
"$bin" 2>/dev/null &
pid=$!
trap 'kill $pid $tray 2>/dev/null || true' EXIT
sleep 2
for w in $(xdotool search --classname quaydrop); do
  eval "$(xdotool getwindowgeometry --shell "$w")"
  if [ "$WIDTH" -le 40 ] && [ "$Y" -le 26 ]; then icon=$w; fi
done
xdotool mousemove --window "$icon" 8 8 click 1
sleep 1
import -window root -crop 440x500+840+0 +repage "$out/tray-panel.png"
