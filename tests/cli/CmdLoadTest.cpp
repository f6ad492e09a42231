#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "core/FileIo.h"
#include "core/Startup.h"
#include "support/AppFolderBuilder.h"
#include "support/TempDir.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

struct CliRun {
  int code = -1;
  std::string out, err;
};

CliRun Load(const fs::path& dir, cli::Args extra = {}) {
  std::ostringstream out, err;
  cli::Args args = {"--appdir", dir.string(), "load"};
  args.insert(args.end(), extra.begin(), extra.end());
  CliRun r;
  r.code = cli::Run(args, out, err);
  r.out = out.str();
  r.err = err.str();
  return r;
}

constexpr std::string_view kProgress =
    "...loading airports for FS2004\n...loading taxiways for FS2004\n...loading polygons for FS2004\n"
    "...loading markers for FS2004\n...loading intersections\n...loading victor airways\n"
    "...loading jet airways\n...loading GPS fixes\n...loading VORs\n...loading NDBs\n...loading control zones\n"
    "...loading minimal safety altitude\n...loading world polygons\n...loading world lines\n"
    "...linking ILS to runways\n";

constexpr std::string_view kFatal =
    "       You have to run the Database Manager first!!        \n"
    "File missing or zero bytes! Check ORV_Info.log for details!\n";

TEST(CmdLoad, ReadsTheDatabaseAndPrintsEveryArrayCount) {
  test::TempDir dir;
  test::AppFolderBuilder(dir.Path()).Build();
  CliRun r = Load(dir.Path());
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "");
  // The empty taxiway, polygon, marker and MSA files are passed over; the
  // progress texts are shown all the same.
  EXPECT_EQ(r.out, std::string(kProgress) +
                       "Regions 2\nCountries 2\nStates 2\nCities 2\nAirports 2\nVors 1\nNdbs 1\nIntersections 2\n"
                       "Fixes 1\nVictorAirways 1\nJetAirways 1\nAirspaces 1\nMsaCells 0\nTaxiSegments 0\n"
                       "GroundPolygons 0\nMarkers 0\nWorldPolygons 1\nWorldLines 1\nUserWaypoints 0\nUserObjects 0\n");
  EXPECT_TRUE(fs::exists(dir.Path() / "ORV_Info.LOG"));
  EXPECT_EQ(Load(dir.Path(), {"extra"}).code, 2);
}

TEST(CmdLoad, FatalPathPrintsTheMessageAndFails) {
  test::TempDir dir;
  test::AppFolderBuilder b(dir.Path());
  b.Empty(b.Db("airport.orv")).Build();
  CliRun r = Load(dir.Path());
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.out, "...loading airports for FS2004\n");
  EXPECT_EQ(r.err, std::string(kFatal));
}

// A file the reader refuses ends the start-up through the fatal path: the
// reader's message naming the file and the record first, then the fatal text.
TEST(CmdLoad, CorruptFileShowsTheReadersMessageThenTheFatalText) {
  {
    test::TempDir dir;
    test::AppFolderBuilder b(dir.Path());
    // One whole 56-byte VOR and ten bytes of a second one.
    std::string vors(56, ' ');
    vors.replace(0, 3, "FFM");
    vors += std::string(10, 'X');
    b.Put("\\database\\vor.orv", vors).Build();
    CliRun r = Load(dir.Path());
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out.substr(r.out.size() - 16), "...loading VORs\n");
    EXPECT_EQ(r.err, "vor.orv: record 2 at byte 56: the record is cut short after 10 of its 56 bytes\n" +
                         std::string(kFatal));
    // The log was written with every line, those not reached empty.
    std::optional<std::string> log = ReadWholeText(dir.Path() / "ORV_Info.LOG");
    ASSERT_TRUE(log);
    std::vector<std::string> lines = SplitLines(*log);
    ASSERT_EQ(lines.size(), 31u);
    EXPECT_EQ(lines[14], "66 > " + (dir.Path() / "database" / "vor.orv").string());
    EXPECT_EQ(lines[15], "");
  }
  {
    test::TempDir dir;
    test::AppFolderBuilder b(dir.Path());
    // Count 1000 with room for no airport at all.
    b.Put(b.Db("airport.orv"), std::string("\xE8\x03\x00\x00", 4)).Build();
    CliRun r = Load(dir.Path());
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "...loading airports for FS2004\n");
    EXPECT_EQ(r.err, "airport.orv: record 0 at byte 0: count 1000 runs past the end of the file\n" +
                         std::string(kFatal));
  }
}

TEST(CmdLoad, MessagesAreShownInUtf8) {
  test::TempDir dir;
  fs::path app = dir.Path() / "M\xC3\xBCnchen";  // "München" as the file system spells it
  test::AppFolderBuilder b(app);
  b.Drop("\\database\\ndb.orv").Build();
  CliRun r = Load(app);
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.err, "File not found: " + (app / "database" / "ndb.orv").string() + "\n");
}

// A loader as the database layer plugs in.
class CountingLoader : public StartupLoader {
public:
  int vors = 0;
  std::optional<std::string> LoadFile(StartupFile file, const fs::path&, std::span<const uint8_t> bytes) override {
    if (file == StartupFile::Vors) vors = static_cast<int>(bytes.size()) * 155;
    return std::nullopt;
  }
  std::vector<ArrayCount> Counts() const override { return {{"Vors", vors}, {"Airports", 12}}; }
};

TEST(CmdLoad, TakesAnyLoader) {
  test::TempDir dir;
  test::AppFolderBuilder(dir.Path()).Build();
  CountingLoader loader;
  std::ostringstream out, err;
  cli::Context ctx;
  ctx.appDir = dir.Path().string();
  EXPECT_EQ(cli::RunLoad(ctx, {}, out, err, loader), 0);
  EXPECT_EQ(out.str(), std::string(kProgress) + "Vors 8680\nAirports 12\n");
}

// The world fixture's folder through the command line: every array holds the
// count the fixture promises.
TEST(CmdLoad, WorldFolderLoadsWithThePromisedCounts) {
  const test::WorldFixtureOptions options{1, 0.05};
  test::TempDir dir;
  ASSERT_TRUE(test::WriteWorldFolder(dir.Path(), options));
  CliRun r = Load(dir.Path());
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "");
  const test::WorldCountsRec w = test::WorldCounts(options);
  EXPECT_EQ(w.Airports, 2000);
  EXPECT_EQ(w.Intersections, 2000);
  std::string expected = std::string(kProgress);
  const std::pair<const char*, int64_t> counts[] = {
      {"Regions", w.Regions},           {"Countries", w.Countries},         {"States", w.States},
      {"Cities", w.Cities},             {"Airports", w.Airports},           {"Vors", w.Vors},
      {"Ndbs", w.Ndbs},                 {"Intersections", w.Intersections}, {"Fixes", w.Fixes},
      {"VictorAirways", w.VictorAirways}, {"JetAirways", w.JetAirways},     {"Airspaces", w.Airspaces},
      {"MsaCells", w.MsaCells},         {"TaxiSegments", w.TaxiSegments},   {"GroundPolygons", w.GroundPolygons},
      {"Markers", w.Markers},           {"WorldPolygons", w.WorldPolygons}, {"WorldLines", w.WorldLines},
      {"UserWaypoints", w.UserWaypoints}, {"UserObjects", w.UserObjects}};
  for (const auto& [name, count] : counts) expected += std::string(name) + " " + std::to_string(count) + "\n";
  EXPECT_EQ(r.out, expected);
  // The figures at this scale, as the fixture's description gives them.
  EXPECT_EQ(w.Vors, 600);
  EXPECT_EQ(w.Ndbs, 500);
  EXPECT_EQ(w.Fixes, 3000);
  EXPECT_EQ(w.VictorAirways + w.JetAirways, 5000);
  EXPECT_EQ(w.Airspaces, 750);
  EXPECT_EQ(w.WorldPolygons, 200);
  EXPECT_EQ(w.Markers, 1000);
}

}  // namespace
}  // namespace orv
