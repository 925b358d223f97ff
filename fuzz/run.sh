#!/bin/bash
# Runs every fuzz target for the given number of seconds (default 60), one
# after the other, from its checked-in corpus; new inputs and any crash go to
# build-check/fuzz/long/. Prints the executions of each and fails on a find.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
bash scripts/install-deps.sh test
bash scripts/check.sh build
work=build-check/fuzz/long
status=0
printf '%-18s %12s %10s  %s\n' target executions exec/s result
for corpus in fuzz/corpus/*/; do
    target=$(basename "$corpus")
    mkdir -p "$work/$target"
    result=clean
    QT_QPA_PLATFORM=offscreen UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "build-check/bin/$target" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$work/$target-" "$work/$target" "$corpus" > "$work/$target.log" 2>&1 \
        || { result="FOUND (see $work/$target.log)"; status=1; }
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/$target.log")
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$work/$target.log")
    printf '%-18s %12s %10s  %s\n' "$target" "${executions:-?}" "${rate:-?}" "$result"
done
exit $status
