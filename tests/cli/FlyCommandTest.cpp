#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"
#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/NavaidFiles.h"
#include "core/Clock.h"
#include "core/FileIo.h"
#include "simlink/Logbook.h"
#include "simlink/Recording.h"
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
  // Two control zones: one across the leg to ROLIS, one around ROLIS and
  // BURAM that the last leg leaves.
  AirspaceTables zones;
  auto zone = [&](const char* name, float north, float south, float west, float east) {
    AirspaceRec a;
    a.Class.Assign("CTR");
    a.Ident.Assign("ZZ");
    a.Name.Assign(name);
    const ShapePoint box[4] = {{north, west}, {north, east}, {south, east}, {south, west}};
    AddAirspace(zones, a, box);
  };
  zone("SPESSART CTR", 49.60f, 49.45f, 9.75f, 10.0f);
  zone("FRANKEN CTR", 49.4f, 48.6f, 10.2f, 11.2f);
  b.Put("\\database\\airspace.orv", Text(BuildAirspaceFile(zones)));
  return b.Build();
}

using test::CliRun;

CliRun Fly(const fs::path& dir, cli::Args extra) {
  extra.insert(extra.begin(), "fly");
  return test::RunCli(std::move(extra), dir);
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

TEST(FlyCommand, RecordsTheFlightAndWritesItsLogbookEntry) {
  test::TempDir dir;
  const fs::path app = BuildFolder(dir.Path());
  const fs::path rcd = dir.Path() / "flight.rcd";
  CliRun r = Fly(app, {"EDDF", "EDDM", "--autopilot", "--record", rcd.string(), "--log"});
  EXPECT_EQ(r.err, "");
  ASSERT_EQ(r.code, 0);
  // The flight's own times: "takeoff hh:mm:ss" and "landing hh:mm:ss".
  std::smatch m;
  ASSERT_TRUE(std::regex_search(r.out, m, std::regex("takeoff (\\d\\d):(\\d\\d):(\\d\\d)\n[^]*landing (\\d\\d):(\\d\\d):(\\d\\d)\n")));
  auto minutes = [&](int at) {
    return static_cast<int32_t>(std::stoi(m[at]) * 60 + std::stoi(m[at + 1]) + std::stoi(m[at + 2]) / 60.0f + 0.5f);
  };

  const RecordingRead rec = ReadRecording(ReadWholeText(rcd).value_or(""));
  ASSERT_TRUE(rec.ok) << rec.error;
  EXPECT_EQ(rec.rec.RecDescription, "EDDF EDDM");
  EXPECT_NE(r.out.find("recorded " + std::to_string(rec.rec.Samples.size()) + " samples to "), std::string::npos);
  EXPECT_EQ(rec.rec.Samples.size(), 263u);
  // The first sample is on the takeoff roll, at 60 kt or more before the liftoff.
  EXPECT_EQ(rec.rec.TraceTimes.front(), "10:00:15");
  EXPECT_LT(rec.rec.TraceTimes.front(), m.str(1) + ":" + m.str(2) + ":" + m.str(3));
  EXPECT_LE(rec.rec.TraceTimes.back(), m.str(4) + ":" + m.str(5) + ":" + m.str(6));

  const LogbookRead book = LoadLogbook(app / "user" / "Logbook.orv");
  ASSERT_TRUE(book.ok) << book.error;
  ASSERT_EQ(book.entries.size(), 1u);
  const LogbookEntry& e = book.entries[0];
  EXPECT_NE(r.out.find("logbook EDDF EDDM to "), std::string::npos);
  EXPECT_EQ(e.Departure + " " + e.Destination, "EDDF EDDM");
  EXPECT_NEAR(e.FlightDate, DateToDays(SystemClock().NowUtc()), 1.0);
  EXPECT_EQ(e.TakeoffMinutes, minutes(1));
  EXPECT_EQ(e.LandingMinutes, minutes(4));
  EXPECT_EQ(e.Distance, 162);
  EXPECT_EQ(e.FlightNumber + "|" + e.TailNumber + "|" + e.Airline + "|" + e.AircraftType, "ORV123|D-AORV|Orvanta Air|B738");
  EXPECT_EQ(e.FuelTakeoff, 6584);
  EXPECT_EQ(e.FuelLanding, 6034);
  EXPECT_EQ(e.MaxAltitudeFt, 29005);
  int32_t highest = 0;
  for (const TraceSample& s : rec.rec.Samples) highest = std::max(highest, s.Altitude);
  EXPECT_LE(highest, e.MaxAltitudeFt);
  std::string idents;
  for (const LogEntry& w : e.Waypoints) idents += w.Ident + " ";
  EXPECT_EQ(idents, "ASKIK ROLIS BURAM ");
}

TEST(FlyCommand, TrafficPrintsEachAdvisoryAndZonesTheMarkedRows) {
  test::TempDir dir;
  const fs::path app = BuildFolder(dir.Path());
  CliRun r = Fly(app, {"EDDF", "EDDM", "--autopilot", "--traffic", "4"});
  EXPECT_EQ(r.err, "");
  ASSERT_EQ(r.code, 0);
  std::string tcas;
  std::istringstream lines(r.out);
  for (std::string line; std::getline(lines, line);)
    if (line.rfind("tcas", 0) == 0) tcas += line + "\n";
  EXPECT_EQ(tcas, "tcas TA CONV1\ntcas RA CONV1 TRAFFIC TRAFFIC\n");
  EXPECT_EQ(Fly(app, {"EDDF", "EDDM", "--traffic", "100"}).code, 2);

  CliRun z = test::RunCli({"zones", "EDDF", "EDDM"}, app);
  EXPECT_EQ(z.err, "");
  EXPECT_EQ(z.code, 0);
  EXPECT_EQ(z.out,
            "2\tROLIS\tRolis [CTRZ!!]\tSPESSART CTR\n"
            "2\tROLIS\tRolis [CTRZ!!]\tFRANKEN CTR\n"
            "4\tEDDM\tMuenchen [CTRZ!!]\tFRANKEN CTR\n"
            "ViolationCount 3\n");
  EXPECT_EQ(test::RunCli({"zones", "EDDF"}, app).code, 2);
}

}  // namespace
}  // namespace orv
