#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "cli/Cli.h"
#include "database/AirportFile.h"
#include "database/NavaidFiles.h"
#include "simlink/FlightWorld.h"
#include "support/AppFolderBuilder.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

std::string Text(const std::vector<uint8_t>& bytes) { return std::string(bytes.begin(), bytes.end()); }

fs::path BuildFolder(const fs::path& root) {
  NavDatabase db;
  test::BuildFlightWorld(db);
  test::AppFolderBuilder b(root);
  b.Put(b.Db("airport.orv"), Text(BuildAirportFile(db.Airports.Airports)));
  b.Put("\\database\\dijinter.orv", Text(BuildDijinterFile(db.Navaids)));
  b.Put("\\database\\jetways.orv", Text(BuildAirwayFile(db.Navaids.JetAirways)));
  b.Put(std::string(kAircraftFile), FormatAircraftFile({test::FlightJet()}));
  return b.Build();
}

struct CliRun {
  int code = -1;
  std::string out, err;
};

CliRun Fly(const fs::path& dir, cli::Args extra) {
  std::ostringstream out, err;
  cli::Args args = {"--appdir", dir.string(), "fly"};
  args.insert(args.end(), extra.begin(), extra.end());
  CliRun r;
  r.code = cli::Run(args, out, err);
  r.out = out.str();
  r.err = err.str();
  return r;
}

TEST(FlyCommand, FliesThePlanAndPrintsTakeoffPassesAndLanding) {
  test::TempDir dir;
  const fs::path app = BuildFolder(dir.Path());
  CliRun r = Fly(app, {"EDDF", "EDDM", "--autopilot"});
  EXPECT_EQ(r.err, "");
  ASSERT_EQ(r.code, 0);
  const std::regex shape(
      "takeoff 10:0\\d:\\d\\d\n"
      "pass ASKIK\\t10:\\d\\d\\t\\d{3} kn\\t\\d{5} ft\\t\\d{5}/\\d%\n"
      "pass ROLIS\\t10:\\d\\d\\t\\d{3} kn\\t\\d{5} ft\\t\\d{5}/\\d%\n"
      "pass BURAM\\t10:\\d\\d\\t\\d{3} kn\\t\\d{5} ft\\t\\d{5}/\\d%\n"
      "landing 10:\\d\\d:\\d\\d\n");
  EXPECT_TRUE(std::regex_match(r.out, shape)) << r.out;

  // A time scale changes the pace, nothing else.
  CliRun scaled = Fly(app, {"EDDF", "EDDM", "--autopilot", "--time-scale", "100000"});
  EXPECT_EQ(scaled.code, 0);
  EXPECT_EQ(scaled.out, r.out);

  EXPECT_EQ(Fly(app, {"EDDF"}).code, 2);
  EXPECT_EQ(Fly(app, {"EDDF", "EDDM", "--time-scale", "-1"}).code, 2);
  CliRun unknown = Fly(app, {"EDDF", "XXXX"});
  EXPECT_EQ(unknown.code, 1);
  EXPECT_EQ(unknown.err, "fly: unknown airport 'XXXX'\n");
}

}  // namespace
}  // namespace orv
