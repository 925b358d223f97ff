#!/bin/bash
# Installs the Debian 12 packages that building (and, with "test", testing)
# QUB-BROWSER needs; does nothing when they are all there.
set -euo pipefail

packages=(g++ cmake ninja-build ccache libgl-dev libxml2-dev
          qt6-base-dev libqt6sql6-sqlite qt6-multimedia-dev qt6-webchannel-dev qt6-webengine-dev libqt6webenginecore6-bin qt6-qpa-plugins libqt6svg6
          adwaita-icon-theme fonts-dejavu-core)
if [ "${1:-}" = test ]; then
    packages+=(xvfb xauth openbox x11-utils libgl1-mesa-dri xdotool imagemagick libssl3 clang libclang-rt-14-dev clang-tidy clazy)
fi

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' \
        || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
