#!/usr/bin/env bash
# Builds the world navigation database: build-world.sh BUILD_DIR OUT_DIR.
# Installs Debian's flightgear-data-base (the world in the X-Plane formats,
# 1.3 GB, GPL-2+) and, for coastlines, libmagics++-data (Natural Earth), then
# runs orvanta-dbm over them.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-build/release}
out=${2:-world}
fg=/usr/share/games/flightgear
if [ ! -f "$fg/Airports/apt.dat.gz" ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq flightgear-data-base
fi
if [ ! -d /usr/share/magics/10m ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get install -y -qq libmagics++-data || echo "no Natural Earth data: the world is built without coastlines"
fi
args=(--xplane "$fg" --out "$out" --wmm "$here/data/wmm/WMM2025.COF")
ne=/usr/share/magics
if [ -f "$ne/10m/ne_10m_land.shp" ]; then args+=(--coast "$ne/10m/ne_10m_land.shp"); fi
if [ -f "$ne/10m/ne_10m_rivers_lake_centerlines.shp" ]; then args+=(--rivers "$ne/10m/ne_10m_rivers_lake_centerlines.shp"); fi
mkdir -p "$out"
time "$build/orvanta-dbm" "${args[@]}"
