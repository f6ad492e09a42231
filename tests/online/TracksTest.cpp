#include "online/Tracks.h"

#include <gtest/gtest.h>

#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FakeNav.h"
#include "planning/WPTable.h"
#include "support/OnlineSamples.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

NavDatabase TrackWorld() {
  NavDatabase db;
  db.Navaids.Intersections.resize(3);
  db.Navaids.Intersections[1].Ident.Assign("PIKIL");
  db.Navaids.Intersections[1].Lat = 56.0f, db.Navaids.Intersections[1].Lon = -15.0f;
  db.Navaids.Intersections[2].Ident.Assign("MARGO");
  db.Navaids.Intersections[2].Lat = 37.0f, db.Navaids.Intersections[2].Lon = -123.0f;
  db.Navaids.Fixes.resize(1);
  db.Navaids.Fixes[0].Ident.Assign("KALNA");
  db.Navaids.Fixes[0].Lat = 35.0f, db.Navaids.Fixes[0].Lon = 140.0f;
  return db;
}

TEST(Tracks, NorthAtlantic) {
  NavDatabase db = TrackWorld();
  TrackFixFinder fixes(&db, false);
  TrackTable t;
  ASSERT_TRUE(ParseNatTrackText(test::NatMessage(3), fixes, t));
  EXPECT_EQ(t.TrackUpdateText, "2026/11/24 1130 1900");
  ASSERT_EQ(t.Tracks.size(), 3u);
  const TrackRec& a = t.Tracks[0];
  EXPECT_EQ(a.Name, "Track A");
  // PIKIL, four coordinates; NOWAY is unknown and disappears.
  ASSERT_EQ(a.PointCount, 5);
  EXPECT_EQ(a.Points[0].Code.Str(), "PIKIL");
  EXPECT_EQ(a.Points[0].Kind.Str(), "Int");
  EXPECT_EQ(a.Points[1].Code.Str(), "45/20");
  EXPECT_FLOAT_EQ(a.Points[1].Lat, 45.0f);
  EXPECT_FLOAT_EQ(a.Points[1].Lon, -20.0f);
  EXPECT_FLOAT_EQ(a.FirstLat, 56.0f);
  // The empty line between the level lines uses up no count.
  EXPECT_EQ(a.EastLevels, "East Lvls Nil");
  EXPECT_EQ(a.WestLevels, "West Lvls 310 320 330 340");
  EXPECT_EQ(a.EurRoute, "Eur Rts West Nil");
  EXPECT_EQ(a.NarRoute, "Nar Nil-");
  EXPECT_FALSE(TrackTable::Eastbound(a));
  EXPECT_TRUE(TrackTable::Eastbound(t.Tracks[1]));
  EXPECT_EQ(TrackHoverLine(a), "Track A - West Lvls 310 320 330 340");
  EXPECT_EQ(a.ValidFrom, 113000);
  EXPECT_EQ(a.ValidTo, 90000);

  // Fifty tracks fit; the 51st is the fault, and what was read stays.
  EXPECT_TRUE(ParseNatTrackText(test::NatMessage(50), fixes, t));
  EXPECT_EQ(t.Tracks.size(), 50u);
  EXPECT_FALSE(ParseNatTrackText(test::NatMessage(80), fixes, t));
  EXPECT_EQ(t.Tracks.size(), 50u);
  EXPECT_TRUE(ParseNatTrackText("<pre>\r\nNO DATA IS ACTIVE\r\nPART ONE\r\nA 50/40\r\n", fixes, t));
  EXPECT_TRUE(t.NoData);
  EXPECT_TRUE(t.Tracks.empty());
  ParseNatTrackText("PART ONE\r\nA 50/40 1/", fixes, t);
  ASSERT_EQ(t.Tracks.size(), 1u);
  EXPECT_FLOAT_EQ(t.Tracks[0].Points[0].Lon, -40.0f);
}

TEST(Tracks, PacificAndFiles) {
  NavDatabase db = TrackWorld();
  TrackFixFinder fixes(&db, true);
  TrackTable t;
  ASSERT_TRUE(ParsePacificTrackText(test::PacificPage(), fixes, t));
  ASSERT_EQ(t.Tracks.size(), 2u);
  const TrackRec& a = t.Tracks[0];
  EXPECT_EQ(a.Name, "PTrack A");
  ASSERT_EQ(a.PointCount, 5);   // PIKIL, three positions, MARGO; the time words are dropped
  EXPECT_FLOAT_EQ(a.Points[2].Lat, 42.5f);
  EXPECT_FLOAT_EQ(a.Points[2].Lon, -150.0f);
  EXPECT_EQ(a.EastLevels, "Nil");   // from PIKIL at 15W to MARGO at 123W: westbound
  EXPECT_EQ(a.WestLevels, "West");
  const TrackRec& b = t.Tracks[1];
  EXPECT_EQ(b.Name, "PTrack 7");
  ASSERT_EQ(b.PointCount, 5);
  EXPECT_FLOAT_EQ(b.Points[1].Lon, 150.0f);   // "E" stays positive
  EXPECT_FLOAT_EQ(b.Points[4].Lon, 180.0f);
  EXPECT_EQ(b.WestLevels, "Nil");
  // KZOA without OAKLAND opens no block.
  EXPECT_TRUE(ParsePacificTrackText("KZOA\r\n(TDM TRK B 1\r\n40N160W\r\nRTS/X\r\n", fixes, t));
  EXPECT_TRUE(t.Tracks.empty());

  test::TempDir dir;
  AppFolder app(dir.Path());
  test::ScriptedUi ui;
  EXPECT_FALSE(ParseNatTracks(app, &db, ui, t));
  EXPECT_FALSE(ParsePacificTracks(app, &db, ui, t));
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"No NATrack File available! Download a new NATrack File!",
                                                     "No Pacot File available! Download a new Pacot File!"}));
  // A broken page with a good .old: the question, then the old data.
  dir.Write("Database/North Atlantic Tracks.htm", test::NatMessage(60));
  dir.Write("Database/North Atlantic Tracks.old", test::NatMessage(2));
  ui.answers = {Answer::Yes};
  ASSERT_TRUE(ParseNatTracks(app, &db, ui, t));
  EXPECT_EQ(ui.Texts("ask").back(), "Error reading in NATrack File! Download the file again! Do You want to use previous data?");
  EXPECT_EQ(t.Tracks.size(), 2u);
}

TEST(Tracks, TakenOverAsPlan) {
  NavDatabase db = TrackWorld();
  TrackTable t;
  ParseNatTrackText(test::NatMessage(1), TrackFixFinder(&db, false), t);
  FlightPlan plan;
  PlanPanel panel;
  AircraftRec ac;
  ac.CruiseSpeed = 450;
  test::FakeNav nav;
  PlanEditor editor(plan, panel, ac, nav);
  plan.Waypoints[0].Code.Assign("EGLL");
  plan.Waypoints[1].Code.Assign("KJFK");
  plan.LastRow = 1;
  EXPECT_EQ(InsertTrackIntoPlan(t.Tracks[0], editor, 0), 5);
  EXPECT_EQ(plan.LastRow, 6);
  EXPECT_EQ(plan.Waypoints[1].Code.Str(), "PIKIL");
  EXPECT_EQ(plan.Waypoints[5].Code.Str(), "46/50");
  EXPECT_EQ(plan.Waypoints[6].Code.Str(), "KJFK");
}

}  // namespace
}  // namespace orv
