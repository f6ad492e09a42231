// Arbitrary bytes as marker.orv: refused with a message, or read into finite
// markers that are written back and read again alike.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "database/GroundFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseMarkerFile(data, size, t)) return 0;
  for (const orv::MarkerRec& r : t.Markers)
    if (r.Kind.IsEmptySlot() || !std::isfinite(r.Lat) || !std::isfinite(r.Heading)) __builtin_trap();
  auto again = orv::BuildMarkerFile(t);
  orv::AirspaceTables back;
  if (orv::ParseMarkerFile(again.data(), again.size(), back) || orv::BuildMarkerFile(back) != again)
    __builtin_trap();
  return 0;
}
