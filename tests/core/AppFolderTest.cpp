#include <gtest/gtest.h>

#include "core/AppFolder.h"
#include "core/FileIo.h"
#include "support/TempDir.h"

namespace orv {
namespace {

TEST(AppFolder, ResolvesBackslashConstantsAndFallsBackToAnyCase) {
  test::TempDir dir;
  dir.Write("database/FS09/Airport.ORV", "x");
  dir.Write("orv.ini", "y");
  AppFolder app(dir.Path());
  EXPECT_EQ(app.Resolve("\\database\\FS09\\airport.orv"), dir.Path() / "database/FS09/Airport.ORV");
  EXPECT_EQ(app.Resolve("\\orv.ini"), dir.Path() / "orv.ini");
  // A missing name keeps the constant's spelling, so that a writer creates it so.
  EXPECT_EQ(app.Resolve("\\user\\Logbook.orv"), dir.Path() / "user/Logbook.orv");
}

TEST(FileIo, SplitLinesFollowsLineInput) {
  EXPECT_EQ(SplitLines("a\r\nb\nc\rd"), (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_EQ(SplitLines("a\n\nb\n"), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_TRUE(SplitLines("").empty());
}

TEST(FileIo, AtomicWriteReplacesWholeAndLeavesNoTemporary) {
  test::TempDir dir;
  auto p = dir.Path() / "orv.ini";
  ASSERT_TRUE(WriteFileAtomic(p, std::string_view("first")));
  ASSERT_TRUE(WriteFileAtomic(p, std::string_view("second")));
  EXPECT_EQ(*ReadWholeText(p), "second");
  EXPECT_FALSE(std::filesystem::exists(dir.Path() / "orv.ini.tmp"));
  // A folder that does not exist: the write fails and says so.
  EXPECT_FALSE(WriteFileAtomic(dir.Path() / "missing" / "x", std::string_view("z")));
}

}  // namespace
}  // namespace orv
