#!/bin/bash
# Smoke test of the built program as a user meets it: started in a private X
# server with a fresh program folder and a local page on its command line, its
# window must show something, and Ctrl+Q with OK in the exit question must end
# it cleanly, having saved Browser.ini with the user's own lines kept.
# Usage: smoke.sh BIN_DIR [SCREENSHOT.png]
set -u
bin=$(cd "$1" && pwd)
shot_out=${2:-}
if [ -z "${SMOKE_INSIDE_X:-}" ]; then
    SMOKE_INSIDE_X=1 exec xvfb-run -a -s "-screen 0 1280x800x24" bash "$0" "$@"
fi

work=$(mktemp -d)
pid=
cleanup() { [ -n "$pid" ] && kill -9 "$pid" 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
fail() { echo "smoke: $*"; [ -f "$work/run.log" ] && tail -20 "$work/run.log"; exit 1; }

cp "$bin/default.tb2" "$work/" && cp "$bin/English.lng" "$work/lng.ini" && cp -r "$bin/res" "$work/"
printf '; mine\r\n[Other]\r\nK=v\r\n' > "$work/Browser.ini"
cat > "$work/page.html" <<'HTML'
<html><head><title>Smoke page</title></head>
<body style="background:#f4f1e8;font:20px sans-serif"><h1 style="color:#204a87">QUB-BROWSER smoke page</h1>
<p>Served from a file beside the test.</p></body></html>
HTML

# A runtime folder of its own: a browser the user has open is not this run's.
mkdir -m 700 "$work/run"
export QUB_APPDIR="$work" QTWEBENGINE_DISABLE_SANDBOX=1 QTWEBENGINE_CHROMIUM_FLAGS="--disable-gpu" \
    XDG_DATA_HOME="$work/data" XDG_CACHE_HOME="$work/cache" XDG_CONFIG_HOME="$work/config" \
    XDG_RUNTIME_DIR="$work/run"
"$bin/qub-browser" "file://$work/page.html" > "$work/run.log" 2>&1 &
pid=$!

window=$(timeout 30 xdotool search --sync --onlyvisible --name 'QUB-BROWSER [0-9]' | head -1)
[ -n "$window" ] || fail "no main window"
sleep 4
import -window root "$work/shot.png" || fail "no screenshot"
colours=$(identify -format '%k' "$work/shot.png")
[ "$colours" -gt 50 ] || fail "the screen is nearly blank ($colours colours)"
[ -n "$shot_out" ] && cp "$work/shot.png" "$shot_out"

xdotool windowfocus --sync "$window" key --clearmodifiers ctrl+q
box=$(timeout 15 xdotool search --sync --onlyvisible --name '^QUB-BROWSER$' | head -1)
[ -n "$box" ] || fail "no exit question"
xdotool windowfocus --sync "$box" key Return
for _ in $(seq 60); do kill -0 "$pid" 2>/dev/null || break; sleep 0.5; done
kill -0 "$pid" 2>/dev/null && fail "the program did not end after OK"
wait "$pid"; code=$?
pid=
[ "$code" -eq 0 ] || fail "exit code $code"
grep -q '^K=v' "$work/Browser.ini" || fail "Browser.ini lost the user's line"
grep -q '"cleanExit": true' "$work/Session.json" || fail "the session was not marked as ended cleanly"
grep -q '^ADDRESSBAR=1' "$work/Browser.ini" || fail "Browser.ini has no settings"
echo "smoke: window drawn ($colours colours), exit question answered, settings saved"
