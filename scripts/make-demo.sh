#!/usr/bin/env bash
# Prepares the demo application folder: make-demo.sh BUILD_DIR OUT_DIR.
# Builds it with orvanta-dbm from the regional extract under data/demo/.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build/release}
out=${2:-demo}
mkdir -p "$out"
args=(--xplane "$here/data/demo" --out "$out" --wmm "$here/data/wmm/WMM2025.COF")
# Coastlines when Natural Earth shapefiles are installed (libmagics++-data).
for ne in /usr/share/magics/shapes; do
  if [ -f "$ne/ne_50m_land.shp" ]; then args+=(--coast "$ne/ne_50m_land.shp"); fi
  if [ -f "$ne/ne_50m_rivers_lake_centerlines.shp" ]; then args+=(--rivers "$ne/ne_50m_rivers_lake_centerlines.shp"); fi
done
"$build/orvanta-dbm" "${args[@]}"
