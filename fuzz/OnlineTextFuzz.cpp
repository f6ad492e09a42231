// Arbitrary bytes as an IVAO or VATSIM text file, a sector file and a status
// file: the readers never leave the buffer and keep only what they can hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "database/AirportFile.h"
#include "online/Downloads.h"
#include "online/OnlineData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::AirportTables airports;
  airports.Airports.resize(1);
  airports.Airports[0].Icao.Assign("EDDF");
  orv::AirportFinder finder(&airports);
  orv::OnlineData d;
  bool ok = orv::ParseIvaoText(text, finder, d);
  if (ok != !d.Pilots.empty()) std::abort();
  orv::ParseVatsimText(text, finder, d);
  std::vector<orv::OnlineSector> sectors = orv::ParseSectorFile(text);
  if (sectors.size() > static_cast<size_t>(orv::kMaxSectors)) std::abort();
  orv::MatchIvaoSectors(d, sectors);
  std::string list, moved;
  orv::ReadIvaoStatus(text, "x", list, moved);
  orv::ReadVatsimStatus(text, "x", list, moved);
  return 0;
}
