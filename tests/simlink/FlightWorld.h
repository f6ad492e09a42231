// A small world to fly in: Frankfurt and Munich with their main runways and a
// jet airway between them, and two Fiji fields on either side of the date
// line joined by another. Plans are built by the program's own route builder.
#pragma once

#include <memory>
#include <string_view>

#include "core/AppState.h"
#include "core/Geodesy.h"
#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"
#include "planning/WPTable.h"

namespace orv::test {

inline AirportRec FlightAirport(std::string_view icao, std::string_view name, float lat, float lon, int elevation,
                                float runwayHeading) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(name);
  a.Lat = lat;
  a.Lon = lon;
  a.Elevation = elevation;
  RunwayRec r;
  r.LowEnd.Assign("07");
  r.HighEnd.Assign("25");
  r.Lat = lat;
  r.Lon = lon;
  r.TrueHeading = runwayHeading;
  r.LengthFeet = 12000;
  a.Runways = {r};
  return a;
}

inline void BuildFlightWorld(NavDatabase& db) {
  db.Airports.Airports = {FlightAirport("EDDF", "Frankfurt Main", 50.0333f, 8.5706f, 364, 69.9f),
                          FlightAirport("EDDM", "Muenchen", 48.3538f, 11.7861f, 1487, 82.5f),
                          FlightAirport("NFNL", "Labasa", -16.466f, 179.340f, 44, 80.0f),
                          FlightAirport("NFNK", "Lakeba", -18.199f, -178.817f, 280, 120.0f)};
  NavaidTables& n = db.Navaids;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  struct Node {
    int Index;
    const char* Ident;
    float Lat, Lon;
  };
  const Node nodes[] = {{1, "ASKIK", 49.80f, 9.40f},   {2, "ROLIS", 49.25f, 10.35f}, {3, "BURAM", 48.75f, 11.05f},
                        {4, "DLATA", -16.90f, 179.90f}, {5, "DLBRA", -17.60f, -179.30f}};
  auto link = [&](int from, int to, const char* airway) {
    AirwayLinkRec l;
    l.Target = to;
    l.AirwayName.Assign(airway);
    const Node& a = nodes[from - 1];
    const Node& b = nodes[to - 1];
    l.Distance = static_cast<float>(GcDistance(a.Lat, a.Lon, b.Lat, b.Lon));
    l.Mea2.Assign("FL450");
    return l;
  };
  const std::vector<std::vector<AirwayLinkRec>> high = {
      {link(1, 2, "UN850")}, {link(2, 1, "UN850"), link(2, 3, "UN850")}, {link(3, 2, "UN850")},
      {link(4, 5, "UA501")}, {link(5, 4, "UA501")}};
  for (const Node& node : nodes) {
    IntersectionRec rec;
    rec.Index = node.Index;
    rec.Ident.Assign(node.Ident);
    rec.Name.Assign(node.Ident);
    rec.Lat = node.Lat;
    rec.Lon = node.Lon;
    rec.Flag1.Assign("J");
    PlaceIntersection(n, rec, {}, high[static_cast<size_t>(node.Index - 1)]);
  }
  AirwayRec un850{FixedStr<8>("UN850"), 1, 3, 0, FixedStr<5>("n/a"), FixedStr<5>("FL450")};
  AirwayRec ua501{FixedStr<8>("UA501"), 4, 5, 0, FixedStr<5>("n/a"), FixedStr<5>("FL450")};
  n.JetAirways = {un850, ua501};
}

inline AircraftRec FlightJet() {
  AircraftRec a;
  a.AircraftName = "Test Jet";
  a.MaxFuel = 20000;
  a.Ceiling = 410;
  a.MaxWeight = 70000;
  a.EmptyWeight = 40000;
  a.LoadWeight = 15000;
  a.ClimbRate = 2500;
  a.ClimbSpeed = 280;
  a.DescentRate = 2200;
  a.DescentSpeed = 290;
  a.CruiseSpeed = 450;
  a.CruiseLevel = 330;
  a.ApproachSpeed = 140;
  a.MaxRange = 2500;
  return a;
}

// A high altitude plan between two airports of the world; false when the
// route builder found none.
inline bool BuildFlightPlan(NavDatabase& db, std::string_view from, std::string_view to, const AircraftRec& jet,
                            FlightPlan& plan, PlanPanel& panel) {
  NavLookupDb nav(db);
  const int dep = nav.FindAirport(from), dest = nav.FindAirport(to);
  if (dep < 0 || dest < 0) return false;
  PlanEditor editor(plan, panel, jet, nav);
  plan.Waypoints[0] = AirportRow(db.Airports, dep);
  plan.Waypoints[1] = AirportRow(db.Airports, dest);
  plan.DepartureAirport = dep;
  plan.DestinationAirport = dest;
  plan.DepartLat = plan.Waypoints[0].Lat;
  plan.DepartLon = plan.Waypoints[0].Lon;
  plan.DestLat = plan.Waypoints[1].Lat;
  plan.DestLon = plan.Waypoints[1].Lon;
  editor.SetDirectPlan(1);
  const int row = editor.PrepareRouteCreation();
  SilentUi ui;
  RouteSearch search;
  RouteBuilder builder(editor, jet, db.Navaids, search, ui);
  return builder.CreateAirwayPlan('J', row);
}

}  // namespace orv::test
