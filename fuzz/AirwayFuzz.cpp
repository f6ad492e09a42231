// Arbitrary bytes as vicways.orv / jetways.orv: the reader stays inside the
// buffer, kept segments point into the intersection range, and the writer's
// file of what was accepted reads back with as many segments (less those whose
// name only began with NUL once trimmed: written back, they mark empty records).
#include <cstddef>
#include <cstdint>

#include "NavaidFuzzCommon.h"
#include "database/NavaidFiles.h"

using namespace orv;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  NavaidTables tables;
  if (ParseVicwaysFile(data, size, tables)) return 0;
  size_t named = 0;
  for (const AirwayRec& rec : tables.VictorAirways) {
    if (!rec.Name.IsEmptySlot()) ++named;
    fuzz::Require(rec.FromIndex >= 0 && rec.FromIndex <= kMaxIntersectionIndex);
    fuzz::Require(rec.ToIndex >= 0 && rec.ToIndex <= kMaxIntersectionIndex);
  }
  std::vector<uint8_t> built = BuildAirwayFile(tables.VictorAirways);
  NavaidTables back;
  fuzz::Require(!ParseJetwaysFile(built.data(), built.size(), back));
  fuzz::Require(back.JetAirways.size() == named);
  return 0;
}
