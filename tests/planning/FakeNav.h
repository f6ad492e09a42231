// A navigation database for the planning tests: a few airports with runways
// and parking, and objects found by identifier.
#pragma once

#include <string>
#include <vector>

#include "planning/FlightPlan.h"
#include "planning/NavLookup.h"

namespace orv::test {

struct FakeAirport {
  std::string Icao;
  std::string Name;
  float Lat = 0;
  float Lon = 0;
  double Elevation = 0;
  std::vector<RunwayInfo> Runways;
  std::vector<ParkingInfo> Parking;
  bool Empty = false;  // a deleted slot
};

class FakeNav : public NavLookup {
public:
  std::vector<FakeAirport> Airports;
  std::vector<WaypointRec> Objects;

  int AirportCount() const override { return static_cast<int>(Airports.size()); }
  bool AirportPosition(int i, float& lat, float& lon) const override {
    if (!Valid(i) || Airports[i].Empty) return false;
    lat = Airports[i].Lat;
    lon = Airports[i].Lon;
    return true;
  }
  std::string AirportIcao(int i) const override { return Valid(i) ? Airports[i].Icao : ""; }
  std::string AirportName(int i) const override { return Valid(i) ? Airports[i].Name : ""; }
  double AirportElevation(int i) const override { return Valid(i) ? Airports[i].Elevation : 0; }
  int RunwayCount(int i) const override { return Valid(i) ? static_cast<int>(Airports[i].Runways.size()) : 0; }
  int32_t RunwayLength(int i, int r) const override { return Airports[i].Runways[r].LengthFeet; }
  RunwayInfo Runway(int i, int r) const override { return Airports[i].Runways[r]; }
  int ParkingCount(int i) const override { return Valid(i) ? static_cast<int>(Airports[i].Parking.size()) : 0; }
  ParkingInfo Parking(int i, int p) const override { return Airports[i].Parking[p]; }
  void FindByIdent(std::string_view ident, std::vector<WaypointRec>& out) const override {
    for (const WaypointRec& w : Objects)
      if (w.Code.Trimmed() == ident) out.push_back(w);
  }

private:
  bool Valid(int i) const { return i >= 0 && i < static_cast<int>(Airports.size()); }
};

// A plan row at a position.
inline WaypointRec Row(std::string_view kind, std::string_view code, float lat, float lon,
                       uint8_t origin = kOriginEnroute) {
  WaypointRec w;
  w.Kind.Assign(kind);
  w.Code.Assign(code);
  w.Name.Assign(std::string(code) + " NAME");
  w.Lat = lat;
  w.Lon = lon;
  w.Origin = origin;
  return w;
}

}  // namespace orv::test
