#!/usr/bin/env bash
# Installs what is missing, builds the Release preset, prepares the demo
# application folder and starts Orvanta on it.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset release
cmake --build --preset release
bash scripts/make-demo.sh build/release demo

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "No display found: starting under a virtual X server (xvfb-run)."
  exec xvfb-run -a build/release/orvanta --appdir demo
fi
exec build/release/orvanta --appdir demo
