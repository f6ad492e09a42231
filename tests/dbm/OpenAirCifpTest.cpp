// Airspaces from OpenAir text and procedures from CIFP rows.
#include <gtest/gtest.h>

#include "database/AirspaceFiles.h"
#include "dbm/Cifp.h"
#include "dbm/DatabaseBuilder.h"
#include "dbm/OpenAir.h"
#include "planning/FlightPlan.h"
#include "planning/StoredProcedures.h"
#include "planning/FakeNav.h"
#include "support/ScriptedUi.h"

namespace orv::dbm {
namespace {

TEST(OpenAir, Positions) {
  double lat = 0, lon = 0;
  ASSERT_TRUE(ReadOpenAirPosition("52:21:00 N 013:30:30 E", lat, lon));
  EXPECT_DOUBLE_EQ(lat, 52.35);
  EXPECT_NEAR(lon, 13.508333, 1e-6);
  ASSERT_TRUE(ReadOpenAirPosition("40:38.5S 073:46.8W", lat, lon));
  EXPECT_NEAR(lat, -40.641667, 1e-6);
  EXPECT_NEAR(lon, -73.78, 1e-6);
  EXPECT_FALSE(ReadOpenAirPosition("52:61:00 N 013:30:30 E", lat, lon));  // 61 minutes
  EXPECT_FALSE(ReadOpenAirPosition("52:21:00 E 013:30:30 N", lat, lon));
  EXPECT_FALSE(ReadOpenAirPosition("52:21:00 N", lat, lon));
}

TEST(OpenAir, PolygonsCirclesAndArcs) {
  constexpr const char* kText =
      "* test airspaces\r\n"
      "AC D\r\n"
      "AN FRANKFURT CTR\r\n"
      "AH 2500ft MSL\r\n"
      "AL GND\r\n"
      "DP 50:10:00 N 008:20:00 E\r\n"
      "DP 50:10:00 N 008:50:00 E\r\n"
      "DP 49:55:00 N 008:50:00 E\r\n"
      "DP 49:55:00 N 008:20:00 E\r\n"
      "\r\n"
      "AC CTR\r\n"
      "AN EGELSBACH\r\n"
      "V X=49:57:40 N 008:38:30 E\r\n"
      "DC 5\r\n"
      "AC R\r\n"
      "AN ARC\r\n"
      "V D=-\r\n"
      "V X=50:00:00 N 008:00:00 E\r\n"
      "DA 10,90,0\r\n"
      "DP 50:00:00 N 008:00:00 E\r\n"
      "AC C\r\n"
      "AN BROKEN\r\n"
      "DP 91:00:00 N 008:00:00 E\r\n"
      "DC 5\r\n";
  std::vector<SrcAirspace> spaces;
  SourceReport r;
  r.File = "test.txt";
  ReadOpenAir(kText, spaces, r);
  ASSERT_EQ(spaces.size(), 4u);
  EXPECT_EQ(spaces[0].Class, "D");
  EXPECT_EQ(spaces[0].Name, "FRANKFURT CTR");
  EXPECT_EQ(spaces[0].Upper, "2500ft MSL");
  ASSERT_EQ(spaces[0].Points.size(), 4u);
  ASSERT_EQ(spaces[1].Points.size(), 72u);  // a circle, one point every 5 degrees
  for (const ShapePoint& p : spaces[1].Points) EXPECT_NEAR(DistanceNm(49.961111, 8.641667, p.Lat, p.Lon), 5.0, 0.01);
  // Counter-clockwise from 090 to 000: 18 steps, 19 points, then the centre.
  ASSERT_EQ(spaces[2].Points.size(), 20u);
  EXPECT_NEAR(spaces[2].Points[0].Lat, 50.0, 0.01);
  EXPECT_NEAR(spaces[2].Points[18].Lat, 50.0 + 10.0 / 60.0, 0.001);
  EXPECT_EQ(r.Malformed, 2);
  EXPECT_EQ(r.FirstProblems[0], "test.txt: line 23: DP without a position");
  EXPECT_EQ(r.FirstProblems[1], "test.txt: line 24: DC needs a centre (V X=) and a radius in NM");

  AirspaceTables shapes;
  EXPECT_EQ(AddOpenAirspaces(spaces, shapes), 1u);  // the broken one has no points
  ASSERT_EQ(shapes.Airspaces.size(), 3u);
  EXPECT_EQ(shapes.Airspaces[0].Ident.Str(), "FRAN");
  EXPECT_EQ(shapes.Airspaces[1].Class.Str(), "CTR");
  EXPECT_EQ(shapes.Airspaces[1].Index, 1);
  EXPECT_EQ(shapes.Airspaces[1].PointCount, 72);
  // The file reads back as written.
  Bytes file = BuildAirspaceFile(shapes);
  AirspaceTables back;
  ASSERT_FALSE(ParseAirspaceFile(file.data(), file.size(), back));
  EXPECT_EQ(back.Airspaces.size(), 3u);
  EXPECT_EQ(back.Airspaces[0].UpperAltitude.Str(), "2500ft MSL");
}

TEST(Cifp, SidAndStarBlocks) {
  XPlaneSources src;
  src.Fixes.push_back({50.1, 8.2, "ANEKI", "", false});
  src.Fixes.push_back({-30.0, 8.2, "ANEKI", "", false});  // the same name far away
  src.Navaids.push_back({kVor, 50.05, 8.64, 0, 11420, 130, 1.0, "FFM", "", "", "", "FRANKFURT VOR-DME"});
  FixFinder finder(src);
  constexpr const char* kText =
      "SID:010,5,ANEK1F,RW25C,DF025,ED,P,C,E  A, ,   ,CA, , , , , ,      ,    ,    ,2490,    ,+,01500,     ,18000, ,   ,    ,   , , , , , ,0,D,S;\n"
      "SID:020,5,ANEK1F,RW25C,ANEKI,ED,E,A,E  A, ,   ,TF, , , , , ,      ,    ,    ,    ,    , ,     ,     ,18000, ,   ,    ,   , , , , , ,0,D,S;\n"
      "SID:030,5,ANEK1F,RW25C,FFM,ED,D, ,V  A, ,   ,TF, , , , , ,      ,    ,    ,    ,    , ,     ,     ,18000, ,   ,    ,   , , , , , ,0,D,S;\n"
      "SID:010,5,ANEK1F,RW07C,ANEKI,ED,E,A,E  A, ,   ,TF;\n"
      "STAR:010,2,UNOKO2A,ALL,FFM,ED,D, ,V  A, ,   ,IF;\n"
      "STAR:020,2,UNOKO2A,ALL,NOWHERE,ED,E,A, , ,   ,TF;\n"
      "SID:bad\n";
  std::vector<Procedure> sids, stars;
  SourceReport r;
  r.File = "EDDF.dat";
  ReadCifpFile(kText, "EDDF", 50.03, 8.57, true, finder, sids, r);
  ReadCifpFile(kText, "EDDF", 50.03, 8.57, false, finder, stars, r);
  ASSERT_EQ(sids.size(), 2u);
  EXPECT_EQ(sids[0].Runway, "25C");
  EXPECT_EQ(sids[0].Name, "ANEK1F");
  ASSERT_EQ(sids[0].Points.size(), 2u);  // DF025 is not a known fix
  EXPECT_EQ(sids[0].Points[0].Kind, "Fix");
  EXPECT_FLOAT_EQ(sids[0].Points[0].Lat, 50.1f);  // the nearer of the two
  EXPECT_EQ(sids[0].Points[1].Kind, "VOR");
  EXPECT_EQ(sids[1].Runway, "07C");
  ASSERT_EQ(stars.size(), 1u);
  EXPECT_EQ(stars[0].Runway, "00");
  EXPECT_EQ(r.Malformed, 3);
  EXPECT_EQ(r.FirstProblems[0], "EDDF.dat: line 1: fix DF025 of ANEK1F is not among the fixes and navaids");
  EXPECT_EQ(r.FirstProblems[1], "EDDF.dat: line 7: procedure row without its name and fix fields");

  Bytes file = BuildProcedureFile(sids);
  ASSERT_EQ(file.size(), 2 * 56u + 3 * 61u);
  EXPECT_EQ(std::string(file.begin(), file.begin() + 10), "EDDF      ");
  EXPECT_EQ(std::string(file.begin() + 10, file.begin() + 15), "25C  ");
  EXPECT_EQ(file[55], 2);
  EXPECT_EQ(std::string(file.begin() + 56, file.begin() + 61), "Fix  ");
  EXPECT_EQ(std::string(file.begin() + 61, file.begin() + 71), "ANEKI     ");
}

// What --cifp writes is what the program's SID and STAR windows read and
// offer, and what goes into the plan.
TEST(Cifp, ProceduresReachThePlan) {
  XPlaneSources src;
  src.Fixes.push_back({50.1, 8.2, "ANEKI", "", false});
  src.Fixes.push_back({50.3, 8.9, "UNOKO", "", false});
  src.Navaids.push_back({kVor, 50.05, 8.64, 0, 11420, 130, 1.0, "FFM", "", "", "", "FRANKFURT VOR-DME"});
  FixFinder finder(src);
  constexpr const char* kText =
      "SID:010,5,ANEK1F,RW25C,ANEKI,ED,E,A,E  A, ,   ,TF;\n"
      "SID:020,5,ANEK1F,RW25C,FFM,ED,D, ,V  A, ,   ,TF;\n"
      "SID:010,5,ANEK1F,ANEKI,ANEKI,ED,E,A,E  A, ,   ,TF;\n"
      "STAR:010,2,UNOKO2A,ALL,UNOKO,ED,E,A, , ,   ,IF;\n"
      "STAR:020,2,UNOKO2A,ALL,FFM,ED,D, ,V  A, ,   ,TF;\n";
  std::vector<Procedure> sids, stars;
  SourceReport r;
  ReadCifpFile(kText, "EDDF", 50.03, 8.57, true, finder, sids, r);
  ReadCifpFile(kText, "EDDF", 50.03, 8.57, false, finder, stars, r);
  const Bytes sidFile = BuildProcedureFile(sids), starFile = BuildProcedureFile(stars);

  test::FakeNav nav;
  nav.Airports.resize(1);
  nav.Airports[0].Icao = "EDDF";
  FlightPlan plan;
  plan.Waypoints[0] = test::Row("", "EDDF", 50.03f, 8.57f, kOriginAirport);
  plan.Waypoints[1] = test::Row("", "EDDF", 50.03f, 8.57f, kOriginAirport);
  plan.LastRow = 1;
  plan.DepartureAirport = plan.DestinationAirport = 0;
  test::ScriptedUi ui;
  LoadSID sid(ui, true);
  ASSERT_TRUE(sid.Load(sidFile, plan, nav));
  ASSERT_EQ(sid.lstSidStar.size(), 2u);
  EXPECT_EQ(sid.lstSidStar[0].Text, "ANEK1F#Rwy 25C");
  EXPECT_EQ(sid.lstSidStar[1].Text, "ANEK1F.ANEKI#Any Rwy");
  const ProcedureRec& p = sid.Procedures()[0];
  ASSERT_EQ(p.PointCount, 2);
  EXPECT_EQ(p.Points[1].Kind.Str(), "Fix");
  EXPECT_EQ(p.Points[2].Kind.Str(), "VOR");
  EXPECT_EQ(p.Points[2].Name.Str(), "FRANKFURT VOR-DME");
  EXPECT_FLOAT_EQ(p.Points[2].Lat, 50.05f);
  LoadSID star(ui, false);
  ASSERT_TRUE(star.Load(starFile, plan, nav));
  ASSERT_EQ(star.lstSidStar.size(), 1u);
  EXPECT_EQ(star.lstSidStar[0].Text, "UNOKO2A#Any Rwy");
  EXPECT_TRUE(ui.Messages().empty());
}

}  // namespace
}  // namespace orv::dbm
