# Sourced by the scripts that run in a clean Debian root (needs root: chroot
# and mounts). Roots are made with debootstrap, kept in the user's cache
# folder and made anew when a week old.
roots=${XDG_CACHE_HOME:-$HOME/.cache}/qub-browser
mirror=http://deb.debian.org/debian

if [ "$(id -u)" -ne 0 ]; then
    echo "$(basename "$0") needs root (chroot and mounts)" >&2
    exit 1
fi
command -v debootstrap > /dev/null || {
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap
}

# debian_root SUITE ROOT: makes ROOT a minimal root of SUITE unless a recent
# one is there.
debian_root() {
    local suite=$1 root=$2
    if [ -z "$(find "$root/.made" -mtime -7 2> /dev/null)" ]; then
        echo "Making a Debian $suite root in $root"
        rm -rf "$root" "$root.new"
        mkdir -p "$(dirname "$root")"
        debootstrap --variant=minbase "$suite" "$root.new" "$mirror" > "$root.log" 2>&1 || {
            tail -20 "$root.log"
            exit 1
        }
        echo "deb $mirror $suite main" > "$root.new/etc/apt/sources.list"
        touch "$root.new/.made"
        mv "$root.new" "$root"
    fi
    cp /etc/resolv.conf "$root/etc/resolv.conf"
}

# in_root ROOT STEPS: runs the shell text STEPS as root in ROOT, with /proc,
# /sys and /dev mounted in a namespace of their own that goes with it,
# however it ends.
in_root() {
    unshare --mount --propagation private bash -euo pipefail -c '
        root=$1
        mount -t proc proc "$root/proc"
        mount --rbind /sys "$root/sys"
        mount --rbind /dev "$root/dev"
        mount -t tmpfs -o size=2g tmpfs "$root/dev/shm"
        exec chroot "$root" env -i HOME=/root LANG=C.UTF-8 QTWEBENGINE_DISABLE_SANDBOX=1 \
            PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            bash -euo pipefail -c "$2"
    ' in_root "$1" "$2"
}
