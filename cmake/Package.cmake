# `make package`: quaydrop_VERSION_ARCH.deb. Its library dependencies come from what the binary links
# (dpkg-shlibdeps); the tools it runs are named here. Archives are built in, so zip is not among them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quaydrop)
set(CPACK_PACKAGE_VENDOR Velmora)
set(CPACK_PACKAGE_CONTACT "Velmora <support@velmora.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "drop window for files, text and images")
# One string: separate arguments to set() would make a list, its semicolons in the control file.
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "While you drag anything anywhere on the screen, a small drop window appears next to the pointer;\n"
    "a drop there shows the actions that fit what was dropped: move or copy to remembered destinations,\n"
    "zip, resize, convert, crop and paint on images, join images into a PDF, split a PDF, mail, share\n"
    "and print. It lives in the tray, and file managers' context menus hand it files.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://velmora.com/quaydrop")
# Qt loads TIFF and WebP through plugins, and Quaydrop opens libcups and GSettings when first needed:
# shlibdeps sees none of them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "xdg-utils, qt6-image-formats-plugins, libcups2, libglib2.0-0")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "dbus-user-session")
set(CPACK_DEBIAN_COMPRESSION_TYPE gzip)

find_program(QD_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(QD_DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
  # Without dpkg-dev the package still builds, naming Debian 12's libraries by hand.
  message(STATUS "dpkg-shlibdeps not found: the package names its libraries by hand (install dpkg-dev)")
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS
         ", libqt6core6 (>= 6.4), libqt6gui6 (>= 6.4), libqt6widgets6 (>= 6.4), libqt6svg6 (>= 6.4)"
         ", libqt6dbus6 (>= 6.4), libqt6network6 (>= 6.4), libvips42, libpoppler-qt6-3, libturbojpeg0"
         ", libpng16-16, zlib1g, libminizip1, libxcb1, libxcb-xfixes0, libxcb-xinput0")
endif()

include(CPack)
