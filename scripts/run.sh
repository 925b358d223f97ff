#!/bin/bash
# Installs what is missing, builds, and starts the browser; arguments go to it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
bash scripts/build.sh
# The engine's sandbox cannot run as root; the browser says so when it starts.
[ "$(id -u)" -ne 0 ] || export QTWEBENGINE_DISABLE_SANDBOX=1
exec build/bin/qub-browser "$@"
