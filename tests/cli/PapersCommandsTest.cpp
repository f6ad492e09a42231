// The sidstar and print commands, and render into a PDF, on the small world.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/Cli.h"
#include "cli/CliRun.h"
#include "core/FileIo.h"
#include "support/SmallWorldFolder.h"
#include "support/TempDir.h"

namespace orv::cli {
namespace {

using test::RunCli;
using Outcome = test::CliRun;

TEST(PapersCommands, SidstarPrintAndPdfMap) {
  test::TempDir dir;
  test::WriteSmallWorldFolder(dir.Path());
  const std::string root = dir.Path().string();

  Outcome r = RunCli({"--appdir", root, "sidstar", "EDXX", "EDYY", "--navaid", "--runway", "rwy07"});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out.substr(0, r.out.find('\n')), "Departure for Main Field Rwy 07");
  EXPECT_NE(r.out.find("\nClimb straight ahead until crossing "), std::string::npos) << r.out;

  r = RunCli({"--appdir", root, "sidstar", "EDXX", "EDYY", "--navaid", "--runway", "09"});
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.err, "sidstar: no runway '09' at EDXX; runways: 07 25\n");
  r = RunCli({"--appdir", root, "sidstar", "EDXX", "EDYY"});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("sidstar: --runway is required"), std::string::npos);

  const std::string pdf = (dir.Path() / "papers.pdf").string();
  r = RunCli({"--appdir", root, "print", "EDXX", "EDYY", "--navaid", "--parts", "wplist,ctrz", "--pdf", pdf});
  ASSERT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "printed " + pdf + " (2 pages)\n");
  std::optional<std::string> bytes = ReadWholeText(pdf);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->substr(0, 5), "%PDF-");
  r = RunCli({"--appdir", root, "print", "EDXX", "EDYY", "--parts", "maps", "--pdf", pdf});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("print: unknown part 'maps'; the parts are gfi, wplist and ctrz"), std::string::npos);

  const std::string map = (dir.Path() / "map.pdf").string();
  r = RunCli({"--appdir", root, "render", "--center", "EDXX", "--range", "30", "--out", map});
  ASSERT_EQ(r.code, 0) << r.err;
  bytes = ReadWholeText(map);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->substr(0, 5), "%PDF-");
}

}  // namespace
}  // namespace orv::cli
