#include <gtest/gtest.h>

#include <QImage>
#include <fstream>
#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"
#include "support/SmallWorldFolder.h"
#include "support/TempDir.h"

namespace orv::cli {
namespace {

using test::RunCli;
using Outcome = test::CliRun;

class CmdRenderTest : public ::testing::Test {
protected:
  CmdRenderTest() { test::WriteSmallWorldFolder(dir.Path()); }
  std::string Root() const { return dir.Path().string(); }
  std::string Out(const char* name) const { return (dir.Path() / name).string(); }
  test::TempDir dir;
};

TEST_F(CmdRenderTest, WritesAPngOfTheAskedSizeCentredOnAnAirport) {
  const std::string png = Out("map.png");
  Outcome r = RunCli({"--appdir", Root(), "render", "--center", "edxx", "--range", "30", "--size", "400x300",
                      "--layers", "VOR=off,Airports=on,btnNdb=0", "--out", png});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("rendered "), std::string::npos);
  EXPECT_NE(r.out.find("MagVar: "), std::string::npos);
  QImage image(QString::fromStdString(png));
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.width(), 400);
  EXPECT_EQ(image.height(), 300);
  // The corner shows the land fill or the background, never white.
  EXPECT_NE(image.pixel(1, 1), qRgb(255, 255, 255));
}

TEST_F(CmdRenderTest, WritesAnSvgAtAPosition) {
  const std::string svg = Out("map.svg");
  Outcome r = RunCli({"--appdir", Root(), "render", "--center", "50.0,8.0", "--range", "100", "--size", "320x200",
                      "--round-world", "--out", svg});
  ASSERT_EQ(r.code, 0) << r.err;
  std::ifstream in(svg);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_NE(text.find("<svg"), std::string::npos);
  EXPECT_NE(text.find("</svg>"), std::string::npos);
}

TEST_F(CmdRenderTest, TimesPassesWithoutAFile) {
  Outcome r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--range", "30", "--size", "200x100",
                      "--passes", "3"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out.rfind("passes 3: first ", 0), 0u) << r.out;
  EXPECT_NE(r.out.find(" ms, median "), std::string::npos);
  r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--passes", "0"});
  EXPECT_EQ(r.code, 2);
}

TEST_F(CmdRenderTest, RefusesBadArguments) {
  const std::string png = Out("x.png");
  Outcome r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--range", "25", "--out", png});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("--range must be a zoom step label"), std::string::npos);
  r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--layers", "Radar=on", "--out", png});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("unknown layer 'Radar'"), std::string::npos);
  EXPECT_NE(r.err.find("MenuVOR"), std::string::npos);
  r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--layers", "VOR=maybe", "--out", png});
  EXPECT_EQ(r.code, 2);
  r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--out", Out("x.gif")});
  EXPECT_EQ(r.code, 2);
  r = RunCli({"--appdir", Root(), "render", "--center", "EDXX", "--size", "10x10", "--out", png});
  EXPECT_EQ(r.code, 2);
  r = RunCli({"--appdir", Root(), "render", "--center", "ZZZZ", "--out", png});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("no airport 'ZZZZ'"), std::string::npos);
  r = RunCli({"--appdir", Root(), "render", "--out", png});
  EXPECT_EQ(r.code, 2);
}

TEST_F(CmdRenderTest, HoverPrintsTheBoxOfTheViewOrNothing) {
  Outcome r = RunCli({"--appdir", Root(), "hover", "--center", "EDXX", "--range", "30", "--size", "400x300", "--at",
                      "50.05,8.3"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "FRANKFURT  FFM\n0 ft\n114.20\nN50\xC2\xB0" "03.00'  E008\xC2\xB0" "18.00'\n\nVOR VOR-DME\n");
  r = RunCli({"--appdir", Root(), "hover", "--center", "EDXX", "--range", "30", "--layers", "VOR=off", "--at",
              "50.05,8.3"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "");
  r = RunCli({"--appdir", Root(), "hover", "--center", "EDXX", "--at", "ZZZZ"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("hover: no airport 'ZZZZ'"), std::string::npos);
}

}  // namespace
}  // namespace orv::cli

namespace orv::cli {
namespace {

TEST(AirportLayoutCommand, WritesTheRunwayWindowsPictureOfTheAskedSize) {
  test::TempDir dir;
  test::WriteSmallWorldFolder(dir.Path());
  const std::string png = (dir.Path() / "edxx.png").string();
  test::CliRun r = test::RunCli({"airport", "edxx", "--layout", png, "--size", "500x400"}, dir.Path());
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "layout of EDXX written to " + png + " (500x400)\n");
  QImage image(QString::fromStdString(png));
  ASSERT_EQ(image.size(), QSize(500, 400));
  // The map colour (MAP=0x400000, dark blue) at the corner, the runway
  // colour (RWY=0x3F3F3F) at the middle, where the runway crosses.
  EXPECT_EQ(image.pixel(2, 2), qRgb(0, 0, 0x40));
  EXPECT_EQ(image.pixel(250, 200) & 0xFFFFFF, qRgb(0x3F, 0x3F, 0x3F) & 0xFFFFFF);
  EXPECT_EQ(test::RunCli({"airport", "edxx", "--size", "10x10", "--layout", png}, dir.Path()).code, 2);
}

}  // namespace
}  // namespace orv::cli
