// NavLookup over the loaded navigation database. The identifier index is
// built once when the object is made, so a typed identifier costs one binary
// search however large the database is. The database must outlive this object
// and keep its arrays unchanged (user waypoints excepted: call Rebuild after
// they change).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"
#include "database/NavDatabase.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookup.h"

namespace orv {

// The airway net an intersection belongs to, from the links it carries:
// "X" with both low and high airways, "V" with low ones only, "J" with high
// ones only, blank with none.
FixedStr<1> IntersectionNetType(const IntersectionRec& rec);

// Plan rows for database objects, as the typed insertion, the map click and
// the route builders insert them (Origin 0: the caller sets it).
WaypointRec VorRow(const NavaidTables& navaids, int index);
WaypointRec NdbRow(const NavaidTables& navaids, int index);
WaypointRec FixRow(const NavaidTables& navaids, int index);
WaypointRec IntersectionRow(const NavaidTables& navaids, int index);
WaypointRec UserWaypointRow(const std::vector<UserWaypointRec>& waypoints, int index);
// The airport row at either end of a plan: blank Kind, the ICAO code as Code.
WaypointRec AirportRow(const AirportTables& airports, int index);

class NavLookupDb : public NavLookup {
public:
  // parkingNames: the table the parking name codes index (AppState's
  // ParkingNames); a code outside it gives an empty name.
  explicit NavLookupDb(const NavDatabase& db, std::span<const std::string> parkingNames = {});

  // Rebuilds the identifier index, after the user waypoints changed.
  void Rebuild();

  int AirportCount() const override;
  bool AirportPosition(int airport, float& lat, float& lon) const override;
  std::string AirportIcao(int airport) const override;
  std::string AirportName(int airport) const override;
  double AirportElevation(int airport) const override;

  int RunwayCount(int airport) const override;
  int32_t RunwayLength(int airport, int runway) const override;
  RunwayInfo Runway(int airport, int runway) const override;
  int ParkingCount(int airport) const override;
  ParkingInfo Parking(int airport, int parking) const override;

  void FindByIdent(std::string_view ident, std::vector<WaypointRec>& out) const override;
  int FindAirportLast(std::string_view icao) const override;

  // The airport slot whose ICAO code is icao (trimmed, any case), -1 when
  // none: FindAirportByIcao.
  int FindAirport(std::string_view icao) const;

  const NavDatabase& Database() const { return db_; }

private:
  // Kinds in the order FindByIdent lists them.
  enum class ObjectKind : uint8_t { Vor, Ndb, Fix, Intersection, User };
  struct IdentEntry {
    std::string Ident;  // trimmed, upper case
    ObjectKind Kind;
    int32_t Index;
  };

  const AirportRec* AirportAt(int airport) const;

  const NavDatabase& db_;
  std::span<const std::string> parkingNames_;
  std::vector<IdentEntry> idents_;      // sorted by Ident, then kind, then index
};

}  // namespace orv
