# The Debian package (cpack -G DEB in a build folder): the install rules under /usr, with the shared
# libraries the programs link named as dependencies by dpkg-shlibdeps (dpkg-dev), which finds the programs
# with `file`.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME porvane90)
set(CPACK_PACKAGE_VENDOR "Porvane 90")
set(CPACK_PACKAGE_CONTACT "Porvane 90 developers <porvane90@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Visitor-management desk for the reception or security office")
set(CPACK_PACKAGE_DESCRIPTION "Operators book visitors in advance, mark them in and out at the gate, see \
who is on site, print visitor passes with a photograph and a bar code, and purge old data. The bookings are \
fixed-width text files in a data folder that several desks may share. porvane-admin is its command-line tool.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The camera runs through GStreamer's v4l2 source (without it the desk works, without snapshots), and
# porvane-admin's db commands through the PostgreSQL driver of Qt Sql.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, libqt6sql6-psql")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_PREFIX /usr)
# Installed through DESTDIR, so that the install rules see the package's own prefix (the desktop entry names
# /usr/bin/porvane, not the staging folder).
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
include(CPack)
