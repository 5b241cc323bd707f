#!/usr/bin/env bash
# cmake --install into a throwaway root: every file a desktop looks for is there and valid, the manual
# page renders and tells every command of --help, and the bash completion offers every command and
# each command's options.
source "$(dirname "$0")/../e2e/lib.sh"
BUILD=$1
root=$(mktemp -d /tmp/quaydrop-install-XXXXXX)
trap 'rm -rf "$root"' EXIT
DESTDIR="$root" cmake --install "$BUILD" --prefix /usr >/dev/null
usr="$root/usr"
id=com.velmora.Quaydrop

"$usr/bin/quaydrop" --version | grep -qx "quaydrop [0-9.]*" || fail "the installed binary does not run"

desktop-file-validate "$usr/share/applications/$id.desktop" || fail "desktop entry is not valid"
grep -qx 'StartupWMClass=quaydrop' "$usr/share/applications/$id.desktop" || fail "no StartupWMClass"
grep -q '^Comment\[de\]=' "$usr/share/applications/$id.desktop" || fail "no German comment"
appstreamcli validate --no-net "$usr/share/metainfo/$id.metainfo.xml" >/dev/null ||
  { appstreamcli validate --no-net "$usr/share/metainfo/$id.metainfo.xml"; fail "AppStream file is not valid"; }
for entry in "$usr/share/kio/servicemenus/$id.desktop" "$usr/share/nemo/actions/$id.nemo_action"; do
  grep -qx 'Exec=quaydrop panel -- %F' "$entry" || fail "$entry does not open the panel"
done
pass "desktop entry and AppStream file are valid; Dolphin's and Nemo's entries open the panel"

[ -s "$usr/share/icons/hicolor/scalable/apps/$id.svg" ] || fail "no scalable icon"
for size in 16 22 24 32 48 64 128 256 512; do
  png="$usr/share/icons/hicolor/${size}x${size}/apps/$id.png"
  [ -s "$png" ] || fail "no ${size}px icon"
  # The PNG header's width and height, big-endian at bytes 16 and 20.
  read -r w h < <(od -An -tu4 --endian=big -j16 -N8 "$png")
  [ "$w $h" = "$size $size" ] || fail "the ${size}px icon is ${w}x$h"
done
pass "icons: scalable and nine sizes"

page="$usr/share/man/man1/quaydrop.1"
man --warnings -l "$page" >"$root/man.txt" 2>"$root/man.err" || fail "man cannot render the page"
[ -s "$root/man.err" ] && { cat "$root/man.err"; fail "man warns about the page"; }
# The commands as --help lists them: the first word of each two-space-indented line in its block.
mapfile -t commands < <("$usr/bin/quaydrop" --help | sed -n '/^Commands:/,/^$/p' | sed -n 's/^  \([a-z][a-z0-9-]*\).*/\1/p')
[ ${#commands[@]} -ge 10 ] || fail "--help lists only ${#commands[@]} commands"
for c in "${commands[@]}"; do
  grep -q "^       quaydrop $c\b" "$root/man.txt" || fail "the manual's synopsis lacks $c"
done
pass "the manual renders and has all ${#commands[@]} commands"

# shellcheck source=/dev/null
source "$usr/share/bash-completion/completions/quaydrop"
complete_words() { # the words typed so far, the last one being completed
  COMP_WORDS=("$@")
  COMP_CWORD=$(($# - 1))
  COMPREPLY=()
  _quaydrop
  printf '%s\n' "${COMPREPLY[@]}" | sort
}
for c in "${commands[@]}"; do
  complete_words quaydrop "" | grep -qx "$c" || fail "completion does not offer $c"
  mapfile -t opts < <("$usr/bin/quaydrop" "$c" --help | sed -n '/^Options:/,/^$/p' | sed -n 's/^  \(--[a-z-]*\).*/\1/p')
  for o in "${opts[@]}"; do
    complete_words quaydrop "$c" "--" | grep -qx -- "$o" || fail "completion of $c does not offer $o"
  done
done
mkdir -p "$root/pick/folder" && touch "$root/pick/file.png"
cd "$root/pick"
[ "$(complete_words quaydrop convert "")" = "$(printf '%s\n' bmp jp2 jpg png tiff)" ] || fail "convert's types"
[ "$(complete_words quaydrop convert png "")" = "$(printf '%s\n' file.png folder)" ] || fail "files after the type"
[ "$(complete_words quaydrop resize --dest "")" = "folder" ] || fail "--dest offers folders only"
[ "$(complete_words quaydrop resize --width "")" = "" ] || fail "--width offers files"
[ "$(complete_words quaydrop copy file.png "")" = "$(printf '%s\n' file.png folder)" ] || fail "copy's arguments"
pass "completion offers every command, its options and its arguments"
