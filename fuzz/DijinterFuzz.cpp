// Arbitrary bytes as dijinter.orv: the reader stays inside the buffer, every
// kept link points into the intersection range, and what it accepts the
// writer turns into a file that reads back to the same file.
#include <cstddef>
#include <cstdint>

#include "NavaidFuzzCommon.h"
#include "database/NavaidFiles.h"

using namespace orv;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Kept between runs: the reader refills the 40,001 slots in place, which
  // spares the fuzzer a fresh multi-megabyte allocation on every input.
  static NavaidTables tables;
  static NavaidTables back;
  if (ParseDijinterFile(data, size, fuzz::Grid(), tables)) return 0;
  fuzz::Require(tables.Intersections.size() == kIntersectionSlots);
  for (int32_t i = 0; i <= tables.MaxIntersectionIndex; ++i) {
    const IntersectionRec& rec = tables.Intersections[static_cast<size_t>(i)];
    if (rec.Ident.IsEmptySlot()) continue;
    fuzz::Require(tables.LowAirways(i).size() == rec.LowCount);
    fuzz::Require(tables.HighAirways(i).size() == rec.HighCount);
    for (const AirwayLinkRec& link : tables.LowAirways(i))
      fuzz::Require(link.Target >= 0 && link.Target <= kMaxIntersectionIndex);
    for (const AirwayLinkRec& link : tables.HighAirways(i))
      fuzz::Require(link.Target >= 0 && link.Target <= kMaxIntersectionIndex);
  }
  std::vector<uint8_t> built = BuildDijinterFile(tables);
  fuzz::Require(!ParseDijinterFile(built.data(), built.size(), fuzz::Grid(), back));
  fuzz::Require(back.MaxIntersectionIndex == tables.MaxIntersectionIndex);
  fuzz::Require(BuildDijinterFile(back) == built);
  return 0;
}
