#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "database/ByteReader.h"
#include "database/WorldShapes.h"

namespace orv {
namespace {

using Bytes = std::vector<uint8_t>;

template <typename T>
void Poke(Bytes& b, std::size_t offset, T value) {
  std::memcpy(b.data() + offset, &value, sizeof value);
}
void Append(Bytes& to, const Bytes& more) { to.insert(to.end(), more.begin(), more.end()); }

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

// A shape laid out by hand: the 25-byte head, then the points as given (the
// stored count is one less than their number unless told otherwise).
Bytes Shape(int32_t index, uint8_t kind, const std::vector<ShapePoint>& points, float n = 0, float s = 0,
            float e = 0, float w = 0) {
  Bytes b(25, 0);
  Poke(b, 0, index);
  b[4] = kind;
  Poke<int32_t>(b, 5, static_cast<int32_t>(points.size()) - 1);
  Poke(b, 9, n);
  Poke(b, 13, s);
  Poke(b, 17, e);
  Poke(b, 21, w);
  ByteWriter pw;
  for (const ShapePoint& p : points) {
    pw.F32(p.Lat);
    pw.F32(p.Lon);
  }
  Append(b, pw.bytes);
  return b;
}

TEST(WorldShapes, HeadFieldsAtTheirOffsetsAndPointCountPlusOnePoints) {
  // PointCount 2 stands for three points.
  Bytes b = Shape(12, 2, {{10, 20}, {11, 21}, {10.5f, 22}}, 11, 10, 22, 20);
  Append(b, Shape(13, 7, {{-5, 100}}, -5, -5, 100, 100));  // PointCount 0: one point

  AirspaceTables t;
  ASSERT_EQ(ParseWorldPolygonFile(b.data(), b.size(), t), std::nullopt);
  ASSERT_EQ(t.WorldPolygons.size(), 2u);
  const WorldShapeRec& s = t.WorldPolygons[0];
  EXPECT_EQ(s.Index, 12);
  EXPECT_EQ(s.Kind, 2);
  EXPECT_EQ(s.PointCount, 2);
  EXPECT_EQ(s.Count, 3u);
  EXPECT_EQ(s.North, 11.0f);
  EXPECT_EQ(s.South, 10.0f);
  EXPECT_EQ(s.East, 22.0f);
  EXPECT_EQ(s.West, 20.0f);
  auto p = t.PolygonPointsOf(s);
  ASSERT_EQ(p.size(), 3u);
  EXPECT_EQ(p[1], (ShapePoint{11, 21}));
  EXPECT_EQ(p[2], (ShapePoint{10.5f, 22}));
  // The second shape's points follow the first's in the one array.
  const WorldShapeRec& s2 = t.WorldPolygons[1];
  EXPECT_EQ(s2.PointCount, 0);
  EXPECT_EQ(s2.First, 3u);
  EXPECT_EQ(s2.Count, 1u);
  EXPECT_EQ(t.WorldPolygonPoints.size(), 4u);
  EXPECT_EQ(t.PolygonPointsOf(s2)[0], (ShapePoint{-5, 100}));

  EXPECT_EQ(BuildWorldPolygonFile(t), b);
  // The lines file has the same layout and fills its own arrays.
  ASSERT_EQ(ParseWorldLineFile(b.data(), b.size(), t), std::nullopt);
  EXPECT_EQ(t.WorldLines.size(), 2u);
  EXPECT_EQ(t.WorldLinePoints.size(), 4u);
  EXPECT_EQ(BuildWorldLineFile(t), b);
}

TEST(WorldShapes, WriterWorksOutTheBoxFromThePoints) {
  AirspaceTables t;
  std::vector<ShapePoint> coast{{60, -10}, {62.5f, -7}, {58, -3.5f}};
  AddWorldShape(t.WorldLines, t.WorldLinePoints, 99, 1, coast);
  AddWorldShape(t.WorldLines, t.WorldLinePoints, 100, 1, {});  // nothing to store
  ASSERT_EQ(t.WorldLines.size(), 1u);
  Bytes file = BuildWorldLineFile(t);
  EXPECT_EQ(file, Shape(99, 1, coast, 62.5f, 58, -3.5f, -10));

  AirspaceTables back;
  ASSERT_EQ(ParseWorldLineFile(file.data(), file.size(), back), std::nullopt);
  EXPECT_EQ(back.WorldLinePoints, coast);
  EXPECT_EQ(back.WorldLines[0].North, 62.5f);
  EXPECT_EQ(back.WorldLines[0].West, -10.0f);
}

TEST(WorldShapes, IndexRangeOfThePolygonArray) {
  AirspaceTables t;
  Bytes last = Shape(15200, 1, {{0, 0}});
  EXPECT_EQ(ParseWorldPolygonFile(last.data(), last.size(), t), std::nullopt);
  Bytes b = Shape(1, 1, {{0, 0}});
  Append(b, Shape(15201, 1, {{0, 0}}));
  EXPECT_EQ(ParseWorldPolygonFile(b.data(), b.size(), t),
            "worldpolygon.bin: record 2 at byte 33: index 15201 is outside the world polygons indexes 0 to 15200");
  Bytes neg = Shape(-1, 1, {{0, 0}});
  EXPECT_EQ(ParseWorldPolygonFile(neg.data(), neg.size(), t),
            "worldpolygon.bin: record 1 at byte 0: index -1 is outside the world polygons indexes 0 to 15200");
  // The lines array has no fixed range.
  EXPECT_EQ(ParseWorldLineFile(b.data(), b.size(), t), std::nullopt);
  EXPECT_EQ(t.WorldLines[1].Index, 15201);

  Bytes many;
  Bytes one = Shape(7, 1, {{0, 0}});
  for (int i = 0; i < 15201; ++i) Append(many, one);
  ASSERT_EQ(ParseWorldPolygonFile(many.data(), many.size(), t), std::nullopt);
  EXPECT_EQ(t.WorldPolygons.size(), 15201u);
  Append(many, one);
  EXPECT_EQ(ParseWorldPolygonFile(many.data(), many.size(), t),
            "worldpolygon.bin: record 15202 at byte " + std::to_string(15201 * 33) +
                ": more than 15201 world polygons; the array holds indexes 0 to 15200");
  EXPECT_EQ(t.WorldPolygons.size(), 15201u);
}

TEST(WorldShapes, CorruptFilesNameTheRecordAndLeaveTheTablesAsTheyWere) {
  auto expectError = [](Bytes b, const std::string& message) {
    AirspaceTables t;
    AddWorldShape(t.WorldLines, t.WorldLinePoints, 1, 1, std::vector<ShapePoint>{{1, 1}});
    EXPECT_EQ(ParseWorldLineFile(b.data(), b.size(), t), message);
    EXPECT_EQ(t.WorldLines.size(), 1u);
    EXPECT_EQ(t.WorldLinePoints.size(), 1u);
  };
  Bytes good = Shape(1, 1, {{1, 2}, {3, 4}});  // 41 bytes

  Bytes cut = good;
  Append(cut, Bytes(24, 0));
  expectError(cut, "worldline.bin: record 2 at byte 41: the shape head is cut short: 24 of 25 bytes remain");

  Bytes negative = Shape(1, 1, {});  // a stored count of -1
  expectError(negative, "worldline.bin: record 1 at byte 0: point count -1 is negative");
  Bytes veryNegative = good;
  Poke<int32_t>(veryNegative, 5, std::numeric_limits<int32_t>::min());
  expectError(veryNegative, "worldline.bin: record 1 at byte 0: point count -2147483648 is negative");

  Bytes huge = good;
  Poke<int32_t>(huge, 5, std::numeric_limits<int32_t>::max());
  expectError(huge, "worldline.bin: record 1 at byte 0: point count 2147483647 runs past the end of the file");

  // Count 1 means two points; one of them missing, or half of one.
  Bytes shortList = good;
  shortList.resize(33);
  expectError(shortList, "worldline.bin: record 1 at byte 0: point count 1 runs past the end of the file");
  shortList = good;
  shortList.resize(37);
  expectError(shortList, "worldline.bin: record 1 at byte 0: point count 1 runs past the end of the file");

  Bytes nanPoint = good;
  Append(nanPoint, Shape(2, 1, {{1, 1}, {1, 1}, {1, kNaN}}));
  expectError(nanPoint, "worldline.bin: record 2 at byte 41: point 3 is not a finite latitude and longitude");

  Bytes nanBox = Shape(1, 1, {{1, 1}}, 1, 1, kNaN, 1);
  expectError(nanBox, "worldline.bin: record 1 at byte 0: the bounding box is not a finite number");
}

}  // namespace
}  // namespace orv
