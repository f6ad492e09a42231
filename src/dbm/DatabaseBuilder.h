// Turns the source records of the X-Plane files into the records of the
// navigation database, the way docs/dbm-mapping.md lays out field by field.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/NavDatabase.h"
#include "dbm/XPlaneSources.h"

namespace orv::dbm {

struct BuildOptions {
  // Write a 5 NM control zone around every airport with a tower frequency
  // (used when the user gives no airspace file).
  bool DeriveControlZones = true;
};

// What the build hands to the folder writer besides the tables.
struct BuiltDatabase {
  NavDatabase Db;               // Airports (with the hierarchy), Navaids, Shapes
  std::string WxStations;       // the text of WxStation.txt
  std::vector<std::string> Notes;  // records left out, with the reason (first few of each kind)
  int64_t LeftOut = 0;
  int64_t ControlZones = 0;
};

// Builds every table from src. grid gives the variation stored with navaids
// (the program replaces it on load, but the file should still be right).
void BuildDatabase(const XPlaneSources& src, const MagVarGrid& grid, const BuildOptions& options,
                   BuiltDatabase& out);

// Single mappings, exposed for the tests.
uint8_t SurfaceCode(int xplaneSurface);
uint8_t FrequencyKind(int row, std::string_view name);
struct ParkingCodes {
  int32_t Kind = 1;
  int32_t NameCode = 1;
  int32_t Number = 0;
  std::string Ident;
};
ParkingCodes ParkingFor(const SrcParking& p);
// VOR TypeCode from the navaid's name and whether a DME stands with it.
int16_t VorTypeCode(int row, std::string_view name, bool withDme);
// A designator as the database keeps it: compass letters become "37".."44",
// a helipad "H1" becomes "00H1".
std::string StoredDesignator(std::string_view designator, bool helipad);
// The 36-point outline of a circle of radiusNm around a place.
std::vector<ShapePoint> CirclePoints(double lat, double lon, double radiusNm);
// Great-circle distance in NM on the mean earth sphere.
double DistanceNm(double lat1, double lon1, double lat2, double lon2);

}  // namespace orv::dbm
