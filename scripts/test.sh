#!/bin/bash
# Installs what is missing, builds, and runs every test (unit, engine and the
# smoke test of the built program) through CTest.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh test
bash scripts/build.sh
cd build
ctest --output-on-failure
