#!/usr/bin/env bash
# Installs what is missing, builds the Debug preset (AddressSanitizer and
# UndefinedBehaviorSanitizer), fuzzes every file reader briefly, and runs
# every test.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset debug
cmake --build --preset debug

# A short fuzzing run of every file reader, so that a crash on hostile bytes is
# found before it lands.
bash scripts/fuzz.sh "${ORV_FUZZ_SECONDS:-10}"

ctest --preset debug -j "$(nproc)"

# The Windows side of the simulator link under Wine: the channel's Win32
# calls, orvanta-fsbridge.exe and the Linux client over the bridge.
bash scripts/test-wine.sh build/debug
