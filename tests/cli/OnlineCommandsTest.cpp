// The weather commands against a loopback server started by the test.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "core/FileIo.h"
#include "online/LoopbackServer.h"
#include "support/OnlineSamples.h"
#include "support/TempDir.h"

namespace orv {
namespace {

struct CliOutcome {
  int code = -1;
  std::string out, err;
};

CliOutcome Cli(const std::filesystem::path& dir, cli::Args command) {
  std::ostringstream out, err;
  cli::Args args = {"--appdir", dir.string()};
  args.insert(args.end(), command.begin(), command.end());
  CliOutcome r;
  r.code = cli::Run(args, out, err);
  r.out = out.str();
  r.err = err.str();
  return r;
}

TEST(OnlineCommands, DownloadWeatherThenMetar) {
  test::TempDir dir;
  test::LoopbackServer server;
  dir.Write("database/WxStation.txt", "EDDF,50.0333,8.5706\r\nKJFK,40.6398,-73.7789\r\n");
  server.Set("/m.csv", test::Route{200, test::MetarCsv({"KJFK 241051Z 31012KT 10SM A2992",
                                                        "EDDF 241020Z 27015G25KT 9999 FEW030 12/07 Q1013"}),
                                   0, true, ""});
  CliOutcome no = Cli(dir.Path(), {"download", "weather", "--url", server.Url("/m.csv")});
  EXPECT_EQ(no.code, 1);
  EXPECT_NE(no.err.find("download: not confirmed (add --yes)"), std::string::npos) << no.err;

  CliOutcome yes = Cli(dir.Path(), {"download", "weather", "--url", server.Url("/m.csv"), "--yes"});
  EXPECT_EQ(yes.code, 0) << yes.err;
  EXPECT_EQ(ReadWholeText(dir.Path() / "database/orv_metar.txt").value_or(""),
            "EDDF 241020Z 27015G25KT 9999 FEW030 12/07 Q1013\r\nKJFK 241051Z 31012KT 10SM A2992\r\n");

  CliOutcome bad = Cli(dir.Path(), {"download", "weather", "--url", server.Url("/missing"), "--yes"});
  EXPECT_EQ(bad.code, 1);
  EXPECT_NE(bad.err.find("Error downloading Weather file!"), std::string::npos) << bad.err;

  CliOutcome m = Cli(dir.Path(), {"metar", "EDDF", "LFPG"});
  EXPECT_EQ(m.code, 0);
  EXPECT_EQ(m.out,
            "Wx: EDDF - Wind: 270\xC2\xB0/ 15/gusts: 25\nVisibility: >10km\nfew at 3000ft\nTemp: 12  Dewpoint: 7\n"
            "QNH: 1013 hPa\nWx: LFPG\nNo weatherdata available\n");
  EXPECT_EQ(Cli(dir.Path(), {"tracks", "atlantic"}).code, 2);
}

}  // namespace
}  // namespace orv
