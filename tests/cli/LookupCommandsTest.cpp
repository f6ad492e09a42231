// The look-up commands on an application folder whose database files are
// written by the program's own writers.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/MagVar.h"
#include "database/NavaidFiles.h"
#include "database/WorldShapes.h"
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
  a.City = "Frankfurt";
  a.State = "Hessen";
  a.Country = "Germany";
  a.Lat = lat;
  a.Lon = lon;
  return a;
}

std::vector<AirportRec> Airports() {
  AirportRec eddf = Airport("EDDF", "Frankfurt Main", 50.5f, 8.25f);
  eddf.Elevation = 364;
  RunwayRec rwy;
  rwy.LowEnd.Assign("07C");
  rwy.HighEnd.Assign("25C");
  rwy.LengthFeet = 13123;
  rwy.Surface = 4;
  rwy.HighIls.Assign("IFRA");
  RunwayRec north = rwy;
  north.LowEnd.Assign("37");
  north.HighEnd.Assign("41");
  north.LengthFeet = 3000;
  north.Surface = 254;
  north.HighIls.Assign("");
  RunwayRec heli = north;
  heli.LowEnd.Assign("00H");
  heli.HighEnd.Assign("");
  heli.LengthFeet = 60;
  heli.Surface = 1;
  eddf.Runways = {rwy, north, heli};
  IlsRec ils;
  ils.Ident.Assign("IFRA");
  ils.Name.Assign("Frankfurt 25C");
  ils.Values[0] = 110.3f;
  ils.Values[1] = 249.4f;
  eddf.Ils = {ils};
  FrequencyRec atis;
  atis.Kind = 1;
  atis.Frequency = 118.025f;
  FrequencyRec tower = atis;
  tower.Kind = 6;
  tower.Frequency = 119.9f;
  eddf.Frequencies = {atis, tower};

  AirportRec eddm = Airport("EDDM", "M\xFCnchen", 48.25f, 11.75f);
  eddm.City = "M\xFCnchen";
  eddm.State = "Bayern";
  return {eddf, eddm};
}

// One record in every navaid file (an empty one would end the start-up).
NavaidTables Navaids() {
  NavaidTables n;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  IntersectionRec x;
  x.Index = 3;
  x.Ident.Assign("RUDUS");
  x.Name.Assign("RUDUS");
  PlaceIntersection(n, x, {}, {});
  x.Index = 4;
  x.Ident.Assign("KOLAD");
  x.Name.Assign("KOLAD");
  PlaceIntersection(n, x, {}, {});
  AirwayRec w;
  w.Name.Assign("UL607");
  w.FromIndex = 3;
  w.ToIndex = 4;
  n.JetAirways = {w};
  w.Name.Assign("V23");
  w.FromIndex = 4;
  w.ToIndex = 3;
  n.VictorAirways = {w};
  FixRec fix;
  fix.Ident.Assign("DF123");
  fix.Name.Assign("DF123");
  n.Fixes = {fix};
  VorRec vor;
  vor.Ident.Assign("FFM");
  vor.Name.Assign("FRANKFURT");
  n.Vors = {vor};
  NdbRec ndb;
  ndb.Ident.Assign("FW");
  ndb.Name.Assign("FRANKFURT WEST");
  n.Ndbs = {ndb};
  return n;
}

// A complete folder: the airport hierarchy, airports, navaids, one airspace
// and one coastline, and a variation grid with two marked cells.
fs::path BuildFolder(const fs::path& root) {
  NavaidTables n = Navaids();
  AirspaceTables shapes;
  const ShapePoint square[] = {{50, 8}, {50, 9}, {51, 9}, {51, 8}, {50, 8}};
  AirspaceRec zone;
  zone.Ident.Assign("EDDF");
  zone.Class.Assign("C");
  AddAirspace(shapes, zone, square);
  AddWorldShape(shapes.WorldPolygons, shapes.WorldPolygonPoints, 0, 1, square);
  AddWorldShape(shapes.WorldLines, shapes.WorldLinePoints, 0, 1, square);
  std::vector<uint8_t> grid = BuildMagVarFile([](int lat, int lon) {
    if (lat == 50 && lon == 8) return 2.35;
    if (lat == -34 && lon == 289) return -1.25;
    return 0.0;
  });

  test::AppFolderBuilder b(root);
  b.Put("\\magvar09.swf", Text(grid))
      .Put(b.Db("region.orv"), Text(BuildRegionFile({"Europe"})))
      .Put(b.Db("country.orv"), Text(BuildCountryFile({{"Germany", "Europe"}})))
      .Put(b.Db("state.orv"), Text(BuildStateFile({{"Hessen", "Germany"}, {"Bayern", "Germany"}})))
      .Put(b.Db("city.orv"),
           Text(BuildCityFile({{"Frankfurt", "Hessen", "Germany"}, {"M\xFCnchen", "Bayern", "Germany"}})))
      .Put(b.Db("airport.orv"), Text(BuildAirportFile(Airports())))
      .Empty(b.Db("taxi.orv"))
      .Empty(b.Db("poly.orv"))
      .Empty(b.Db("marker.orv"))
      .Put("\\database\\dijinter.orv", Text(BuildDijinterFile(n)))
      .Put("\\database\\vicways.orv", Text(BuildAirwayFile(n.VictorAirways)))
      .Put("\\database\\jetways.orv", Text(BuildAirwayFile(n.JetAirways)))
      .Put("\\database\\fixes.orv", Text(BuildFixesFile(n.Fixes)))
      .Put("\\database\\vor.orv", Text(BuildVorFile(n.Vors)))
      .Put("\\database\\ndb.orv", Text(BuildNdbFile(n.Ndbs)))
      .Put("\\database\\airspace.orv", Text(BuildAirspaceFile(shapes)))
      .Empty("\\database\\msa.orv")
      .Put("\\map\\worldpolygon.bin", Text(BuildWorldPolygonFile(shapes)))
      .Put("\\map\\worldline.bin", Text(BuildWorldLineFile(shapes)))
      .Build();
  return root;
}

using test::CliRun;

CliRun RunCli(const fs::path& dir, cli::Args command) { return test::RunCli(std::move(command), dir); }

class LookupCommands : public ::testing::Test {
protected:
  static void SetUpTestSuite() {
    dir_ = new test::TempDir;
    BuildFolder(dir_->Path());
  }
  static void TearDownTestSuite() {
    delete dir_;
    dir_ = nullptr;
  }
  static CliRun Cmd(cli::Args command) { return RunCli(dir_->Path(), std::move(command)); }
  static test::TempDir* dir_;
};

test::TempDir* LookupCommands::dir_ = nullptr;

TEST_F(LookupCommands, FindPrintsTheWindowsListLines) {
  const std::pair<cli::Args, std::string> cases[] = {
      {{"find", "airport", "frankfurt"}, "EDDF  Frankfurt Main\n"},
      {{"find", "AIRPORT", "ed"}, "EDDF  Frankfurt Main\nEDDM  M\xC3\xBCnchen\n"},
      {{"find", "airport", "m\xC3\xBCn"}, "EDDM  M\xC3\xBCnchen\n"},  // typed in UTF-8, matched in 8 bits
      {{"find", "airport", "frankfurt", "main"}, "EDDF  Frankfurt Main\n"},  // the words are one text
      {{"find", "airport", "zzz"}, "No Airport found\n"},
      {{"find", "vor", "ffm"}, "FFM  FRANKFURT\n"},
      {{"find", "vor", "zzz"}, "No VOR found\n"},
      {{"find", "ndb", "west"}, "FW  FRANKFURT WEST\n"},
      {{"find", "ndb", "zzz"}, "No NDB found\n"},
      {{"find", "ils", "ifra"}, "IFRA  Frankfurt 25C\n"},
      {{"find", "ils", "zzz"}, "No ILS found\n"},
      {{"find", "int", ""}, "RUDUS  RUDUS\nKOLAD  KOLAD\n"},
      {{"find", "int", "zzz"}, "No intersection found\n"},
      {{"find", "fix", "df"}, "DF123  DF123\n"},
      {{"find", "fix", "zzz"}, "No GPS Fix found\n"},
      {{"find", "victor", "v2"}, "V23  KOLAD << RUDUS\n"},
      {{"find", "victor", "zzz"}, ""},
      {{"find", "jet", "ul"}, "UL607  RUDUS << KOLAD\n"},
      {{"find", "jet", "zzz"}, "No jet airway found\n"},
  };
  for (const auto& [args, expected] : cases) {
    CliRun r = Cmd(args);
    EXPECT_EQ(r.code, 0) << args[1] << " " << args[2];
    EXPECT_EQ(r.out, expected) << args[1] << " " << args[2];
    EXPECT_EQ(r.err, "") << args[1] << " " << args[2];
  }
  EXPECT_EQ(Cmd({"find", "navaid", "x"}).code, 2);
  EXPECT_EQ(Cmd({"find", "vor"}).code, 2);
}

TEST_F(LookupCommands, AirportPrintsTheInformationLines) {
  CliRun r = Cmd({"airport", "eddf"});
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out,
            "Frankfurt Main (EDDF)\n"
            "Frankfurt Germany Hessen\n"
            "364 ft\n"
            "N50\xC2\xB0" "30.00'  E008\xC2\xB0" "15.00'\n"
            "\n"
            "Rwy: 07C - 25C / 13123 ft  Asphalt\n"
            "Rwy: N - S / 3000 ft  Unknown\n"
            "Heli  00H / 60 ft  Grass\n"
            "ILS IFRA  110.300  249\xC2\xB0\n"
            "ATIS: 118.025\n"
            "Tower: 119.900\n");
  EXPECT_EQ(Cmd({"airport", "EDDM"}).out,
            "M\xC3\xBCnchen (EDDM)\nM\xC3\xBCnchen Germany Bayern\n0 ft\n"
            "N48\xC2\xB0" "15.00'  E011\xC2\xB0" "45.00'\n\n");

  CliRun miss = Cmd({"airport", "KJFK"});
  EXPECT_EQ(miss.code, 1);
  EXPECT_EQ(miss.out, "");
  EXPECT_EQ(miss.err, "No airport for this ICAO code found!!\n");
  EXPECT_EQ(Cmd({"airport"}).code, 2);
}

TEST_F(LookupCommands, MagvarReadsTheGridAtTheWholeDegreesBelow) {
  // 2.35 and -1.25 degrees are stored as 428 and -228 units of 1/182.04.
  EXPECT_EQ(Cmd({"magvar", "50.99", "8.01"}).out, "2.35 E002\n");
  EXPECT_EQ(Cmd({"magvar", "50", "8"}).out, "2.35 E002\n");
  EXPECT_EQ(Cmd({"magvar", "49.99", "8"}).out, "0.00  000\n");
  // South and west floor away from zero: -33.2 / -70.5 is the cell -34 / 289.
  EXPECT_EQ(Cmd({"magvar", "-33.2", "-70.5"}).out, "-1.25 W001\n");
  EXPECT_EQ(Cmd({"magvar", "-33.2", "289.5"}).out, "-1.25 W001\n");

  CliRun bad = Cmd({"magvar", "91", "0"});
  EXPECT_EQ(bad.code, 2);
  EXPECT_EQ(bad.err, "magvar: latitude beyond 90 degrees\nusage: orvanta-cli magvar LAT LON\n");
  EXPECT_EQ(Cmd({"magvar", "x", "0"}).err, "magvar: not a number: 'x'\nusage: orvanta-cli magvar LAT LON\n");
  EXPECT_EQ(Cmd({"magvar", "1"}).code, 2);
}

TEST(LookupCommandsFolder, AStartUpThatEndsShowsItsMessages) {
  // Text where the region file belongs: the reader's refusal comes first,
  // then the start-up's own message.
  test::TempDir dir;
  test::AppFolderBuilder b(dir.Path());
  b.Put(b.Db("region.orv"), "ORVANTA TEST PLACEHOLDER").Build();
  CliRun r = RunCli(dir.Path(), {"find", "vor", "x"});
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.out, "");  // no progress texts
  EXPECT_EQ(r.err,
            "region.orv: record 0 at byte 0: count 1096176207 runs past the end of the file\n"
            "       You have to run the Database Manager first!!        \n"
            "File missing or zero bytes! Check ORV_Info.log for details!\n");
}

}  // namespace
}  // namespace orv
