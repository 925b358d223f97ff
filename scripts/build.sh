#!/bin/bash
# Configures and builds into build/; the program folder is build/bin.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/ccache.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" > /dev/null
cmake --build build
