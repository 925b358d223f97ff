#!/bin/bash
# clang-tidy over every source of src/ with the repository's .clang-tidy, on
# the compile commands of build/ (run scripts/build.sh first). Any finding
# fails.
set -euo pipefail
cd "$(dirname "$0")/.."
run-clang-tidy -p build -quiet -j "$(nproc)" "$PWD/src/" > build/tidy.log 2>&1 || {
    sed 's/\x1b\[[0-9;]*m//g' build/tidy.log | grep -E "^/.*(warning|error):" | sort -u
    echo "clang-tidy found the above (full output in build/tidy.log)"
    exit 1
}
echo "clang-tidy: no findings"
