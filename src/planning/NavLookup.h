// The planning module's view of the loaded navigation database. The plan, the
// departure list, the typed insertion and the alternate search only ask these
// questions, so that they can be driven by the real arrays in the program and
// by a small fake in tests.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

struct WaypointRec;

// One runway as the departure list needs it. The two end texts are the runway
// designators as the program lists them ("Rwy 09L", "Rwy 27R", "Heli  00H").
struct RunwayInfo {
  std::string LowEndText;
  std::string HighEndText;
  float Lat = 0;
  float Lon = 0;
  float TrueHeading = 0;  // of the low end
  int32_t LengthFeet = 0;
};

struct ParkingInfo {
  std::string Name;  // the parking's name from its name code ("Gate A", "Parking")
  int32_t Number = 0;
  float Lat = 0;
  float Lon = 0;
};

class NavLookup {
public:
  virtual ~NavLookup() = default;

  // Airports: slots 0 .. AirportCount() - 1; an empty slot reports false.
  virtual int AirportCount() const = 0;
  virtual bool AirportPosition(int airport, float& lat, float& lon) const = 0;
  virtual std::string AirportIcao(int airport) const = 0;
  virtual std::string AirportName(int airport) const = 0;
  // Field elevation in feet; 0 for an index outside the array.
  virtual double AirportElevation(int airport) const = 0;

  virtual int RunwayCount(int airport) const = 0;
  virtual int32_t RunwayLength(int airport, int runway) const = 0;
  virtual RunwayInfo Runway(int airport, int runway) const = 0;
  virtual int ParkingCount(int airport) const = 0;
  virtual ParkingInfo Parking(int airport, int parking) const = 0;

  // Every VOR, NDB, GPS fix, intersection and user waypoint whose identifier
  // equals ident (trimmed, upper case), in that order of kinds, each as a plan
  // row ready to insert: Kind "VOR", "NDB", "Fix", "Int" or "Uwp", Code, Name,
  // Lat, Lon, Frequency, MagVar, DbIndex and, for an intersection, NetType.
  virtual void FindByIdent(std::string_view ident, std::vector<WaypointRec>& out) const = 0;

  // The airport slot with this ICAO code (trimmed, any case) as a search of
  // the array in order finds it when the last match counts; -1 when none.
  // The default walks the array; an indexed database answers at once.
  virtual int FindAirportLast(std::string_view icao) const;
};

}  // namespace orv
