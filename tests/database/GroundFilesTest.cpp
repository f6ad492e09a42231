#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <limits>
#include <string_view>
#include <vector>

#include "database/GroundFiles.h"

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
Bytes Join(std::initializer_list<Bytes> parts) {
  Bytes out;
  for (const Bytes& p : parts) out.insert(out.end(), p.begin(), p.end());
  return out;
}

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

Bytes Taxi(float lat1, float lon1, float lat2, float lon2, std::string_view name, int16_t width) {
  Bytes b(26, ' ');
  Poke(b, 0, lat1);
  Poke(b, 4, lon1);
  Poke(b, 8, lat2);
  Poke(b, 12, lon2);
  PokeText(b, 16, name);
  Poke(b, 24, width);
  return b;
}

TEST(TaxiFile, ReadsFieldsTrimsTheNameAndKeepsEveryRecord) {
  // No empty-record mark in this file: a record of zeros stays.
  const Bytes b = Join({Taxi(47.45f, 8.55f, 47.46f, 8.56f, "  A1    ", 75), Bytes(26, 0),
                        Taxi(-33.9f, 151.17f, -33.95f, 151.18f, "TWY BRAV", -1)});

  AirspaceTables t;
  ASSERT_EQ(ParseTaxiFile(b.data(), b.size(), t), std::nullopt);
  ASSERT_EQ(t.TaxiSegments.size(), 3u);
  const TaxiRec& a = t.TaxiSegments[0];
  EXPECT_EQ(a.Lat1, 47.45f);
  EXPECT_EQ(a.Lon1, 8.55f);
  EXPECT_EQ(a.Lat2, 47.46f);
  EXPECT_EQ(a.Lon2, 8.56f);
  EXPECT_EQ(a.Name.View(), "A1      ");  // the leading blanks are gone
  EXPECT_EQ(a.Width, 75);
  EXPECT_EQ(t.TaxiSegments[1].Lat1, 0.0f);
  EXPECT_EQ(t.TaxiSegments[2].Name.View(), "TWY BRAV");
  EXPECT_EQ(t.TaxiSegments[2].Width, -1);

  Bytes expected = b;
  PokeText(expected, 16, "A1      ");
  Bytes written = BuildTaxiFile(t);
  EXPECT_EQ(written, expected);
  AirspaceTables back;
  ASSERT_EQ(ParseTaxiFile(written.data(), written.size(), back), std::nullopt);
  EXPECT_EQ(back.TaxiSegments.size(), 3u);
  EXPECT_EQ(BuildTaxiFile(back), written);
}

TEST(TaxiFile, BadInput) {
  AirspaceTables t;
  t.TaxiSegments.resize(1);
  EXPECT_EQ(ParseTaxiFile(nullptr, 0, t), std::nullopt);  // may be empty
  EXPECT_TRUE(t.TaxiSegments.empty());

  const Bytes b = Join({Taxi(1, 2, 3, 4, "A", 10), Taxi(1, 2, 3, kNaN, "B", 10)});
  EXPECT_EQ(ParseTaxiFile(b.data(), b.size(), t), "taxi.orv: record 2 at byte 26: an end position is not a finite number");
  Bytes cut = Taxi(1, 2, 3, 4, "A", 10);
  cut.resize(20);
  EXPECT_EQ(ParseTaxiFile(cut.data(), cut.size(), t), "taxi.orv: record 1 at byte 0: the record is cut short: 20 of 26 bytes remain");
  EXPECT_TRUE(t.TaxiSegments.empty());
}

Bytes Poly(char kind, float lat, float lon, float value, int16_t value2, char flag) {
  Bytes b(16, 0);
  b[0] = static_cast<uint8_t>(kind);
  Poke(b, 1, lat);
  Poke(b, 5, lon);
  Poke(b, 9, value);
  Poke(b, 13, value2);
  b[15] = static_cast<uint8_t>(flag);
  return b;
}

TEST(GroundPolyFile, ReadsFieldsAndSkipsEmptyKinds) {
  const Bytes first = Poly('A', 51.47f, -0.45f, 12.5f, 300, 'X'), last = Poly('G', -1.5f, 2.5f, -3.25f, -32768, ' ');
  const Bytes b = Join({first, Poly('\0', 1, 1, 1, 1, 'Y'), last});

  AirspaceTables t;
  ASSERT_EQ(ParseGroundPolyFile(b.data(), b.size(), t), std::nullopt);
  ASSERT_EQ(t.GroundPolygons.size(), 2u);
  const GroundPolyRec& g = t.GroundPolygons[0];
  EXPECT_EQ(g.Kind.View(), "A");
  EXPECT_EQ(g.Lat, 51.47f);
  EXPECT_EQ(g.Lon, -0.45f);
  EXPECT_EQ(g.Value, 12.5f);
  EXPECT_EQ(g.Value2, 300);
  EXPECT_EQ(g.Flag.View(), "X");
  EXPECT_EQ(t.GroundPolygons[1].Value2, -32768);

  EXPECT_EQ(BuildGroundPolyFile(t), Join({first, last}));
}

TEST(GroundPolyFile, BadInput) {
  AirspaceTables t;
  Bytes b = Poly('A', kInf, 0, 0, 0, ' ');
  EXPECT_EQ(ParseGroundPolyFile(b.data(), b.size(), t), "poly.orv: record 1 at byte 0: the position is not a finite number");
  // The value fields pass through unread, so a NaN there is kept.
  b = Poly('A', 0, 0, kNaN, 0, ' ');
  ASSERT_EQ(ParseGroundPolyFile(b.data(), b.size(), t), std::nullopt);
  b.push_back('A');
  EXPECT_EQ(ParseGroundPolyFile(b.data(), b.size(), t), "poly.orv: record 2 at byte 16: the record is cut short: 1 of 16 bytes remain");
  EXPECT_EQ(t.GroundPolygons.size(), 1u);
}

Bytes Marker(std::string_view kind, float lat, float lon, float heading) {
  Bytes b(14, 0);
  PokeText(b, 0, kind);
  Poke(b, 2, lat);
  Poke(b, 6, lon);
  Poke(b, 10, heading);
  return b;
}

TEST(MarkerFile, ReadsFieldsAndSkipsEmptyKinds) {
  const Bytes first = Marker("OM", 40.6f, -73.8f, 221.5f), last = Marker("IM", 40.65f, -73.79f, 41.5f);
  const Bytes b = Join({first, Marker(std::string_view("\0M", 2), 1, 1, 1), last});

  AirspaceTables t;
  ASSERT_EQ(ParseMarkerFile(b.data(), b.size(), t), std::nullopt);
  ASSERT_EQ(t.Markers.size(), 2u);
  EXPECT_EQ(t.Markers[0].Kind.View(), "OM");
  EXPECT_EQ(t.Markers[0].Lat, 40.6f);
  EXPECT_EQ(t.Markers[0].Lon, -73.8f);
  EXPECT_EQ(t.Markers[0].Heading, 221.5f);
  EXPECT_EQ(t.Markers[1].Kind.View(), "IM");

  EXPECT_EQ(BuildMarkerFile(t), Join({first, last}));
}

TEST(MarkerFile, BadInput) {
  AirspaceTables t;
  Bytes b = Join({Marker("MM", 1, 1, 1), Marker("OM", 1, -kInf, 1)});
  EXPECT_EQ(ParseMarkerFile(b.data(), b.size(), t), "marker.orv: record 2 at byte 14: the position is not a finite number");
  b = Marker("MM", 1, 1, kNaN);
  EXPECT_EQ(ParseMarkerFile(b.data(), b.size(), t), "marker.orv: record 1 at byte 0: the heading is not a finite number");
  b = Marker("MM", 1, 1, 1);
  b.resize(27);
  EXPECT_EQ(ParseMarkerFile(b.data(), b.size(), t), "marker.orv: record 2 at byte 14: the record is cut short: 13 of 14 bytes remain");
  EXPECT_TRUE(t.Markers.empty());
}

}  // namespace
}  // namespace orv
