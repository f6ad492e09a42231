#!/usr/bin/env bash
# Cuts the regional extract kept under data/demo/ from the world data of
# Debian's flightgear-data-base package (X-Plane formats, GPL-2+):
#   cut-demo.sh [FLIGHTGEAR_DATA_ROOT] [OUT_DIR]
# Germany with its neighbours and the north-east of the United States, with
# every navaid, fix and airway segment touching them.
set -euo pipefail
root=${1:-/usr/share/games/flightgear}
out=${2:-data/demo}
mkdir -p "$out"

# The two boxes: lat_min lat_max lon_min lon_max.
inbox='function inbox(la, lo) {
  return (la >= 45.5 && la <= 55.5 && lo >= 3.0 && lo <= 17.5) ||
         (la >= 38.5 && la <= 45.5 && lo >= -80.0 && lo <= -69.0)
}'

# apt.dat: whole airport blocks, placed by their first runway, helipad or tower row.
zcat "$root/Airports/apt.dat.gz" | awk "$inbox"'
  NR <= 2 { print; next }
  function flush() { if (keep) printf "%s", block; block = ""; keep = 0; placed = 0 }
  $1 == "1" || $1 == "16" || $1 == "17" { flush(); block = $0 "\n"; inapt = 1; next }
  $1 == "99" { flush(); print "99"; exit }
  inapt {
    block = block $0 "\n"
    if (!placed) {
      if ($1 == "100") { placed = 1; keep = inbox($10, $11) }
      else if ($1 == "101") { placed = 1; keep = inbox($5, $6) }
      else if ($1 == "102" || $1 == "14" || $1 == "10") { placed = 1; keep = inbox($2, $3) }
    }
  }
' | gzip -9 > "$out/apt.dat.gz"

zcat "$root/Navaids/nav.dat.gz" | awk "$inbox"'
  NR <= 3 { print; next }
  $1 == "99" { print; exit }
  NF > 3 && inbox($2, $3) { print }
' | gzip -9 > "$out/nav.dat.gz"

zcat "$root/Navaids/fix.dat.gz" | awk "$inbox"'
  NR <= 3 { print; next }
  $1 == "99" { print; exit }
  NF >= 3 && inbox($1, $2) { print }
' | gzip -9 > "$out/fix.dat.gz"

zcat "$root/Navaids/awy.dat.gz" | awk "$inbox"'
  NR <= 3 { print; next }
  $1 == "99" { print; exit }
  NF >= 10 && (inbox($2, $3) || inbox($5, $6)) { print }
' | gzip -9 > "$out/awy.dat.gz"

ls -l "$out"
