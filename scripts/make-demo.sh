#!/usr/bin/env bash
# Prepares the demo application folder: make-demo.sh BUILD_DIR OUT_DIR.
set -euo pipefail
build=${1:-build/release}
out=${2:-demo}
mkdir -p "$out"
"$build/orvanta-cli" make-demo "$out"
