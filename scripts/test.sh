#!/usr/bin/env bash
# Installs what is missing, builds the Debug preset (AddressSanitizer and
# UndefinedBehaviorSanitizer), fuzzes every file reader briefly, and runs
# every test.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
# A compiler cache keyed on paths relative to the checkout, so that a fresh
# clone on a machine that built before compiles only what changed.
if command -v ccache > /dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
fi
cmake --preset debug
cmake --build --preset debug

# The install puts the programs, the desktop entry, the icon and the AppStream
# metadata where desktop environments look for them.
prefix=$(mktemp -d)
cmake --install build/debug --prefix "$prefix" > /dev/null
for f in bin/orvanta bin/orvanta-cli bin/orvanta-dbm share/applications/org.orvanta.Orvanta.desktop \
         share/icons/hicolor/scalable/apps/org.orvanta.Orvanta.svg share/metainfo/org.orvanta.Orvanta.metainfo.xml; do
  [ -e "$prefix/$f" ] || { echo "install: $f is missing"; exit 1; }
done
rm -rf "$prefix"

# A short fuzzing run of every file reader, so that a crash on hostile bytes is
# found before it lands.
bash scripts/fuzz.sh "${ORV_FUZZ_SECONDS:-6}"

ctest --preset debug -j "$(nproc)"

# The Windows side of the simulator link under Wine: the channel's Win32
# calls, orvanta-fsbridge.exe and the Linux client over the bridge.
bash scripts/test-wine.sh build/debug
