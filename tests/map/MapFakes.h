// Fakes for the view's seams: a window host that logs what the commands ask
// of it, and a geodesy stand-in with scripted answers.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/Runtime.h"
#include "map/Viewport.h"

namespace orv::test {

class FakeViewHost : public ViewHost {
public:
  void FocusMap() override { log.push_back("focus"); }
  void DrawMap() override { log.push_back("draw"); }
  void SetMapStatus(int field, std::string_view text) override {
    log.push_back("status" + std::to_string(field) + " " + std::string(text));
  }
  void RepositionMeasure() override { log.push_back("measure"); }

  std::vector<std::string> log;
};

class FakeGeodesy : public ViewGeodesy {
public:
  LatLon Destination(float lat, float lon, float course, float distanceNm) const override {
    calls.push_back("dest " + NumText(lat) + " " + NumText(lon) + " " + NumText(course) + " " + NumText(distanceNm));
    if (destinations.empty()) return {lat, lon};
    LatLon p = destinations.front();
    destinations.pop_front();
    return p;
  }
  double Distance(float lat1, float lon1, float lat2, float lon2) const override {
    calls.push_back("dist " + NumText(lat1) + " " + NumText(lon1) + " " + NumText(lat2) + " " + NumText(lon2));
    return distance;
  }
  std::string LatText(double lat, bool decimalSeconds) const override {
    return std::string(decimalSeconds ? "lat:" : "latsec:") + Format(lat, "0.00");
  }
  std::string LonText(double lon, bool decimalSeconds) const override {
    return std::string(decimalSeconds ? "lon:" : "lonsec:") + Format(lon, "0.00");
  }
  std::string VarText(double variation) const override { return "var:" + Format(variation, "0.0"); }
  double MagVarAt(int lat, int lon) const override {
    calls.push_back("magvar " + std::to_string(lat) + " " + std::to_string(lon));
    return magVar;
  }

  mutable std::deque<LatLon> destinations;
  mutable std::vector<std::string> calls;
  double distance = 0;
  double magVar = 0;
};

}  // namespace orv::test
