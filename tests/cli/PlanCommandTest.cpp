#include <gtest/gtest.h>

#include <fstream>

#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"
#include "core/FileIo.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/NavaidFiles.h"
#include "database/WorldShapes.h"
#include "planning/Aircraft.h"
#include "support/AppFolderBuilder.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

std::string Text(const std::vector<uint8_t>& bytes) { return std::string(bytes.begin(), bytes.end()); }

AirportRec Airport(std::string_view icao, std::string_view name, float lat, float lon) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(name);
  a.Lat = lat;
  a.Lon = lon;
  RunwayRec r;
  r.LowEnd.Assign("09");
  r.HighEnd.Assign("27");
  r.Lat = lat;
  r.Lon = lon;
  r.TrueHeading = 90;
  r.LengthFeet = 9000;
  a.Runways = {r};
  return a;
}

AirwayLinkRec Link(int target, std::string_view airway, float nm, std::string_view mea1) {
  AirwayLinkRec l;
  l.Target = target;
  l.AirwayName.Assign(airway);
  l.Distance = nm;
  l.Mea1.Assign(mea1);
  l.Mea2.Assign("FL450");
  return l;
}

// An application folder on the equator: AAAA at 0/0 and BBBB at 0/4.5, a
// jet airway AAA-CCC-EEE of 100 NM and a longer one over BBB and DDD, and one
// victor airway AAA-EEE; ZZZZ far away has no airway near it.
fs::path BuildFolder(const fs::path& root) {
  test::AppFolderBuilder b(root);
  b.Put(b.Db("region.orv"), Text(BuildRegionFile({"Testland"})));
  b.Put(b.Db("country.orv"), Text(BuildCountryFile({{"Testland", "Testland"}})));
  b.Put(b.Db("state.orv"), Text(BuildStateFile({{"Test", "Testland"}})));
  b.Put(b.Db("city.orv"), Text(BuildCityFile({{"Test", "Test", "Testland"}})));
  b.Put(b.Db("airport.orv"), Text(BuildAirportFile({Airport("AAAA", "Alpha Field", 0, 0),
                                                      Airport("BBBB", "Bravo Field", 0, 4.5f),
                                                      Airport("ZZZZ", "Zulu Field", 40, 40)})));
  b.Empty(b.Db("taxi.orv")).Empty(b.Db("poly.orv")).Empty(b.Db("marker.orv"));

  NavaidTables n;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  auto place = [&](int index, std::string_view ident, float lat, float lon, std::vector<AirwayLinkRec> low,
                   std::vector<AirwayLinkRec> high) {
    IntersectionRec rec;
    rec.Index = index;
    rec.Ident.Assign(ident);
    rec.Name.Assign(std::string(ident) + " INT");
    rec.Lat = lat;
    rec.Lon = lon;
    PlaceIntersection(n, rec, low, high);
  };
  place(1, "AAA", 0, 1, {Link(5, "V1", 180, "5000")}, {Link(2, "J1", 60, ""), Link(3, "J2", 50, "FL240")});
  place(2, "BBB", 0, 2, {}, {Link(1, "J1", 60, ""), Link(4, "J1", 60, "")});
  place(3, "CCC", 1, 2, {}, {Link(1, "J2", 50, "FL240"), Link(5, "J2", 50, "FL240")});
  place(4, "DDD", 0, 3, {}, {Link(2, "J1", 60, ""), Link(5, "J1", 60, "")});
  place(5, "EEE", 0, 4, {Link(1, "V1", 180, "5000")}, {Link(3, "J2", 50, "FL240"), Link(4, "J1", 60, "")});
  b.Put("\\database\\dijinter.orv", Text(BuildDijinterFile(n)));
  AirwayRec j2{FixedStr<8>("J2"), 1, 3, 0, FixedStr<5>("24000"), FixedStr<5>("45000")};
  AirwayRec v1{FixedStr<8>("V1"), 1, 5, 0, FixedStr<5>("5000"), FixedStr<5>("17999")};
  b.Put("\\database\\jetways.orv", Text(BuildAirwayFile({j2})));
  b.Put("\\database\\vicways.orv", Text(BuildAirwayFile({v1})));
  FixRec fix;
  fix.Ident.Assign("FIXA");
  fix.Lat = 30;
  b.Put("\\database\\fixes.orv", Text(BuildFixesFile({fix})));
  VorRec vor;
  vor.Ident.Assign("VVV");
  vor.Lat = 30;
  vor.Lon = 30;
  b.Put("\\database\\vor.orv", Text(BuildVorFile({vor})));
  NdbRec ndb;
  ndb.Ident.Assign("NNN");
  ndb.Lat = 30;
  ndb.Lon = 31;
  ndb.TypeText.Assign("5");
  b.Put("\\database\\ndb.orv", Text(BuildNdbFile({ndb})));
  // One small airspace, one coastline square and one line far from the route.
  AirspaceTables shapes;
  AirspaceRec zone;
  zone.Class.Assign("D");
  zone.Ident.Assign("CTR");
  zone.Name.Assign("Test zone");
  zone.PointCount = 3;
  shapes.Airspaces = {zone};
  shapes.AirspacePoints = {{30, 30}, {30, 31}, {31, 30}};
  WorldShapeRec land;
  land.PointCount = 3;
  land.Count = 4;
  land.North = 31;
  land.South = 30;
  land.East = 31;
  land.West = 30;
  shapes.WorldPolygons = {land};
  shapes.WorldPolygonPoints = {{30, 30}, {30, 31}, {31, 31}, {30, 30}};
  shapes.WorldLines = {land};
  shapes.WorldLinePoints = shapes.WorldPolygonPoints;
  b.Put("\\database\\airspace.orv", Text(BuildAirspaceFile(shapes)));
  b.Empty("\\database\\msa.orv");
  b.Put("\\map\\worldpolygon.bin", Text(BuildWorldPolygonFile(shapes)));
  b.Put("\\map\\worldline.bin", Text(BuildWorldLineFile(shapes)));

  AircraftRec jet;
  jet.Id = 0;
  jet.AircraftName = "Test Jet";
  jet.MaxFuel = 20000;
  jet.Ceiling = 410;
  jet.MaxWeight = 70000;
  jet.EmptyWeight = 40000;
  jet.LoadWeight = 15000;
  jet.ClimbRate = 2000;
  jet.ClimbSpeed = 280;
  jet.DescentRate = 2000;
  jet.DescentSpeed = 280;
  jet.CruiseSpeed = 240;
  jet.CruiseLevel = 250;
  jet.ApproachSpeed = 120;
  jet.MaxRange = 2400;
  AircraftRec slow = jet;
  slow.Id = 1;
  slow.AircraftName = "Slow Prop";
  slow.CruiseLevel = 90;
  b.Put(std::string(kAircraftFile), FormatAircraftFile({jet, slow}));
  return b.Build();
}

using test::CliRun;

CliRun Plan(const fs::path& dir, cli::Args extra) {
  extra.insert(extra.begin(), "plan");
  return test::RunCli(std::move(extra), dir);
}

TEST(PlanCommand, PrintsTheHighAltitudePlanTableAndTotals) {
  test::TempDir dir;
  fs::path app = BuildFolder(dir.Path());
  CliRun r = Plan(app, {"AAAA", "bbbb"});
  EXPECT_EQ(r.err, "");
  ASSERT_EQ(r.code, 0);
  // The 100 NM jet way over CCC; the totals as the plan panel and the Fuel
  // window show them.
  EXPECT_EQ(r.out,
            "Sym\tCode\tName\tFreq\tCourse\tDistance\tETA\tATA\tGS\tAltitude\tFuel (kg)\n"
            "\tAAAA\tAlpha Field\t      \t\t\t00:00\t\t\t\t\n"
            "\tAAA\tAAA INT\t      \t090\xC2\xB0/090\xC2\xB0\t060 NM\t00:15\t\t\t\t\n"
            "\tCCC\tCCC INT (J2 240-450)\t      \t045\xC2\xB0/045\xC2\xB0\t085 NM\t00:36\t\t\t\t\n"
            "\tEEE\tEEE INT (J2 240-450)\t      \t117\xC2\xB0/117\xC2\xB0\t134 NM\t01:10\t\t\t\t\n"
            "\tBBBB\tBravo Field\t      \t090\xC2\xB0/090\xC2\xB0\t030 NM\t01:25\t\t\t\t\n"
            "Total distance: 0309\n"
            "Total time: 01:25\n"
            "Flight level: 250\n"
            "Trip: 2997.72 kg\n");
}

TEST(PlanCommand, LowAltitudeAndLevelWarnings) {
  test::TempDir dir;
  fs::path app = BuildFolder(dir.Path());
  CliRun low = Plan(app, {"AAAA", "BBBB", "--low"});
  ASSERT_EQ(low.code, 0);
  EXPECT_NE(low.out.find("\tEEE\tEEE INT (V1 50-450)\t"), std::string::npos) << low.out;
  EXPECT_EQ(low.out.find("CCC"), std::string::npos);

  // The prop's FL90 is below J2's minimum: the plan stands, with the warning.
  CliRun slow = Plan(app, {"AAAA", "BBBB", "--aircraft", "1"});
  EXPECT_EQ(slow.code, 0);
  EXPECT_EQ(slow.err, "\nILLEGAL FLIGHT PLAN FOR CURRENT AIRCRAFT!    \n\n"
                      "24000 minimal altitude required on airway J2!    \n");
  EXPECT_NE(slow.out.find("\tCCC\t"), std::string::npos);
  // At FL250 the same aircraft may fly it.
  CliRun raised = Plan(app, {"AAAA", "BBBB", "--aircraft", "1", "--level", "FL250"});
  EXPECT_EQ(raised.err, "");
  EXPECT_NE(raised.out.find("Flight level: 250\n"), std::string::npos);

  // FUEL=1: the fuel column's heading and the trip both in pounds.
  std::ofstream(app / "orv.ini", std::ios::binary) << "FUEL=1\r\n";
  CliRun lbs = Plan(app, {"AAAA", "BBBB"});
  EXPECT_EQ(lbs.out.substr(0, lbs.out.find('\n')), "Sym\tCode\tName\tFreq\tCourse\tDistance\tETA\tATA\tGS\tAltitude\tFuel (lbs)");
  EXPECT_NE(lbs.out.find("\nTrip: 6593.40 lbs\n"), std::string::npos) << lbs.out;
}

TEST(PlanCommand, FailuresExitWithTheMessage) {
  test::TempDir dir;
  fs::path app = BuildFolder(dir.Path());
  CliRun far = Plan(app, {"AAAA", "ZZZZ"});
  EXPECT_EQ(far.code, 1);
  EXPECT_EQ(far.out, "");
  EXPECT_EQ(far.err, "No fix found within 500nm of destination waypoint!\n");

  CliRun unknown = Plan(app, {"AAAA", "QQQQ"});
  EXPECT_EQ(unknown.code, 1);
  EXPECT_EQ(unknown.err, "plan: unknown airport 'QQQQ'\n");

  EXPECT_EQ(Plan(app, {"AAAA"}).code, 2);
  EXPECT_EQ(Plan(app, {"AAAA", "BBBB", "--sideways"}).code, 2);
  EXPECT_EQ(Plan(app, {"AAAA", "BBBB", "--level"}).code, 2);

  // A folder whose database does not load.
  test::TempDir empty;
  test::AppFolderBuilder corrupt(empty.Path());
  corrupt.Put(corrupt.Db("region.orv"), "ORVANTA TEST PLACEHOLDER").Build();
  CliRun broken = Plan(empty.Path(), {"AAAA", "BBBB"});
  EXPECT_EQ(broken.code, 1);
  EXPECT_NE(broken.err.find("region.orv: record 0"), std::string::npos) << broken.err;
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

TEST(PlanCommand, SavesExportsAndOpensPlanFiles) {
  test::TempDir dir;
  fs::path app = BuildFolder(dir.Path());
  fs::path saved = dir.Path() / "trip.pln";
  fs::path outDir = dir.Path() / "out";
  CliRun built = Plan(app, {"AAAA", "BBBB", "--save", saved.string(), "--export", "pln,fms,ivao,pmdg", "--out",
                            outDir.string()});
  ASSERT_EQ(built.code, 0) << built.err;
  std::string table = built.out.substr(0, built.out.find("Saved: "));
  EXPECT_EQ(built.out.substr(table.size()),
            "Saved: " + saved.string() + "\nSaved: " + (outDir / "AAAABBBB.pln").string() + "\nSaved: " +
                (outDir / "AAAABBBB.fms").string() + "\nSaved: " + (outDir / "AAAABBBB-ivao.fpl").string() +
                "\nSaved: " + (outDir / "AAAABBBB-pmdg.rte").string() + "\nSaved: " +
                (outDir / "AAAABBBB-pmdg.rt2").string() + "\n");
  EXPECT_NE(Text(*ReadWholeFile(outDir / "AAAABBBB-ivao.fpl")).find("ROUTE=DCT AAA J2 EEE\r\n"), std::string::npos);

  // Opened again, the program's file gives the same table; the X-Plane file
  // the same rows, matched to the database, without the airways' limits.
  CliRun opened = Plan(app, {"--open", saved.string()});
  ASSERT_EQ(opened.code, 0) << opened.err;
  EXPECT_EQ(opened.out, table);
  CliRun fms = Plan(app, {"--open", (outDir / "AAAABBBB.fms").string(), "--save", (dir.Path() / "again.pln").string()});
  ASSERT_EQ(fms.code, 0) << fms.err;
  EXPECT_NE(fms.out.find("\tCCC\tCCC INT (J2)\t      \t045\xC2\xB0/045\xC2\xB0\t085 NM\t"), std::string::npos) << fms.out;
  EXPECT_NE(fms.out.find("Total distance: 0309\n"), std::string::npos);

  // Refusals: the message, exit 1.
  test::TempDir other;
  CliRun bad = Plan(app, {"--open", other.Write("x.pln", "not a plan").string()});
  EXPECT_EQ(bad.code, 1);
  EXPECT_EQ(bad.err, " Sorry! This is not a valid ORV flight plan!\n");
  std::string foreign = Text(*ReadWholeFile(saved));
  foreign.replace(foreign.find("DestAPCode=BBBB"), 15, "DestAPCode=QQQQ");
  CliRun missing = Plan(app, {"--open", other.Write("q.pln", foreign).string()});
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.err, "QQQQ is not in currently loaded database!\n");
  CliRun noOut = Plan(app, {"AAAA", "BBBB", "--export", "fms"});
  EXPECT_EQ(noOut.code, 2);
  EXPECT_EQ(noOut.err.rfind("plan: --export needs --out DIR\n", 0), 0u);
}

}  // namespace
}  // namespace orv
