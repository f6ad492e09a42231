// A plan between Frankfurt and Heathrow with a row of every kind, on a fake
// database that knows the same objects: the common ground of the plan file,
// export and segment tests. Positions are quarter degrees, so that the
// coordinate texts are exact.
#pragma once

#include <gtest/gtest.h>

#include "planning/Aircraft.h"
#include "planning/FakeNav.h"
#include "planning/FlightPlan.h"
#include "planning/PlanFile.h"
#include "planning/WPTable.h"
#include "support/ScriptedUi.h"

namespace orv::test {

inline WaypointRec PlanRow(std::string_view kind, std::string_view code, std::string_view name, float lat, float lon,
                           float freq, float course, float magVar, uint8_t origin, int32_t dbIndex,
                           std::string_view airway = {}, int32_t minAlt = 0, int32_t maxAlt = 0) {
  WaypointRec w;
  w.Kind.Assign(kind);
  w.Code.Assign(code);
  w.Name.Assign(name);
  w.Lat = lat;
  w.Lon = lon;
  w.Frequency = freq;
  w.Course = course;
  w.MagVar = magVar;
  w.Origin = origin;
  w.DbIndex = dbIndex;
  w.Airway.Assign(airway);
  w.MinAltitude = minAlt;
  w.MaxAltitude = maxAlt;
  return w;
}

class PlanFilesTest : public ::testing::Test {
protected:
  PlanFilesTest() {
    ac.CruiseSpeed = 450;
    ac.ApproachSpeed = 150;
    ac.CruiseLevel = 350;
    FakeAirport eddf{"EDDF", "FRANKFURT MAIN", 50.5f, 8.25f, 364, {}, {}, false};
    eddf.Runways.push_back({"Rwy 07C", "Rwy 25C", 50.25f, 8.5f, 70, 13123});
    eddf.Runways.push_back({"Rwy 18", "Rwy 36", 50.0f, 8.5f, 180, 13123});
    eddf.Parking.push_back({"Gate A", 12, 50.75f, 8.0f});
    FakeAirport egll{"EGLL", "LONDON HEATHROW", 51.5f, -0.5f, 83, {}, {}, false};
    nav.Airports = {eddf, egll};
    rows = {
        PlanRow("VOR", "FFM", "FRANKFURT", 50.25f, 8.75f, 114.2f, 45.5f, -1.25f, kOriginSid, 7),
        PlanRow("NDB", "DW", "DUESSELDORF", 51.25f, 6.75f, 325, 300.25f, -0.5f, kOriginEnroute, 3, "UL607", 24500,
                46000),
        PlanRow("Int", "TOBAK", "TOBAK", 51, 3, 0, 260, 0, kOriginEnroute, 120, "UL607", -1, 0),
        PlanRow("Fix", "Fix 04", "Fix 04", 51.5f, 1, 0, 290, 0, kOriginEnroute, 0),
        PlanRow("VOR", "BIG", "BIGGIN", 51.75f, 0.5f, 115.1f, 280, 0.25f, kOriginStar, 9),
    };
    for (int k : {0, 1, 2, 4}) {
      WaypointRec o = rows[static_cast<std::size_t>(k)];
      o.Origin = 0;
      o.Airway = FixedStr<10>();
      o.MinAltitude = o.MaxAltitude = 0;
      nav.Objects.push_back(o);
    }
    BuildPlan();
  }

  // The plan set row by row, as a route builder leaves it.
  void BuildPlan() {
    plan = FlightPlan();
    plan.Waypoints[0] = PlanRow("", "EDDF", "FRANKFURT MAIN", 50.5f, 8.25f, 0, 0, 0, kOriginAirport, 0);
    for (std::size_t k = 0; k < rows.size(); ++k) plan.Waypoints[k + 1] = rows[k];
    plan.Waypoints[rows.size() + 1] = PlanRow("", "EGLL", "LONDON HEATHROW", 51.5f, -0.5f, 0, 0, 0, kOriginAirport, 1);
    plan.LastRow = static_cast<int16_t>(rows.size() + 1);
    plan.SidRows = 1;
    plan.StarRows = 1;
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
    plan.DepartType = "Rwy";
    plan.DepartNum = 1;
    plan.DepartID = "Rwy 25C  (13123ft)";
    plan.CruiseFL = 350;
    plan.RouteType = 2;
    plan.NetKind = 1;
    plan.TotalTime = 95;
  }

  PlanEditor Editor() { return PlanEditor(plan, panel, ac, nav); }

  // A second plan in memory that a read must replace or leave alone.
  struct Target {
    FlightPlan plan;
    PlanPanel panel;
  };

  AircraftRec ac;
  FakeNav nav;
  std::vector<WaypointRec> rows;
  FlightPlan plan;
  PlanPanel panel;
  ScriptedUi ui;
};

}  // namespace orv::test
