// The X-Plane readers on a few hand-written lines of each format.
#include <gtest/gtest.h>

#include <cmath>

#include "dbm/XPlaneSources.h"

namespace orv::dbm {
namespace {

constexpr const char* kApt =
    "I\r\n"
    "1100 Version - data cycle 2025.01, build 1, metadata AptXP1100.\r\n"
    "\r\n"
    "1     364 0 0 EDDF Frankfurt am Main\r\n"
    "1302 city Frankfurt\r\n"
    "1302 country Germany\r\n"
    "1302 region_code ED\r\n"
    "1302 datum_lat 50.033333\r\n"
    "1302 datum_lon 8.570556\r\n"
    "100 60.00 1 0 0.25 1 3 1 07C 50.03274 8.53466 0 0 3 0 1 0 25C 50.04538 8.58696 0 0 3 0 1 0\r\n"
    "102 H1 50.04000 8.56000 45.00 20.0 20.0 2 0 0 0.25 0\r\n"
    "54 11990 TWR\r\n"
    "1053 121905 GROUND\r\n"
    "15 50.04 8.55 90.0 Ramp 5\r\n"
    "1300 50.05 8.57 250.5 gate heavy|jets A12\r\n"
    "1301 E airline DLH\r\n"
    "110 1 0.25 0.00 Apron\r\n"
    "111 50.0 8.0\r\n"
    "112 50.1 8.0 50.1 8.05\r\n"
    "113 50.1 8.1\r\n"
    "111 50.01 8.01\r\n"
    "113 50.02 8.02\r\n"
    "120 line\r\n"
    "111 51.0 9.0\r\n"
    "1201 50.00 8.50 both 1 n1\r\n"
    "1201 50.01 8.51 both 2 n2\r\n"
    "1202 1 2 twoway taxiway_D N\r\n"
    "1202 1 2 twoway runway 07C/25C\r\n"
    "1202 1 9 twoway taxiway N\r\n"
    "100 60.00 1 0\r\n"
    "16 0 0 0 S1 Seaplane Base\r\n"
    "101 30 1 09 40.0 -74.0 27 40.0 -73.99\r\n"
    "10 40.5 -73.5 xxx 90.0 1000 0.0 0.0 50 111111 01 0 0 0.25 0 0000.0000\r\n"
    "99\r\n";

TEST(AptDat, AirportRowsBecomeSourceRecords) {
  std::vector<SrcAirport> out;
  SourceReport r;
  r.File = "apt.dat";
  ReadAptDat(kApt, out, r);
  EXPECT_EQ(r.Version, 1100);
  EXPECT_EQ(r.Cycle, "2025.01");
  ASSERT_EQ(out.size(), 2u);
  const SrcAirport& a = out[0];
  EXPECT_EQ(a.Icao, "EDDF");
  EXPECT_EQ(a.Name, "Frankfurt am Main");
  EXPECT_EQ(a.ElevationFeet, 364);
  EXPECT_EQ(a.City, "Frankfurt");
  EXPECT_EQ(a.Country, "Germany");
  EXPECT_EQ(a.RegionCode, "ED");
  EXPECT_TRUE(a.HasDatum);
  EXPECT_DOUBLE_EQ(a.DatumLat, 50.033333);

  ASSERT_EQ(a.Runways.size(), 2u);
  const SrcRunway& rw = a.Runways[0];
  EXPECT_EQ(rw.End1, "07C");
  EXPECT_EQ(rw.End2, "25C");
  EXPECT_NEAR(rw.Lat, (50.03274 + 50.04538) / 2, 1e-9);
  EXPECT_NEAR(rw.TrueHeading, 69.359, 0.01);     // initial great-circle course of the two ends
  EXPECT_NEAR(rw.LengthFeet, 13123, 60);         // 4000 m
  EXPECT_NEAR(rw.WidthFeet, 196.85, 0.01);       // 60 m
  EXPECT_EQ(rw.Surface, 1);
  EXPECT_EQ(a.Runways[1].Kind, RunwayKind::Helipad);
  EXPECT_EQ(a.Runways[1].End1, "H1");

  ASSERT_EQ(a.Frequencies.size(), 2u);
  EXPECT_EQ(a.Frequencies[0].Row, 54);
  EXPECT_EQ(a.Frequencies[0].KHz, 119900);
  EXPECT_EQ(a.Frequencies[1].Row, 53);           // 1053 folds onto 53
  EXPECT_EQ(a.Frequencies[1].KHz, 121905);
  EXPECT_EQ(a.Frequencies[1].Name, "GROUND");

  ASSERT_EQ(a.Parking.size(), 2u);
  EXPECT_FALSE(a.Parking[0].Gate);
  EXPECT_EQ(a.Parking[0].Name, "Ramp 5");
  EXPECT_TRUE(a.Parking[1].Gate);
  EXPECT_EQ(a.Parking[1].Type, "gate");
  EXPECT_EQ(a.Parking[1].Aircraft, "heavy|jets");
  EXPECT_EQ(a.Parking[1].Operation, "airline");
  EXPECT_EQ(a.Parking[1].Name, "A12");

  // Only the outer ring of the pavement; the hole and the line feature's
  // node are not part of it.
  ASSERT_EQ(a.Pavements.size(), 1u);
  ASSERT_EQ(a.Pavements[0].size(), 3u);
  EXPECT_DOUBLE_EQ(a.Pavements[0][2].Lon, 8.1);

  // The taxiway edge becomes a segment of width class D; the runway edge is
  // left to the runway rows.
  ASSERT_EQ(a.Taxiways.size(), 1u);
  EXPECT_EQ(a.Taxiways[0].Name, "N");
  EXPECT_DOUBLE_EQ(a.Taxiways[0].WidthFeet, 75);
  EXPECT_DOUBLE_EQ(a.Taxiways[0].Lat2, 50.01);

  const SrcAirport& s = out[1];
  EXPECT_EQ(s.Row, 16);
  ASSERT_EQ(s.Runways.size(), 1u);
  EXPECT_EQ(s.Runways[0].Kind, RunwayKind::Water);
  EXPECT_EQ(s.Runways[0].Surface, 13);
  // The old row 10 "xxx": a 1000 ft taxiway piece centred on its point.
  ASSERT_EQ(s.Taxiways.size(), 1u);
  EXPECT_NEAR(s.Taxiways[0].Lon1, -73.5 - 500 / 3.2808399 / (111120.0 * std::cos(40.5 * 3.14159265358979 / 180)), 1e-9);
  EXPECT_DOUBLE_EQ(s.Taxiways[0].WidthFeet, 50);

  // Two faulty lines: the edge to an unknown node and the cut-short runway.
  EXPECT_EQ(r.Malformed, 2);
  ASSERT_EQ(r.FirstProblems.size(), 2u);
  EXPECT_EQ(r.FirstProblems[0], "apt.dat: line 29: taxi edge row 1202 names a node not defined before it");
  EXPECT_EQ(r.FirstProblems[1], "apt.dat: line 30: land runway row 100 is incomplete");
}

TEST(AptDat, NotAnXPlaneFileIsRefusedAtItsFirstLine) {
  std::vector<SrcAirport> out;
  SourceReport r;
  r.File = "apt.dat";
  ReadAptDat("hello\nworld\n", out, r);
  EXPECT_EQ(r.Version, 0);
  EXPECT_TRUE(out.empty());
  ASSERT_EQ(r.FirstProblems.size(), 1u);
  EXPECT_EQ(r.FirstProblems[0], "apt.dat: line 1: no \"<number> Version\" header line of an X-Plane data file");
}

TEST(AptDat, OnlyTheFirstFewProblemsAreKeptButAllAreCounted) {
  std::string text = "I\n1000 Version\n1 10 0 0 XXXX Test\n";
  for (int i = 0; i < 12; ++i) text += "100 bad\n";
  std::vector<SrcAirport> out;
  SourceReport r;
  r.File = "apt.dat";
  ReadAptDat(text, out, r);
  EXPECT_EQ(r.Malformed, 12);
  EXPECT_EQ(r.FirstProblems.size(), SourceReport::kKeptProblems);
  EXPECT_EQ(r.FirstProblems.back(), "apt.dat: line 8: land runway row 100 is incomplete");
}

TEST(AptDat, HostileNumbersNeverReachARecord) {
  std::vector<SrcAirport> out;
  SourceReport r;
  r.File = "apt.dat";
  ReadAptDat("I\n1000 Version\n1 10 0 0 XXXX Test\n"
             "10 40.5 -73.5 xxx 90.0 1e300 0.0 0.0 50 111111 01 0\n"
             "102 H1 50.04 8.56 45.00 1e308 20.0 2 0 0 0.25 0\n"
             "100 -5 1 0 0.25 1 3 1 07C 50.03 8.53 0 0 3 0 1 0 25C 50.04 8.58 0 0 3 0 1 0\n"
             "100 60 1 0 0.25 1 3 1 07C 95.03 8.53 0 0 3 0 1 0 25C 50.04 8.58 0 0 3 0 1 0\n",
             out, r);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_TRUE(out[0].Runways.empty());
  EXPECT_TRUE(out[0].Taxiways.empty());
  EXPECT_EQ(r.Malformed, 4);
  EXPECT_EQ(r.FirstProblems[0], "apt.dat: line 4: row 10 is incomplete or its length or width is out of range");
}

TEST(NavDat, BothLayoutsGiveTheSameFields) {
  constexpr const char* k810 =
      "I\n810 Version - data cycle 2013.10\n"
      "2  50.04 008.30 0 344 50 0.0 CHA  CHARLIE NDB\n"
      "3  50.05 008.64 0 11420 130 1.0 FFM  FRANKFURT VOR-DME\n"
      "4  50.04 008.58 0 11070 18 69.8 IFEL EDDF 07L ILS-cat-III\n"
      "6  50.03 008.52 0 11070 10 300069.8 IFEL EDDF 07L GS\n"
      "7  49.98 008.39 0 0 0 69.8 ---- EDDF 07L OM\n"
      "12 50.05 008.64 0 11420 130 0.0 FFM  FRANKFURT VOR-DME\n"
      "12 50.04 008.58 0 11070 18 0.0 IFEL EDDF 07L DME-ILS\n"
      "3  50.05 bad 0 11420 130 1.0 FFM  FRANKFURT VOR-DME\n"
      "99\n";
  std::vector<SrcNavaid> out;
  SourceReport r;
  r.File = "nav.dat";
  ReadNavDat(k810, out, r);
  ASSERT_EQ(out.size(), 7u);
  EXPECT_EQ(out[0].Row, kNdb);
  EXPECT_EQ(out[0].Frequency, 344);
  EXPECT_EQ(out[0].Ident, "CHA");
  EXPECT_EQ(out[0].Name, "CHARLIE NDB");
  EXPECT_EQ(out[1].Name, "FRANKFURT VOR-DME");
  EXPECT_EQ(out[2].Airport, "EDDF");
  EXPECT_EQ(out[2].Runway, "07L");
  EXPECT_EQ(out[2].Name, "ILS-cat-III");
  EXPECT_DOUBLE_EQ(out[3].Extra, 300069.8);
  EXPECT_EQ(out[4].Runway, "07L");
  EXPECT_EQ(out[5].Airport, "");                 // a VOR's DME belongs to no airport
  EXPECT_EQ(out[6].Airport, "EDDF");             // the ILS's DME does
  EXPECT_EQ(out[6].Runway, "07L");
  EXPECT_EQ(r.Malformed, 1);
  EXPECT_EQ(r.FirstProblems[0], "nav.dat: line 10: navaid row is incomplete or a value is out of range");

  constexpr const char* k1100 =
      "I\n1100 Version - data cycle 2025.01\n"
      "3  50.05 008.64 0 11420 130 1.0 FFM ENRT ED FRANKFURT VOR-DME\n"
      "4  50.04 008.58 0 11070 18 69.8 IFEL EDDF ED 07L ILS-cat-III\n"
      "99\n";
  std::vector<SrcNavaid> out2;
  SourceReport r2;
  ReadNavDat(k1100, out2, r2);
  ASSERT_EQ(out2.size(), 2u);
  EXPECT_EQ(out2[0].Region, "ED");
  EXPECT_EQ(out2[0].Airport, "");
  EXPECT_EQ(out2[0].Name, "FRANKFURT VOR-DME");
  EXPECT_EQ(out2[1].Airport, "EDDF");
  EXPECT_EQ(out2[1].Runway, "07L");
  EXPECT_EQ(out2[1].Name, "ILS-cat-III");
}

TEST(FixAndAwyDat, RowsOfBothVersions) {
  std::vector<SrcFix> fixes;
  SourceReport rf;
  ReadFixDat("I\n600 Version\n 50.1 008.2 ABMAL\n 91.0 008.2 WRONG\n99\n", fixes, rf);
  ASSERT_EQ(fixes.size(), 1u);
  EXPECT_EQ(fixes[0].Ident, "ABMAL");
  EXPECT_EQ(rf.Malformed, 1);
  ReadFixDat("I\n1101 Version\n 50.1 008.2 ABMAL ENRT ED 2\n 50.2 008.3 DF123 EDDF ED 4\n99\n", fixes, rf);
  ASSERT_EQ(fixes.size(), 3u);
  EXPECT_EQ(fixes[1].Region, "ED");
  EXPECT_FALSE(fixes[1].Terminal);
  EXPECT_TRUE(fixes[2].Terminal);

  std::vector<SrcAirway> awy;
  SourceReport ra;
  ReadAwyDat("I\n640 Version\nABMAL 50.1 8.2 FFM 50.05 8.64 1 050 245 Y180-T161\n"
             "ABMAL 50.1 8.2 FFM 50.05 8.64 3 050 245 Z1\n99\n",
             awy, ra);
  ASSERT_EQ(awy.size(), 2u);  // one row carrying two airways
  EXPECT_EQ(awy[0].Name, "Y180");
  EXPECT_EQ(awy[1].Name, "T161");
  EXPECT_FALSE(awy[0].High);
  EXPECT_EQ(awy[0].Base, 50);
  EXPECT_EQ(awy[0].Top, 245);
  EXPECT_TRUE(awy[0].From.HasPosition);
  EXPECT_EQ(ra.Malformed, 1);
  EXPECT_EQ(ra.FirstProblems[0], ": line 4: airway level is neither 1 (low) nor 2 (high)");

  std::vector<SrcAirway> awy11;
  SourceReport r11;
  ReadAwyDat("I\n1100 Version\nABMAL ED 11 FFM ED 3 F 2 245 460 UN850\n99\n", awy11, r11);
  ASSERT_EQ(awy11.size(), 1u);
  EXPECT_EQ(awy11[0].Direction, 'F');
  EXPECT_TRUE(awy11[0].High);
  EXPECT_EQ(awy11[0].To.Kind, 3);
  EXPECT_FALSE(awy11[0].To.HasPosition);
}

}  // namespace
}  // namespace orv::dbm
