#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "core/FileIo.h"
#include "database/UserWaypoints.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

UserWaypointRec Wp(std::string_view ident, std::string_view name, float lat, float lon, float value = 0) {
  UserWaypointRec rec;
  rec.Ident = ident;
  rec.Name = name;
  rec.Lat = lat;
  rec.Lon = lon;
  rec.Value = value;
  return rec;
}

std::string AsText(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

// One 62-byte record written field by field, independent of the writer.
std::string RawRecord(std::string_view ident, std::string_view name, uint32_t latBits, uint32_t lonBits,
                      uint32_t valueBits) {
  std::string r;
  r += ident;
  r.resize(10, ' ');
  r += name;
  r.resize(50, ' ');
  for (uint32_t bits : {latBits, lonBits, valueBits})
    for (int i = 0; i < 4; ++i) r += static_cast<char>((bits >> (8 * i)) & 0xFF);
  return r;
}

TEST(UserWaypointFile, ByteLayout) {
  // 47.5 = 0x423E0000, -8.25 = 0xC1040000, 1.0 = 0x3F800000
  Bytes file = BuildUserWaypointFile({Wp("HOME1", "My field", 47.5f, -8.25f, 1.0f)});
  ASSERT_EQ(file.size(), 9u + 62u);
  EXPECT_EQ(AsText(file), "ORVUSERDB" + RawRecord("HOME1", "My field", 0x423E0000, 0xC1040000, 0x3F800000));
  EXPECT_EQ(AsText(BuildUserWaypointFile({})), "ORVUSERDB");
}

TEST(UserWaypointFile, ParsesRecordsAndSkipsEmptySlots) {
  std::string raw = "ORVUSERDB" + RawRecord("AAA", "First", 0x423E0000, 0xC1040000, 0) +
                    std::string(62, '\0') +  // an empty slot
                    RawRecord("BBBBBBBBBB", std::string(40, 'N'), 0x3F800000, 0, 0x3F800000);
  Bytes bytes(raw.begin(), raw.end());
  std::vector<UserWaypointRec> out;
  UserWaypointParse parse = ParseUserWaypoints(bytes, out);
  EXPECT_TRUE(parse.headerOk);
  EXPECT_FALSE(parse.truncated);
  EXPECT_EQ(parse.emptySlots, 1u);
  ASSERT_EQ(out.size(), 2u);
  EXPECT_EQ(out[0].Ident.Str(), "AAA");
  EXPECT_EQ(out[0].Name.Str(), "First");
  EXPECT_EQ(out[0].Lat, 47.5f);
  EXPECT_EQ(out[0].Lon, -8.25f);
  EXPECT_EQ(out[1].Ident.Str(), "BBBBBBBBBB");
  EXPECT_EQ(out[1].Name.Str(), std::string(40, 'N'));
  EXPECT_EQ(out[1].Value, 1.0f);
  // The writer gives back the same bytes, less the empty slot.
  EXPECT_EQ(AsText(BuildUserWaypointFile(out)),
            "ORVUSERDB" + RawRecord("AAA", "First", 0x423E0000, 0xC1040000, 0) +
                RawRecord("BBBBBBBBBB", std::string(40, 'N'), 0x3F800000, 0, 0x3F800000));
}

TEST(UserWaypointFile, HeaderAndTruncation) {
  std::vector<UserWaypointRec> out;
  for (std::string raw : {std::string(), std::string("ORVUSERD"), std::string("orvuserdb"),
                          "XRVUSERDB" + RawRecord("AAA", "x", 0, 0, 0)}) {
    Bytes bytes(raw.begin(), raw.end());
    EXPECT_FALSE(ParseUserWaypoints(bytes, out).headerOk) << raw;
    EXPECT_TRUE(out.empty());
  }

  std::string raw = "ORVUSERDB" + RawRecord("AAA", "x", 0, 0, 0) + RawRecord("BBB", "y", 0, 0, 0).substr(0, 61);
  Bytes bytes(raw.begin(), raw.end());
  UserWaypointParse parse = ParseUserWaypoints(bytes, out);
  EXPECT_TRUE(parse.headerOk);
  EXPECT_TRUE(parse.truncated);
  EXPECT_EQ(parse.truncatedRecord, 2u);
  EXPECT_EQ(parse.truncatedBytes, 61u);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_EQ(out[0].Ident.Str(), "AAA");
}

TEST(UserWaypointFile, BadHeaderOrMissingFileIsRewrittenSilently) {
  const char* const contents[] = {"", "GARBAGE-HEADER-AND-MORE", "ORVUSER", nullptr};  // nullptr: no file
  for (const char* content : contents) {
    test::TempDir dir;
    fs::create_directories(dir.Path() / "database");
    if (content) dir.Write("database/UserWP.udb", content);
    AppFolder app(dir.Path());
    std::vector<UserWaypointRec> list{Wp("OLD", "stale", 1, 2)};
    UserWaypointResult r = LoadUserWaypoints(app, list);
    SCOPED_TRACE(content ? content : "missing");
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.rewritten);
    EXPECT_EQ(r.message, "");
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(ReadWholeText(dir.Path() / "database" / "UserWP.udb"), "ORVUSERDB");
    EXPECT_FALSE(fs::exists(dir.Path() / "database" / "TMPUserWP.udb"));
    EXPECT_FALSE(fs::exists(dir.Path() / "database" / "TMPUserWP.udb.tmp"));
  }
}

TEST(UserWaypointFile, SaveAndLoadRoundTrip) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  std::vector<UserWaypointRec> saved{Wp("HOME1", "My field", 47.4501f, 8.5625f, 3.5f),
                                     Wp("SOUTH", "Down under", -33.95f, 151.18f)};
  UserWaypointResult w = SaveUserWaypoints(app, saved);
  ASSERT_TRUE(w.ok) << w.message;
  EXPECT_EQ(fs::file_size(dir.Path() / "database" / "UserWP.udb"), 9u + 2 * 62u);
  EXPECT_FALSE(fs::exists(dir.Path() / "database" / "TMPUserWP.udb"));

  std::vector<UserWaypointRec> loaded;
  UserWaypointResult r = LoadUserWaypoints(app, loaded);
  EXPECT_TRUE(r.ok);
  EXPECT_FALSE(r.rewritten);
  EXPECT_EQ(r.message, "");
  EXPECT_EQ(loaded, saved);
}

TEST(UserWaypointFile, FileNameCaseIsKept) {
  // The start-up list spells the file in lower case; whichever case exists is
  // read and replaced, and no second file appears beside it.
  test::TempDir dir;
  dir.Write("database/userwp.udb", "ORVUSERDB");
  AppFolder app(dir.Path());
  ASSERT_TRUE(SaveUserWaypoints(app, {Wp("A", "a", 1, 2)}).ok);
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(dir.Path() / "database")) names.push_back(e.path().filename().string());
  EXPECT_EQ(names, std::vector<std::string>{"userwp.udb"});
  std::vector<UserWaypointRec> loaded;
  LoadUserWaypoints(app, loaded);
  ASSERT_EQ(loaded.size(), 1u);
  EXPECT_EQ(loaded[0].Ident.Str(), "A");
}

TEST(UserWaypointFile, TruncatedLastRecordIsReported) {
  test::TempDir dir;
  std::string raw = "ORVUSERDB" + RawRecord("AAA", "x", 0, 0, 0) + RawRecord("BBB", "y", 0, 0, 0) + "CCC";
  fs::path file = dir.Write("database/UserWP.udb", raw);
  AppFolder app(dir.Path());
  std::vector<UserWaypointRec> loaded;
  UserWaypointResult r = LoadUserWaypoints(app, loaded);
  EXPECT_TRUE(r.ok);
  EXPECT_TRUE(r.truncated);
  EXPECT_FALSE(r.rewritten);
  EXPECT_EQ(r.message, file.string() + ": record 3 is cut short (3 of 62 bytes) and was ignored.");
  EXPECT_EQ(loaded.size(), 2u);
  EXPECT_EQ(ReadWholeText(file), raw);  // left as it is until the next save
}

TEST(UserWaypointFile, FailedSaveLeavesTheOldFileAndSaysSo) {
  test::TempDir dir;
  // A folder where the temporary file should go makes its write fail.
  fs::create_directories(dir.Path() / "database" / "TMPUserWP.udb");
  fs::path file = dir.Write("database/UserWP.udb", "ORVUSERDB");
  AppFolder app(dir.Path());
  UserWaypointResult r = SaveUserWaypoints(app, {Wp("A", "a", 1, 2)});
  EXPECT_FALSE(r.ok);
  EXPECT_NE(r.message.find("TMPUserWP.udb"), std::string::npos) << r.message;
  EXPECT_EQ(ReadWholeText(file), "ORVUSERDB");
}

}  // namespace
}  // namespace orv
