// Automatic routes between two plan rows: the Navaid Plan (a greedy walk
// through a sector that moves toward the destination), the Low and High
// Altitude Plans (a shortest path over the victor or jet airway graph of
// dijinter.orv) and Add Airway Waypoints (airway legs between intersections
// already in the plan). Rows go in through the plan model, so leg values,
// duplicate merging and totals stay the plan's business.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"
#include "database/NavaidFiles.h"
#include "planning/FlightPlan.h"
#include "planning/RouteSearch.h"

namespace orv {

class Ui;
struct AircraftRec;

// An airway name without the direction marks: a leading "<<" and a trailing
// ">>" go.
std::string StripAirwayMarks(std::string_view name);

// The messages of the route builders.
inline constexpr std::string_view kLineBreak = "\r\n";
std::string NoAirwayRoutingMessage(std::string_view entryIdent);
std::string IllegalLevelMessage(int32_t altitude, std::string_view airway);
inline constexpr std::string_view kNoEntryFixMessage = "No fix found within 300nm of insertion waypoint!";
inline constexpr std::string_view kNoExitFixMessage = "No fix found within 500nm of destination waypoint!";
inline constexpr std::string_view kNoNavaidButtonMessage =
    "You need to have at least one of these buttons selected:\r\n          VOR, NDB, Intersection";
inline constexpr std::string_view kInsufficientNavaidsMessage = "Insufficient number of navaids to create flightplan!";
inline constexpr std::string_view kOneAirwayTypeMessage =
    "Please select ONLY the airway type which you \r\n want to insert between existing waypoints!";

// The buttons and settings the Navaid Plan reads.
struct NavaidPlanOptions {
  bool Vor = true;        // the VOR button
  bool Ndb = true;        // the NDB button
  bool Intersection = true;
  int SecLen = 50;        // SECLEN: the sector's length in NM
  int SecWidth = 30;      // SECWIDTH: its half-width in degrees
  bool GreatCircle = false;  // GC: the radius grows by 50 NM instead of 15
};

// The route commands over the plan, the navaid tables and the search state.
class RouteBuilder {
public:
  // aircraft: the selected aircraft, whose cruise level the airway minimum
  // altitudes are checked against.
  RouteBuilder(PlanEditor& editor, const AircraftRec& aircraft, NavaidTables& navaids, RouteSearch& search, Ui& ui)
      : editor_(editor), aircraft_(aircraft), navaids_(navaids), search_(search), ui_(ui) {}

  // Low ('V') or High ('J') Altitude Plan between row and row + 1. False when
  // no route was built; the rows are then as before, apart from a row that
  // was the entry intersection itself.
  bool CreateAirwayPlan(char net, int row);
  // Navaid Plan between row and row + 1. False when it stopped with a message.
  bool CreateNavaidPlan(int row, const NavaidPlanOptions& options);
  // Airway legs between every neighbouring pair of intersections in the plan,
  // on the jet or the victor net, whichever one is chosen.
  bool AddAirwayWaypoints(bool jet, bool victor);

  // The intersection to join the net at for the leg from row to row + 1, or
  // -1 with a message. The identity tests look at the plan's CurrentRow.
  int FindEntryIntersection(int row, char net);
  // The radius in NM around row + 1 that holds an intersection of the net
  // more than 5 NM away, or -1 with a message.
  int FindExitRadius(int row, char net);

  // The airway of the net's table (JetAirways for 'J', VictorAirways else)
  // that a link of intersection `from` names and that starts or ends at
  // `to`; empty when none.
  std::string AirwayBetween(int from, int to, char net) const;

  // The airway name AddAirwayWaypoints found in the table for the last pair
  // it expanded.
  const std::string& LastAirway() const { return lastAirway_; }

  // The minimum altitude violation noted by the last command, if any.
  bool LevelViolation() const { return violation_; }
  int32_t ViolationAltitude() const { return violationAltitude_; }
  const std::string& ViolationAirway() const { return violationAirway_; }

private:
  bool NetMatches(int index, char net) const;
  // Inserts node at `at` with the search's via fields; false when the plan is full.
  bool InsertNode(int at, int node);
  void NoteLevel(int node);

  // An intersection near the point the entry or exit search looks around,
  // with the tests made on it so far.
  struct NearNode {
    enum : int8_t { kUnknown, kYes, kNo };
    int32_t Index;
    float Lat, Lon;
    double Distance;  // great-circle NM, once Measured
    int8_t Measured;
    int8_t Qualifies;  // has an airway of the net ahead
  };

  PlanEditor& editor_;
  const AircraftRec& aircraft_;
  NavaidTables& navaids_;
  RouteSearch& search_;
  Ui& ui_;
  std::vector<int32_t> path_;
  std::vector<int32_t> candidates_;
  std::vector<NearNode> near_;
  std::string lastAirway_;
  bool violation_ = false;
  int32_t violationAltitude_ = 0;
  std::string violationAirway_;
};

}  // namespace orv
