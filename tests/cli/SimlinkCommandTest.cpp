#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "support/ScriptedPlatform.h"

namespace orv::cli {
namespace {

TEST(SimlinkCommand, StatusOfTheParkedAircraftAndOneWriter) {
  std::ostringstream out, err;
  ASSERT_EQ(cli::Run({"simlink", "--sim", "builtin", "status"}, out, err), 0) << err.str();
  const std::string s = out.str();
  for (const char* line : {"FsuipcVersion 0x39990000\n", "SimVersion 8\n", "Liveness 8\n", "Latitude 50.03329\n",
                           "Longitude 8.5706\n", "Altitude 364\n", "Agl 0\n", "Airborne 0\n", "Com1 122.8\n",
                           "TotalFuel 60\n", "ApAltitude -500\n", "LocalTimeText 12:00:00\n", "Qnh 1013\n", "TailNumber D-EORV\n",
                           "Visibility 20\n", "AirTraffic 0\n", "GroundTraffic 0\n"})
    EXPECT_NE(s.find(line), std::string::npos) << line;
  EXPECT_EQ(s.substr(0, s.find('\n')), "FsuipcVersion 0x39990000");

  std::ostringstream o2, e2;
  EXPECT_EQ(cli::Run({"simlink", "set", "heading-bug", "359"}, o2, e2), 0) << e2.str();
  EXPECT_EQ(o2.str(), "ApHeading -182\n");
  std::ostringstream o3, e3;
  EXPECT_EQ(cli::Run({"simlink", "set", "adf", "1234.5"}, o3, e3), 0) << e3.str();
  EXPECT_EQ(o3.str(), "AdfMain 0x0234\nAdfExtended 0x0105\n");
  std::ostringstream o4, e4;
  EXPECT_EQ(cli::Run({"simlink", "--sim", "xplane9", "status"}, o4, e4), 2);
}

TEST(SimlinkCommand, RefusedConnectionNamesTheMessage) {
  OffsetImage image;
  test::ScriptedPlatform platform(image);
  platform.primaryWindow = false;
  std::ostringstream out, err;
  EXPECT_EQ(RunSimlink({"status"}, platform, out, err), 1);
  EXPECT_EQ(err.str(), "Unable to connect to Flight Simulator Msg #2\n");
  EXPECT_EQ(out.str(), "");
}

}  // namespace
}  // namespace orv::cli
