// Arbitrary bytes as airport.orv: the reader either refuses the file with a
// message or loads it; a loaded file written back and read again must give the
// same bytes once more, and the ILS pass must stay inside every list.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "database/AirportFile.h"
#include "database/MagVar.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const orv::MagVarGrid grid = [] {
    orv::MagVarGrid g;
    g.Assign(orv::BuildMagVarFile([](int lat, int lon) { return lat * 0.1 - lon * 0.05; }));
    return g;
  }();
  orv::AirportTables tables;
  if (orv::ParseAirportFile(data, size, grid, tables)) return 0;
  orv::LinkIlsToRunways(tables);
  for (const orv::AirportRec& a : tables.Airports)
    for (int32_t r = 0; r < a.RunwayCount(); ++r) {
      const orv::IlsRec* low = orv::IlsForRunwayEnd(a, r, orv::RunwayEnd::Low);
      if (low && low->Ident.Trimmed().empty()) std::abort();
      orv::RunwayListName(a.Runways[r].LowEnd.View());
    }

  std::vector<uint8_t> once = orv::BuildAirportFile(tables.Airports);
  orv::AirportTables again;
  if (orv::ParseAirportFile(once.data(), once.size(), grid, again)) std::abort();
  if (orv::BuildAirportFile(again.Airports) != once) std::abort();
  return 0;
}
