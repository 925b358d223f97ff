#!/bin/bash
# The program installed into a prefix as a package puts it: its desktop files
# pass their validators, --version and --help answer, a user's runs write only
# into the user's folder, read the user's copy of a shipped file instead of it
# and every other shipped file as installed, and once the browser is the
# desktop's, xdg-open hands an address to the running window.
# Usage: install.sh BUILD_DIR
set -u
build=$(cd "$1" && pwd)
if [ -z "${INSTALL_INSIDE_X:-}" ]; then
    INSTALL_INSIDE_X=1 exec xvfb-run -a -s "-screen 0 1280x800x24" bash "$0" "$@"
fi

work=$(mktemp -d)
pid=
cleanup() { [ -n "$pid" ] && kill -9 "$pid" 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
fail() { echo "install: $*"; [ -f "$work/run.log" ] && tail -20 "$work/run.log"; exit 1; }

prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" > /dev/null || fail "cmake --install failed"
id=org.qub_browser.Browser
for file in bin/qub-browser bin/qub-filter-check libexec/qub-browser/qsexdll share/qub-browser/default.tb2 \
    share/qub-browser/lng.ini share/qub-browser/Deutsch.lng share/qub-browser/Translist.txt \
    share/qub-browser/block.wav share/qub-browser/res/tab1.ico share/man/man1/qub-browser.1 \
    share/applications/$id.desktop share/metainfo/$id.metainfo.xml \
    share/icons/hicolor/scalable/apps/$id.svg share/icons/hicolor/48x48/apps/$id.png; do
    [ -e "$prefix/$file" ] || fail "$file was not installed"
done
desktop-file-validate "$prefix/share/applications/$id.desktop" || fail "the desktop entry is not valid"
# The project has no web home yet, which newer validators warn of; any other
# error or warning fails.
appstreamcli validate --no-net "$prefix/share/metainfo/$id.metainfo.xml" > "$work/appstream.log" ||
    ! grep -E '^[EW]:' "$work/appstream.log" | grep -qv 'url-homepage-missing' ||
    { cat "$work/appstream.log"; fail "the metainfo is not valid"; }
"$prefix/bin/qub-browser" --version | grep -qx 'qub-browser [0-9][0-9.]*' || fail "--version"
"$prefix/bin/qub-browser" --help | grep -q '^Usage: qub-browser \[address\]' || fail "--help"

# A user of their own, with the browser chosen as the desktop's.
home=$work/home
mkdir -p "$home" && mkdir -m 700 "$work/run"
unset QUB_APPDIR XDG_CURRENT_DESKTOP DESKTOP_SESSION
export HOME=$home XDG_DATA_HOME=$home/.local/share XDG_CONFIG_HOME=$home/.config \
    XDG_CACHE_HOME=$home/.cache XDG_RUNTIME_DIR=$work/run XDG_DATA_DIRS=$prefix/share:/usr/share \
    PATH=$prefix/bin:$PATH QTWEBENGINE_DISABLE_SANDBOX=1 QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu
xdg-settings set default-web-browser $id.desktop || fail "xdg-settings cannot choose the browser"
[ "$(xdg-settings get default-web-browser)" = $id.desktop ] || fail "the browser was not chosen"
own=$XDG_DATA_HOME/QUB-BROWSER
cat > "$work/page.html" <<'HTML'
<html><head><title>Installed page</title></head><body><h1>Installed</h1></body></html>
HTML
touch "$work/before"

# run ADDRESS WINDOW-TITLE: starts the installed program, waits for its window.
run() {
    qub-browser "$1" > "$work/run.log" 2>&1 &
    pid=$!
    timeout 60 xdotool search --sync --onlyvisible --name "$2" > /dev/null ||
        fail "no window titled \"$2\""
}
# quit: ends the running program as the user does, and waits for it.
quit() {
    local window
    window=$(xdotool search --onlyvisible --name 'QUB-BROWSER [0-9]' | head -1)
    xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+q
    window=$(timeout 15 xdotool search --sync --onlyvisible --name '^QUB-BROWSER$' | head -1)
    [ -n "$window" ] || fail "no exit question"
    xdotool windowfocus --sync "$window" key Return
    wait "$pid" || fail "the program ended with $?"
    pid=
}
# session_has TEXT: the session file names it within 10 s.
session_has() {
    for _ in $(seq 100); do
        grep -qF "$1" "$own/Session.json" 2> /dev/null && return 0
        sleep 0.1
    done
    fail "the session never named $1: $(cat "$own/Session.json" 2> /dev/null)"
}

run "file://$work/page.html" 'QUB-BROWSER [0-9]'
session_has '"title": "Installed page"'
xdg-open "http://127.0.0.1:9/from-another-program" || fail "xdg-open failed"
session_has '"address": "http://127.0.0.1:9/from-another-program"'
kill -0 "$pid" || fail "the first program ended"
quit
[ -z "$(find "$prefix" -newer "$work/before")" ] || fail "the run wrote into the installed folder"
for file in Browser.ini LastPages.ini Session.json; do
    [ -f "$own/$file" ] || fail "$file is not in the user's folder"
done

# The user's copy of a language file wins; a shipped file the user has no copy
# of is read as installed, so an upgrade reaches it.
sed 's/^QUB_TITLE=.*/QUB_TITLE=Mine {V}/' "$prefix/share/qub-browser/lng.ini" > "$own/lng.ini"
run '' 'Mine [0-9]'
kill -9 "$pid"; wait "$pid" 2> /dev/null; pid=
rm "$own/lng.ini"
sed -i 's/^QUB_TITLE=.*/QUB_TITLE=Upgraded {V}/' "$prefix/share/qub-browser/lng.ini"
run '' 'Upgraded [0-9]'
echo "install: installed files valid, user's folder only, copies and upgrades read, xdg-open hands over"
