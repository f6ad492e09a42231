#!/usr/bin/env bash
# Prepares the demo application folder: make-demo.sh BUILD_DIR OUT_DIR.
# Builds it with orvanta-dbm from the regional extract under data/demo/.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build/release}
out=${2:-demo}
mkdir -p "$out"
args=(--xplane "$here/data/demo" --out "$out" --wmm "$here/data/wmm/WMM2025.COF")
# Coastlines and rivers: the Natural Earth 1:50m extract kept with the demo.
args+=(--coast "$here/data/demo/ne_50m_land.shp.gz" --rivers "$here/data/demo/ne_50m_rivers_lake_centerlines.shp.gz")
"$build/orvanta-dbm" "${args[@]}"
