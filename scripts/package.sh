#!/bin/bash
# Builds the Debian package of the program from build/ (made by
# scripts/build.sh): build/package/qub-browser_<version>_<arch>.deb, its
# dependencies read from the binaries by dpkg-shlibdeps. Prints the path.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh package
bash scripts/build.sh
rm -f build/package/*.deb
(cd build && cpack -G DEB > package.log 2>&1) || { tail -20 build/package.log; exit 1; }
ls "$PWD"/build/package/qub-browser_*.deb
