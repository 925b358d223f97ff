#!/bin/bash
# Builds the checkout and runs its CTest suites (unit, engine, smoke) inside a
# clean Debian 13 root, the newest Qt a user is likely to have. The root is
# kept between runs (see scripts/debian-root.sh); the checkout's tracked files
# are copied in, and the root's packages come from scripts/install-deps.sh, as
# a user's would. Needs root. With arguments, runs them in the root's copy of
# the checkout instead (e.g. a single test binary under xvfb-run).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/debian-root.sh
root=${QUB_DEBIAN13_ROOT:-$roots/debian13}
debian_root trixie "$root"

# The sources are copied afresh, dated now so ninja rebuilds from them (ccache
# keeps that quick); the build folder stays.
work="$root/work/qub"
mkdir -p "$work"
find "$work" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
git ls-files -z --cached --others --exclude-standard | tar --null --ignore-failed-read -T - -cf - | tar -m -xf - -C "$work"

# Optimised as the user's build is, for the warnings that only optimisation
# finds, but at -O1 and without debug information: half the compile time.
# The comparison with the reference filter engine says nothing of the Qt
# version, so it runs on the host alone.
steps="QUB_NO_REFERENCE=1 bash scripts/install-deps.sh test && source scripts/ccache.sh &&
    cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_FLAGS_RELWITHDEBINFO='-O1 -DNDEBUG' \"\${launcher[@]}\" > /dev/null &&
    cmake --build build && cd build && ctest -j2 -LE reference --output-on-failure"
[ $# -gt 0 ] && steps=$(printf '%q ' "$@")
in_root "$root" "cd /work/qub && $steps"
