#!/bin/bash
# The static checks over every source of src/, on the compile commands of
# build/ (run scripts/build.sh first): clang-tidy with the repository's
# .clang-tidy, then clazy's Qt checks (levels 0 and 1). Any finding fails.
set -euo pipefail
cd "$(dirname "$0")/.."
run-clang-tidy -p build -quiet -j "$(nproc)" "$PWD/src/" > build/tidy.log 2>&1 || {
    sed 's/\x1b\[[0-9;]*m//g' build/tidy.log | grep -E "^/.*(warning|error):" | sort -u
    echo "clang-tidy found the above (full output in build/tidy.log)"
    exit 1
}
echo "clang-tidy: no findings"
find "$PWD/src" -name '*.cpp' -print0 |
    xargs -0 -P "$(nproc)" -n 4 clazy-standalone -p build --checks=level0,level1 \
        --header-filter="$PWD/src/.*" > build/clazy.log 2>&1 || {
    grep -E "^/.*(warning|error):" build/clazy.log | sort -u
    echo "clazy found the above (full output in build/clazy.log)"
    exit 1
}
echo "clazy: no findings"
