#!/usr/bin/env bash
# Installs the Debian 12 packages that Quellmark builds and tests with, only
# those that are missing. Needs root, or sudo.
set -euo pipefail

packages=(cmake g++ make pkg-config qt6-base-dev libgl-dev libgtest-dev libgmock-dev
          libbenchmark-dev libsqlite3-dev clang-format clang-tidy fonts-dejavu-core xvfb xauth)

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
