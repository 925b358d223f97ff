#!/bin/bash
# Builds the program and takes docs/screenshot.png of it as a new user sees it
# (through the smoke test, which also quits it cleanly).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh test
bash scripts/build.sh
bash tests/smoke.sh build/bin docs/screenshot.png
