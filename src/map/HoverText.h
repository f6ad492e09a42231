// The information lines of the map's objects: what the hover box shows when
// the pointer rests on an object, and what the airport command of the CLI
// prints. Each Append... adds one object's lines behind those already held, as
// the box collects every object under the pointer. Texts are 8-bit, as the
// records hold them.
//
// An airport:
//   "Frankfurt Main (EDDF)"                       name, " (", ICAO, ")"
//   "Frankfurt Germany Hessen"                    city, country and state joined by blanks
//   "364 ft"                                      elevation
//   "N50°01.57'  E008°32.55'"                     position, the two coordinates two blanks apart
//   ""                                            a blank line
//   "Rwy: 07C - 25C / 13123 ft  Asphalt"          per runway: designators as shown (37..44 become
//                                                 compass points), length, surface from SurfaceKinds
//   "Heli  00H / 60 ft  Grass"                    a helipad ("00H" in its designator) has one end:
//                                                 "Heli  " and the designator, no reciprocal
//   "ILS IFRA  110.300  249°"                     per ILS: ident, frequency "000.000", course "000"
//   "ATIS: 118.025"                               per frequency: its FrequencyKinds name, ": ", the
//                                                 frequency "##0.000"; a kind outside 1..12 shows
//                                                 the frequency's own name instead
// The coordinates follow the DECSEC setting (decimal minutes when it is not 0).
//
// ILS values: the database manager writes an ILS's frequency (MHz) as the
// first of its eight values and its course (degrees) as the second.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/AppState.h"
#include "database/NavDatabase.h"
#include "planning/FlightPlan.h"

namespace orv {

// Latitude and longitude in the formats of the position fields, two blanks apart.
std::string LatLonText(double lat, double lon, bool decSec);

// The airport's lines; names come from state's SurfaceKinds and FrequencyKinds,
// the coordinate form from state.Config.DecSec.
void AppendAirportLines(const AirportRec& airport, const AppState& state, std::vector<std::string>& lines);
std::vector<std::string> AirportInfoLines(const AirportRec& airport, const AppState& state);

// An intersection: "Int " and its name (its ident when the name is blank),
// the position, "LowAlt: " and "HighAlt: " each followed by the names of the
// victor and jet airways through it, each name once, in link order, blank
// separated. An index outside the array adds nothing.
void AppendIntersectionLines(const NavaidTables& navaids, int32_t index, bool decSec, std::vector<std::string>& lines);
// A GPS fix: "Fix " and its name (ident when blank), then the position.
void AppendFixLines(const FixRec& fix, bool decSec, std::vector<std::string>& lines);
// A user waypoint: "User WP " and its name (ident when blank), then the position.
void AppendUserWaypointLines(const UserWaypointRec& waypoint, bool decSec, std::vector<std::string>& lines);

// A VOR:
//   "FRANKFURT  FFM"        name, two blanks, ident
//   "364 ft"                elevation (Value2, which the files keep for it)
//   "114.20"                frequency "###.00"
//   "N50°03.00'  E008°18.00'"
//   ""
//   "VOR VOR-DME"           "VOR " and the type name
void AppendVorLines(const VorRec& vor, bool decSec, std::vector<std::string>& lines);
// An NDB: the same without the elevation, which ndb.orv does not hold;
// frequency in kHz "###.00", last line "NDB " and the type name.
void AppendNdbLines(const NdbRec& ndb, bool decSec, std::vector<std::string>& lines);
// An airspace: "Name: ", "Icao: ", "Ctr: " (Name2, the controlling unit),
// "Frq1: ", "Frq2: " (Text1, Text2), "Class: ", "UpAlt: ", "LoAlt: ", one a
// line, the fields trimmed.
void AppendAirspaceLines(const AirspaceRec& airspace, std::vector<std::string>& lines);
// A parking position: its name from ParkingNames by NameCode (blank outside
// the table), a blank and its number: "Gate A 12".
std::string ParkingHoverLine(const ParkingRec& parking, std::span<const std::string> parkingNames);
// A plan row: its code and the altitude in hundreds of feet, "TAU (FL090)";
// the row's airway minimum when it has one, else the plan's cruise level.
std::string PlanRowHoverLine(const WaypointRec& row, int32_t cruiseFl);

}  // namespace orv
