#!/usr/bin/env bash
# Installs what Quaydrop needs to build, test and run on Debian 12. Idempotent: packages that are
# already present are not touched, and nothing runs apt-get when all of them are there.
set -euo pipefail

PACKAGES=(
  # toolchain
  g++ cmake ninja-build pkg-config make
  # Qt 6
  qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools qt6-svg-dev
  libgl-dev
  # images and PDF: resampling and codecs, PDF rendering, PNG recompression
  libvips-dev libpoppler-qt6-dev libpng-dev zlib1g-dev
  # the editor: Qt's TIFF and WebP readers and writers, lossless JPEG turns (libturbojpeg)
  qt6-image-formats-plugins libturbojpeg0-dev libjpeg-dev
  # archives
  libminizip-dev
  # printing: libcups to hand jobs over; a CUPS server and the cups-pdf printer for the print tests
  libcups2-dev cups cups-client printer-driver-cups-pdf
  # X11 drag watching
  libxcb1-dev libxcb-xfixes0-dev libxcb-xinput-dev
  # running and testing without a desktop
  xvfb xauth dbus dbus-x11 x11-utils xdotool procps util-linux
  # a tray host for the tray tests and pictures; a window manager for the tests of a managed desktop
  trayer openbox
  # two monitors on one X server for the placement tests: Xorg with the dummy driver, split by xrandr
  xserver-xorg-core xserver-xorg-video-dummy x11-xserver-utils
  # real browsers to drag images out of, and a small web server for their page, in the end-to-end tests
  chromium firefox-esr python3
  # tests: encrypted PDFs are made with qpdf; EXIF written and read back by exiftool
  qpdf libimage-exiftool-perl
  # benchmarks in bench/ and their peer tools (jpegtran also checks lossless turns in the tests)
  hyperfine time rsync imagemagick libvips-tools poppler-utils img2pdf libjpeg-turbo-progs
  # the wallpaper: the settings tools and services it sets and the tests read back (gsettings on dconf,
  # xfconfd and its query tool, glib-compile-schemas for the Cinnamon and MATE keys), feh for a bare
  # window manager
  libglib2.0-bin dconf-cli dconf-service dconf-gsettings-backend gsettings-desktop-schemas xfconf libxfconf-0-3 feh
  # tests: archives are checked with unzip, new documents with python-docx, openpyxl and odfpy
  unzip python3-docx python3-openpyxl python3-odf
  # the installed tree and the Debian package: validators, man, and the package's own tools
  desktop-file-utils appstream man-db dpkg-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  SUDO=sudo
else
  SUDO=
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
