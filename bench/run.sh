#!/bin/bash
# Measures every speed and memory goal in one run: QUB-BROWSER against a bare
# QWebEngineView program (the floor) on the same local page (cold start until
# the page has loaded, 10 more tabs, the memory of the process tree with 1 and
# 11 views), alternating between the two, each with a fresh profile; a page
# opening 1,000 windows, blocked; Close All of 100 tabs; many tabs restored,
# resting and animating in the background; favourites, history, the
# forwarding proxy and the filter lists; pages over http and https
# (bench/network.py).
# Ratios where there is a floor, medians with their range where there is
# none; the table goes to docs/performance.md, followed by
# bench/where-the-time-goes.md.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh test
bash scripts/build.sh > /dev/null

runs=${RUNS:-7}
tabs=10
work=$(mktemp -d)
xvfb_pid=
first_pid=
site_pid=
cleanup() {
    [ -n "$first_pid" ] && kill "$first_pid" 2> /dev/null || true
    [ -n "$site_pid" ] && kill "$site_pid" 2> /dev/null || true
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2> /dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

{
    echo "<html><head><title>Bench page</title><style>p{font:14px serif;width:40em}</style>"
    echo "</head><body><h1>Bench page</h1>"
    for n in $(seq 1 200); do
        echo "<p>Paragraph $n: the quick brown fox jumps over the lazy dog, <a href='#p$n'>link $n</a>.</p>"
    done
    echo "</body></html>"
} > "$work/page.html"
page="file://$work/page.html"

storm=1000
{
    echo "<html><head><title>Storm</title></head><body><script>"
    echo "for (let i = 0; i < $storm; i++) window.open('http://127.0.0.1:9/popup' + i);"
    echo "</script></body></html>"
} > "$work/storm.html"

mkdir -p "$work/app"
cp -r build/bin/default.tb2 build/bin/res "$work/app/" && cp build/bin/English.lng "$work/app/lng.ini"
export QUB_APPDIR="$work/app"
export QTWEBENGINE_DISABLE_SANDBOX=1
export QTWEBENGINE_CHROMIUM_FLAGS="--disable-gpu --disable-background-networking"

display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1280x800x24 -nolisten tcp > /dev/null 2>&1 &
xvfb_pid=$!
export DISPLAY=$display
sleep 1

# Every start after a user's first finds the filter lists' compiled form in
# its cache folder: the first start on a page from the network (below) makes
# it, and each fresh profile after that starts with a copy (bench/network.py
# reads the folder from BENCH_FILTER_CACHE).
export BENCH_FILTER_CACHE="$work/filter-cache"
mkdir -p "$BENCH_FILTER_CACHE"
# new_home FOLDER: a fresh profile with the compiled filter lists.
new_home() {
    rm -rf "$1" && mkdir -p "$1/cache" && cp -r "$BENCH_FILTER_CACHE/." "$1/cache/"
}

# A loopback server for the pages from the network (a name of the run's own
# mapped to it, so QUB-BROWSER's requests go through its forwarding proxy),
# and the first start on one of its pages, which makes the compiled lists.
site="$work/site"
mkdir -p "$site"
cp "$work/page.html" "$site/page.html"
cat > "$site/animated.html" << 'PAGE'
<html><head><title>Animated</title></head><body>
<div id=box style="position:absolute;width:60px;height:60px;background:teal"></div>
<script>let x = 0; setInterval(() => { x = (x + 3) % 600; box.style.left = x + 'px';
box.textContent = x; }, 16);</script></body></html>
PAGE
site_port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
python3 -m http.server --bind 127.0.0.1 --directory "$site" "$site_port" > /dev/null 2>&1 &
site_pid=$!
python3 - "$site_port" << 'WAIT'
import sys, time, urllib.request
for _ in range(100):
    try:
        urllib.request.urlopen(f"http://127.0.0.1:{sys.argv[1]}/page.html", timeout=1)
        break
    except OSError:
        time.sleep(0.1)
WAIT
site_url="http://bench.test:$site_port"
many_flags="$QTWEBENGINE_CHROMIUM_FLAGS --host-resolver-rules=\"MAP bench.test 127.0.0.1\""
# run_many NAME INI LASTPAGES PROGRAM ARGS...: one start in a folder of its own.
run_many() {
    local name=$1 ini=$2 last=$3 program=$4
    shift 4
    local home="$work/many-$name"
    new_home "$home"
    cp -r "$QUB_APPDIR" "$home/app"
    printf '[QUB-BROWSER]\r\n%s' "$ini" > "$home/app/Browser.ini"
    [ "$last" -gt 0 ] && for n in $(seq 1 "$last"); do
        printf '%s/page.html?%s\r\n' "$site_url" "$n"
    done > "$home/app/LastPages.ini"
    QUB_APPDIR="$home/app" QTWEBENGINE_CHROMIUM_FLAGS="$many_flags" \
        XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" \
        XDG_CONFIG_HOME="$home/config" timeout 600 "build/bin/$program" "$@" 2> /dev/null
}
run_many seed "" 1 bench_manytabs restore > /dev/null
cp -r "$work/many-seed/cache/." "$BENCH_FILTER_CACHE/"
[ -n "$(find "$BENCH_FILTER_CACHE" -name filters.bin)" ] || {
    echo "the program made no compiled filter lists" >&2
    exit 1
}

declare -A cold tabtime mem1 mem10
for run in $(seq 1 "$runs"); do
    # Either program goes first in turn, so neither alone meets cold caches.
    order="floor qub"
    [ $((run % 2)) -eq 0 ] && order="qub floor"
    for program in $order; do
        home="$work/home-$program-$run"
        new_home "$home"
        start=$(date +%s%3N)
        out=$(XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" \
              XDG_CONFIG_HOME="$home/config" timeout 120 \
              "build/bin/bench_$program" "$page" "$tabs" 2> /dev/null)
        loaded=$(echo "$out" | awk '$1 == "loaded" {print $2}')
        opened=$(echo "$out" | awk '$1 == "tabs" {print $2}')
        one=$(echo "$out" | awk '$1 == "memory1" {print $2}')
        eleven=$(echo "$out" | awk '$1 == "memory10" {print $2}')
        if [ -z "$loaded" ] || [ -z "$opened" ] || [ -z "$eleven" ]; then
            echo "bench_$program did not finish run $run" >&2
            exit 1
        fi
        cold[$program]+="$((loaded - start)) "
        tabtime[$program]+="$opened "
        mem1[$program]+="$one "
        mem10[$program]+="$eleven "
        echo "run $run $program: start $((loaded - start)) ms, $tabs tabs $opened ms, memory $one / $eleven KiB"
    done
done

# The storm: a page that opens $storm windows as it loads, blocked by
# QUB-BROWSER and dropped by the floor.
declare -A stormtime stormgap stormstall
storm_runs=${STORM_RUNS:-3}
for run in $(seq 1 "$storm_runs"); do
    for program in storm stormfloor; do
        home="$work/storm-$program-$run"
        new_home "$home"
        out=$(XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" \
              XDG_CONFIG_HOME="$home/config" timeout 300 \
              "build/bin/bench_$program" "file://$work/storm.html" "$storm" 2> /dev/null)
        took=$(echo "$out" | awk '$1 == "storm" {print $2}')
        gap=$(echo "$out" | awk '$1 == "gap" {print $2}')
        stall=$(echo "$out" | awk '$1 == "stormgap" {print $2}')
        tabcount=$(echo "$out" | awk '$1 == "tabs" {print $2}')
        if [ -z "$took" ] || [ "$tabcount" != 1 ]; then
            echo "bench_$program did not finish storm run $run" >&2
            exit 1
        fi
        stormtime[$program]+="$took "
        stormgap[$program]+="$gap "
        stormstall[$program]+="$stall "
        echo "storm run $run $program: $took ms, longest gap $gap ms, $stall ms from the first window"
    done
done

# Close All of 100 loaded tabs, until every view is gone.
closeall=
close_runs=${CLOSE_RUNS:-3}
for run in $(seq 1 "$close_runs"); do
    home="$work/close-$run"
    new_home "$home"
    out=$(XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" \
          XDG_CONFIG_HOME="$home/config" timeout 600 \
          build/bin/bench_qub "$page" 100 closeall 2> /dev/null)
    took=$(echo "$out" | awk '$1 == "closeall" {print $2}')
    if [ -z "$took" ]; then
        echo "bench_qub did not finish close-all run $run" >&2
        exit 1
    fi
    closeall+="$took "
    echo "close-all run $run: $took ms"
done

# Many tabs, from pages on a loopback server (a name of the run's own mapped
# to it, so QUB-BROWSER's requests go through its forwarding proxy): a start
# with 1 and with 100 last pages; 100 tabs' memory once those out of sight are
# discarded, and one shown again; the processor time of 50 background tabs
# that animate from a timer, once frozen. Tabs rest after the times of the
# run's Browser.ini, shortened so a round takes minutes: frozen after 5 s,
# discarded after 15 s (never, for the processor time). The floor opens every
# tab at once and loads it.
field() { awk -v k="$1" '$1 == k {print $2}'; }
declare -A many
many_runs=${MANY_RUNS:-3}
rest_ini=$'FREEZEAFTER=5\r\nDISCARDAFTER=15\r\n'
freeze_ini=$'FREEZEAFTER=5\r\nDISCARDAFTER=0\r\n'
for run in $(seq 1 "$many_runs"); do
    for last in 1 100; do
        start=$(date +%s%3N)
        ready=$(run_many "restore$last" "" "$last" bench_manytabs restore | field ready)
        [ -n "$ready" ] || { echo "bench_manytabs did not restore $last pages" >&2; exit 1; }
        many[restore$last]+="$((ready - start)) "
    done
    start=$(date +%s%3N)
    ready=$(run_many floor100 "" 0 bench_manytabsfloor restore "$site_url/page.html" 100 | field ready)
    [ -n "$ready" ] || { echo "bench_manytabsfloor did not open 100 tabs" >&2; exit 1; }
    many[floor100]+="$((ready - start)) "

    out=$(run_many memory "$rest_ini" 0 bench_manytabs memory "$site_url/page.html" 100 18)
    many[memory]+="$(echo "$out" | field memory) "
    many[discarded]+="$(echo "$out" | field discarded) "
    many[reshow]+="$(echo "$out" | field reshow) "
    out=$(run_many floormemory "" 0 bench_manytabsfloor memory "$site_url/page.html" 100 18)
    many[floormemory]+="$(echo "$out" | field memory) "
    many[fresh]+="$(echo "$out" | field fresh) "

    out=$(run_many cpu "$freeze_ini" 0 bench_manytabs cpu "$site_url/page.html" \
          "$site_url/animated.html" 50 7)
    many[cpu]+="$(echo "$out" | field cpu) "
    many[frozen]+="$(echo "$out" | field frozen) "
    out=$(run_many floorcpu "" 0 bench_manytabsfloor cpu "$site_url/page.html" \
          "$site_url/animated.html" 50 7)
    many[floorcpu]+="$(echo "$out" | field cpu) "
    for key in memory reshow floormemory fresh cpu floorcpu; do
        [ -n "$(echo "${many[$key]}" | tr -d ' ')" ] || { echo "many tabs: no $key in run $run" >&2; exit 1; }
    done
    echo "many tabs run $run: start ${many[restore1]}/ ${many[restore100]}/ floor ${many[floor100]}(ms); memory ${many[memory]}/ floor ${many[floormemory]}(KiB), discarded ${many[discarded]}; reshow ${many[reshow]}/ fresh ${many[fresh]}(ms); cpu ${many[cpu]}/ floor ${many[floorcpu]}(ms), frozen ${many[frozen]}"
done
kill "$site_pid" && wait "$site_pid" 2> /dev/null || true
site_pid=

# The favourites: 10,000 in 500 folders, read into menus and tree: fresh
# windows' first builds, refreshes with nothing changed, refreshes after a
# favourite was added in the first folder.
fav=$(timeout 300 build/bin/bench_favourites build/bin/default.tb2 7 2> /dev/null)
fav_first=$(echo "$fav" | awk '$1 == "first" {printf "%s ", $2}')
fav_rest=$(echo "$fav" | awk '$1 == "refresh" {printf "%s ", $2}')
fav_added=$(echo "$fav" | awk '$1 == "added" {printf "%s ", $2}')
fav_scan=$(echo "$fav" | awk '$1 == "scan" {print $2}')
fav_icons=$(echo "$fav" | awk '$1 == "icons" {print $2}')
if [ -z "$fav_first" ] || [ -z "$fav_icons" ]; then
    echo "bench_favourites did not finish" >&2
    exit 1
fi
echo "favourites: first $fav_first(ms), refresh $fav_rest(ms), after one added $fav_added(ms), reading alone $fav_scan ms, with icons $fav_icons ms"

# The history: 100,000 addresses over 90 days and 2,000 sites into the tree,
# and the address box's completion queries.
hist=$(timeout 600 build/bin/bench_history 7 2> /dev/null)
hist_tree=$(echo "$hist" | awk '$1 == "tree" {printf "%s ", $2}')
hist_site=$(echo "$hist" | awk '$1 == "complete" && $3 == "site17" {printf "%s ", $2}')
hist_words=$(echo "$hist" | awk '$1 == "complete" && $3 == "page" {printf "%s ", $2}')
hist_none=$(echo "$hist" | awk '$1 == "complete" && $3 == "nowhere-at-all" {printf "%s ", $2}')
if [ -z "$hist_tree" ] || [ -z "$hist_none" ]; then
    echo "bench_history did not finish" >&2
    exit 1
fi
echo "history: tree $hist_tree(ms), completion $hist_site/ $hist_words/ $hist_none(ms)"

# The forwarding proxy: 200 tunnels at once, 64 KiB through each.
prox=$(timeout 600 build/bin/bench_proxy 7 2> /dev/null)
prox_ms=$(echo "$prox" | awk '$1 == "tunnels" {printf "%s ", $2}')
prox_done=$(echo "$prox" | awk '$1 == "tunnels" {printf "%s ", $3}')
if [ -z "$prox_ms" ]; then
    echo "bench_proxy did not finish" >&2
    exit 1
fi
hop=$(echo "$prox" | awk '$1 == "hop" {print $2, $3, $4}')
read -r hop_straight hop_proxied hop_tunnelled <<< "$hop"
if [ -z "$hop_tunnelled" ]; then
    echo "bench_proxy did not measure the hop" >&2
    exit 1
fi
echo "proxy: 200 tunnels $prox_ms(ms), completed $prox_done; a request straight $hop_straight µs, through it $hop_proxied µs, in a tunnel $hop_tunnelled µs"

# The filter lists' engine: EasyList and EasyPrivacy (Debian's copies) read
# from text, and 120,000 requests decided, each timed (no floor).
lists=/usr/share/chromium/extensions/ublock-origin/assets/thirdparties/easylist
python3 tests/reference/make_requests.py \
    tests/reference/node_modules/@ghostery/trackerdb/dist/trackerdb.json 120000 \
    "$lists/easylist.txt" "$lists/easyprivacy.txt" > "$work/requests.tsv"
declare -A filt
for run in $(seq 1 "$runs"); do
    out=$(timeout 300 build/bin/bench_filters "$work/requests.tsv" "$lists/easylist.txt" \
          "$lists/easyprivacy.txt")
    for key in load cached memory median p99; do
        filt[$key]+="$(echo "$out" | field "$key") "
    done
    filt_filters=$(echo "$out" | field filters)
    filt_skipped=$(echo "$out" | field skipped)
    filt_blocked=$(echo "$out" | field blocked)
done
[ -n "$(echo "${filt[p99]}" | tr -d ' ')" ] || { echo "bench_filters did not finish" >&2; exit 1; }
echo "filters: load ${filt[load]}/ cached ${filt[cached]}(ms), memory ${filt[memory]}(KiB), median ${filt[median]}/ p99 ${filt[p99]}(ns)"

# Pages over the network: the shipped program and the floor started as
# processes on pages from a loopback server, over http and https.
network=$(timeout 1800 python3 bench/network.py build/bin "$QUB_APPDIR" "${NET_ROUNDS:-5}") || {
    echo "bench/network.py did not finish" >&2
    exit 1
}
echo "$network" | grep -v '^|'
network_table=$(echo "$network" | grep '^|')

# A later start of the shipped program hands its address to the running one
# and ends: each timed from launch to exit, in a program folder and runtime
# folder of their own so no other run meets this one's session.
handover=
handover_runs=${HANDOVER_RUNS:-7}
home="$work/handover"
new_home "$home"
mkdir -p "$home/app" "$home/runtime" && chmod 700 "$home/runtime"
cp -r "$QUB_APPDIR/." "$home/app/"
# The starts above leave their session behind, as a crash would; this start
# is a user's ordinary one.
rm -f "$home/app/Session.json"
in_handover_home() {
    QUB_APPDIR="$home/app" XDG_RUNTIME_DIR="$home/runtime" XDG_DATA_HOME="$home/data" \
        XDG_CACHE_HOME="$home/cache" XDG_CONFIG_HOME="$home/config" "$@"
}
in_handover_home build/bin/qub-browser "$page" > /dev/null 2>&1 &
first_pid=$!
for _ in $(seq 1 600); do
    [ -f "$home/app/Session.json" ] && break
    sleep 0.1
done
for run in $(seq 1 "$handover_runs"); do
    start=$(date +%s%3N)
    in_handover_home timeout 10 build/bin/qub-browser "$page#$run" > /dev/null 2>&1 || {
        echo "a later start did not hand over in run $run" >&2
        exit 1
    }
    handover+="$(($(date +%s%3N) - start)) "
done
kill "$first_pid" && wait "$first_pid" || true
first_pid=
echo "later starts: $handover(ms)"

median() { tr ' ' '\n' | grep -v '^$' | sort -n | awk '{v[NR]=$1} END {print v[int((NR+1)/2)]}'; }
span() { tr ' ' '\n' | grep -v '^$' | sort -n | awk 'NR == 1 {a=$1} {b=$1} END {print a "–" b}'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN {printf "%.2f", a / b}'; }
# verdict VALUE LIMIT: whether a figure is within its goal.
verdict() { awk -v a="$1" -v b="$2" 'BEGIN {print (a <= b) ? "met" : "not met"}'; }
mib() { awk -v k="$1" 'BEGIN {printf "%.0f MiB", k / 1024}'; }
cold_floor=$(echo "${cold[floor]}" | median)
cold_qub=$(echo "${cold[qub]}" | median)
tabs_floor=$(echo "${tabtime[floor]}" | median)
tabs_qub=$(echo "${tabtime[qub]}" | median)
mem1_floor=$(echo "${mem1[floor]}" | median)
mem1_qub=$(echo "${mem1[qub]}" | median)
mem10_floor=$(echo "${mem10[floor]}" | median)
mem10_qub=$(echo "${mem10[qub]}" | median)
storm_floor=$(echo "${stormtime[stormfloor]}" | median)
storm_qub=$(echo "${stormtime[storm]}" | median)
gap_floor=$(echo "${stormgap[stormfloor]}" | median)
gap_qub=$(echo "${stormgap[storm]}" | median)
stall_floor=$(echo "${stormstall[stormfloor]}" | median)
stall_qub=$(echo "${stormstall[storm]}" | median)
close_ms=$(echo "$closeall" | median)
handover_ms=$(echo "$handover" | median)
fav_build=$(echo "$fav_first" | median)
fav_refresh=$(echo "$fav_rest" | median)
fav_add=$(echo "$fav_added" | median)
tree_ms=$(echo "$hist_tree" | median)
complete_ms=$(echo "$hist_site $hist_words $hist_none" | tr ' ' '\n' | grep -v '^$' | sort -n | tail -1)
restore1_ms=$(echo "${many[restore1]}" | median)
restore100_ms=$(echo "${many[restore100]}" | median)
floor100_ms=$(echo "${many[floor100]}" | median)
many_mem=$(echo "${many[memory]}" | median)
many_mem_floor=$(echo "${many[floormemory]}" | median)
many_cpu=$(echo "${many[cpu]}" | median)
many_cpu_floor=$(echo "${many[floorcpu]}" | median)
reshow_ms=$(echo "${many[reshow]}" | median)
fresh_ms=$(echo "${many[fresh]}" | median)
filt_median=$(echo "${filt[median]}" | median)
filt_p99=$(echo "${filt[p99]}" | median)
filt_load=$(echo "${filt[load]}" | median)
filt_cached=$(echo "${filt[cached]}" | median)
filt_mem=$(echo "${filt[memory]}" | median)
r_restore=$(ratio "$restore100_ms" "$restore1_ms")
r_many_mem=$(ratio "$many_mem" "$many_mem_floor")
r_many_cpu=$(ratio "$many_cpu" "$many_cpu_floor")
r_cold=$(ratio "$cold_qub" "$cold_floor")
r_tabs=$(ratio "$tabs_qub" "$tabs_floor")
r_mem1=$(ratio "$mem1_qub" "$mem1_floor")
r_mem10=$(ratio "$mem10_qub" "$mem10_floor")

cat > docs/performance.md << REPORT
# Performance

Measured by \`bash bench/run.sh\` on $(date -u +%Y-%m-%d): $runs runs of each
program, alternating which goes first, each with a fresh profile, under Xvfb with software
drawing, on $(nproc) cores ($(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2 | sed 's/^ //')).
The page is a local file of 200 paragraphs. Figures are medians.

## Goals

| goal | target | measured | |
|---|---|---|---|
| cold start until the page has loaded | ≤ 1.10 × floor | $r_cold × ($cold_qub against $cold_floor ms) | $(verdict "$r_cold" 1.10) |
| $tabs more tabs until all have loaded | ≤ 1.30 × floor | $r_tabs × ($tabs_qub against $tabs_floor ms) | $(verdict "$r_tabs" 1.30) |
| memory of the process tree, 1 view, 2 s after load | ≤ 1.05 × floor | $r_mem1 × ($(mib "$mem1_qub") against $(mib "$mem1_floor")) | $(verdict "$r_mem1" 1.05) |
| memory of the process tree, 11 views, 2 s after load | ≤ 1.05 × floor | $r_mem10 × ($(mib "$mem10_qub") against $(mib "$mem10_floor")) | $(verdict "$r_mem10" 1.05) |
| Close All of 100 loaded tabs | < 1000 ms | $close_ms ms ($(echo "$closeall" | span) ms) | $(verdict "$close_ms" 999) |
| a later start handing its address to the running program, until it has ended | < 1000 ms | $handover_ms ms ($(echo "$handover" | span) ms) | $(verdict "$handover_ms" 999) |
| longest stall of the event loop while $storm windows are blocked | ≤ 50 ms | $stall_qub ms (floor $stall_floor ms) | $(verdict "$stall_qub" 50) |
| favourites, 10,000 in 500 folders, first build | < 150 ms | $fav_build ms ($(echo "$fav_first" | span) ms) | $(verdict "$fav_build" 150) |
| favourites, a refresh after one was added | < 150 ms | $fav_add ms ($(echo "$fav_added" | span) ms) | $(verdict "$fav_add" 150) |
| history tree of 100,000 addresses | < 1000 ms | $tree_ms ms ($(echo "$hist_tree" | span) ms) | $(verdict "$tree_ms" 999) |
| address completion, the slowest of three questions | < 20 ms | $complete_ms ms | $(verdict "$complete_ms" 20) |
| a start with 100 last pages until the tab in front has loaded and the window answers | ≤ 1.20 × the start with 1 | $r_restore × ($restore100_ms against $restore1_ms ms; floor, all 100 loaded at once, $floor100_ms ms) | $(verdict "$r_restore" 1.20) |
| memory of the process tree, 100 tabs, past the discard time | ≤ 0.35 × floor | $r_many_mem × ($(mib "$many_mem") against $(mib "$many_mem_floor")) | $(verdict "$r_many_mem" 0.35) |
| processor time over 60 s, 50 background tabs animating | ≤ 0.10 × floor | $r_many_cpu × ($many_cpu against $many_cpu_floor ms) | $(verdict "$r_many_cpu" 0.10) |
| filter decision per request, EasyList and EasyPrivacy, median | < 2 µs | $(awk -v n="$filt_median" 'BEGIN {printf "%.2f", n / 1000}') µs | $(verdict "$filt_median" 1999) |
| filter decision per request, 99th percentile | < 20 µs | $(awk -v n="$filt_p99" 'BEGIN {printf "%.2f", n / 1000}') µs | $(verdict "$filt_p99" 19999) |
| both filter lists read from the compiled cache | < 50 ms | $filt_cached ms | $(verdict "$filt_cached" 49) |
| memory of the filter engine with both lists | < 30 MiB | $(mib "$filt_mem") | $(verdict "$filt_mem" 30719) |
| showing a discarded tab until its page has loaded | reported | $reshow_ms ms (the floor's load of the page in a new tab: $fresh_ms ms) | |

Cold start counts from the launch of the process. The floor opens its views in
a plain tab widget on the engine's default in-memory profile; QUB-BROWSER reads
its skin, language and settings, builds its command bar, keeps a persistent
profile on disk and runs its page agent in every page. Memory is the
proportional set size of the program and every process it started, so pages
shared between them count once.

All runs (ms): QUB-BROWSER start ${cold[qub]}, tabs ${tabtime[qub]};
floor start ${cold[floor]}, tabs ${tabtime[floor]}.
Memory (KiB): QUB-BROWSER ${mem1[qub]}/ ${mem10[qub]}; floor ${mem1[floor]}/ ${mem10[floor]}.

## Many tabs

\`bench/manytabs.cpp\` runs the program as it starts, with a program folder
of its own for each start; \`bench/manytabsfloor.cpp\` is the floor, which
opens every tab at once and loads it. Pages come from a loopback server
under a name of the run's own, so QUB-BROWSER's requests go through its
forwarding proxy. Each round: a start with 1 and with 100 last pages, timed
from the launch until the tab in front has loaded and the window answers;
100 tabs opened one after another, each loaded in front, their memory 18 s
after the last load (the run's \`Browser.ini\` freezes a tab out of sight
after 5 s and discards it after 15 s; the program's own times are 5 and 30
minutes), then the second tab shown again; 50 background tabs on a page that
moves a box every 16 ms from a timer, and the processor time of the process
tree over the 60 s that follow their freeze (discarding off). Medians of
$many_runs rounds.

All runs: starts with 1 / 100 last pages ${many[restore1]}/ ${many[restore100]}(ms), the floor's
${many[floor100]}(ms); memory ${many[memory]}(KiB, discarded tabs ${many[discarded]}), the floor's
${many[floormemory]}(KiB); processor time ${many[cpu]}(ms, frozen tabs ${many[frozen]}), the floor's
${many[floorcpu]}(ms); shown again ${many[reshow]}(ms), the floor's new tab ${many[fresh]}(ms).

## Storm of blocked windows

| measure | QUB-BROWSER | floor (bare QWebEngineView) | ratio |
|---|---|---|---|
| a page opening $storm windows, until all are blocked (median of $storm_runs) | $storm_qub ms | $storm_floor ms | $(ratio "$storm_qub" "$storm_floor") |
| longest the event loop did not answer, from the page's load | $gap_qub ms | $gap_floor ms | |
| longest the event loop did not answer, from the first window | $stall_qub ms | $stall_floor ms | |

QUB-BROWSER blocks, lists and counts every window, opening no tab; the floor
only drops them. The gaps are measured by a timer due every 10 ms.
All storm runs (ms): QUB-BROWSER ${stormtime[storm]}(gaps ${stormgap[storm]}, from the first window ${stormstall[storm]});
floor ${stormtime[stormfloor]}(gaps ${stormgap[stormfloor]}, from the first window ${stormstall[stormfloor]}).

## Filter lists

\`bench/filters.cpp\` reads Debian's copies of EasyList and EasyPrivacy
($filt_filters network filters kept, $filt_skipped lines skipped as not
understood) into the engine and decides 120,000 requests made by
\`tests/reference/make_requests.py\` (pages, trackers and addresses made from
the lists' own filters; $filt_blocked blocked), each timed from its address
and page to the decision, parsing the address included (no floor; medians of
$runs runs):

| measure | figure |
|---|---|
| decision per request, median | $filt_median ns ($(echo "${filt[median]}" | span) ns) |
| decision per request, 99th percentile | $filt_p99 ns ($(echo "${filt[p99]}" | span) ns) |
| reading both lists from text and indexing them | $filt_load ms ($(echo "${filt[load]}" | span) ms) |
| reading the engine from its compiled form in the cache file | $filt_cached ms ($(echo "${filt[cached]}" | span) ms) |
| heap the engine holds | $(mib "$filt_mem") |

## Favourites

10,000 favourites in 500 folders (25 folders of 19 folders each, 20
favourites in every folder) read into the Favorites menu, its 500 sub-menus
and the side panel's tree (\`bench/favourites.cpp\`, no floor):

| measure | time |
|---|---|
| first build in a fresh window, as at start-up | $fav_build ms ($(echo "$fav_first" | span) ms) |
| a refresh with nothing changed | $fav_refresh ms ($(echo "$fav_rest" | span) ms) |
| a refresh after a favourite was added in the first folder, which renumbers nearly all after it | $fav_add ms ($(echo "$fav_added" | span) ms) |
| reading the folders alone | $fav_scan ms |
| a refresh with "Show Icons" checked | $fav_icons ms |

## History

100,000 addresses visited over 90 days on 2,000 sites, read from the store,
sorted by address and put into the side panel's tree until it has filled,
and the address box's completion questions (\`bench/history.cpp\`, no floor;
median, min–max of 7):

| measure | time |
|---|---|
| the tree of 100,000 addresses | $tree_ms ms ($(echo "$hist_tree" | span) ms) |
| completion of the start of a site ("site17") | $(echo "$hist_site" | median) ms ($(echo "$hist_site" | span) ms) |
| completion of words of a title ("page 4242") | $(echo "$hist_words" | median) ms ($(echo "$hist_words" | span) ms) |
| completion of text nothing holds, the longest search | $(echo "$hist_none" | median) ms ($(echo "$hist_none" | span) ms) |

## Close All

$close_runs runs of the program opening 100 tabs on the page, then, two
seconds after all have loaded, Close All clicked, until the view of every
closed tab is gone and the window answers again: $closeall(ms).

## Forwarding proxy

200 clients open a tunnel through the program's proxy at once (CONNECT with
the run's secret, straight to a local echo server) and send 64 KiB each
through it (\`bench/proxy.cpp\`, no floor; median, min–max of 7):

| measure | figure |
|---|---|
| until every client has its bytes back | $(echo "$prox_ms" | median) ms ($(echo "$prox_ms" | span) ms) |
| tunnels completed in each round | $prox_done|

A plain request of a 512-byte page, one after another, 2,000 each way in
interleaved blocks, each client keeping its connection while the answers
allow it, as the engine does (median):

| way | time of a request | hop | goal | |
|---|---:|---:|---|---|
| straight to the server | $hop_straight µs | | | |
| through the proxy | $hop_proxied µs | $((hop_proxied - hop_straight)) µs | ≤ 200 µs | $(verdict $((hop_proxied - hop_straight)) 200) |
| inside a tunnel through the proxy | $hop_tunnelled µs | $((hop_tunnelled - hop_straight)) µs | ≤ 200 µs | $(verdict $((hop_tunnelled - hop_straight)) 200) |

## Pages over the network

\`bench/network.py\`: QUB-BROWSER as shipped (\`build/bin/qub-browser\` with an
address) and the floor started as processes, each with a fresh profile, on a
small page, a page of 300 pictures and a page of 20 frames (the page agent
runs in each) from a loopback server (Python's threaded HTTP/1.1 server),
over http and over https with a certificate made for the run. A name of the
run's own is mapped to the loopback address, so QUB-BROWSER's requests go
through its forwarding proxy as every page's do.
Times from the spawn of the process to the first request at the server and
to the page's onload beacon; memory of the process tree two seconds after
it. Medians of ${NET_ROUNDS:-5} interleaved rounds.

$network_table

REPORT
cat bench/where-the-time-goes.md >> docs/performance.md
cat docs/performance.md
