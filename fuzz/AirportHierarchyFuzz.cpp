// Arbitrary bytes as each of region.orv, country.orv, state.orv and city.orv:
// every reader either refuses the file or loads it, and what it loads writes
// back into a file that reads the same again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "database/AirportFile.h"

namespace {

template <typename Entry, typename ParseFn, typename BuildFn>
void Check(const uint8_t* data, size_t size, ParseFn parse, BuildFn build,
           std::vector<Entry> orv::AirportTables::*array, int32_t orv::AirportTables::*count) {
  orv::AirportTables tables;
  if (parse(data, size, tables)) return;
  const auto& loaded = tables.*array;
  std::vector<Entry> entries(loaded.begin(), loaded.begin() + tables.*count);
  std::vector<uint8_t> once = build(entries);
  orv::AirportTables again;
  if (parse(once.data(), once.size(), again)) std::abort();
  if (again.*count != tables.*count) std::abort();
  std::vector<Entry> back((again.*array).begin(), (again.*array).begin() + again.*count);
  if (build(back) != once) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Check(data, size, orv::ParseRegionFile, orv::BuildRegionFile, &orv::AirportTables::Regions,
        &orv::AirportTables::RegionCount);
  Check(data, size, orv::ParseCountryFile, orv::BuildCountryFile, &orv::AirportTables::Countries,
        &orv::AirportTables::CountryCount);
  Check(data, size, orv::ParseStateFile, orv::BuildStateFile, &orv::AirportTables::States,
        &orv::AirportTables::StateCount);
  Check(data, size, orv::ParseCityFile, orv::BuildCityFile, &orv::AirportTables::Cities,
        &orv::AirportTables::CityCount);
  return 0;
}
