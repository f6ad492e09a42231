// A small hand-made database around 50N 8E for the render pass tests and the
// golden pictures: two airports (one with a runway, an ILS, parking, taxiways
// and ground polygons), two VORs, an NDB, three intersections of which two
// form a victor airway and a jet airway, a fix, a user waypoint, a marker, an
// MSA cell, a control zone and a FIR, a land polygon with a lake, a river.
#pragma once

#include <algorithm>
#include <cstring>
#include <initializer_list>

#include "database/NavDatabase.h"
#include "planning/FlightPlan.h"

namespace orv::test {

inline void AddShape(std::vector<WorldShapeRec>& shapes, std::vector<ShapePoint>& points, uint8_t kind,
                     std::initializer_list<ShapePoint> pts) {
  WorldShapeRec s;
  s.Index = static_cast<int32_t>(shapes.size());
  s.Kind = kind;
  s.First = static_cast<uint32_t>(points.size());
  s.Count = static_cast<uint32_t>(pts.size());
  s.PointCount = static_cast<int32_t>(pts.size()) - 1;
  s.North = -90, s.South = 90, s.East = -180, s.West = 180;
  for (const ShapePoint& p : pts) {
    points.push_back(p);
    s.North = std::max(s.North, p.Lat), s.South = std::min(s.South, p.Lat);
    s.East = std::max(s.East, p.Lon), s.West = std::min(s.West, p.Lon);
  }
  shapes.push_back(s);
}

inline void AddAirspaceShape(AirspaceTables& t, const char* cls, const char* ident,
                             std::initializer_list<ShapePoint> pts) {
  AirspaceRec a;
  a.Index = static_cast<int16_t>(t.Airspaces.size());
  a.Class.Assign(cls);
  a.Ident.Assign(ident);
  a.First = static_cast<uint32_t>(t.AirspacePoints.size());
  a.PointCount = static_cast<int16_t>(pts.size());
  a.North = -90, a.South = 90, a.East = -180, a.West = 180;
  for (const ShapePoint& p : pts) {
    t.AirspacePoints.push_back(p);
    a.North = std::max(a.North, p.Lat), a.South = std::min(a.South, p.Lat);
    a.East = std::max(a.East, p.Lon), a.West = std::min(a.West, p.Lon);
  }
  t.Airspaces.push_back(a);
}

inline void BuildSmallWorld(NavDatabase& db) {
  // Airports.
  db.Airports.Airports.resize(3);
  AirportRec& ap = db.Airports.Airports[0];
  ap.Icao.Assign("EDXX");
  ap.Name.Assign("Main Field");
  ap.Lat = 50.0f, ap.Lon = 8.0f;
  RunwayRec rwy;
  rwy.LowEnd.Assign("07");
  rwy.HighEnd.Assign("25");
  rwy.Lat = 50.0f, rwy.Lon = 8.0f, rwy.TrueHeading = 70.0f;
  rwy.LengthFeet = 10000, rwy.WidthFeet = 150;
  rwy.LowIls.Assign("IXX");
  ap.Runways.push_back(rwy);
  IlsRec ils;
  ils.Ident.Assign("IXX");
  ils.Name.Assign("MAIN 07");
  ils.Runway.Assign("07");
  ils.Values[0] = 110.1f, ils.Values[1] = 70.0f, ils.Values[2] = 3.0f;
  ap.Ils.push_back(ils);
  ParkingRec park;
  park.Ident.Assign("GATE");
  park.Lat = 50.004f, park.Lon = 7.995f, park.Number = 1, park.Value = 90;
  ap.Parking.push_back(park);
  LinkIlsToRunways(ap);
  AirportRec& ap2 = db.Airports.Airports[1];
  ap2.Icao.Assign("EDYY");
  ap2.Name.Assign("Hill Strip");
  ap2.Lat = 50.3f, ap2.Lon = 8.4f;

  // Navaids.
  VorRec vor;
  vor.Ident.Assign("FFM");
  vor.Name.Assign("FRANKFURT");
  vor.Lat = 50.05f, vor.Lon = 8.3f, vor.Frequency = 114.2f, vor.Value = 20, vor.TypeCode = 4, vor.MagVar = 2.5f;
  db.Navaids.Vors.push_back(vor);
  vor.Ident.Assign("TAU");
  vor.Name.Assign("TAUNUS");
  vor.Lat = 49.8f, vor.Lon = 7.6f, vor.Frequency = 116.7f, vor.Value = 40, vor.TypeCode = 2;
  db.Navaids.Vors.push_back(vor);
  NdbRec ndb;
  ndb.Ident.Assign("FW");
  ndb.Name.Assign("FRANKFURT WEST");
  ndb.Lat = 49.9f, ndb.Lon = 8.2f, ndb.Frequency = 350.0f;
  db.Navaids.Ndbs.push_back(ndb);

  NavaidTables& n = db.Navaids;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  auto inter = [&](int32_t index, const char* ident, float lat, float lon) {
    IntersectionRec r;
    r.Index = index;
    r.Ident.Assign(ident);
    r.Lat = lat, r.Lon = lon;
    PlaceIntersection(n, r, {}, {});
  };
  inter(1, "ALPHA", 50.2f, 7.9f);
  inter(2, "BRAVO", 50.4f, 8.6f);
  inter(3, "CHARL", 49.7f, 8.5f);
  inter(4, "DELTA", 49.6f, 7.8f);
  AirwayRec awy;
  awy.Name.Assign("V1");
  awy.FromIndex = 1, awy.ToIndex = 2;
  n.VictorAirways.push_back(awy);
  awy.Name.Assign("J9");
  awy.FromIndex = 3, awy.ToIndex = 4;
  n.JetAirways.push_back(awy);
  FixRec fix;
  fix.Ident.Assign("FIXAA");
  fix.Lat = 50.1f, fix.Lon = 7.8f;
  n.Fixes.push_back(fix);
  UserWaypointRec uwp;
  uwp.Ident.Assign("MYWPT");
  uwp.Lat = 49.85f, uwp.Lon = 8.45f;
  db.UserWaypoints.push_back(uwp);

  // Ground layout around the airport.
  AirspaceTables& t = db.Shapes;
  MarkerRec m;
  m.Kind.Assign("OM");
  m.Lat = 49.95f, m.Lon = 7.85f;
  t.Markers.push_back(m);
  TaxiRec taxi;
  taxi.Lat1 = 50.002f, taxi.Lon1 = 7.99f, taxi.Lat2 = 50.002f, taxi.Lon2 = 8.01f;
  taxi.Name.Assign("A");
  t.TaxiSegments.push_back(taxi);
  auto poly = [&](char kind, float lat, float lon) {
    GroundPolyRec g;
    g.Kind.Assign(std::string_view(&kind, 1));
    g.Lat = lat, g.Lon = lon;
    t.GroundPolygons.push_back(g);
  };
  poly('B', 50.003f, 7.996f);
  poly('L', 50.003f, 8.004f);
  poly('L', 50.006f, 8.004f);
  poly('L', 50.006f, 7.996f);
  poly('E', 50.003f, 7.996f);

  MsaRec msa;
  const float msaValues[5] = {50.5f, 7.5f, 49.5f, 8.5f, 4300.0f};
  for (int i = 0; i < 5; ++i) std::memcpy(&msa.Values[static_cast<std::size_t>(i)], &msaValues[i], 4);
  msa.Label.Assign("M1");
  t.MsaCells.push_back(msa);

  AddAirspaceShape(t, "CTR", "EDXX", {{50.1f, 7.85f}, {50.1f, 8.15f}, {49.9f, 8.15f}, {49.9f, 7.85f}, {50.1f, 7.85f}});
  AddAirspaceShape(t, "FIR", "EDGG", {{51.0f, 7.0f}, {51.0f, 9.0f}, {49.0f, 9.0f}, {49.0f, 7.0f}, {51.0f, 7.0f}});

  AddShape(t.WorldPolygons, t.WorldPolygonPoints, 1,
           {{54.0f, 2.0f}, {54.0f, 14.0f}, {46.0f, 14.0f}, {46.0f, 2.0f}, {54.0f, 2.0f}});
  AddShape(t.WorldPolygons, t.WorldPolygonPoints, 2,
           {{50.6f, 7.3f}, {50.6f, 7.5f}, {50.45f, 7.5f}, {50.45f, 7.3f}, {50.6f, 7.3f}});
  AddShape(t.WorldLines, t.WorldLinePoints, 2, {{49.5f, 7.0f}, {49.9f, 7.7f}, {50.0f, 8.6f}, {50.2f, 9.2f}});
}

// A plan EDXX - FFM - EDYY.
inline void BuildSmallPlan(FlightPlan& plan) {
  auto row = [&](int i, const char* kind, const char* code, float lat, float lon) {
    WaypointRec& w = plan.Waypoints[static_cast<std::size_t>(i)];
    w.Kind.Assign(kind);
    w.Code.Assign(code);
    w.Lat = lat, w.Lon = lon;
  };
  row(0, "", "EDXX", 50.0f, 8.0f);
  row(1, "VOR", "FFM", 50.05f, 8.3f);
  row(2, "", "EDYY", 50.3f, 8.4f);
  plan.LastRow = 2;
}

}  // namespace orv::test
