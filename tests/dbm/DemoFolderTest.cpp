// The demo application folder built from data/demo loads through the
// program's own start-up, with real counts in every array.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "core/FileIo.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "dbm/DbmCommand.h"
#include "planning/Aircraft.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"
#include "planning/WPTable.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

// The repository, found above the test program (build/<preset>/tests/).
fs::path RepoRoot() {
  std::error_code ec;
  fs::path dir = fs::read_symlink("/proc/self/exe", ec).parent_path();
  for (int up = 0; up < 6 && !dir.empty(); ++up, dir = dir.parent_path())
    if (fs::exists(dir / "data" / "demo" / "apt.dat.gz")) return dir;
  return {};
}

const AirportRec* FindAirport(const NavDatabase& db, std::string_view icao) {
  for (const AirportRec& a : db.Airports.Airports)
    if (a.Icao.Trimmed() == icao) return &a;
  return nullptr;
}

// The codes of the rows a navaid plan puts between two airports, with the
// default sector (50 NM long, 30 degrees wide, great circle).
std::vector<std::string> NavaidPlanCodes(NavDatabase& db, const AppState& state, std::string_view dep,
                                         std::string_view dest) {
  test::ScriptedUi ui;
  AircraftDb aircraft;
  int16_t number = 1;
  LoadAircraft(state.Folder.Resolve(kAircraftFile), number, aircraft, ui);
  NavLookupDb nav(db, state.ParkingNames);
  FlightPlan plan;
  PlanPanel panel;
  PlanEditor editor(plan, panel, aircraft.Current, nav);
  const int ends[2] = {nav.FindAirport(dep), nav.FindAirport(dest)};
  if (ends[0] < 0 || ends[1] < 0) return {"unknown airport"};
  for (int k = 0; k < 2; ++k) plan.Waypoints[static_cast<std::size_t>(k)] = AirportRow(db.Airports, ends[k]);
  plan.DepartureAirport = ends[0];
  plan.DestinationAirport = ends[1];
  editor.SetDirectPlan(1);
  const int row = editor.PrepareRouteCreation();
  RouteSearch search;
  RouteBuilder builder(editor, aircraft.Current, db.Navaids, search, ui);
  NavaidPlanOptions options;
  options.GreatCircle = true;  // GC=1, the default
  if (!builder.CreateNavaidPlan(row, options)) return {"no plan"};
  std::vector<std::string> codes;
  for (int r = 1; r < plan.LastRow; ++r) codes.push_back(plan.Waypoints[static_cast<std::size_t>(r)].Code.Str());
  return codes;
}

TEST(DemoFolder, BuildsAndLoadsThroughTheStartUp) {
  fs::path repo = RepoRoot();
  ASSERT_FALSE(repo.empty()) << "data/demo not found above the test program";
  test::TempDir dir;
  std::ostringstream out, err;
  int rc = dbm::RunDbm({"--xplane", (repo / "data" / "demo").string(), "--out", dir.Path().string(), "--wmm",
                        (repo / "data" / "wmm" / "WMM2025.COF").string(), "--date", "2026.0", "--sim", "fs9"},
                       out, err);
  ASSERT_EQ(rc, 0) << err.str();
  EXPECT_NE(out.str().find("\\database\\FS09\\airport.orv"), std::string::npos);
  EXPECT_FALSE(fs::exists(dir.Path() / "database" / "FS10"));

  NavDatabase db;
  DatabaseLoader loader(db);
  test::FakeClock clock;
  test::ScriptedUi ui;
  AppState state(AppFolder(dir.Path()));
  StartupResult r = RunStartup(state, ui, clock, loader);
  ASSERT_FALSE(r.ProgramEnds()) << (r.Messages.empty() ? std::string() : r.Messages.front());
  EXPECT_EQ(state.DatabaseFolder, "\\database\\FS09\\");

  for (const ArrayCount& c : loader.Counts()) {
    if (c.Name == "States" || c.Name == "Cities" || c.Name == "MsaCells" || c.Name == "UserWaypoints" ||
        c.Name == "UserObjects")
      continue;  // the demo sources have no state, city, MSA or user data
    EXPECT_GT(c.Count, 0) << c.Name;
  }

  const AirportRec* eddf = FindAirport(db, "EDDF");
  const AirportRec* kjfk = FindAirport(db, "KJFK");
  ASSERT_NE(eddf, nullptr);
  ASSERT_NE(kjfk, nullptr);
  EXPECT_NEAR(eddf->Lat, 50.03, 0.05);
  EXPECT_NEAR(eddf->Lon, 8.56, 0.08);
  EXPECT_EQ(eddf->Country, "Germany");
  EXPECT_EQ(kjfk->Country, "United States");
  EXPECT_GE(eddf->RunwayCount(), 3);
  EXPECT_GE(eddf->IlsCount(), 4);
  EXPECT_GT(eddf->FrequencyCount(), 0);
  EXPECT_GE(eddf->ParkingCount(), 1);  // the 2013 data has one start position there
  EXPECT_GT(eddf->Ils[0].Values[0], 108.0f);  // frequency in MHz
  // Frankfurt's variation in 2026 is a little under 4 degrees east.
  EXPECT_NEAR(eddf->MagVar, 3.8, 0.8);
  // KJFK's variation is about 13 degrees west.
  EXPECT_NEAR(kjfk->MagVar, -12.8, 1.0);
  // Every ILS found its runway end.
  int linked = 0;
  for (const RunwayRec& rw : eddf->Runways) linked += (rw.LowIlsIndex >= 0) + (rw.HighIlsIndex >= 0);
  EXPECT_GE(linked, 4);

  // The airway graph is walkable: some intersection has both kinds of links.
  int withLow = 0, withHigh = 0;
  for (int32_t i = 0; i <= db.Navaids.MaxIntersectionIndex; ++i) {
    withLow += !db.Navaids.LowAirways(i).empty();
    withHigh += !db.Navaids.HighAirways(i).empty();
  }
  EXPECT_GT(withLow, 100);
  EXPECT_GT(withHigh, 100);

  // Intersections are stored south to north, so the navaid plan's sliding
  // scan finds the points along the way, not the alphabetically first ones
  // (by ident, EDDL-EDDB went by ABAMI, ABLEG, ALOSI and ABGUS).
  for (int32_t i = 1; i <= db.Navaids.MaxIntersectionIndex; ++i)
    ASSERT_LE(db.Navaids.Intersections[static_cast<std::size_t>(i) - 1].Lat, db.Navaids.Intersections[static_cast<std::size_t>(i)].Lat) << i;
  EXPECT_EQ(NavaidPlanCodes(db, state, "EDDL", "EDDB"),
            (std::vector<std::string>{"BAM", "RENNE", "WRB", "WERRA", "BERDI", "DP514", "RASIK", "DP511", "HOZ"}));
  EXPECT_EQ(NavaidPlanCodes(db, state, "KJFK", "KBOS"), (std::vector<std::string>{"DPK", "MAD", "ORW", "SFZ"}));
}

TEST(DemoFolder, MissingSourceFolderIsAClearMessage) {
  std::ostringstream out, err;
  EXPECT_EQ(dbm::RunDbm({"--xplane", "/nonexistent/orvanta-data", "--out", "/tmp/x"}, out, err), 1);
  EXPECT_NE(err.str().find("the source folder /nonexistent/orvanta-data does not exist"), std::string::npos);
  std::ostringstream out2, err2;
  EXPECT_EQ(dbm::RunDbm({"--out", "/tmp/x"}, out2, err2), 2);
  EXPECT_NE(err2.str().find("usage: orvanta-dbm --xplane DIR --out APPDIR"), std::string::npos);
}

TEST(DemoFolder, FolderWithoutAptDatNamesTheMissingFile) {
  test::TempDir dir;
  dir.Write("nav.dat", "I\n810 Version\n99\n");
  std::ostringstream out, err;
  EXPECT_EQ(dbm::RunDbm({"--xplane", dir.Path().string(), "--out", (dir.Path() / "out").string()}, out, err), 1);
  EXPECT_NE(err.str().find("no airport file (apt.dat, plain or .gz) under"), std::string::npos) << err.str();
}

TEST(DemoFolder, OptionalSourcesFromAFlatFolder) {
  test::TempDir dir;
  dir.Write("src/apt.dat",
            "I\n1000 Version - data cycle 2101, test\n"
            "1 364 0 0 EDDF Frankfurt am Main\n"
            "100 60.00 1 0 0.25 1 3 1 07C 50.03274 8.53466 0 0 3 0 1 0 25C 50.04538 8.58696 0 0 3 0 1 0\n"
            "54 11990 TWR\n99\n");
  dir.Write("src/nav.dat", "I\n810 Version\n3 50.05 8.64 0 11420 130 1.0 FFM FRANKFURT VOR-DME\n99\n");
  dir.Write("src/fix.dat", "I\n600 Version\n 50.1 008.2 ANEKI\n99\n");
  dir.Write("src/awy.dat", "I\n640 Version\nANEKI 50.1 8.2 FFM 50.05 8.64 2 245 460 UN850\n99\n");
  dir.Write("air.txt", "AC D\nAN TEST ZONE\nV X=50:00:00 N 008:30:00 E\nDC 3\n");
  dir.Write("cifp/EDDF.dat", "SID:010,5,ANEK1F,RW25C,ANEKI,ED,E,A,E  A, ,   ,TF;\n");
  std::ostringstream out, err;
  fs::path app = dir.Path() / "app";
  ASSERT_EQ(dbm::RunDbm({"--xplane", (dir.Path() / "src").string(), "--out", app.string(), "--openair",
                         (dir.Path() / "air.txt").string(), "--cifp", (dir.Path() / "cifp").string(), "--date",
                         "2025.5", "--sim", "fsx"},
                        out, err),
            0)
      << err.str();
  EXPECT_NE(out.str().find("Reading airspaces from"), std::string::npos);
  EXPECT_NE(out.str().find("  1 SID and 0 STAR blocks"), std::string::npos) << out.str();
  EXPECT_EQ(fs::file_size(app / "database" / "sid.orv"), 56u + 61u);
  EXPECT_EQ(fs::file_size(app / "database" / "star.orv"), 56u);
  EXPECT_TRUE(fs::exists(app / "database" / "FS10" / "airport.orv"));
  std::string readme = ReadWholeText(app / "README.txt").value_or("");
  EXPECT_NE(readme.find("Airspaces: OpenAir file"), std::string::npos);
  EXPECT_EQ(readme.find("DERIVED"), std::string::npos);
  EXPECT_EQ(ReadWholeText(app / "database" / "AIRAC.INI").value_or(""), "AIRAC cycle 2101\r\nX-Plane data\r\n");

  NavDatabase db;
  DatabaseLoader loader(db);
  test::FakeClock clock;
  test::ScriptedUi ui;
  AppState state{AppFolder(app)};
  StartupResult r = RunStartup(state, ui, clock, loader);
  ASSERT_FALSE(r.ProgramEnds());
  ASSERT_EQ(db.Shapes.Airspaces.size(), 1u);  // the OpenAir zone instead of the derived one
  EXPECT_EQ(db.Shapes.Airspaces[0].Name.Str(), "TEST ZONE");
  ASSERT_EQ(db.Navaids.JetAirways.size(), 1u);
  EXPECT_TRUE(db.Navaids.VictorAirways.empty());  // the stand-in record is passed over
}

}  // namespace
}  // namespace orv
