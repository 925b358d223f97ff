#!/bin/bash
# Installs what is missing, builds, and runs every test: unit, engine and the
# smoke test of the built program through CTest, then clang-tidy over src/, then
# the checked build (unit tests under the sanitizers, the fuzz targets on their
# corpora).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh test
bash scripts/build.sh
(cd build && ctest --output-on-failure)
bash scripts/tidy.sh
bash scripts/check.sh
