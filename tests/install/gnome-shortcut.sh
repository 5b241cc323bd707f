#!/usr/bin/env bash
# A manual check, not part of make test (it installs GNOME into a Debian root and needs root): the hot
# key on a real GNOME Shell on Wayland. A nested GNOME Shell 43 runs in an X window of Xvfb with GNOME's
# media-keys service; Quaydrop starts with "With the key" on, registers its custom shortcut in GNOME's
# settings, and Ctrl+Alt+F pressed into the shell's window runs `quaydrop toggle`: the drop window opens
# and closes, and with Quaydrop not running the key starts it.
#
#   sudo bash tests/install/gnome-shortcut.sh build/quaydrop_0.1.0_amd64.deb [ROOT [SHOTS]]
#
# ROOT as for fresh-debian.sh (made when missing); SHOTS (default ./gnome-shortcut-shots).
source "$(dirname "$0")/root-lib.sh"

in_root apt-get install -y -q --no-install-recommends gnome-shell gnome-settings-daemon xwayland xvfb xauth \
  openbox xdotool x11-utils libglib2.0-bin >/dev/null
# GNOME Shell needs a system bus; without logind (a root is not booted) it must not look for seats.
mkdir -p "$root/run/dbus"
rm -f "$root/run/dbus/pid"
in_root dbus-daemon --system --fork
if [ -d "$root/run/systemd/seats" ]; then
  mv "$root/run/systemd/seats" "$root/run/systemd/seats.off"
  on_exit+=('mv "$root/run/systemd/seats.off" "$root/run/systemd/seats"')
fi
outer=$(free_display)
cat >"$root/usr/local/bin/qd-gnome-session" <<EOF2
#!/bin/bash
S=/tmp/qd-session
export XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_TYPE=wayland
Xvfb :$outer -screen 0 1280x800x24 -nolisten tcp & sleep 1.5
DISPLAY=:$outer openbox &
DISPLAY=:$outer MUTTER_DEBUG_DUMMY_MODE_SPECS=1200x750 gnome-shell --nested --wayland >\$S/shell.log 2>&1 &
for i in \$(seq 120); do grep -q "GNOME Shell started" \$S/shell.log && break; sleep 0.5; done
xw=\$(grep -o 'Using public X11 display :[0-9]*' \$S/shell.log | awk '{print \$NF}')
auth=\$(ls -t \$XDG_RUNTIME_DIR/.mutter-Xwaylandauth.* | head -1)
echo "export DISPLAY=\$xw XAUTHORITY=\$auth WAYLAND_DISPLAY=wayland-0 XDG_RUNTIME_DIR=\$XDG_RUNTIME_DIR XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_TYPE=wayland DBUS_SESSION_BUS_ADDRESS='\$DBUS_SESSION_BUS_ADDRESS' QT_LOGGING_RULES=quaydrop.window.debug=true" >\$S/env
while [ ! -e \$S/stop ]; do sleep 0.5; done
EOF2
start_session qd-gnome-session
for _ in $(seq 150); do [ -s "$root/tmp/qd-session/env" ] && break; sleep 0.2; done
[ -s "$root/tmp/qd-session/env" ] || fail "GNOME Shell did not start: $(tail -5 "$root/tmp/qd-session/shell.log")"
# The media-keys service once the shell is settled, as GNOME's session starts it: a service that asks the
# shell for its keys while the shell is still starting gets none of them.
sleep 5
as_user "/usr/libexec/gsd-media-keys >/tmp/qd-session/media-keys.log 2>&1 &"
sleep 2
pass "GNOME Shell $(in_root gnome-shell --version | awk '{print $3}') runs nested on Wayland, with the media-keys service"

user_conf kShowPanelHKEnabled=true
log=$root/tmp/qd-session/quaydrop.log
as_user "quaydrop >/tmp/qd-session/quaydrop.log 2>&1 &"
for _ in $(seq 50); do grep -q "opens the drop window" "$log" && break; sleep 0.2; done
grep -q "hot key Ctrl+Alt+F opens the drop window" "$log" || fail "no shortcut: $(cat "$log")"
schema=org.gnome.settings-daemon.plugins.media-keys
# dconf writes through its service: another process reads the change a moment later.
for _ in $(seq 25); do
  list=$(as_user "gsettings get $schema custom-keybindings")
  grep -q "custom-keybindings/quaydrop/" <<<"$list" && break
  sleep 0.2
done
grep -q "custom-keybindings/quaydrop/" <<<"$list" || fail "not in GNOME's list: $list; $(cat "$log")"
binding=$(as_user "gsettings get $schema.custom-keybinding:/${schema//.//}/custom-keybindings/quaydrop/ binding")
[ "$binding" = "'<Control><Alt>f'" ] || fail "GNOME's binding is $binding"
pass "Quaydrop registered <Control><Alt>f as a custom shortcut in GNOME's settings"

shown() { as_user "xwininfo -name 'Quaydrop drop window'" 2>/dev/null | grep -q IsViewable; }
wait_shown() { for _ in $(seq 50); do [ "$(shown && echo 1 || echo 0)" = "$1" ] && return 0; sleep 0.2; done; return 1; }
key() { DISPLAY=:$outer xdotool key ctrl+alt+f; }
# The shell's window takes the keys once clicked (on the empty desktop, away from where windows open);
# the shell starts in its overview, where custom shortcuts are not run: Escape leaves it.
DISPLAY=:$outer xdotool mousemove 1150 720 click 1 sleep 0.5 key Escape sleep 0.5 key Escape sleep 1
key
wait_shown 1 || fail "Ctrl+Alt+F did not open the drop window: $(tail -3 "$root/tmp/qd-session/media-keys.log")"
DISPLAY=:$outer import -window root "$shots/key-opens.png"
key
wait_shown 0 || fail "Ctrl+Alt+F again did not close it"
pass "Ctrl+Alt+F in GNOME Shell opens the drop window and closes it: $shots/key-opens.png"

lock=$(ls "$root"/tmp/qd-session/run/com.velmora.Quaydrop.*.instance.lock)
first=$(head -n1 "$lock")
kill "$first"
for _ in $(seq 50); do kill -0 "$first" 2>/dev/null || break; sleep 0.2; done
key
wait_shown 1 || fail "with Quaydrop not running, the key did not start it"
[ "$(head -n1 "$lock")" != "$first" ] || fail "no new Quaydrop"
DISPLAY=:$outer import -window root "$shots/key-starts-quaydrop.png"
pass "with Quaydrop not running, the key starts it and opens the drop window: $shots/key-starts-quaydrop.png"
touch "$root/tmp/qd-session/stop"
