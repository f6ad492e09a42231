// Arbitrary bytes as ndb.orv: the reader stays inside the buffer, every
// kept position is a place on the globe, and the writer's file of what was
// accepted reads back to the same file.
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "NavaidFuzzCommon.h"
#include "database/NavaidFiles.h"

using namespace orv;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  NavaidTables tables;
  if (ParseNdbFile(data, size, fuzz::Grid(), tables)) return 0;
  for (const auto& rec : tables.Ndbs)
    fuzz::Require(std::fabs(rec.Lat) <= 90 && std::fabs(rec.Lon) <= 180);
  std::vector<uint8_t> built = BuildNdbFile(tables.Ndbs);
  NavaidTables back;
  fuzz::Require(!ParseNdbFile(built.data(), built.size(), fuzz::Grid(), back));
  fuzz::Require(BuildNdbFile(back.Ndbs) == built);
  return 0;
}
