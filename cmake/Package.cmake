# The Debian package: `cpack -G DEB` in the build folder makes
# quellmark_VERSION_ARCH.deb from what Install.cmake installs, under /usr.
# Its dependencies are worked out from the programs themselves
# (dpkg-shlibdeps); the desktop's caches are refreshed by the system's own
# package triggers, so the package has no scripts of its own.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quellmark)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Quellmark developers <support@quellmark.example>")
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://quellmark.example/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION [[design active analog filters built round operational amplifiers
Quellmark designs active analog filters: a designer picks a response family
(Butterworth, Bessel, Chebychev, linear-phase, transitional Gaussian, Custom
Q, Custom Fn and Q), the pole count, the cutoff, low- or high-pass and a
circuit (Sallen-Key, multiple-feedback, fully differential
multiple-feedback). Quellmark computes the pole pairs, cuts them into
sections, chooses standard-value components, analyses what those parts
really give and draws a Bode chart with group delay.

The package holds the window, quellmark, and the command-line program
quellmark-cli, which drives the same design screen for scripts.]])

include(CPack)
