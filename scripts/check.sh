#!/bin/bash
# The checked build, with clang, into build-check/: the unit tests under
# AddressSanitizer and UndefinedBehaviorSanitizer, and each fuzz target run
# briefly on its corpus. Any finding fails. "check.sh build" only builds.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/ccache.sh
cmake -S . -B build-check -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUB_CHECKED=ON "${launcher[@]}" > /dev/null
cmake --build build-check
[ "${1:-}" = build ] && exit 0
cd build-check
ctest --output-on-failure
