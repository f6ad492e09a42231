// Arbitrary bytes as worldpolygon.bin: refused with a message, or read into
// shapes whose points lie inside the one point array, all finite; a file
// that reads is written back byte for byte.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "database/WorldShapes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseWorldPolygonFile(data, size, t)) return 0;
  size_t total = 0;
  for (const orv::WorldShapeRec& s : t.WorldPolygons) {
    if (s.First != total || s.Count != static_cast<uint32_t>(s.PointCount) + 1) __builtin_trap();
    total += s.Count;
  }
  if (total != t.WorldPolygonPoints.size()) __builtin_trap();
  for (const orv::ShapePoint& p : t.WorldPolygonPoints)
    if (!std::isfinite(p.Lat) || !std::isfinite(p.Lon)) __builtin_trap();
  if (orv::BuildWorldPolygonFile(t) != std::vector<uint8_t>(data, data + size)) __builtin_trap();
  return 0;
}
