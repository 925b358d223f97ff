#!/bin/bash
# Installs the packages that building (and, with "test", testing, or with
# "package", packaging) QUB-BROWSER needs on Debian 12 or 13 or Ubuntu 24.04;
# does nothing when they are all there. Where the releases name a package
# differently, "a|b" takes the first name the package lists know.
set -euo pipefail

packages=(g++ cmake ninja-build ccache pkg-config libgl-dev libxml2-dev libpsl-dev publicsuffix
          qt6-base-dev libqt6sql6-sqlite qt6-multimedia-dev qt6-webchannel-dev qt6-webengine-dev libqt6webenginecore6-bin qt6-qpa-plugins libqt6svg6
          adwaita-icon-theme fonts-dejavu-core xdg-utils webext-ublock-origin-chromium)
if [ "${1:-}" = package ]; then
    packages+=(dpkg-dev debootstrap)
fi
if [ "${1:-}" = test ]; then
    packages+=(xvfb xauth openbox x11-utils libgl1-mesa-dri xdotool imagemagick desktop-file-utils appstream python3 openssl "libssl3|libssl3t64" clang libclang-rt-dev clang-tidy clazy)
    # Node.js for the reference engine the filter lists are compared with,
    # where the machine has none.
    [ -n "${QUB_NO_REFERENCE:-}" ] || command -v npm > /dev/null || packages+=(nodejs npm)
fi

sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
updated=false
known() {
    [ -n "$(apt-cache show --no-all-versions "$1" 2> /dev/null)" ]
}
installed() {
    dpkg-query -W -f='${Status}' "$1" 2> /dev/null | grep -q '^install ok installed'
}
# Sets package to the name this release uses of the alternatives in $1.
pick() {
    local name names
    IFS='|' read -ra names <<< "$1"
    for name in "${names[@]}"; do
        installed "$name" && { package=$name; return; }
    done
    if ! $updated; then
        "${sudo[@]}" apt-get update -qq
        updated=true
    fi
    for name in "${names[@]}"; do
        known "$name" && { package=$name; return; }
    done
    package=${names[0]}
}

missing=()
for package in "${packages[@]}"; do
    [[ $package == *'|'* ]] && pick "$package"
    installed "$package" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    $updated || "${sudo[@]}" apt-get update -qq
    "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
# The reference filter engine, at the versions package-lock.json holds.
reference="$(dirname "$0")/../tests/reference"
if [ "${1:-}" = test ] && [ -z "${QUB_NO_REFERENCE:-}" ] && [ ! -d "$reference/node_modules" ]; then
    (cd "$reference" && npm ci --no-audit --no-fund --silent)
fi
