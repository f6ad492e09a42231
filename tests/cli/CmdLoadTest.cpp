#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "core/FileIo.h"
#include "core/Startup.h"
#include "support/AppFolderBuilder.h"
#include "support/TempDir.h"

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

TEST(CmdLoad, PrintsProgressThenEveryArrayCount) {
  test::TempDir dir;
  test::AppFolderBuilder(dir.Path()).Build();
  CliRun r = Load(dir.Path());
  EXPECT_EQ(r.code, 0);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.out, std::string(kProgress) +
                       "Regions 0\nCountries 0\nStates 0\nCities 0\nAirports 0\nVors 0\nNdbs 0\nIntersections 0\n"
                       "Fixes 0\nVictorAirways 0\nJetAirways 0\nAirspaces 0\nMsaCells 0\nTaxiSegments 0\n"
                       "GroundPolygons 0\nMarkers 0\nWorldPolygons 0\nWorldLines 0\nUserWaypoints 0\nUserObjects 0\n");
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
  EXPECT_EQ(r.err,
            "       You have to run the Database Manager first!!        \n"
            "File missing or zero bytes! Check ORV_Info.log for details!\n");
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
  std::optional<std::string> LoadFile(StartupFile file, const fs::path&, Bytes& bytes) override {
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
  EXPECT_EQ(out.str(), std::string(kProgress) + "Vors 3720\nAirports 12\n");
}

}  // namespace
}  // namespace orv
