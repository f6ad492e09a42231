// The view's geodesy and variation lookups, served by the shared routines and
// the loaded variation grid.
#pragma once

#include "core/Geodesy.h"
#include "core/TextFormats.h"
#include "database/MagVar.h"
#include "map/Viewport.h"

namespace orv {

class MapGeodesy : public ViewGeodesy {
public:
  explicit MapGeodesy(const MagVarGrid& grid) : grid_(grid) {}

  LatLon Destination(float lat, float lon, float course, float distanceNm) const override {
    return OffsetLatLon(lat, lon, course, distanceNm);
  }
  double Distance(float lat1, float lon1, float lat2, float lon2) const override {
    return GcDistance(lat1, lon1, lat2, lon2);
  }
  std::string LatText(double lat, bool decimalSeconds) const override { return LatToText(lat, decimalSeconds); }
  std::string LonText(double lon, bool decimalSeconds) const override { return LonToText(lon, decimalSeconds); }
  std::string VarText(double variation) const override { return VarToText(variation); }
  double MagVarAt(int lat, int lon) const override { return grid_.At(lat, lon); }

private:
  const MagVarGrid& grid_;
};

}  // namespace orv
