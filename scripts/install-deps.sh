#!/usr/bin/env bash
# Installs the Debian 12 packages that Quellmark builds and tests with, only
# those that are missing. Needs root, or sudo.
#
#   scripts/install-deps.sh            what the build and the tests use
#   scripts/install-deps.sh --package  and what `cpack -G DEB` needs
#   scripts/install-deps.sh --checks   and the formatter, clang-tidy and the
#                                      package's validators of .ci/run
set -euo pipefail

# The build (the window needs Qt and its GL headers, the benchmarks Google
# Benchmark) and the tests (GoogleTest; the window's tests draw text on Qt's
# offscreen platform, which needs a font; the printing tests read their PDF
# with poppler's tools; the amplifier catalogue is kept with SQLite; the
# icon's pictures are drawn from its SVG with rsvg-convert; the circuits are
# solved with Eigen and their netlists checked by ngspice).
packages=(cmake g++ make pkg-config qt6-base-dev qt6-charts-dev libqt6opengl6-dev libgl-dev
          libgtest-dev libbenchmark-dev libsqlite3-dev fonts-dejavu-core poppler-utils librsvg2-bin
          libeigen3-dev ngspice)
# The package works out its dependencies with dpkg-shlibdeps, which CPack
# runs on the files that `file` finds to be programs.
package_tools=(dpkg-dev file)
case "${1:-}" in
--package)
    packages+=("${package_tools[@]}")
    ;;
--checks)
    packages+=(clang-format clang-tidy clang libclang-rt-14-dev "${package_tools[@]}"
               lintian appstream desktop-file-utils shared-mime-info man-db)
    ;;
esac

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    as_root=()
    [ "$(id -u)" -ne 0 ] && as_root=(sudo)
    "${as_root[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
fi
