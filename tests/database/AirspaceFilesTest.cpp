#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

#include "database/AirspaceFiles.h"
#include "database/ByteReader.h"

namespace orv {
namespace {

using Bytes = std::vector<uint8_t>;

template <typename T>
void Poke(Bytes& b, std::size_t offset, T value) {
  std::memcpy(b.data() + offset, &value, sizeof value);
}
void PokeText(Bytes& b, std::size_t offset, std::string_view text) {
  std::memcpy(b.data() + offset, text.data(), text.size());
}

// One airspace head laid out by hand at the documented offsets, blank text
// fields, then its points.
Bytes AirspaceHead(int16_t index, std::string_view ident, std::vector<ShapePoint> points) {
  Bytes b(132, ' ');
  Poke<int16_t>(b, 0, index);
  PokeText(b, 9, ident);
  Poke<float>(b, 122, 0.0f);
  Poke<float>(b, 126, 0.0f);
  Poke<int16_t>(b, 130, static_cast<int16_t>(points.size()));
  for (const ShapePoint& p : points) {
    ByteWriter w;
    w.F32(p.Lat);
    w.F32(p.Lon);
    b.insert(b.end(), w.bytes.begin(), w.bytes.end());
  }
  return b;
}

void Append(Bytes& to, const Bytes& more) { to.insert(to.end(), more.begin(), more.end()); }
Bytes Plus(Bytes to, const Bytes& more) {
  Append(to, more);
  return to;
}

std::optional<std::string> Parse(const Bytes& b, AirspaceTables& t) { return ParseAirspaceFile(b.data(), b.size(), t); }

TEST(AirspaceFile, ReadsEveryFieldAtItsOffset) {
  Bytes b(132, 0);
  Poke<int16_t>(b, 0, 4711);
  PokeText(b, 2, "CTR    ");
  PokeText(b, 9, "LSZH");
  PokeText(b, 13, "ZURICH CTR                            ");
  PokeText(b, 51, "ZURICH TOWER                          ");
  PokeText(b, 89, "118.10");
  PokeText(b, 95, "120.22");
  PokeText(b, 101, "A");
  PokeText(b, 102, "B");
  PokeText(b, 103, "  0005000 ");  // trimmed first, then the zeros go
  PokeText(b, 113, "000FL095 ");
  Poke<float>(b, 122, 47.25f);
  Poke<float>(b, 126, -8.5f);
  Poke<int16_t>(b, 130, 3);
  ByteWriter pts;
  for (float v : {47.5f, 8.25f, 47.0f, 8.75f, 47.25f, 8.0f}) pts.F32(v);
  Append(b, pts.bytes);

  AirspaceTables t;
  ASSERT_EQ(Parse(b, t), std::nullopt);
  ASSERT_EQ(t.Airspaces.size(), 1u);
  const AirspaceRec& a = t.Airspaces[0];
  EXPECT_EQ(a.Index, 4711);
  EXPECT_EQ(a.Class.View(), "CTR    ");
  EXPECT_EQ(a.Ident.View(), "LSZH");
  EXPECT_EQ(a.Name.Trimmed(), "ZURICH CTR");
  EXPECT_EQ(a.Name2.Trimmed(), "ZURICH TOWER");
  EXPECT_EQ(a.Text1.View(), "118.10");
  EXPECT_EQ(a.Text2.View(), "120.22");
  EXPECT_EQ(a.Flag1.View(), "A");
  EXPECT_EQ(a.Flag2.View(), "B");
  EXPECT_EQ(a.UpperAltitude.View(), "5000      ");
  EXPECT_EQ(a.LowerAltitude.View(), "FL095    ");
  EXPECT_EQ(a.Value1, 47.25f);
  EXPECT_EQ(a.Value2, -8.5f);
  EXPECT_EQ(a.PointCount, 3);
  auto p = t.PointsOf(a);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_EQ(p[0], (ShapePoint{47.5f, 8.25f}));
  EXPECT_EQ(p[2], (ShapePoint{47.25f, 8.0f}));
  EXPECT_EQ(a.North, 47.5f);
  EXPECT_EQ(a.South, 47.0f);
  EXPECT_EQ(a.East, 8.75f);
  EXPECT_EQ(a.West, 8.0f);

  // The writer lays the same record out byte for byte (the altitudes come
  // back in their stripped form, so compare after putting those in).
  PokeText(b, 103, "5000      ");
  PokeText(b, 113, "FL095    ");
  EXPECT_EQ(BuildAirspaceFile(t), b);
}

TEST(AirspaceFile, AltitudesOfOnlyZerosOrBlanksBecomeEmpty) {
  Bytes b = AirspaceHead(1, "EDDF", {});
  PokeText(b, 103, "0000000000");
  PokeText(b, 113, "         ");
  AirspaceTables t;
  ASSERT_EQ(Parse(b, t), std::nullopt);
  EXPECT_EQ(t.Airspaces[0].UpperAltitude.Trimmed(), "");
  EXPECT_EQ(t.Airspaces[0].LowerAltitude.Trimmed(), "");
}

TEST(AirspaceFile, EmptyRecordsAreSkippedWithTheirPointsAndZeroPointsDrawNothing) {
  Bytes b = AirspaceHead(1, "AAAA", {{1, 2}});
  Bytes empty = AirspaceHead(2, "", {{50, 60}, {51, 61}});
  empty[9] = 0;  // the Ident's NUL marks the record empty
  Append(b, empty);
  Append(b, AirspaceHead(3, "CCCC", {}));
  Append(b, AirspaceHead(4, "DDDD", {{-33.5f, 151.25f}, {-34, 151}}));

  AirspaceTables t;
  ASSERT_EQ(Parse(b, t), std::nullopt);
  ASSERT_EQ(t.Airspaces.size(), 3u);
  EXPECT_EQ(t.Airspaces[0].Ident.View(), "AAAA");
  EXPECT_EQ(t.Airspaces[1].Ident.View(), "CCCC");
  EXPECT_EQ(t.Airspaces[1].PointCount, 0);
  EXPECT_TRUE(t.PointsOf(t.Airspaces[1]).empty());
  EXPECT_EQ(t.Airspaces[1].North, 0.0f);
  EXPECT_EQ(t.Airspaces[2].Index, 4);
  // The points of all stored airspaces lie one after another in one array.
  ASSERT_EQ(t.AirspacePoints.size(), 3u);
  EXPECT_EQ(t.Airspaces[2].First, 1u);
  EXPECT_EQ(t.PointsOf(t.Airspaces[2])[0], (ShapePoint{-33.5f, 151.25f}));
}

TEST(AirspaceFile, AnEmptyFileGivesNoAirspaces) {
  AirspaceTables t;
  t.Airspaces.resize(2);
  EXPECT_EQ(ParseAirspaceFile(nullptr, 0, t), std::nullopt);
  EXPECT_TRUE(t.Airspaces.empty());
}

TEST(AirspaceFile, RoundTripThroughTheWriter) {
  AirspaceTables t;
  AirspaceRec a;
  a.Index = 7;
  a.Class.Assign("TMA");
  a.Ident.Assign("EGLL");
  a.Name.Assign("LONDON TMA");
  a.UpperAltitude.Assign("FL245");
  a.LowerAltitude.Assign("2500");
  a.Value1 = 1.5f;
  std::vector<ShapePoint> pts{{51.5f, -0.5f}, {51.75f, 0.25f}, {51.25f, 0.5f}};
  AddAirspace(t, a, pts);
  a.Index = 8;
  a.Ident.Assign("EGKK");
  AddAirspace(t, a, {});
  Bytes file = BuildAirspaceFile(t);
  EXPECT_EQ(file.size(), 132u + 24u + 132u);

  AirspaceTables back;
  ASSERT_EQ(Parse(file, back), std::nullopt);
  ASSERT_EQ(back.Airspaces.size(), 2u);
  EXPECT_EQ(back.Airspaces[0].Name.Trimmed(), "LONDON TMA");
  EXPECT_EQ(back.Airspaces[0].UpperAltitude.Trimmed(), "FL245");
  EXPECT_EQ(back.Airspaces[0].North, 51.75f);
  EXPECT_EQ(back.Airspaces[0].West, -0.5f);
  EXPECT_EQ(back.AirspacePoints, t.AirspacePoints);
  EXPECT_EQ(back.Airspaces[1].Ident.View(), "EGKK");
  EXPECT_EQ(BuildAirspaceFile(back), file);
}

TEST(AirspaceFile, CorruptFilesNameTheRecordAndLeaveTheTablesAsTheyWere) {
  Bytes good = AirspaceHead(1, "AAAA", {{1, 2}});  // 140 bytes
  auto expectError = [&](Bytes b, const std::string& message) {
    AirspaceTables t;
    AddAirspace(t, AirspaceRec{}, std::vector<ShapePoint>{{5, 5}});
    EXPECT_EQ(Parse(b, t), message);
    EXPECT_EQ(t.Airspaces.size(), 1u);
    EXPECT_EQ(t.AirspacePoints.size(), 1u);
  };

  expectError(Plus(good, Bytes(40, ' ')), "airspace.orv: record 2 at byte 140: the record is cut short: 40 of 132 bytes remain");

  Bytes negative = Plus(good, AirspaceHead(2, "BBBB", {}));
  Poke<int16_t>(negative, 140 + 130, -3);
  expectError(negative, "airspace.orv: record 2 at byte 140: point count -3 is negative");

  Bytes huge = Plus(good, AirspaceHead(2, "BBBB", {{1, 1}}));
  Poke<int16_t>(huge, 140 + 130, 32767);
  expectError(huge, "airspace.orv: record 2 at byte 140: point count 32767 runs past the end of the file");

  // A point list one point short of its count.
  Bytes shortList = AirspaceHead(1, "AAAA", {{1, 2}, {3, 4}});
  shortList.resize(shortList.size() - 8);
  expectError(shortList, "airspace.orv: record 1 at byte 0: point count 2 runs past the end of the file");

  expectError(Plus(good, AirspaceHead(15001, "BBBB", {})),
              "airspace.orv: record 2 at byte 140: index 15001 is outside the airspace indexes 0 to 15000");
  expectError(AirspaceHead(-1, "AAAA", {}), "airspace.orv: record 1 at byte 0: index -1 is outside the airspace indexes 0 to 15000");

  expectError(Plus(good, AirspaceHead(2, "BBBB", {{1, 1}, {std::numeric_limits<float>::quiet_NaN(), 1}})),
              "airspace.orv: record 2 at byte 140: point 2 is not a finite latitude and longitude");
  expectError(AirspaceHead(2, "BBBB", {{1, std::numeric_limits<float>::infinity()}}), "airspace.orv: record 1 at byte 0: point 1 is not a finite latitude and longitude");
}

TEST(AirspaceFile, IndexLimitAndArraySize) {
  // 15000 itself is the last slot; 15001 airspaces fill indexes 0 to 15000.
  Bytes b;
  b.reserve(15002 * 132);
  for (int i = 0; i <= 15000; ++i) Append(b, AirspaceHead(static_cast<int16_t>(i), "ZZZZ", {}));
  AirspaceTables t;
  ASSERT_EQ(Parse(b, t), std::nullopt);
  EXPECT_EQ(t.Airspaces.size(), 15001u);
  EXPECT_EQ(t.Airspaces.back().Index, 15000);

  // An empty record takes no slot, a stored one beyond the last does.
  Bytes empty = AirspaceHead(0, "", {});
  empty[9] = 0;
  Bytes more = b;
  Append(more, empty);
  EXPECT_EQ(Parse(more, t), std::nullopt);
  Append(more, AirspaceHead(15000, "ZZZZ", {}));
  EXPECT_EQ(Parse(more, t), "airspace.orv: record 15003 at byte " + std::to_string(15002 * 132) +
                                ": more than 15001 airspaces; the array holds indexes 0 to 15000");
}

// ------------------------------------------------------------------ msa.orv

Bytes MsaRecord(std::string_view ident, std::string_view label) {
  Bytes b(50, ' ');
  PokeText(b, 0, ident);
  PokeText(b, 6, "T1234");
  for (int i = 0; i < 8; ++i) Poke<uint32_t>(b, 11 + 4 * i, 0);
  PokeText(b, 43, label);
  return b;
}

TEST(MsaFile, ReadsFieldsAndKeepsTheValueWordsBitForBit) {
  Bytes b = MsaRecord("N47E08", "MSA 5");
  Poke<float>(b, 11, 47.0f);
  Poke<float>(b, 15, 8.0f);
  Poke<int32_t>(b, 19, -1);
  Poke<uint32_t>(b, 39, 0x7FC00001u);  // a NaN pattern passes through untouched
  Bytes empty = MsaRecord("XXXXXX", "");
  empty[43] = 0;
  Append(b, empty);
  Append(b, MsaRecord("S33E151", "1234567"));

  AirspaceTables t;
  ASSERT_EQ(ParseMsaFile(b.data(), b.size(), t), std::nullopt);
  ASSERT_EQ(t.MsaCells.size(), 2u);
  const MsaRec& m = t.MsaCells[0];
  EXPECT_EQ(m.Ident.View(), "N47E08");
  EXPECT_EQ(m.Text.View(), "T1234");
  EXPECT_EQ(m.FloatValue(0), 47.0f);
  EXPECT_EQ(m.FloatValue(1), 8.0f);
  EXPECT_EQ(m.IntValue(2), -1);
  EXPECT_EQ(m.Values[7], 0x7FC00001u);
  EXPECT_EQ(m.Label.View(), "MSA 5  ");
  EXPECT_EQ(t.MsaCells[1].Ident.View(), "S33E15");  // six characters wide
  EXPECT_EQ(t.MsaCells[1].Label.View(), "1234567");

  // Written back without the empty record, byte for byte.
  EXPECT_EQ(BuildMsaFile(t), Plus(Bytes(b.begin(), b.begin() + 50), Bytes(b.begin() + 100, b.end())));
}

TEST(MsaFile, EmptyFileAndCutShortRecord) {
  AirspaceTables t;
  EXPECT_EQ(ParseMsaFile(nullptr, 0, t), std::nullopt);
  EXPECT_TRUE(t.MsaCells.empty());
  const Bytes b = Plus(MsaRecord("AAAAAA", "L"), Bytes(10, ' '));
  EXPECT_EQ(ParseMsaFile(b.data(), b.size(), t), "msa.orv: record 2 at byte 50: the record is cut short: 10 of 50 bytes remain");
  EXPECT_TRUE(t.MsaCells.empty());
}

}  // namespace
}  // namespace orv
