// Airspaces in the OpenAir text format ("AC", "AN", "AH", "AL", "DP", "V",
// "DA", "DB", "DC" records), turned into the airspace records of
// airspace.orv. Arcs and circles become points every 5 degrees.
#pragma once

#include <string_view>
#include <vector>

#include "database/AirspaceTables.h"
#include "dbm/XPlaneSources.h"

namespace orv::dbm {

struct SrcAirspace {
  std::string Class;
  std::string Name;
  std::string Upper;
  std::string Lower;
  std::vector<ShapePoint> Points;
  int64_t Line = 0;
};

void ReadOpenAir(std::string_view text, std::vector<SrcAirspace>& out, SourceReport& report);

// A coordinate "52:21:00 N 013:30:30 E", "52:21.5N 13:30.5E" or with
// decimal degrees; false when it is none of these.
bool ReadOpenAirPosition(std::string_view text, double& lat, double& lon);

// Adds the airspaces after the ones already in shapes (indexes up to 15000,
// at most 32767 points each); returns how many did not fit.
std::size_t AddOpenAirspaces(const std::vector<SrcAirspace>& spaces, AirspaceTables& shapes);

}  // namespace orv::dbm
