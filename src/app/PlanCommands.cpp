#include "app/PlanCommands.h"

#include "core/Runtime.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"

namespace orv {

int32_t FindAirportIndex(const NavDatabase& db, std::string_view icao) {
  return FindAirportByIcao(db.Airports, icao);
}

void SetPlanEnds(ProgramState& s, int32_t dep, int32_t dest) {
  FlightPlan& plan = s.Plan;
  plan.DepartureAirport = dep;
  plan.DestinationAirport = dest;
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  PlanEditor editor(plan, s.Panel, s.Aircraft.Current, nav);
  plan.Waypoints[0] = AirportRow(s.Db.Airports, dep);
  plan.Waypoints[1] = AirportRow(s.Db.Airports, dest);
  plan.DepartLat = plan.Waypoints[0].Lat;
  plan.DepartLon = plan.Waypoints[0].Lon;
  plan.DestLat = plan.Waypoints[1].Lat;
  plan.DestLon = plan.Waypoints[1].Lon;
  editor.SetDirectPlan(1);
}

bool CreatePlan(ProgramState& s, PlanKind kind, Ui& ui) {
  FlightPlan& plan = s.Plan;
  if (plan.DepartureAirport < 0 || plan.DestinationAirport < 0) {
    ui.Beep();  // nothing to build between
    return false;
  }
  if (plan.LastRow == 0) SetPlanEnds(s, plan.DepartureAirport, plan.DestinationAirport);
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  PlanEditor editor(plan, s.Panel, s.Aircraft.Current, nav);
  const int row = editor.PrepareRouteCreation();
  if (row < 0) return false;
  RouteSearch search;
  RouteBuilder builder(editor, s.Aircraft.Current, s.Db.Navaids, search, ui);
  if (kind == PlanKind::Navaid) {
    NavaidPlanOptions options;
    options.Vor = s.Layers.btnVor;
    options.Ndb = s.Layers.btnNdb;
    options.Intersection = s.Layers.btnInter;
    options.SecLen = s.Core.Config.SecLen;
    options.SecWidth = s.Core.Config.SecWidth;
    options.GreatCircle = s.Core.Config.Gc;
    return builder.CreateNavaidPlan(row, options);
  }
  return builder.CreateAirwayPlan(kind == PlanKind::HighAltitude ? 'J' : 'V', row);
}

void CheckControlZones(ProgramState& s, bool on) {
  s.Window.menuCheckControlzone = on;
  ClearRowViolations(s.Panel.Table, s.Plan, s.ZoneMarks);
  s.ZoneMarks = on ? CheckPlanZones(s.Plan, s.Db.Shapes, s.Panel.Table) : ZoneCheck{};
}

}  // namespace orv
