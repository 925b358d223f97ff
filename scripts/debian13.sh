#!/bin/bash
# Builds the checkout and runs its CTest suites (unit, engine, smoke) inside a
# clean Debian 13 root, the newest Qt a user is likely to have. The root is
# made with debootstrap and kept between runs in the user's cache folder,
# made anew when a week old; the checkout's tracked files are copied in, and
# the root's packages come from scripts/install-deps.sh, as a user's would.
# Needs root (chroot, mounts). With arguments, runs them in the root's copy of
# the checkout instead (e.g. a single test binary under xvfb-run).
set -euo pipefail
cd "$(dirname "$0")/.."
root=${QUB_DEBIAN13_ROOT:-${XDG_CACHE_HOME:-$HOME/.cache}/qub-browser/debian13}
mirror=http://deb.debian.org/debian

if [ "$(id -u)" -ne 0 ]; then
    echo "debian13.sh needs root (chroot and mounts)" >&2
    exit 1
fi
command -v debootstrap > /dev/null || {
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap
}

if [ -z "$(find "$root/.made" -mtime -7 2> /dev/null)" ]; then
    echo "Making a Debian 13 root in $root"
    rm -rf "$root" "$root.new"
    mkdir -p "$(dirname "$root")"
    debootstrap --variant=minbase trixie "$root.new" "$mirror" > "$root.log" 2>&1 || {
        tail -20 "$root.log"
        exit 1
    }
    echo "deb $mirror trixie main" > "$root.new/etc/apt/sources.list"
    touch "$root.new/.made"
    mv "$root.new" "$root"
fi
cp /etc/resolv.conf "$root/etc/resolv.conf"

# The sources are copied afresh; the build folder stays, for ccache and ninja.
work="$root/work/qub"
mkdir -p "$work"
find "$work" -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} +
git ls-files -z --cached --others --exclude-standard | tar --null --ignore-failed-read -T - -cf - | tar -xf - -C "$work"

# Optimised as the user's build is, for the warnings that only optimisation
# finds, but at -O1 and without debug information: half the compile time.
steps="bash scripts/install-deps.sh test && source scripts/ccache.sh &&
    cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_FLAGS_RELWITHDEBINFO='-O1 -DNDEBUG' \"\${launcher[@]}\" > /dev/null &&
    cmake --build build && cd build && ctest -j2 --output-on-failure"
[ $# -gt 0 ] && steps=$(printf '%q ' "$@")

# Mounts live in a namespace of their own and go with it, however this ends.
unshare --mount --propagation private bash -euo pipefail -c '
    root=$1
    mount -t proc proc "$root/proc"
    mount --rbind /sys "$root/sys"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs -o size=2g tmpfs "$root/dev/shm"
    exec chroot "$root" env -i HOME=/root LANG=C.UTF-8 QTWEBENGINE_DISABLE_SANDBOX=1 \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        bash -euo pipefail -c "cd /work/qub && $2"
' debian13 "$root" "$steps"
