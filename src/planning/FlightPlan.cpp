#include "planning/FlightPlan.h"

#include <algorithm>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "core/Geodesy.h"
#include "core/TextFormats.h"
#include "planning/NavLookup.h"
#include "planning/Profile.h"
#include "planning/WPTable.h"

namespace orv {

namespace {

// The last leg is flown at approach speed for this many miles.
constexpr double kApproachLegNm = 30;

// A map-click point carries "Fix " and its row number as code and name. The
// codes are upper-cased by the duplicate merge, so the test ignores case.
bool IsMapClickPoint(const WaypointRec& w) { return UCase(Left(w.Code.View(), 3)) == "FIX"; }

bool ShowsLeg(const WaypointRec& w) {
  return w.Origin == kOriginEnroute || w.Origin == kOriginStar || w.Origin == kOriginSid;
}

std::string_view ListPrefix(std::string_view kind) {
  if (kind == "VOR") return "Vor ";
  if (kind == "NDB") return "Ndb ";
  if (kind == "Fix") return "Fix ";
  if (kind == "Int") return "Int ";
  return "Uwp ";
}

}  // namespace

float LegMinutes(double distance, int32_t speed) {
  if (speed <= 0) return 0;
  return CSng(distance / speed * 60);
}

float DestinationLegMinutes(double distance, int32_t cruiseSpeed, int32_t approachSpeed) {
  if (distance <= kApproachLegNm) return LegMinutes(distance, approachSpeed);
  double cruise = cruiseSpeed > 0 ? (distance - kApproachLegNm) / cruiseSpeed * 60 : 0;
  double approach = approachSpeed > 0 ? kApproachLegNm / approachSpeed * 60 : 0;
  return CSng(cruise + approach);
}

// ---------------------------------------------------------------- rows

bool PlanEditor::InsertWaypoint(int index, const WaypointRec& record, bool refresh) {
  if (index < 0) index = 0;
  // A row behind the destination would leave a gap; it becomes the new last row.
  if (index > plan_.LastRow) index = plan_.LastRow;
  if (plan_.LastRow >= kMaxPlanRow) return false;
  auto& w = plan_.Waypoints;
  for (int r = plan_.LastRow; r > index; --r) w[static_cast<size_t>(r) + 1] = w[static_cast<size_t>(r)];
  w[static_cast<size_t>(index) + 1] = record;
  ++plan_.LastRow;
  plan_.RouteType = 1;
  ComputeLegs(index + 1);
  if (refresh) {
    RefreshRows(index);
    panel_.Table.TopRow = index + 2;
    RefreshTotals();
  }
  return true;
}

bool PlanEditor::DeleteWaypoint(int index, bool refresh) {
  if (index < 0 || index > plan_.LastRow) return false;
  auto& w = plan_.Waypoints;
  if (index < plan_.LastRow) {
    // The row that moves up is no longer reached on the deleted row's airway.
    WaypointRec& next = w[static_cast<size_t>(index) + 1];
    if (!(w[static_cast<size_t>(index)].Airway == next.Airway)) next.Airway = FixedStr<10>();
  }
  for (int r = index; r < plan_.LastRow; ++r) w[static_cast<size_t>(r)] = w[static_cast<size_t>(r) + 1];
  w[static_cast<size_t>(plan_.LastRow)] = WaypointRec();
  if (plan_.LastRow > 0) --plan_.LastRow;
  plan_.RouteType = 1;
  ComputeLegs(index);
  if (refresh) {
    RefreshRows(index);
    RefreshTotals();
  }
  return true;
}

void PlanEditor::ComputeLegs(int from) {
  auto& w = plan_.Waypoints;
  for (int r = std::max(from, 1); r <= plan_.LastRow; ++r) {
    WaypointRec& row = w[static_cast<size_t>(r)];
    const WaypointRec& prev = w[static_cast<size_t>(r) - 1];
    row.Row = static_cast<int16_t>(r);
    if (IsMapClickPoint(row)) {
      std::string text = "Fix " + Format(r, "00");
      row.Code.Assign(text);
      row.Name.Assign(text);
    }
    row.LegDistance = CSng(GcDistance(prev.Lat, prev.Lon, row.Lat, row.Lon));
    row.Course = CSng(GcCourse(prev.Lat, prev.Lon, row.Lat, row.Lon));
    row.LegTime = LegMinutes(row.LegDistance, aircraft_.CruiseSpeed);
  }
}

void PlanEditor::DestinationLeg() {
  if (plan_.LastRow < 1) return;
  WaypointRec& last = plan_.Waypoints[static_cast<size_t>(plan_.LastRow)];
  const WaypointRec& prev = plan_.Waypoints[static_cast<size_t>(plan_.LastRow) - 1];
  // Course by great circle but distance by rhumb line: kept as the program
  // has always shown the last leg.
  last.Course = CSng(GcCourse(prev.Lat, prev.Lon, last.Lat, last.Lon));
  last.LegDistance = CSng(RhumbDistance(prev.Lat, prev.Lon, last.Lat, last.Lon));
  last.LegTime = DestinationLegMinutes(last.LegDistance, aircraft_.CruiseSpeed, aircraft_.ApproachSpeed);
}

int PlanEditor::MergeDuplicateRows() {
  auto& w = plan_.Waypoints;
  int first = -1;
  int i = 1;
  while (i <= plan_.LastRow - 2) {
    WaypointRec& a = w[static_cast<size_t>(i)];
    WaypointRec& b = w[static_cast<size_t>(i) + 1];
    a.Code.Assign(UCase(a.Code.View()));
    b.Code.Assign(UCase(b.Code.View()));
    // An airway expansion inserts its end node (an intersection, with its net
    // type) ahead of the row it leads to; that node gives its airway to the
    // row and goes. Rows the user put twice on purpose have no net type and
    // stay, except ahead of a STAR row, which always absorbs its twin.
    bool joins = b.Origin == kOriginStar || !a.NetType.Trimmed().empty();
    if (joins && a.Code.Trimmed() == b.Code.Trimmed() && RhumbDistance(a.Lat, a.Lon, b.Lat, b.Lon) <= 1) {
      b.Airway = a.Airway;
      b.MinAltitude = a.MinAltitude;
      b.MaxAltitude = a.MaxAltitude;
      for (int r = i; r < plan_.LastRow; ++r) w[static_cast<size_t>(r)] = w[static_cast<size_t>(r) + 1];
      w[static_cast<size_t>(plan_.LastRow)] = WaypointRec();
      --plan_.LastRow;
      ComputeLegs(i);
      if (first < 0) first = i;
      continue;
    }
    ++i;
  }
  return first;
}

// ---------------------------------------------------------------- table and totals

void PlanEditor::WriteRowLine(int row) {
  const auto& w = plan_.Waypoints;
  const WaypointRec& rec = w[static_cast<size_t>(row)];
  bool last = row == plan_.LastRow && row >= 1;
  // The destination shows its leg with the variation of the row before it.
  float magVar = last ? w[static_cast<size_t>(row) - 1].MagVar : rec.MagVar;
  panel_.Table.WriteRow(row, rec, row >= 1 && (last || ShowsLeg(rec)), magVar);
}

void PlanEditor::RefreshRows(int from) {
  int merged = MergeDuplicateRows();
  if (merged >= 0 && merged < from) from = merged;
  from = std::max(from, 0);
  panel_.Table.SetPlanRows(plan_.LastRow + 1);
  for (int r = from; r <= plan_.LastRow; ++r) WriteRowLine(r);
}

void PlanEditor::RefreshTotals() {
  panel_.Table.SetPlanRows(plan_.LastRow + 1);
  if (plan_.LastRow >= 1) {
    DestinationLeg();
    WriteRowLine(plan_.LastRow);
  }
  // Both sums are rounded after every row, so that the ETA column and the
  // totals agree with what the pilot adds up line by line.
  int32_t minutes = 0;
  int32_t distance = 0;
  for (int r = 0; r <= plan_.LastRow; ++r) {
    const WaypointRec& row = plan_.Waypoints[static_cast<size_t>(r)];
    minutes = CLng(static_cast<double>(minutes) + row.LegTime);
    distance = CLng(static_cast<double>(distance) + row.LegDistance);
    panel_.Table.WriteEta(r, minutes);
  }
  plan_.TotalTime = minutes;
  plan_.TotalDistance = distance;

  if (plan_.LastRow >= 1) {
    double depElev = nav_.AirportElevation(plan_.DepartureAirport);
    double destElev = nav_.AirportElevation(plan_.DestinationAirport);
    int32_t altitude = ComputeCruiseAltitude(aircraft_, depElev, destElev, plan_.TotalDistance);
    const WaypointRec& dep = plan_.Waypoints[0];
    const WaypointRec& dest = plan_.Waypoints[static_cast<size_t>(plan_.LastRow)];
    ApplySemicircularRule(plan_, GcCourse(dep.Lat, dep.Lon, dest.Lat, dest.Lon), altitude);
  }
  WriteTotalsDisplay();
  RequestDraw();
}

void PlanEditor::WriteTotalsDisplay() {
  panel_.TotalTimeText = MinutesToHours(plan_.TotalTime);
  panel_.TotalDistanceText = Format(plan_.TotalDistance, "0000");
  panel_.LevelBox = Format(plan_.CruiseFL, "000");
}

void PlanEditor::RequestDraw() {
  ++panel_.DrawCount;
  if (panel_.DrawMap) panel_.DrawMap();
}

void PlanEditor::ClearFlightPlan() {
  // The rows' storage is kept; everything else starts afresh.
  std::vector<WaypointRec> rows = std::move(plan_.Waypoints);
  std::fill(rows.begin(), rows.end(), WaypointRec());
  plan_ = FlightPlan();
  plan_.Waypoints = std::move(rows);
  plan_.CurrentRow = -1;
  panel_.Table.Clear();
  panel_.TotalTimeText = "00:00";
  panel_.TotalDistanceText = "0000";
  panel_.LevelBox = "000";
}

void PlanEditor::SetDirectPlan(int lastRow) {
  plan_.LastRow = static_cast<int16_t>(std::clamp(lastRow, 0, kMaxPlanRow));
  plan_.RouteType = 0;
  panel_.Table.SetPlanRows(plan_.LastRow + 1);
  for (int r = 0; r < plan_.LastRow; ++r) WriteRowLine(r);
  RefreshTotals();
}

void PlanEditor::RecomputeLegTimes() {
  for (int r = 1; r <= plan_.LastRow; ++r) {
    WaypointRec& row = plan_.Waypoints[static_cast<size_t>(r)];
    row.LegTime = LegMinutes(row.LegDistance, aircraft_.CruiseSpeed);
  }
  RefreshTotals();
}

// ---------------------------------------------------------------- commands

int PlanEditor::PrepareRouteCreation() {
  if (plan_.LastRow < 1) return -1;
  if (plan_.CurrentRow < 0) {
    int keepAhead = std::clamp(plan_.SidRows, 0, plan_.LastRow - 1);
    int removed = plan_.LastRow - plan_.StarRows - 1 - keepAhead;
    for (int k = 0; k < removed; ++k) DeleteWaypoint(keepAhead + 1, false);
    plan_.CurrentRow = keepAhead;
    if (removed > 0) {
      RefreshRows(keepAhead);
      RefreshTotals();
    }
  }
  return std::min(plan_.CurrentRow, plan_.LastRow - 1);
}

void PlanEditor::DeleteKey(Ui& ui, int rangeStart, const std::function<void()>& deleteSid,
                           const std::function<void()>& deleteStar) {
  // SID and STAR rows belong to their procedure; only the whole may go.
  auto refuseProcedureRow = [&](const WaypointRec& row) {
    if (row.Origin == kOriginStar) {
      if (ui.AskYesNo("You cannot delete a single waypoint of a STAR!\r\n      Do you wish to delete the entire STAR?") &&
          deleteStar)
        deleteStar();
      return true;
    }
    if (row.Origin == kOriginSid) {
      if (ui.AskYesNo("You cannot delete a single waypoint of a SID!\r\n      Do you wish to delete the entire SID?") &&
          deleteSid)
        deleteSid();
      return true;
    }
    return false;
  };

  int current = plan_.CurrentRow;
  if (rangeStart >= 0 && rangeStart != current) {
    // The airports at both ends are never part of a deletion.
    int from = std::max(std::min(rangeStart, current), 1);
    int to = std::min(std::max(rangeStart, current), plan_.LastRow - 1);
    if (from > to) return;
    for (int k = from; k <= to; ++k) {
      if (from > plan_.LastRow - 1) break;
      if (refuseProcedureRow(plan_.Waypoints[static_cast<size_t>(from)])) break;
      DeleteWaypoint(from, false);
    }
    RefreshRows(from - 1);
    RefreshTotals();
    return;
  }

  if (current > plan_.LastRow - 1 || current < 1) return;
  if (refuseProcedureRow(plan_.Waypoints[static_cast<size_t>(current)])) return;
  DeleteWaypoint(current, true);
}

void PlanEditor::MenuDeleteEnrouteWPs(Ui& ui) {
  if (!ui.AskYesNo("Are you sure you want to delete all enroute waypoints?")) return;
  while (plan_.LastRow > 1) DeleteWaypoint(1, false);
  plan_.SidRows = 0;
  plan_.StarRows = 0;
  plan_.CurrentRow = -1;
  panel_.RouteLabel.clear();
  if (plan_.LastRow >= 1) SetDirectPlan(plan_.LastRow);
}

bool PlanEditor::ManualWaypointEnter(Ui& ui, std::string_view typed) {
  if (plan_.LastRow < 1) {
    ui.MsgBox("Select the departure and destination airports first by pressing the button <Select Airport>!");
    return false;
  }
  panel_.WpList.clear();
  panel_.WpCandidates.clear();
  nav_.FindByIdent(UCase(Trim(typed)), panel_.WpCandidates);
  panel_.WpList.reserve(panel_.WpCandidates.size());
  for (const WaypointRec& c : panel_.WpCandidates)
    panel_.WpList.push_back(std::string(ListPrefix(c.Kind.Trimmed())) + c.Code.Str() + "(" + Format(c.Lat, "0.00") +
                            "\xB0/" + Format(c.Lon, "0.00") + "\xB0)");
  return true;
}

bool PlanEditor::PickWaypoint(int listIndex) {
  if (listIndex < 0 || listIndex >= static_cast<int>(panel_.WpCandidates.size())) return false;
  WaypointRec rec = panel_.WpCandidates[static_cast<size_t>(listIndex)];
  rec.Origin = kOriginEnroute;
  panel_.WpList.clear();
  panel_.WpCandidates.clear();
  return InsertBehindSelection(rec);
}

bool PlanEditor::InsertBehindSelection(const WaypointRec& record) {
  if (plan_.LastRow < 1) return false;
  bool selected = plan_.CurrentRow >= 0;
  // Without a selection the row goes ahead of any STAR; behind the
  // destination it would take the airport's place, so it goes ahead of it.
  int index = selected ? plan_.CurrentRow : plan_.LastRow - plan_.StarRows - 1;
  index = std::clamp(index, 0, plan_.LastRow - 1);
  if (!InsertWaypoint(index, record, true)) return false;
  // The next pick follows this one.
  if (selected) plan_.CurrentRow = index + 1;
  return true;
}

// ---------------------------------------------------------------- departure

void PlanEditor::FillDepartureList() {
  panel_.DepList.clear();
  panel_.DepListIndex = -1;
  int ap = plan_.DepartureAirport;
  if (ap < 0 || ap >= nav_.AirportCount()) return;
  int runways = nav_.RunwayCount(ap);
  int parking = nav_.ParkingCount(ap);
  panel_.DepList.reserve(static_cast<size_t>(2 * std::max(runways, 0) + std::max(parking, 0)));
  for (int r = 0; r < runways; ++r) {
    RunwayInfo rwy = nav_.Runway(ap, r);
    std::string length = "  (" + Format(rwy.LengthFeet, "00000") + "ft)";
    panel_.DepList.push_back({rwy.LowEndText + length, r});
    panel_.DepList.push_back({rwy.HighEndText + length, r});
  }
  for (int p = 0; p < parking; ++p) {
    ParkingInfo park = nav_.Parking(ap, p);
    panel_.DepList.push_back({park.Name + " " + std::to_string(park.Number), 100 + p});
  }
}

bool PlanEditor::ChooseDeparture(int listIndex) {
  if (listIndex < 0 || listIndex >= static_cast<int>(panel_.DepList.size())) return false;
  const ListLine& line = panel_.DepList[static_cast<size_t>(listIndex)];
  int ap = plan_.DepartureAirport;
  if (line.ItemData >= 100) {
    int p = line.ItemData - 100;
    if (p >= nav_.ParkingCount(ap)) return false;
    ParkingInfo park = nav_.Parking(ap, p);
    plan_.DepartType = "Gate";
    plan_.DepartNum = static_cast<int16_t>(p);
    plan_.DepartLat = park.Lat;
    plan_.DepartLon = park.Lon;
  } else {
    if (line.ItemData < 0 || line.ItemData >= nav_.RunwayCount(ap)) return false;
    RunwayInfo rwy = nav_.Runway(ap, line.ItemData);
    plan_.DepartType = "Rwy";
    // Half the list index, rounded half to even: the reciprocal of runway 1
    // (index 3) gives 2, as the plan files have always stored it.
    plan_.DepartNum = CInt(listIndex / 2.0);
    float heading = rwy.TrueHeading;
    if (listIndex % 2 == 1) {
      heading += 180;
      if (heading > 360) heading -= 360;
    }
    plan_.DepartHeading = heading;
    plan_.DepartLat = rwy.Lat;
    plan_.DepartLon = rwy.Lon;
  }
  plan_.DepartID = line.Text;
  panel_.DepListIndex = listIndex;
  return true;
}

}  // namespace orv
