// Arbitrary bytes as taxi.orv: refused with a message, or read into finite
// segments that are written back and read again alike.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "database/GroundFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseTaxiFile(data, size, t)) return 0;
  if (t.TaxiSegments.size() != size / orv::kTaxiRecordSize) __builtin_trap();
  for (const orv::TaxiRec& r : t.TaxiSegments)
    if (!std::isfinite(r.Lat1) || !std::isfinite(r.Lon2)) __builtin_trap();
  auto again = orv::BuildTaxiFile(t);
  orv::AirspaceTables back;
  if (orv::ParseTaxiFile(again.data(), again.size(), back) || orv::BuildTaxiFile(back) != again) __builtin_trap();
  return 0;
}
