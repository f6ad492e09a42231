// Arbitrary bytes as airspace.orv: the reader either refuses them with a
// message or gives airspaces whose outlines lie inside the point array, all
// finite, and whose written form reads back alike.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "database/AirspaceFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseAirspaceFile(data, size, t)) return 0;
  if (t.Airspaces.size() > orv::kLastAirspaceIndex + 1) __builtin_trap();
  size_t total = 0;
  for (const orv::AirspaceRec& a : t.Airspaces) {
    if (a.PointCount < 0 || a.First != total) __builtin_trap();
    total += static_cast<size_t>(a.PointCount);
    for (const orv::ShapePoint& p : t.PointsOf(a))
      if (!std::isfinite(p.Lat) || !std::isfinite(p.Lon) || p.Lat > a.North || p.Lat < a.South) __builtin_trap();
  }
  if (total != t.AirspacePoints.size()) __builtin_trap();
  auto again = orv::BuildAirspaceFile(t);
  orv::AirspaceTables back;
  if (orv::ParseAirspaceFile(again.data(), again.size(), back)) __builtin_trap();
  if (back.Airspaces.size() != t.Airspaces.size() || back.AirspacePoints != t.AirspacePoints) __builtin_trap();
  // Not byte for byte: stripping the altitudes' zeros after trimming is not
  // idempotent ("0 5" becomes " 5", then "5"), so compare the other fields.
  for (size_t i = 0; i < t.Airspaces.size(); ++i) {
    const orv::AirspaceRec& a = t.Airspaces[i];
    const orv::AirspaceRec& b = back.Airspaces[i];
    if (a.Index != b.Index || !(a.Ident == b.Ident) || !(a.Name == b.Name) || !(a.Class == b.Class) ||
        a.PointCount != b.PointCount || a.First != b.First)
      __builtin_trap();
  }
  return 0;
}
