#!/usr/bin/env bash
# The Debian package as `make package` builds it: named quaydrop_VERSION_ARCH.deb, its dependencies
# from the linked libraries plus the tools it runs, the installed tree inside, and the binary it
# carries runs from a throwaway root.
source "$(dirname "$0")/../e2e/lib.sh"
BUILD=$1
work=$(mktemp -d /tmp/quaydrop-package-XXXXXX)
trap 'rm -rf "$work"' EXIT
cpack -G DEB --config "$BUILD/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; fail "cpack"; }
version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")$/\1/p' "$BUILD/CPackConfig.cmake")
deb="$work/quaydrop_${version}_$(dpkg --print-architecture).deb"
[ -f "$deb" ] || { ls "$work"; fail "no $(basename "$deb")"; }

dpkg-deb --info "$deb" >"$work/info"
field() { sed -n "s/^ $1: //p" "$work/info"; }
[ "$(field Package)" = quaydrop ] || fail "package name"
[ "$(field Version)" = "$version" ] || fail "package version"
depends=$(field Depends)
# From shlibdeps: the C library and each Qt library the binary links; named here: xdg-utils, the
# image plugins and the libraries opened on first use.
for lib in libc6 libqt6core6 libqt6gui6 libqt6widgets6 libqt6dbus6 libvips42 libpoppler-qt6 libxcb-xinput0 xdg-utils qt6-image-formats-plugins libcups2 libglib2.0-0; do
  [[ $depends == *"$lib"* ]] || fail "Depends lacks $lib: $depends"
done
# The long description: each line indented, as the control file's format wants, and no list separators.
dpkg-deb --field "$deb" Description | sed 1d >"$work/description"
[ -s "$work/description" ] || fail "the package has no long description"
grep -vq '^ ' "$work/description" && fail "a description line is not indented"
grep -q '^ ;' "$work/description" && fail "the description's lines start with list separators: $(cat "$work/description")"
pass "dpkg-deb --info: $(basename "$deb"), Depends: $depends"

dpkg-deb --contents "$deb" | awk '{print $6}' | sed 's|^\./|/|' >"$work/contents"
for path in /usr/bin/quaydrop /usr/libexec/quaydrop/quaydrop-app /usr/libexec/quaydrop/quaydrop-worker /usr/share/applications/com.velmora.Quaydrop.desktop \
  /usr/share/metainfo/com.velmora.Quaydrop.metainfo.xml /usr/share/man/man1/quaydrop.1 \
  /usr/share/bash-completion/completions/quaydrop /usr/share/icons/hicolor/scalable/apps/com.velmora.Quaydrop.svg \
  /usr/share/icons/hicolor/512x512/apps/com.velmora.Quaydrop.png /usr/share/kio/servicemenus/com.velmora.Quaydrop.desktop \
  /usr/share/nemo/actions/com.velmora.Quaydrop.nemo_action; do
  grep -qx "$path" "$work/contents" || fail "the package lacks $path"
done
# Nothing outside /usr, and nothing that apt-get remove would leave behind (no maintainer scripts
# that write files, no conffiles).
grep -v -e '^/usr/' -e '^/$' -e '^/usr$' "$work/contents" && fail "the package installs outside /usr"
dpkg-deb --ctrl-tarfile "$deb" | tar -t | grep -E 'postinst|conffiles' && fail "the package carries maintainer scripts"
pass "dpkg-deb --contents: the installed tree, under /usr only"

dpkg -x "$deb" "$work/root"
"$work/root/usr/bin/quaydrop" --version | grep -qx "quaydrop $version" || fail "the packaged binary does not run"
file_size=$(stat -c %s "$work/root/usr/bin/quaydrop")
[ "$file_size" -lt $((40 * 1024 * 1024)) ] || fail "the packaged binary is not stripped ($file_size bytes)"
# Images are read by the worker beside the program: the packaged one is found and does the work.
cp "$work/root/usr/share/icons/hicolor/16x16/apps/com.velmora.Quaydrop.png" "$work/icon.png"
"$work/root/usr/bin/quaydrop" resize --width 8 "$work/icon.png" >/dev/null || fail "the packaged worker does not resize"
[ -s "$work/icon_8x8.png" ] || fail "no resized icon from the packaged worker"
pass "dpkg -x: the packaged quaydrop runs, with its worker"
