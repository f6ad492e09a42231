#include "planning/FlightPlan.h"

#include <gtest/gtest.h>

#include "planning/Aircraft.h"
#include "planning/WPTable.h"
#include "planning/FakeNav.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

using test::Row;

// Positions on the meridian 0 and the equator keep the distances whole: one
// degree is 60 NM.
class PlanTest : public ::testing::Test {
protected:
  PlanTest() {
    ac.CruiseSpeed = 240, ac.ApproachSpeed = 120, ac.CruiseLevel = 100;  // 4 and 2 NM a minute
    ac.ClimbSpeed = 120, ac.ClimbRate = 1000, ac.DescentSpeed = 150, ac.DescentRate = 1000;
    nav.Airports.resize(2);
    nav.Airports[0].Icao = "AAAA";
    nav.Airports[1].Icao = "BBBB";
  }

  PlanEditor Editor() { return PlanEditor(plan, panel, ac, nav); }

  // Departure at 0/0, destination at destLat/destLon, as a direct plan.
  void DirectPlan(float destLat, float destLon = 0) {
    plan.Waypoints[0] = Row("", "AAAA", 0, 0, kOriginAirport);
    plan.Waypoints[1] = Row("", "BBBB", destLat, destLon, kOriginAirport);
    plan.DepartureAirport = 0;
    plan.DestinationAirport = 1;
    Editor().SetDirectPlan(1);
  }

  std::string Code(int row) const { return plan.Waypoints[row].Code.Str(); }

  FlightPlan plan;
  PlanPanel panel;
  AircraftRec ac;
  test::FakeNav nav;
};

TEST_F(PlanTest, DirectPlanUsesOnlyTheDestinationLeg) {
  DirectPlan(2);
  EXPECT_EQ(plan.LastRow, 1);
  EXPECT_EQ(plan.RouteType, 0);
  // 120 NM by rhumb line: 90 NM at cruise speed, the last 30 at approach speed.
  EXPECT_NEAR(plan.Waypoints[1].LegDistance, 120, 1e-3);
  EXPECT_NEAR(plan.Waypoints[1].LegTime, 22.5 + 15, 1e-3);
  EXPECT_EQ(plan.TotalDistance, 120);
  EXPECT_EQ(plan.TotalTime, 38);  // 37.5 rounds half to even
  EXPECT_EQ(panel.TotalTimeText, "00:38");
  EXPECT_EQ(panel.TotalDistanceText, "0120");
  EXPECT_EQ(panel.Table.Rows(), 3);
  EXPECT_EQ(panel.DrawCount, 1);
}

TEST_F(PlanTest, LastThirtyMilesAreFlownAtApproachSpeed) {
  EXPECT_FLOAT_EQ(DestinationLegMinutes(30, 240, 120), 15);  // wholly at approach speed
  EXPECT_FLOAT_EQ(DestinationLegMinutes(20, 240, 120), 10);
  EXPECT_FLOAT_EQ(DestinationLegMinutes(40, 240, 120), 2.5f + 15);
  EXPECT_FLOAT_EQ(DestinationLegMinutes(30.5, 240, 120), 0.125f + 15);
  // A record without speeds gives no time rather than a division failure.
  EXPECT_FLOAT_EQ(DestinationLegMinutes(40, 0, 0), 0);
  EXPECT_FLOAT_EQ(LegMinutes(60, 0), 0);

  DirectPlan(0.5f);  // a last leg of exactly 30 NM
  EXPECT_FLOAT_EQ(plan.Waypoints[1].LegDistance, 30);
  EXPECT_FLOAT_EQ(plan.Waypoints[1].LegTime, 15);
}

TEST_F(PlanTest, InsertAndDeleteKeepLegValuesRight) {
  DirectPlan(3);
  PlanEditor ed = Editor();
  ASSERT_TRUE(ed.InsertWaypoint(0, Row("VOR", "ONE", 1, 0), true));
  ASSERT_TRUE(ed.InsertWaypoint(1, Row("NDB", "TWO", 2, 0), true));
  ASSERT_EQ(plan.LastRow, 3);
  EXPECT_EQ(plan.RouteType, 1);
  EXPECT_EQ(Code(1), "ONE");
  EXPECT_EQ(Code(2), "TWO");
  EXPECT_EQ(Code(3), "BBBB");
  for (int r = 1; r <= 2; ++r) {
    EXPECT_NEAR(plan.Waypoints[r].LegDistance, 60, 1e-3) << r;
    EXPECT_NEAR(plan.Waypoints[r].LegTime, 15, 1e-3) << r;
    EXPECT_EQ(plan.Waypoints[r].Row, r);
  }
  EXPECT_NEAR(plan.Waypoints[3].LegTime, 7.5 + 15, 1e-3);  // 60 NM last leg: 30 at cruise, 30 at approach
  EXPECT_EQ(plan.TotalDistance, 180);
  EXPECT_EQ(plan.TotalTime, 52);  // 52.5 rounds half to even
  EXPECT_EQ(panel.Table.Rows(), 5);
  EXPECT_EQ(panel.Table.Text(2, WPTable::kCode), "ONE");
  EXPECT_EQ(panel.Table.Text(3, WPTable::kEta), "00:30");
  EXPECT_EQ(panel.Table.TopRow, 3);  // scrolled to the row just inserted

  // A negative index inserts behind the departure.
  ASSERT_TRUE(ed.InsertWaypoint(-5, Row("Int", "ZERO", 0.5f, 0), true));
  EXPECT_EQ(Code(1), "ZERO");
  EXPECT_EQ(Code(2), "ONE");
  EXPECT_NEAR(plan.Waypoints[2].LegDistance, 30, 1e-3);

  ASSERT_TRUE(ed.DeleteWaypoint(1, true));
  ASSERT_TRUE(ed.DeleteWaypoint(1, true));  // ONE goes: TWO is reached from the departure
  EXPECT_EQ(plan.LastRow, 2);
  EXPECT_EQ(Code(1), "TWO");
  EXPECT_NEAR(plan.Waypoints[1].LegDistance, 120, 1e-3);
  EXPECT_NEAR(plan.Waypoints[1].LegTime, 30, 1e-3);
  EXPECT_EQ(plan.TotalDistance, 180);
  EXPECT_EQ(panel.Table.Rows(), 4);
  EXPECT_EQ(plan.Waypoints[3].Code.Str(), "");  // the freed slot is empty
  EXPECT_FALSE(ed.DeleteWaypoint(3, true));
}

TEST_F(PlanTest, BulkInsertionWaitsForOneRefresh) {
  DirectPlan(3);
  PlanEditor ed = Editor();
  ed.InsertWaypoint(0, Row("VOR", "ONE", 1, 0), false);
  ed.InsertWaypoint(1, Row("VOR", "TWO", 2, 0), false);
  EXPECT_EQ(panel.Table.Rows(), 3);  // the grid still shows the direct plan
  EXPECT_EQ(panel.DrawCount, 1);
  ed.RefreshRows(0);
  ed.RefreshTotals();
  EXPECT_EQ(panel.Table.Rows(), 5);
  EXPECT_EQ(panel.Table.Text(3, WPTable::kCode), "TWO");
  EXPECT_EQ(plan.TotalTime, 52);
}

TEST_F(PlanTest, DeletionBlanksTheAirwayOfTheRowThatMovesUp) {
  DirectPlan(4);
  PlanEditor ed = Editor();
  WaypointRec a = Row("Int", "A", 1, 0), b = Row("Int", "B", 2, 0), c = Row("Int", "C", 3, 0);
  a.Airway.Assign("J1");
  b.Airway.Assign("J1");
  c.Airway.Assign("J2");
  ed.InsertWaypoint(0, a, false);
  ed.InsertWaypoint(1, b, false);
  ed.InsertWaypoint(2, c, false);
  ed.DeleteWaypoint(1, true);  // A and B share J1: B keeps it
  EXPECT_EQ(plan.Waypoints[1].Airway.Str(), "J1");
  ed.DeleteWaypoint(1, true);  // B on J1, C on J2: C no longer follows its airway
  EXPECT_EQ(Code(1), "C");
  EXPECT_EQ(plan.Waypoints[1].Airway.Str(), "");
}

TEST_F(PlanTest, MapClickPointsAreRenumberedWhenRowsMove) {
  DirectPlan(5);
  PlanEditor ed = Editor();
  ed.InsertWaypoint(0, Row("VOR", "ONE", 1, 0), false);
  ed.InsertWaypoint(1, Row("VOR", "TWO", 2, 0), false);
  ed.InsertWaypoint(2, Row("Fix", "Fix 77", 3, 0), false);
  ed.InsertWaypoint(3, Row("Fix", "Fix 78", 4, 0), false);
  EXPECT_EQ(Code(3), "Fix 03");
  EXPECT_EQ(plan.Waypoints[3].Name.Str(), "Fix 03");
  EXPECT_EQ(Code(4), "Fix 04");

  // A new point at row 3 renames every later one, also after the merge pass
  // has upper-cased their codes.
  ed.RefreshRows(0);
  EXPECT_EQ(Code(4), "FIX 04");
  ed.InsertWaypoint(2, Row("Fix", "Fix", 2.5f, 0), true);
  EXPECT_EQ(plan.Waypoints[3].Name.Str(), "Fix 03");
  EXPECT_EQ(plan.Waypoints[4].Name.Str(), "Fix 04");
  EXPECT_EQ(plan.Waypoints[5].Name.Str(), "Fix 05");
  EXPECT_EQ(Code(5), "FIX 05");
  EXPECT_EQ(panel.Table.Text(6, WPTable::kCode), "FIX 05");
  EXPECT_EQ(Code(2), "TWO");
}

TEST_F(PlanTest, DuplicatesWithinOneMileMerge) {
  DirectPlan(3);
  PlanEditor ed = Editor();
  // The end node of an airway expansion (an intersection) lies 0.9 NM from the
  // row that follows it, under the same code.
  WaypointRec node = Row("Int", "ABC", 1, 0);
  node.NetType.Assign("J");
  node.Airway.Assign("J55");
  node.MinAltitude = 18000;
  node.MaxAltitude = 45000;
  ed.InsertWaypoint(0, node, false);
  ed.InsertWaypoint(1, Row("VOR", "abc", 1.015f, 0), false);
  ed.RefreshRows(0);
  ed.RefreshTotals();
  ASSERT_EQ(plan.LastRow, 2);
  const WaypointRec& kept = plan.Waypoints[1];
  EXPECT_EQ(kept.Kind.Str(), "VOR");
  EXPECT_EQ(kept.Code.Str(), "ABC");
  EXPECT_EQ(kept.Airway.Str(), "J55");
  EXPECT_EQ(kept.MinAltitude, 18000);
  EXPECT_EQ(kept.MaxAltitude, 45000);
  EXPECT_NEAR(kept.LegDistance, 60.9, 1e-3);  // from the departure now
  EXPECT_EQ(panel.Table.Rows(), 4);
  EXPECT_EQ(panel.Table.Text(2, WPTable::kName), "abc NAME (J55 180-450)");
}

TEST_F(PlanTest, DuplicatesBeyondOneMileStay) {
  DirectPlan(3);
  PlanEditor ed = Editor();
  WaypointRec node = Row("Int", "ABC", 1, 0);
  node.NetType.Assign("J");
  ed.InsertWaypoint(0, node, false);
  ed.InsertWaypoint(1, Row("VOR", "ABC", 1 + 1.1f / 60, 0), false);
  ed.RefreshRows(0);
  EXPECT_EQ(plan.LastRow, 3);
}

TEST_F(PlanTest, MergeNeedsAnAirwayNodeOrAStarRow) {
  DirectPlan(3);
  PlanEditor ed = Editor();
  // Two rows the user placed: no net type, no STAR, they stay.
  ed.InsertWaypoint(0, Row("VOR", "ABC", 1, 0), false);
  ed.InsertWaypoint(1, Row("VOR", "ABC", 1.015f, 0), false);
  ed.RefreshRows(0);
  EXPECT_EQ(plan.LastRow, 3);
  // A STAR row always absorbs its twin ahead of it.
  plan.Waypoints[2].Origin = kOriginStar;
  EXPECT_EQ(ed.MergeDuplicateRows(), 1);
  EXPECT_EQ(plan.LastRow, 2);
  EXPECT_EQ(plan.Waypoints[1].Origin, kOriginStar);
  // The destination is never merged: the pass stops at LastRow - 1.
  plan.Waypoints[1].Code.Assign("BBBB");
  plan.Waypoints[1].NetType.Assign("X");
  plan.Waypoints[1].Lat = 3;
  EXPECT_EQ(ed.MergeDuplicateRows(), -1);
  EXPECT_EQ(plan.LastRow, 2);
}

TEST_F(PlanTest, TotalsAreRoundedAtEachRow) {
  plan.Waypoints[0] = Row("", "AAAA", 0, 0, kOriginAirport);
  const float times[] = {0.5f, 0.5f, 1.5f, 2.5f};
  const float dists[] = {10.5f, 10.5f, 0.5f, 1.5f};
  for (int r = 1; r <= 4; ++r) {
    plan.Waypoints[r] = Row("VOR", "V" + std::to_string(r), static_cast<float>(r), 0);
    plan.Waypoints[r].LegTime = times[r - 1];
    plan.Waypoints[r].LegDistance = dists[r - 1];
  }
  // The destination on top of row 4: a leg of nearly nothing.
  plan.Waypoints[5] = Row("", "BBBB", 4, 0, kOriginAirport);
  plan.LastRow = 5;
  Editor().RefreshTotals();
  // Minutes: 0.5 -> 0, 0.5 -> 0, 1.5 -> 2, 4.5 -> 4 (the plain sum is 5).
  EXPECT_EQ(plan.TotalTime, 4);
  // Miles: 10.5 -> 10, 20.5 -> 20, 20.5 -> 20, 21.5 -> 22 (the plain sum is 23).
  EXPECT_EQ(plan.TotalDistance, 22);
  const char* eta[] = {"00:00", "00:00", "00:00", "00:02", "00:04", "00:04"};
  for (int r = 0; r <= 5; ++r) EXPECT_EQ(panel.Table.Text(r + 1, WPTable::kEta), eta[r]) << r;
  EXPECT_EQ(panel.TotalTimeText, "00:04");
  EXPECT_EQ(panel.TotalDistanceText, "0022");
}

TEST_F(PlanTest, ShortRouteLowersTheOfferedLevel) {
  // Climb from 500 ft and descent to 0 ft: 6000 ft is the highest that fits
  // into 40 NM with the 11 NM approach.
  nav.Airports[0].Elevation = 500;
  DirectPlan(0, 40.0f / 60);  // eastbound
  EXPECT_EQ(plan.TotalDistance, 40);
  EXPECT_EQ(plan.CruiseFL, 50);  // even thousands eastbound go 1000 ft lower
  EXPECT_EQ(plan.WestBound, 0);
  EXPECT_EQ(panel.LevelBox, "050");

  DirectPlan(0, -40.0f / 60);  // westbound
  EXPECT_EQ(plan.CruiseFL, 60);
  EXPECT_EQ(plan.WestBound, -1);
}

TEST_F(PlanTest, ClearFlightPlanEmptiesEverything) {
  DirectPlan(2);
  PlanEditor ed = Editor();
  ed.InsertWaypoint(0, Row("VOR", "ONE", 1, 0), true);
  plan.SidRows = 2;
  plan.StarRows = 1;
  plan.CurrentRow = 1;
  ed.ClearFlightPlan();
  EXPECT_EQ(plan.LastRow, 0);
  EXPECT_EQ(plan.CurrentRow, -1);
  EXPECT_EQ(plan.SidRows, 0);
  EXPECT_EQ(plan.StarRows, 0);
  EXPECT_EQ(plan.CruiseFL, 0);
  EXPECT_EQ(plan.Waypoints[1].Code.Str(), "");
  EXPECT_EQ(plan.Waypoints.size(), static_cast<size_t>(kMaxPlanRow + 1));
  EXPECT_EQ(panel.TotalTimeText, "00:00");
  EXPECT_EQ(panel.TotalDistanceText, "0000");
  EXPECT_EQ(panel.LevelBox, "000");
  EXPECT_EQ(panel.Table.Rows(), 1);
}

TEST_F(PlanTest, TheThousandAndSecondRowIsRefused) {
  DirectPlan(2);
  PlanEditor ed = Editor();
  for (int i = 0; i < kMaxPlanRow - 1; ++i)
    ASSERT_TRUE(ed.InsertWaypoint(plan.LastRow - 1, Row("VOR", "X", 1, 0), false));
  EXPECT_EQ(plan.LastRow, kMaxPlanRow);
  EXPECT_FALSE(ed.InsertWaypoint(0, Row("VOR", "Y", 1, 0), false));
  EXPECT_EQ(plan.LastRow, kMaxPlanRow);
  EXPECT_EQ(Code(kMaxPlanRow), "BBBB");
}

// ---------------------------------------------------------------- commands

class PlanCommandTest : public PlanTest {
protected:
  // Departure, SID row, two enroute rows, STAR row, destination.
  void FullPlan() {
    DirectPlan(5);
    PlanEditor ed = Editor();
    ed.InsertWaypoint(0, Row("Int", "SID1", 1, 0, kOriginSid), false);
    ed.InsertWaypoint(1, Row("VOR", "EN1", 2, 0), false);
    ed.InsertWaypoint(2, Row("VOR", "EN2", 3, 0), false);
    ed.InsertWaypoint(3, Row("Int", "STAR1", 4, 0, kOriginStar), false);
    ed.RefreshRows(0);
    ed.RefreshTotals();
    plan.SidRows = 1;
    plan.StarRows = 1;
  }
  void Delete(int current, int rangeStart = -1) {
    plan.CurrentRow = current;
    Editor().DeleteKey(ui, rangeStart, [this] { ++sidDeletes; }, [this] { ++starDeletes; });
  }
  test::ScriptedUi ui;
  int sidDeletes = 0, starDeletes = 0;
};

TEST_F(PlanCommandTest, AirportsCannotBeDeleted) {
  FullPlan();
  Delete(0);
  Delete(5);
  Delete(-1);
  EXPECT_EQ(plan.LastRow, 5);
  EXPECT_TRUE(ui.events.empty());
}

TEST_F(PlanCommandTest, ProcedureRowsAskForTheWholeProcedure) {
  FullPlan();
  Delete(4);  // STAR, answered No
  ASSERT_EQ(ui.Texts("ask").size(), 1u);
  EXPECT_EQ(ui.Texts("ask")[0],
            "You cannot delete a single waypoint of a STAR!\r\n      Do you wish to delete the entire STAR?");
  EXPECT_EQ(starDeletes, 0);
  EXPECT_EQ(plan.LastRow, 5);

  ui.answers.push_back(Answer::Yes);
  Delete(4);
  EXPECT_EQ(starDeletes, 1);

  ui.answers.push_back(Answer::Yes);
  Delete(1);
  EXPECT_EQ(ui.Texts("ask")[2],
            "You cannot delete a single waypoint of a SID!\r\n      Do you wish to delete the entire SID?");
  EXPECT_EQ(sidDeletes, 1);
  EXPECT_EQ(plan.LastRow, 5);  // the hooks own the procedure's removal
}

TEST_F(PlanCommandTest, EnrouteRowsGoWithoutQuestion) {
  FullPlan();
  Delete(2);
  EXPECT_TRUE(ui.events.empty());
  EXPECT_EQ(plan.LastRow, 4);
  EXPECT_EQ(Code(2), "EN2");
  EXPECT_NEAR(plan.Waypoints[2].LegDistance, 120, 1e-3);
}

TEST_F(PlanCommandTest, MarkedRangeIsDeletedRowByRow) {
  FullPlan();
  Editor().InsertWaypoint(3, Row("VOR", "EN3", 3.5f, 0), true);  // SID1 EN1 EN2 EN3 STAR1
  Delete(4, 2);  // EN1 to EN3
  EXPECT_EQ(plan.LastRow, 3);
  EXPECT_EQ(Code(1), "SID1");
  EXPECT_EQ(Code(2), "STAR1");
  EXPECT_NEAR(plan.Waypoints[2].LegDistance, 180, 1e-3);
  EXPECT_EQ(panel.Table.Rows(), 5);
  EXPECT_EQ(panel.Table.Text(3, WPTable::kCode), "STAR1");

  // A range reaching into the STAR stops there with the question.
  Delete(2, 1);
  EXPECT_EQ(plan.LastRow, 3);
  EXPECT_EQ(ui.Texts("ask").size(), 1u);
}

TEST_F(PlanCommandTest, DeleteAllEnrouteWaypoints) {
  FullPlan();
  PlanEditor ed = Editor();
  panel.RouteLabel = "SID1 EN1 EN2 STAR1";
  ed.MenuDeleteEnrouteWPs(ui);  // No
  EXPECT_EQ(plan.LastRow, 5);
  EXPECT_EQ(ui.Texts("ask")[0], "Are you sure you want to delete all enroute waypoints?");

  ui.answers.push_back(Answer::Yes);
  ed.MenuDeleteEnrouteWPs(ui);
  EXPECT_EQ(plan.LastRow, 1);
  EXPECT_EQ(Code(1), "BBBB");
  EXPECT_EQ(plan.SidRows, 0);
  EXPECT_EQ(plan.StarRows, 0);
  EXPECT_EQ(plan.RouteType, 0);
  EXPECT_EQ(panel.RouteLabel, "");
  EXPECT_EQ(plan.TotalDistance, 300);
  EXPECT_EQ(panel.Table.Rows(), 3);
}

TEST_F(PlanCommandTest, RouteCreationClearsTheEnrouteRowsFirst) {
  EXPECT_EQ(Editor().PrepareRouteCreation(), -1);  // no plan
  FullPlan();
  plan.CurrentRow = 2;  // a row selected: build behind it, nothing removed
  EXPECT_EQ(Editor().PrepareRouteCreation(), 2);
  EXPECT_EQ(plan.LastRow, 5);

  plan.CurrentRow = -1;
  EXPECT_EQ(Editor().PrepareRouteCreation(), 1);
  EXPECT_EQ(plan.LastRow, 3);
  EXPECT_EQ(plan.CurrentRow, 1);
  EXPECT_EQ(Code(1), "SID1");
  EXPECT_EQ(Code(2), "STAR1");
  EXPECT_EQ(panel.Table.Rows(), 5);
}

TEST_F(PlanCommandTest, TypedIdentifierOffersEveryMatch) {
  PlanEditor ed = Editor();
  EXPECT_FALSE(ed.ManualWaypointEnter(ui, "abc"));
  EXPECT_EQ(ui.Messages().at(0),
            "Select the departure and destination airports first by pressing the button <Select Airport>!");

  WaypointRec vor = Row("VOR", "ABC", 1, 2);
  vor.Frequency = 114.3f;
  nav.Objects = {vor, Row("NDB", "ABC", -1.5f, -2.25f), Row("Int", "ABD", 1, 1), Row("Uwp", "ABC", 0.5f, 0.5f)};
  FullPlan();
  ASSERT_TRUE(ed.ManualWaypointEnter(ui, " abc "));
  ASSERT_EQ(panel.WpList.size(), 3u);
  EXPECT_EQ(panel.WpList[0], "Vor ABC(1.00\xB0/2.00\xB0)");
  EXPECT_EQ(panel.WpList[1], "Ndb ABC(-1.50\xB0/-2.25\xB0)");
  EXPECT_EQ(panel.WpList[2], "Uwp ABC(0.50\xB0/0.50\xB0)");

  // No selection: ahead of the STAR.
  plan.CurrentRow = -1;
  ASSERT_TRUE(ed.PickWaypoint(0));
  EXPECT_EQ(plan.LastRow, 6);
  EXPECT_EQ(Code(4), "ABC");
  EXPECT_EQ(plan.Waypoints[4].Origin, kOriginEnroute);
  EXPECT_EQ(Code(5), "STAR1");
  EXPECT_TRUE(panel.WpList.empty());

  // Behind the selected row, and the next pick behind that one.
  ed.ManualWaypointEnter(ui, "ABC");
  plan.CurrentRow = 1;
  ed.PickWaypoint(1);
  ed.ManualWaypointEnter(ui, "ABC");
  ed.PickWaypoint(2);
  EXPECT_EQ(plan.Waypoints[2].Kind.Str(), "NDB");
  EXPECT_EQ(plan.Waypoints[3].Kind.Str(), "Uwp");
  EXPECT_EQ(plan.CurrentRow, 3);
  EXPECT_FALSE(ed.PickWaypoint(7));
}

TEST_F(PlanCommandTest, DepartureListAndChoice) {
  test::FakeAirport& ap = nav.Airports[0];
  ap.Runways = {{"Rwy 09L", "Rwy 27R", 47.1f, 8.1f, 87, 9000}, {"Rwy 04", "Rwy 22", 47.2f, 8.2f, 200, 5000}};
  ap.Parking = {{"Gate A", 12, 47.3f, 8.3f}};
  plan.DepartureAirport = 0;
  PlanEditor ed = Editor();
  ed.FillDepartureList();
  ASSERT_EQ(panel.DepList.size(), 5u);
  EXPECT_EQ(panel.DepList[0].Text, "Rwy 09L  (09000ft)");
  EXPECT_EQ(panel.DepList[1].Text, "Rwy 27R  (09000ft)");
  EXPECT_EQ(panel.DepList[3].Text, "Rwy 22  (05000ft)");
  EXPECT_EQ(panel.DepList[4].Text, "Gate A 12");
  const int32_t items[] = {0, 0, 1, 1, 100};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(panel.DepList[i].ItemData, items[i]);

  ASSERT_TRUE(ed.ChooseDeparture(1));
  EXPECT_EQ(plan.DepartType, "Rwy");
  EXPECT_EQ(plan.DepartNum, 0);  // 0.5 rounds to even
  EXPECT_FLOAT_EQ(plan.DepartHeading, 267);
  EXPECT_FLOAT_EQ(plan.DepartLat, 47.1f);
  EXPECT_EQ(plan.DepartID, "Rwy 27R  (09000ft)");

  ASSERT_TRUE(ed.ChooseDeparture(3));
  EXPECT_EQ(plan.DepartNum, 2);  // 1.5 rounds to even
  EXPECT_FLOAT_EQ(plan.DepartHeading, 20);  // 200 + 180 passes 360

  ASSERT_TRUE(ed.ChooseDeparture(2));
  EXPECT_EQ(plan.DepartNum, 1);
  EXPECT_FLOAT_EQ(plan.DepartHeading, 200);

  ASSERT_TRUE(ed.ChooseDeparture(4));
  EXPECT_EQ(plan.DepartType, "Gate");
  EXPECT_EQ(plan.DepartNum, 0);
  EXPECT_FLOAT_EQ(plan.DepartLon, 8.3f);
  EXPECT_EQ(plan.DepartID, "Gate A 12");
  EXPECT_EQ(panel.DepListIndex, 4);
  EXPECT_FALSE(ed.ChooseDeparture(5));
}

}  // namespace
}  // namespace orv
