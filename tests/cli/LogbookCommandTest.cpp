#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "core/FileIo.h"
#include "simlink/Logbook.h"
#include "simlink/Recording.h"
#include "support/TempDir.h"

namespace orv::cli {
namespace {

TEST(LogbookCommand, GridLinesTotalAndCsv) {
  test::TempDir dir;
  LogbookEntry e;
  e.Departure = "EDDF";
  e.Destination = "EDFE";
  e.FlightDate = 46350;
  e.TakeoffMinutes = 600;
  e.LandingMinutes = 675;
  dir.Write("user/Logbook.orv", WriteLogbook({e}));
  std::ostringstream out, err;
  ASSERT_EQ(cli::Run({"--appdir", dir.Path().string(), "logbook"}, out, err), 0) << err.str();
  EXPECT_EQ(out.str(),
            "Date  From  To  Takeoff  Landing\n2026-11-24  EDDF  EDFE  10:00  11:15\n"
            "Total Flight Time: 1 hours 15 min\n");
  std::ostringstream csv, e2;
  ASSERT_EQ(cli::Run({"--appdir", dir.Path().string(), "logbook", "--csv"}, csv, e2), 0);
  EXPECT_EQ(csv.str().substr(csv.str().find('\n') + 1, 35), "2026-11-24,EDDF,EDFE,10:00,11:15,75");
  const std::string pdf = (dir.Path() / "book.pdf").string();
  std::ostringstream o4, e4;
  ASSERT_EQ(cli::Run({"--appdir", dir.Path().string(), "logbook", "--pdf", pdf}, o4, e4), 0) << e4.str();
  EXPECT_EQ(o4.str(), "printed " + pdf + " (1 page)\n");
  EXPECT_EQ(ReadWholeText(pdf).value_or("").substr(0, 5), "%PDF-");

  dir.Write("user/Logbook.orv", std::string("\x05\0\0\0", 4));
  std::ostringstream o3, e3;
  EXPECT_EQ(cli::Run({"--appdir", dir.Path().string(), "logbook"}, o3, e3), 1);
  EXPECT_EQ(e3.str(), "The logbook announces 5 flights but its 4 bytes cannot hold them.\n");
}

TEST(ReplayCommand, LinesPerSampleAndGpx) {
  test::TempDir dir;
  Recording rec;
  rec.RecDescription = "Circuit";
  TraceSample s;
  s.Latitude = 50.5f;
  s.Longitude = 8.25f;
  s.Altitude = 1200;
  s.Tas = 95;
  rec.Samples = {s};
  rec.TraceTimes = {"09:15:00"};
  const auto file = dir.Write("user/circuit.rcd", WriteRecording(rec));
  const auto gpx = dir.Path() / "circuit.gpx";
  std::ostringstream out, err;
  ASSERT_EQ(cli::Run({"replay", file.string(), "--gpx", gpx.string()}, out, err), 0) << err.str();
  EXPECT_EQ(out.str(),
            "Description: Circuit\nSamples: 1\n"
            "UTC: 09:15:00  N50\u00B030.00'  E008\u00B015.00'  Alt: 1200  AGL: 0  Course: 000\u00B0  TAS: 95  "
            "Pitch: 0  Bank: 0\n");
  EXPECT_NE(ReadWholeText(gpx).value_or("").find("<ele>365.8</ele><time>"), std::string::npos);

  const auto bad = dir.Write("bad.rcd", "QLMTZ");
  std::ostringstream o2, e2;
  EXPECT_EQ(cli::Run({"replay", bad.string()}, o2, e2), 1);
  EXPECT_EQ(e2.str(), "The recording is truncated: 5 bytes, too short for its description and sample count.\n");
}

}  // namespace
}  // namespace orv::cli
