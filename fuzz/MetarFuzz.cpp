// Arbitrary bytes as a station file, a report file, the bulk CSV and the
// public station list.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "online/Metar.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::WxStations stations;
  stations.Load(text);
  for (const orv::WxStationRec& s : stations.Stations())
    if (!(s.Latitude >= -90 && s.Latitude <= 90 && s.Longitude >= -180 && s.Longitude <= 180)) std::abort();
  std::vector<orv::MetarRec> reports = orv::ParseMetarFile(text, stations);
  for (const orv::MetarRec& r : reports) orv::MetarHoverLines(&r, r.Icao);
  orv::MetarCsvToReports(text);
  orv::StationListToWxStations(text);
  return 0;
}
