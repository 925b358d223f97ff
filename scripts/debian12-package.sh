#!/bin/bash
# The Debian package as a user meets it: built from build/, installed with
# apt-get into a clean Debian 12 root, started there in a private X server
# with an address (its window title and a screenshot checked), then purged,
# leaving none of its files behind. Needs root. The screenshot is kept as
# build/package/debian12.png. With --prepare, only makes the kept root ready.
set -euo pipefail
cd "$(dirname "$0")/.."
started=$(date +%s)
source scripts/debian-root.sh
base=$roots/debian12
debian_root bookworm "$base"
# The check's own tools live in the kept root; the package goes into a copy
# of it made for this run alone, so every run starts clean.
if [ ! -f "$base/.tools" ]; then
    in_root "$base" "apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
        --no-install-recommends xvfb xauth xdotool x11-utils imagemagick > /dev/null"
    touch "$base/.tools"
fi
[ "${1:-}" = --prepare ] && exit 0
deb=$(bash scripts/package.sh | tail -1)
root=$(mktemp -d /var/tmp/qub-debian12.XXXXXX)
trap 'rm -rf "$root"' EXIT
cp -a "$base/." "$root/"
# Downloaded packages are kept between runs.
archives=$roots/debian12-archives
mkdir -p "$archives"
cp "$archives"/*.deb "$root/var/cache/apt/archives/" 2> /dev/null || true
cp "$deb" "$root/root/"

cat > "$root/root/check.sh" <<'CHECK'
set -euo pipefail
cd /root
fail() { echo "debian12: $*"; [ -f run.log ] && tail -20 run.log; exit 1; }
apt-get update -qq
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq ./qub-browser_*.deb > install.log 2>&1 ||
    { tail -20 install.log; fail "apt-get install failed"; }
dpkg -L qub-browser > files.txt
version=$(qub-browser --version) || fail "--version"
echo '<html><head><title>Installed page</title></head><body><h1>Installed</h1></body></html>' > page.html
mkdir -m 700 run
export XDG_RUNTIME_DIR=/root/run
xvfb-run -a -s '-screen 0 1280x800x24' bash -euo pipefail -c '
    qub-browser file:///root/page.html > run.log 2>&1 &
    pid=$!
    # The window names the page once it has loaded. A window found has been
    # seen gone before it was asked its name (a BadWindow error), so the
    # search is asked again until the window answers with that name.
    wanted="Installed page - QUB-BROWSER ${1#qub-browser }"
    title=
    for _ in $(seq 60); do
        window=$(xdotool search --onlyvisible --name "QUB-BROWSER [0-9]" 2> /dev/null | head -1) || true
        [ -n "$window" ] && title=$(xdotool getwindowname "$window" 2> /dev/null) &&
            [ "$title" = "$wanted" ] && break
        sleep 1
    done
    [ "$title" = "$wanted" ] || { echo "window title: ${title:-no window}"; exit 1; }
    sleep 2
    import -window root shot.png
    colours=$(identify -format %k shot.png)
    [ "$colours" -gt 50 ] || { echo "the screen is nearly blank ($colours colours)"; exit 1; }
    kill "$pid"
    wait "$pid" || true
' check "$version" || fail "the installed program did not show its window and page"
grep -q '"title": "Installed page"' .local/share/QUB-BROWSER/Session.json || fail "the page did not load"
DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq qub-browser > purge.log 2>&1 ||
    { tail -20 purge.log; fail "apt-get purge failed"; }
while read -r path; do
    [ -d "$path" ] && [ -n "$(ls -A "$path")" ] && continue
    [ -e "$path" ] && fail "$path is left after purge"
done < files.txt
echo "debian12: installed with its dependencies, started as $version, purged without a trace"
CHECK
in_root "$root" "bash /root/check.sh"
cp "$root/root/shot.png" build/package/debian12.png
cp -n "$root"/var/cache/apt/archives/*.deb "$archives/" 2> /dev/null || true
echo "debian12: $(( ($(date +%s) - started + 59) / 60 )) minutes"
