#include "app/PlanEditing.h"

#include <algorithm>
#include <cmath>

#include "app/PlanCommands.h"
#include "app/ProgramState.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "planning/NavLookupDb.h"

namespace orv {

namespace {

// The hover radius: an object counts when both its X and Y distance from the
// pointer are below it.
constexpr double kClickRadius = 100;
constexpr double kAirportRadius = 200;

bool Near(const ViewState& v, float lat, float lon, double x, double y, double radius) {
  return std::fabs(MapXFromLon(v, lon, lat) - x) < radius && std::fabs(MapYFromLat(v, lat) - y) < radius;
}

template <class Rec, class MakeRow>
void Collect(const std::vector<Rec>& records, const ViewState& v, double x, double y, std::vector<WaypointRec>& out,
             MakeRow makeRow) {
  for (std::size_t i = 0; i < records.size(); ++i)
    if (Near(v, records[i].Lat, records[i].Lon, x, y, kClickRadius)) out.push_back(makeRow(static_cast<int>(i)));
}

PlanEditor EditorOf(ProgramState& s, const NavLookup& nav) {
  return PlanEditor(s.Plan, s.Panel, s.Aircraft.Current, nav);
}

void HidePickList(ProgramState& s) {
  s.Panel.WpList.clear();
  s.Panel.WpCandidates.clear();
  s.Edit.PickListShown = false;
}

}  // namespace

std::vector<WaypointRec> ClickCandidates(const ProgramState& s, double x, double y) {
  std::vector<WaypointRec> out;
  const ViewState& v = s.View;
  const MapLayers& l = s.Layers;
  const NavaidTables& n = s.Db.Navaids;
  if (l.btnVor) Collect(n.Vors, v, x, y, out, [&](int i) { return VorRow(n, i); });
  if (l.btnNdb) Collect(n.Ndbs, v, x, y, out, [&](int i) { return NdbRow(n, i); });
  // Intersections are on the map with their own layer or with either net.
  if (l.btnInter || l.btnJet || l.btnVictor)
    Collect(n.Intersections, v, x, y, out, [&](int i) { return IntersectionRow(n, i); });
  if (l.btnFix) Collect(n.Fixes, v, x, y, out, [&](int i) { return FixRow(n, i); });
  if (l.btnUser)
    Collect(s.Db.UserWaypoints, v, x, y, out, [&](int i) { return UserWaypointRow(s.Db.UserWaypoints, i); });
  return out;
}

std::string CandidateLine(const WaypointRec& candidate, const WaypointRec& from) {
  const double course = GcCourse(from.Lat, from.Lon, candidate.Lat, candidate.Lon);
  return candidate.Kind.Str() + " " + candidate.Code.Str() + " (" + Format(course, "000") + "\xB0)";
}

ClickInsert InsertAtClick(ProgramState& s, double x, double y) {
  HidePickList(s);
  s.Edit.ManualMode = false;
  std::vector<WaypointRec> found = ClickCandidates(s, x, y);
  const int row = std::clamp(s.Plan.CurrentRow, 0, std::max<int>(s.Plan.LastRow, 0));
  const WaypointRec& from = s.Plan.Waypoints[static_cast<std::size_t>(row)];
  if (found.size() == 1) {
    NavLookupDb nav(s.Db, s.Core.ParkingNames);
    WaypointRec rec = found.front();
    rec.Origin = kOriginEnroute;
    EditorOf(s, nav).InsertBehindSelection(rec);
    return ClickInsert::Inserted;
  }
  if (found.empty()) {
    s.Edit.ManualMode = true;
    s.Edit.ManualLat = MapLatFromY(s.View, y);
    s.Edit.ManualLon = MapLonFromX(s.View, x, s.Edit.ManualLat);
    s.Edit.ManualCaption = kManualCaption;
    return ClickInsert::Manual;
  }
  for (const WaypointRec& c : found) s.Panel.WpList.push_back(CandidateLine(c, from));
  s.Panel.WpCandidates = std::move(found);
  s.Edit.PickListShown = true;
  return ClickInsert::PickList;
}

bool ManualWaypointEnter(ProgramState& s, Ui& ui, std::string_view typed) {
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  PlanEditor editor = EditorOf(s, nav);
  if (s.Edit.ManualMode) {
    // A position of its own: named by the user, or "Fix" and numbered by its
    // row when no name is given.
    const std::string name = UCase(Trim(typed));
    WaypointRec rec;
    rec.Kind.Assign("Fix");
    rec.Code.Assign(name.empty() ? std::string_view("Fix") : std::string_view(name));
    rec.Name.Assign(name.empty() ? std::string_view("Fix") : std::string_view(name));
    rec.Lat = s.Edit.ManualLat;
    rec.Lon = s.Edit.ManualLon;
    rec.MagVar = s.Db.MagVar.IsOpen() ? static_cast<float>(MagVarAt(s.Db.MagVar, rec.Lat, rec.Lon)) : 0.0f;
    rec.Origin = kOriginEnroute;
    s.Edit.ManualMode = false;
    s.Edit.ManualCaption.clear();
    return editor.InsertBehindSelection(rec);
  }
  if (!editor.ManualWaypointEnter(ui, typed)) return false;
  if (s.Panel.WpList.empty()) {
    ui.MsgBox("No VOR, NDB, fix, intersection or user waypoint with the identifier " + UCase(Trim(typed)) +
                  " was found!",
              MsgStyle::Exclamation, kAppTitle);
    s.Edit.PickListShown = false;
    return false;
  }
  s.Edit.PickListShown = true;
  return true;
}

bool PickListChoose(ProgramState& s, int index) {
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  const bool inserted = EditorOf(s, nav).PickWaypoint(index);
  if (inserted) s.Edit.PickListShown = false;
  return inserted;
}

void ResetPlanSelection(ProgramState& s) {
  HidePickList(s);
  s.Edit.ManualMode = false;
  s.Edit.ManualCaption.clear();
  s.Edit.RangeStart = -1;
  s.Plan.CurrentRow = -1;
}

bool PickAirportAt(ProgramState& s, double x, double y) {
  const auto& airports = s.Db.Airports.Airports;
  int32_t hit = -1;
  for (std::size_t i = 0; i < airports.size() && hit < 0; ++i)
    if (IsAirportSlotUsed(airports[i]) && Near(s.View, airports[i].Lat, airports[i].Lon, x, y, kAirportRadius))
      hit = static_cast<int32_t>(i);
  if (hit < 0) return false;
  if (s.Edit.Pick == AirportPick::Departure) {
    s.Plan.DepartureAirport = hit;
    s.Edit.Pick = AirportPick::Destination;
    return true;
  }
  SetPlanEnds(s, s.Plan.DepartureAirport, hit);
  s.Edit.Pick = AirportPick::None;
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  EditorOf(s, nav).FillDepartureList();
  return true;
}

}  // namespace orv
