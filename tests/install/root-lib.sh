# For the manual checks in a Debian root (fresh-debian.sh, gnome-shortcut.sh), called with
# DEB [ROOT [SHOTS]]: the root made when missing, mounted for programs that need /proc and /dev, the
# package installed, and everything undone on exit; the session script started; the screenshots' folder.
set -euo pipefail
deb=$(realpath "$1")
root=${2:-/var/tmp/quaydrop-fresh-root}
shots=$(realpath -m "${3:-$(basename "$0" .sh)-shots}")
mkdir -p "$shots"
fail() { echo "FAIL: $*" >&2; exit 1; }
pass() { echo "PASS: $*"; }
in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 HOME=/root "$@"; }
# A command as the user tester, in the session whose environment the session script wrote.
as_user() { chroot "$root" su - tester -c "source /tmp/qd-session/env 2>/dev/null; $*"; }
export DEBIAN_FRONTEND=noninteractive

[ -d "$root/usr" ] || debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian
cp /etc/resolv.conf "$root/etc/resolv.conf"
pids=()
on_exit=()
mounted=()
cleanup() {
  [ ${#pids[@]} -gt 0 ] && kill "${pids[@]}" 2>/dev/null || true
  sleep 1
  # Whatever the session started (buses, helpers) runs inside the root: stopped by its process id.
  for p in /proc/[0-9]*; do
    [ "$(readlink "$p/root" 2>/dev/null)" = "$(realpath "$root")" ] && kill "${p#/proc/}" 2>/dev/null
  done
  sleep 1
  for step in "${on_exit[@]}"; do eval "$step" || true; done
  for m in "${mounted[@]}"; do umount "$m" 2>/dev/null || umount -l "$m"; done
}
trap cleanup EXIT
mount -t proc proc "$root/proc" && mounted=("$root/proc" "${mounted[@]}")
mount -t sysfs sys "$root/sys" && mounted=("$root/sys" "${mounted[@]}")
mount --bind /dev "$root/dev" && mounted=("$root/dev" "${mounted[@]}")
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts" && mounted=("$root/dev/pts" "${mounted[@]}")
[ ${#mounted[@]} = 4 ] || fail "cannot mount /proc, /sys and /dev into $root (a run still holds them?)"

in_root apt-get update -q >/dev/null
cp "$deb" "$root/root/quaydrop.deb"
in_root apt-get install -y -q /root/quaydrop.deb >/dev/null || fail "apt-get install"
in_root id tester >/dev/null 2>&1 || in_root useradd -m -s /bin/bash tester
rm -rf "$root/tmp/qd-session"

# start_session NAME: /usr/local/bin/NAME of the root as the user tester, on a private session bus. The
# runtime folder before the bus: services it starts (dconf) must flag their changes where clients look.
start_session() {
  chmod +x "$root/usr/local/bin/$1"
  chroot "$root" su - tester -c "export XDG_RUNTIME_DIR=/tmp/qd-session/run; mkdir -p -m 700 \$XDG_RUNTIME_DIR
    dbus-run-session -- $1" >/dev/null 2>&1 &
  pids+=($!)
}
# user_conf LINE...: the user's settings, past the first start's questions, with these lines.
user_conf() {
  local conf
  conf=$(printf '[General]\nshowLoginAtLaunchBoolKey=true\nkDontShowIntroSlider=true\n' && printf '%s\n' "$@")
  chroot "$root" su - tester -c "mkdir -p ~/.config/com.velmora.Quaydrop && printf '%s\n' '$conf' >~/.config/com.velmora.Quaydrop/Quaydrop.conf"
}

# An X server number free here and in the root (the root shares the machine's abstract sockets).
free_display() {
  local n
  for n in $(seq 70 98); do
    grep -q "@/tmp/.X11-unix/X$n\$" /proc/net/unix || [ -e "/tmp/.X$n-lock" ] || [ -e "$root/tmp/.X$n-lock" ] ||
      { echo "$n"; return; }
  done
}
