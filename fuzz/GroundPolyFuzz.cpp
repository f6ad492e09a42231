// Arbitrary bytes as poly.orv: refused with a message, or read into finite
// points that are written back and read again alike.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "database/GroundFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseGroundPolyFile(data, size, t)) return 0;
  for (const orv::GroundPolyRec& r : t.GroundPolygons)
    if (r.Kind.IsEmptySlot() || !std::isfinite(r.Lat) || !std::isfinite(r.Lon)) __builtin_trap();
  auto again = orv::BuildGroundPolyFile(t);
  orv::AirspaceTables back;
  if (orv::ParseGroundPolyFile(again.data(), again.size(), back) || orv::BuildGroundPolyFile(back) != again)
    __builtin_trap();
  return 0;
}
