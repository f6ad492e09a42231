// The one flight plan in memory: rows 0..1000, row 0 the departure airport,
// row LastRow the destination, SID rows right behind row 0 and STAR rows right
// ahead of the destination. Every change goes through InsertWaypoint and
// DeleteWaypoint, which keep the leg values of the following rows right;
// RefreshRows and RefreshTotals then bring the table and the totals up to date.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FixedStr.h"

namespace orv {

class Ui;
class NavLookup;
struct AircraftRec;
struct PlanPanel;

// What a row is, for its symbol and the rules that protect it.
enum : uint8_t {
  kOriginAirport = 0,
  kOriginEnroute = 1,
  kOriginStar = 2,
  kOriginSid = 3,
  kOriginSpecial = 4,
};

struct WaypointRec {
  int16_t Row = 0;              // candidate or row number
  FixedStr<5> Kind;             // "VOR", "NDB", "Int", "Fix", "Uwp"; blank for an airport
  FixedStr<10> Code;            // identifier, upper case
  FixedStr<70> Name;
  FixedStr<10> Airway;          // airway on which this row is reached; blank when none
  int32_t MaxAltitude = 0;      // feet; -1 or 0 when not known
  int32_t MinAltitude = 0;
  float Frequency = 0;          // MHz or kHz, 0 when none
  float Lat = 0;
  float Lon = 0;
  float LegDistance = 0;        // NM from the previous row
  float MagVar = 0;
  float Course = 0;             // true course of the leg from the previous row
  float LegTime = 0;            // minutes
  int32_t DbIndex = 0;
  FixedStr<1> NetType;          // "V", "J" or "X" for an intersection
  uint8_t Origin = kOriginAirport;
};

// The highest row index: the plan holds at most 1001 rows.
inline constexpr int kMaxPlanRow = 1000;

struct FlightPlan {
  std::vector<WaypointRec> Waypoints = std::vector<WaypointRec>(kMaxPlanRow + 1);
  int16_t LastRow = 0;          // 0 no plan, 1 a direct plan
  int32_t SidRows = 0;
  int32_t StarRows = 0;
  int32_t CurrentRow = -1;      // selected row; insertions go behind it
  int32_t DepartureAirport = -1;
  int32_t DestinationAirport = -1;
  std::string DepartType;       // "Rwy" or "Gate"
  int16_t DepartNum = 0;
  std::string DepartID;
  float DepartLat = 0, DepartLon = 0, DepartHeading = 0;
  float DestLat = 0, DestLon = 0;
  int32_t CruiseFL = 0;         // hundreds of feet
  int16_t WestBound = 0;        // 0 below 180 degrees, -1 otherwise
  uint8_t RouteType = 0;        // 0 direct, 1 row by row, 2 airway plan
  int16_t NetKind = 0;          // 1 jet, 2 victor, 3 navaid, 0 none
  int32_t TotalDistance = 0;    // NM
  int32_t TotalTime = 0;        // minutes
};

// Minutes for a leg at a speed in knots; 0 when the speed is not positive, so
// that an aircraft record with missing values cannot stop the program.
float LegMinutes(double distance, int32_t speed);

// Minutes of the destination leg: the last 30 NM are flown at approach speed.
float DestinationLegMinutes(double distance, int32_t cruiseSpeed, int32_t approachSpeed);

// The plan's operations, over the state they change: the plan, its panel on
// the main window, the selected aircraft and the loaded database. Cheap to
// make for each command.
class PlanEditor {
public:
  PlanEditor(FlightPlan& plan, PlanPanel& panel, const AircraftRec& aircraft, const NavLookup& nav)
      : plan_(plan), panel_(panel), aircraft_(aircraft), nav_(nav) {}

  FlightPlan& Plan() { return plan_; }
  PlanPanel& Panel() { return panel_; }
  const AircraftRec& Aircraft() const { return aircraft_; }
  const NavLookup& Nav() const { return nav_; }

  // Puts record at row index + 1 (a negative index counts as 0), moving the
  // rows behind it up. False, with the plan unchanged, when the plan is full.
  // With refresh the table is rewritten from index, scrolled to the new row,
  // and the totals are recomputed; bulk builders pass false and refresh once.
  bool InsertWaypoint(int index, const WaypointRec& record, bool refresh);
  // Removes row index, moving the rows above it down. False for an index
  // outside 0..LastRow.
  bool DeleteWaypoint(int index, bool refresh);

  // Leg values of every row from `from` to LastRow, from the row before each;
  // map-click points are renumbered on the way.
  void ComputeLegs(int from);
  // The last row's leg: great-circle course, rhumb-line distance, the last
  // 30 NM at approach speed.
  void DestinationLeg();
  // Joins neighbouring rows with the same code less than 1 NM apart. Returns
  // the first row that changed, or -1.
  int MergeDuplicateRows();

  void RefreshRows(int from);
  void RefreshTotals();
  void ClearFlightPlan();
  void SetDirectPlan(int lastRow);
  // After a change of aircraft: every row's leg time at the new cruise speed.
  void RecomputeLegTimes();

  // Before a route is built: with no row selected, the enroute rows between
  // the SID and the STAR go and the build starts behind the last SID row;
  // with a row selected the build goes between it and the next. Returns the
  // row to build behind, or -1 without a plan.
  int PrepareRouteCreation();

  // The Delete key on CurrentRow, or on the marked range from rangeStart to
  // CurrentRow when rangeStart is 0 or more. SID and STAR rows are only
  // removed as a whole, through deleteSid and deleteStar.
  void DeleteKey(Ui& ui, int rangeStart, const std::function<void()>& deleteSid,
                 const std::function<void()>& deleteStar);
  void MenuDeleteEnrouteWPs(Ui& ui);

  // Enter in txtManWP: fills lstWP with every object of that identifier.
  // False, with a message, when no plan exists.
  bool ManualWaypointEnter(Ui& ui, std::string_view typed);
  // A line of lstWP chosen: inserted behind CurrentRow, or ahead of any STAR
  // when no row is selected.
  bool PickWaypoint(int listIndex);
  // The same insertion for a row built elsewhere (a map click).
  bool InsertBehindSelection(const WaypointRec& record);

  // lstDep for the departure airport: two lines per runway, then the parking.
  void FillDepartureList();
  // A line of lstDep chosen: the take-off point.
  bool ChooseDeparture(int listIndex);

private:
  void WriteRowLine(int row);
  void WriteTotalsDisplay();
  void RequestDraw();

  FlightPlan& plan_;
  PlanPanel& panel_;
  const AircraftRec& aircraft_;
  const NavLookup& nav_;
};

}  // namespace orv
