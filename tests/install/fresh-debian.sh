#!/usr/bin/env bash
# A manual check, not part of make test (it downloads a Debian system and needs root): the package on a
# fresh Debian 12, as a user meets it. Installs the .deb into a bookworm root made by debootstrap, runs
# the commands, finds the menu entry and its icon as GTK does, starts Quaydrop from its menu entry on an
# X server with a window manager and a tray, opens the panel for three files from a right click in Nemo
# and in Dolphin (keyboard only), and removes the package again, checking that nothing of it stays.
#
#   sudo bash tests/install/fresh-debian.sh build/quaydrop_0.1.0_amd64.deb [ROOT [SHOTS]]
#
# ROOT (default /var/tmp/quaydrop-fresh-root) is made when missing and kept for a second run; SHOTS
# (default ./fresh-debian-shots) receives the screenshots. Needs debootstrap and imagemagick here.
source "$(dirname "$0")/root-lib.sh"

in_root quaydrop --version | grep -qx "quaydrop [0-9.]*" || fail "quaydrop --version"
printf 'hello\n' >"$root/root/note.txt"
[ "$(in_root quaydrop type /root/note.txt)" = "$(printf '2\t/root/note.txt')" ] || fail "quaydrop type"
in_root quaydrop size /root/note.txt | grep -q "bytes" || fail "quaydrop size"
cp "$(dirname "$0")/../../docs/screenshots/panel-image.png" "$root/root/pic.png"
in_root quaydrop resize --width 100 /root/pic.png 2>/dev/null | grep -q "pic_100x" || fail "resize with the packaged worker"
pass "installed on a fresh root; --version, type, size and resize (through the packaged worker) run"

in_root apt-get install -y -q --no-install-recommends desktop-file-utils xvfb xauth python3-gi gir1.2-gtk-3.0 \
  openbox trayer xdotool nemo dolphin >/dev/null
in_root desktop-file-validate /usr/share/applications/com.velmora.Quaydrop.desktop || fail "desktop entry"
cat >"$root/root/lookup.py" <<'EOF'
import gi, sys
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk, Gio
app = Gio.DesktopAppInfo.new("com.velmora.Quaydrop.desktop")
shown = [a.get_id() for a in Gio.AppInfo.get_all() if a.should_show()]
icon = Gtk.IconTheme.get_default().lookup_icon(app.get_icon().to_string(), 48, 0)
print(app.get_filename(), icon.get_filename() if icon else None)
sys.exit(0 if app.get_id() in shown and icon else 1)
EOF
in_root xvfb-run -a python3 /root/lookup.py || fail "the menu entry or its icon is not found"
pass "the menu lists the entry, and the icon theme finds its icon"

chroot "$root" su - tester -c 'mkdir -p ~/three && for n in a b c; do echo $n >~/three/$n.txt; done'
user_conf
# A session: an X server of a free number, the window manager and tray, on a private session bus.
display=$(free_display)
cat >"$root/usr/local/bin/qd-session" <<EOF
#!/bin/bash
S=/tmp/qd-session; export DISPLAY=:$display
echo "export DISPLAY=\$DISPLAY XDG_RUNTIME_DIR=\$XDG_RUNTIME_DIR DBUS_SESSION_BUS_ADDRESS='\$DBUS_SESSION_BUS_ADDRESS' QT_LOGGING_RULES=quaydrop.window.debug=true" >\$S/env
Xvfb \$DISPLAY -screen 0 1280x800x24 -nolisten tcp & sleep 1.5
openbox & trayer --edge top --align right --widthtype request --height 24 & sleep 1
source \$S/env; gtk-launch com.velmora.Quaydrop >\$S/launch.log 2>&1
while [ ! -e \$S/stop ]; do sleep 0.5; done
EOF
start_session qd-session
running() { grep -q "quaydrop: running" "$root/tmp/qd-session/launch.log" 2>/dev/null; }
for _ in $(seq 100); do running && break; sleep 0.2; done
running || fail "gtk-launch did not start Quaydrop"
sleep 3
DISPLAY=:$display import -window root "$shots/started-from-menu.png"
pass "gtk-launch started Quaydrop from its menu entry: $shots/started-from-menu.png"

# The resident program's log is where gtk-launch's output went: count its panels for several files.
panels() { grep -c "panel 888 shown" "$root/tmp/qd-session/launch.log" || true; }
right_click() { # file manager, its command, the keys that open the context menu and choose the entry
  local before; before=$(panels)
  as_user "$2 ~/three >/dev/null 2>&1 &"
  for _ in $(seq 50); do as_user "xdotool search --onlyvisible --class $1" >/dev/null 2>&1 && break; sleep 0.2; done
  sleep 3
  as_user "xdotool search --onlyvisible --class $1 | tail -1 | xargs xdotool windowactivate --sync; sleep 0.5
    xdotool key ctrl+a; sleep 0.5; xdotool key $3; sleep 1.5"
  DISPLAY=:$display import -window root "$shots/$1-menu.png"
  as_user "xdotool key $4"
  for _ in $(seq 50); do [ "$(panels)" -gt "$before" ] && break; sleep 0.2; done
  [ "$(panels)" -gt "$before" ] || fail "$1: no panel for several files (menu: $shots/$1-menu.png)"
  sleep 1
  DISPLAY=:$display import -window root "$shots/$1-panel.png"
  as_user 'quaydrop toggle'
  pass "$1: a right click on three files opened the panel for several files: $shots/$1-panel.png"
}
right_click nemo "nemo --no-desktop" "shift+F10" "Down Down Return"
right_click dolphin "dolphin" "Menu" "i"
touch "$root/tmp/qd-session/stop"

before=$(in_root dpkg -L quaydrop)
in_root apt-get purge -y -q quaydrop >/dev/null || fail "apt-get purge"
left=0
while read -r p; do
  [ -e "$root$p" ] && ! in_root dpkg -S "$p" >/dev/null 2>&1 && { echo "left: $p"; left=$((left + 1)); }
done <<<"$before"
[ $left = 0 ] || fail "$left packaged paths stay after the purge"
pass "apt-get purge leaves none of the $(wc -l <<<"$before") packaged paths behind"
