#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "database/ByteReader.h"
#include "database/NavaidFiles.h"

namespace orv {
namespace {

// A grid whose raw value at (lat, lon) is lat * 300 + lon, so every cell has
// its own variation and the expected value can be worked out by hand.
const MagVarGrid& TestGrid() {
  static const MagVarGrid grid = [] {
    MagVarGrid g;
    g.Assign(BuildMagVarFile([](int lat, int lon) { return (lat * 300 + lon) / kMagVarDivisor; }));
    return g;
  }();
  return grid;
}

// The variation the loaders must store for the grid cell (lat, lon), given in
// whole degrees with the longitude already in 0..359.
float Cell(int lat, int lon) { return static_cast<float>((lat * 300 + lon) / kMagVarDivisor); }

// One record laid out by hand: every field poked at the offset the file
// format gives, over blanks, so that a shifted field in the reader or the
// writer shows up.
struct Poke {
  std::vector<uint8_t> b;
  explicit Poke(std::size_t size) : b(size, ' ') {}
  Poke& Text(std::size_t at, std::string_view s) {
    std::memcpy(b.data() + at, s.data(), s.size());
    return *this;
  }
  Poke& Nul(std::size_t at) {
    b[at] = 0;
    return *this;
  }
  template <typename T>
  Poke& Num(std::size_t at, T v) {
    std::memcpy(b.data() + at, &v, sizeof v);
    return *this;
  }
};

std::vector<uint8_t> Join(std::initializer_list<std::vector<uint8_t>> parts) {
  std::vector<uint8_t> out;
  for (const auto& p : parts) out.insert(out.end(), p.begin(), p.end());
  return out;
}

// Main intersection record (56 bytes).
Poke Intersection(int32_t index, std::string_view ident, float lat, float lon, uint8_t low, uint8_t high) {
  Poke p(56);
  p.Num<int32_t>(0, index).Text(4, "K ").Text(6, ident).Text(11, "NAME OF " + std::string(ident));
  p.Num<float>(36, 1.25f).Num<float>(40, lat).Num<float>(44, lon).Num<float>(48, 99.0f);
  p.Num<uint8_t>(52, low).Num<uint8_t>(53, high).Text(54, "AB");
  return p;
}

// Airway link record (26 bytes).
Poke Link(int32_t target, std::string_view airway, float distance, std::string_view mea1, std::string_view mea2) {
  Poke p(26);
  p.Num<int32_t>(0, target).Text(4, airway).Num<float>(12, distance).Text(16, mea1).Text(21, mea2);
  return p;
}

Poke Segment(std::string_view name, int32_t from, int32_t to, float value, std::string_view mea1,
             std::string_view mea2) {
  Poke p(30);
  p.Text(0, name).Num<int32_t>(8, from).Num<int32_t>(12, to).Num<float>(16, value).Text(20, mea1).Text(25, mea2);
  return p;
}

Poke Fix(std::string_view country, std::string_view ident, float lat, float lon) {
  Poke p(48);
  p.Text(0, country).Text(2, ident).Text(7, "FIX " + std::string(ident));
  p.Num<float>(32, lat).Num<float>(36, lon).Num<float>(40, 99.0f).Num<float>(44, 3.5f);
  return p;
}

Poke Vor(std::string_view ident, float lat, float lon, int16_t typeCode) {
  Poke p(56);
  p.Text(0, ident).Text(10, "VOR " + std::string(ident));
  p.Num<float>(30, lat).Num<float>(34, lon).Num<float>(38, 112.1f).Num<float>(42, 99.0f).Num<float>(46, 7.5f);
  p.Num<int16_t>(50, typeCode).Num<int16_t>(52, -2).Num<int16_t>(54, 300);
  return p;
}

Poke Ndb(std::string_view ident, float lat, float lon, std::string_view typeText) {
  Poke p(53);
  p.Text(0, ident).Text(10, "NDB " + std::string(ident));
  p.Num<float>(30, lat).Num<float>(34, lon).Num<float>(38, 375.5f).Num<float>(42, 99.0f).Num<float>(46, 8.25f);
  p.Text(50, typeText);
  return p;
}

std::optional<std::string> ParseDijinter(const std::vector<uint8_t>& bytes, NavaidTables& t) {
  return ParseDijinterFile(bytes.data(), bytes.size(), TestGrid(), t);
}

// ------------------------------------------------------------------ dijinter.orv

TEST(DijinterFile, PlacesRecordsByIndexWithTheirLinksAndStopsAtAnEmptyRecord) {
  Poke terminator(56);
  terminator.Nul(6);
  // After the empty record comes a record that would be a fault if read.
  std::vector<uint8_t> bytes = Join({
      Intersection(5, "ALPHA", 40.5f, -73.25f, 1, 2).b,
      Link(2, "V1", 10.5f, "03000", "FL180").b,
      Link(2, "J70", 20.25f, "FL240", "FL450").b,
      Link(7, "J80", 30.75f, "18000", "45000").b,
      Intersection(2, "BRAVO", -33.5f, 151.2f, 0, 0).b,
      terminator.b,
      Intersection(99999, "BAD", 0, 0, 0, 0).b,
  });
  ASSERT_EQ(bytes.size(), 56u * 4 + 26u * 3);

  NavaidTables t;
  EXPECT_EQ(ParseDijinter(bytes, t), std::nullopt);
  ASSERT_EQ(t.Intersections.size(), 40001u);
  EXPECT_EQ(t.MaxIntersectionIndex, 5);
  EXPECT_EQ(t.AirwayLinks.size(), 3u);
  EXPECT_EQ(t.AirwayLinks.capacity(), 3u);  // sized once, before the loop

  const IntersectionRec& a = t.Intersections[5];
  EXPECT_EQ(a.Index, 5);
  EXPECT_EQ(a.Country.View(), "K ");
  EXPECT_EQ(a.Ident.View(), "ALPHA   ");  // widened to 8
  EXPECT_EQ(a.Name.Str(), "NAME OF ALPHA");
  EXPECT_EQ(a.Value1, 1.25f);
  EXPECT_EQ(a.Lat, 40.5f);
  EXPECT_EQ(a.Lon, -73.25f);
  EXPECT_EQ(a.MagVar, Cell(40, 286));  // floor of -73.25 is -74, column 286; the file's 99 is dropped
  EXPECT_EQ(a.LowCount, 1);
  EXPECT_EQ(a.HighCount, 2);
  EXPECT_EQ(a.Flag1.View(), "A");
  EXPECT_EQ(a.Flag2.View(), "B");

  auto low = t.LowAirways(5);
  auto high = t.HighAirways(5);
  ASSERT_EQ(low.size(), 1u);
  ASSERT_EQ(high.size(), 2u);
  EXPECT_EQ(low[0].Target, 2);
  EXPECT_EQ(low[0].AirwayName.View(), "V1      ");
  EXPECT_EQ(low[0].Distance, 10.5f);
  EXPECT_EQ(low[0].Mea1.View(), "03000");  // link texts are kept as read
  EXPECT_EQ(low[0].Mea2.View(), "FL180");
  EXPECT_EQ(high[0].AirwayName.Str(), "J70");
  EXPECT_EQ(high[0].Distance, 20.25f);
  EXPECT_EQ(high[1].Target, 7);
  EXPECT_EQ(high[1].AirwayName.Str(), "J80");
  EXPECT_EQ(high[1].Mea1.View(), "18000");
  EXPECT_EQ(high[1].Mea2.View(), "45000");

  // Both counts 0: two empty lists.
  const IntersectionRec& b = t.Intersections[2];
  EXPECT_EQ(b.Ident.Str(), "BRAVO");
  EXPECT_EQ(b.MagVar, Cell(-34, 151));  // floor, not truncation
  EXPECT_TRUE(t.LowAirways(2).empty());
  EXPECT_TRUE(t.HighAirways(2).empty());

  // Slots no record named stay empty.
  EXPECT_TRUE(t.Intersections[0].Ident.IsEmptySlot());
  EXPECT_TRUE(t.Intersections[40000].Ident.IsEmptySlot());
  EXPECT_TRUE(t.LowAirways(0).empty());
  EXPECT_TRUE(t.LowAirways(-1).empty());
  EXPECT_TRUE(t.HighAirways(40001).empty());

  // The route search writes into the links it walks.
  t.LowAirways(5)[0].Mea1 = FixedStr<5>("3000");
  EXPECT_EQ(t.AirwayLinks[0].Mea1.Str(), "3000");
}

TEST(DijinterFile, EmptyDataGivesTheFullRangeOfEmptySlots) {
  NavaidTables t;
  t.MaxIntersectionIndex = 12;
  EXPECT_EQ(ParseDijinterFile(nullptr, 0, TestGrid(), t), std::nullopt);
  EXPECT_EQ(t.Intersections.size(), 40001u);
  EXPECT_EQ(t.MaxIntersectionIndex, -1);
  EXPECT_TRUE(t.AirwayLinks.empty());
}

TEST(DijinterFile, TheLastRecordWinsASharedIndexAndTheRangeEndsAre40000AndPoles) {
  std::vector<uint8_t> bytes = Join({
      Intersection(40000, "FIRST", 90.0f, -180.0f, 0, 0).b,
      Intersection(40000, "LAST", -90.0f, 180.0f, 0, 1).b,
      Link(0, "J1", 1, "", "").b,
  });
  NavaidTables t;
  ASSERT_EQ(ParseDijinter(bytes, t), std::nullopt);
  EXPECT_EQ(t.Intersections[40000].Ident.Str(), "LAST");
  EXPECT_EQ(t.MaxIntersectionIndex, 40000);
  ASSERT_EQ(t.HighAirways(40000).size(), 1u);
  EXPECT_EQ(t.HighAirways(40000)[0].AirwayName.Str(), "J1");
}

TEST(DijinterFile, CorruptRecordsAreNamedWithTheirNumberAndOffset) {
  auto fault = [](const std::vector<uint8_t>& bytes) {
    NavaidTables t;
    return ParseDijinter(bytes, t).value_or("(no fault)");
  };
  const auto good = Join({Intersection(1, "GOOD", 10, 10, 0, 1).b, Link(3, "J1", 5, "", "").b});  // 82 bytes
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float inf = std::numeric_limits<float>::infinity();

  EXPECT_EQ(fault(Join({good, Intersection(40001, "X", 0, 0, 0, 0).b})),
            "dijinter.orv: record 2 at byte 82: index 40001 is outside 0 to 40000");
  EXPECT_EQ(fault(Intersection(-1, "X", 0, 0, 0, 0).b),
            "dijinter.orv: record 1 at byte 0: index -1 is outside 0 to 40000");
  std::vector<uint8_t> cut = Join({good, Intersection(2, "X", 0, 0, 0, 0).b});
  cut.resize(82 + 30);
  EXPECT_EQ(fault(cut), "dijinter.orv: record 2 at byte 82: the record is cut short after 30 of its 56 bytes");
  EXPECT_EQ(fault(Join({Intersection(1, "X", 0, 0, 2, 1).b, Link(1, "V", 1, "", "").b, Link(1, "V", 1, "", "").b})),
            "dijinter.orv: record 1 at byte 0: 2 low and 1 high airway links run past the end of the file");
  EXPECT_EQ(fault(Join({Intersection(1, "X", 0, 0, 255, 255).b})),
            "dijinter.orv: record 1 at byte 0: 255 low and 255 high airway links run past the end of the file");
  EXPECT_EQ(fault(Join({good, Intersection(2, "X", 0, 0, 1, 2).b, Link(1, "V", 1, "", "").b,
                        Link(1, "J", 1, "", "").b, Link(40001, "J", 1, "", "").b})),
            "dijinter.orv: record 2 at byte 82: high airway link 2 points to index 40001, outside 0 to 40000");
  EXPECT_EQ(fault(Join({Intersection(1, "X", 0, 0, 1, 0).b, Link(-7, "V", 1, "", "").b})),
            "dijinter.orv: record 1 at byte 0: low airway link 1 points to index -7, outside 0 to 40000");
  EXPECT_EQ(fault(Intersection(1, "X", nan, 0, 0, 0).b),
            "dijinter.orv: record 1 at byte 0: latitude is not a finite number");
  EXPECT_EQ(fault(Intersection(1, "X", 0, -inf, 0, 0).b),
            "dijinter.orv: record 1 at byte 0: longitude is not a finite number");
  EXPECT_EQ(fault(Intersection(1, "X", 91, 0, 0, 0).b),
            "dijinter.orv: record 1 at byte 0: latitude 91 is outside -90 to 90");
  EXPECT_EQ(fault(Intersection(1, "X", 0, -180.5f, 0, 0).b),
            "dijinter.orv: record 1 at byte 0: longitude -180.5 is outside -180 to 180");
}

TEST(DijinterFile, WriterLaysOutTheFilledSlotsInIndexOrderAndReadsBack) {
  NavaidTables t;
  IntersectionRec a;
  a.Index = 9;
  a.Country = FixedStr<2>("K ");
  a.Ident = FixedStr<8>("ALPHA");
  a.Name = FixedStr<25>("NAME OF ALPHA");
  a.Value1 = 1.25f;
  a.Lat = 40.5f;
  a.Lon = -73.25f;
  a.MagVar = Cell(40, 286);
  a.Flag1 = FixedStr<1>("A");
  a.Flag2 = FixedStr<1>("B");
  AirwayLinkRec v1{2, FixedStr<8>("V1"), 10.5f, FixedStr<5>("03000"), FixedStr<5>("FL180")};
  AirwayLinkRec j70{2, FixedStr<8>("J70"), 20.25f, FixedStr<5>("FL240"), FixedStr<5>("FL450")};
  AirwayLinkRec j80{7, FixedStr<8>("J80"), 30.75f, FixedStr<5>("18000"), FixedStr<5>("45000")};
  IntersectionRec b = a;
  b.Index = 3;
  b.Ident = FixedStr<8>("BRAVO");
  b.Name = FixedStr<25>("NAME OF BRAVO");
  b.Lat = -33.5f;
  b.Lon = 151.2f;
  b.MagVar = Cell(-34, 151);
  ASSERT_TRUE(PlaceIntersection(t, a, std::vector{v1}, std::vector{j70, j80}));
  ASSERT_TRUE(PlaceIntersection(t, b, {}, {}));
  EXPECT_FALSE(PlaceIntersection(t, [] { IntersectionRec r; r.Index = 40001; return r; }(), {}, {}));
  EXPECT_EQ(t.MaxIntersectionIndex, 9);

  // Index 3 comes first although it was placed second; the hand-laid bytes
  // carry the grid's variation so that the two must match byte for byte.
  std::vector<uint8_t> expected = Join({
      Intersection(3, "BRAVO", -33.5f, 151.2f, 0, 0).Num<float>(48, Cell(-34, 151)).b,
      Intersection(9, "ALPHA", 40.5f, -73.25f, 1, 2).Num<float>(48, Cell(40, 286)).b,
      Link(2, "V1", 10.5f, "03000", "FL180").b,
      Link(2, "J70", 20.25f, "FL240", "FL450").b,
      Link(7, "J80", 30.75f, "18000", "45000").b,
  });
  std::vector<uint8_t> built = BuildDijinterFile(t);
  EXPECT_EQ(built, expected);

  NavaidTables back;
  ASSERT_EQ(ParseDijinter(built, back), std::nullopt);
  EXPECT_EQ(back.MaxIntersectionIndex, 9);
  for (int32_t i : {3, 9}) {
    IntersectionRec got = back.Intersections[static_cast<std::size_t>(i)];
    IntersectionRec want = t.Intersections[static_cast<std::size_t>(i)];
    got.LinkFirst = want.LinkFirst = 0;  // positions in the flat list follow file order
    EXPECT_EQ(got, want) << "slot " << i;
    EXPECT_TRUE(std::equal(back.LowAirways(i).begin(), back.LowAirways(i).end(), t.LowAirways(i).begin(),
                           t.LowAirways(i).end()));
    EXPECT_TRUE(std::equal(back.HighAirways(i).begin(), back.HighAirways(i).end(), t.HighAirways(i).begin(),
                           t.HighAirways(i).end()));
  }
}

// ------------------------------------------------------------------ vicways.orv, jetways.orv

TEST(AirwayFiles, TrimNamesStripLeadingZerosOfTheMeaTextsAndSkipEmptyRecords) {
  Poke empty(30);
  empty.Nul(0).Text(1, "GARBAGE");
  std::vector<uint8_t> bytes = Join({
      Segment(" V12", 3, 7, 1.5f, "     ", "05000").b,
      empty.Num<int32_t>(8, 99999).b,  // skipped before its indexes are looked at
      Segment("V120    ", 40000, 0, -2.0f, "00000", " 0900").b,
      Segment("V7", 1, 2, 0, "12000", "00120").b,
  });
  NavaidTables t;
  ASSERT_EQ(ParseVicwaysFile(bytes.data(), bytes.size(), t), std::nullopt);
  ASSERT_EQ(t.VictorAirways.size(), 3u);
  EXPECT_TRUE(t.JetAirways.empty());

  const AirwayRec& a = t.VictorAirways[0];
  EXPECT_EQ(a.Name.View(), "V12     ");
  EXPECT_EQ(a.FromIndex, 3);
  EXPECT_EQ(a.ToIndex, 7);
  EXPECT_EQ(a.Value, 1.5f);
  EXPECT_EQ(a.Mea1.Str(), "n/a");  // five blanks
  EXPECT_EQ(a.Mea2.Str(), "5000");
  EXPECT_EQ(t.VictorAirways[1].FromIndex, 40000);
  EXPECT_EQ(t.VictorAirways[1].Mea1.Str(), "n/a");  // nothing is left once the zeros go
  EXPECT_EQ(t.VictorAirways[1].Mea2.Str(), "900");
  EXPECT_EQ(t.VictorAirways[2].Mea1.Str(), "12000");
  EXPECT_EQ(t.VictorAirways[2].Mea2.Str(), "120");

  ASSERT_EQ(ParseJetwaysFile(bytes.data(), bytes.size(), t), std::nullopt);
  EXPECT_EQ(t.JetAirways, t.VictorAirways);
}

TEST(AirwayFiles, WriterRoundTripsAndWritesNotAvailableAsBlanks) {
  std::vector<AirwayRec> airways(2);
  airways[0] = {FixedStr<8>("J80"), 4, 5, 12.5f, FixedStr<5>("n/a"), FixedStr<5>("18000")};
  airways[1] = {FixedStr<8>("J146"), 40000, 0, 0, FixedStr<5>("900"), FixedStr<5>("n/a")};
  std::vector<uint8_t> built = BuildAirwayFile(airways);
  EXPECT_EQ(built, Join({Segment("J80", 4, 5, 12.5f, "", "18000").b, Segment("J146", 40000, 0, 0, "900", "").b}));
  NavaidTables t;
  ASSERT_EQ(ParseJetwaysFile(built.data(), built.size(), t), std::nullopt);
  EXPECT_EQ(t.JetAirways, airways);
}

TEST(AirwayFiles, CorruptRecordsAreNamedWithTheirFile) {
  auto fault = [](auto parse, const std::vector<uint8_t>& bytes) {
    NavaidTables t;
    return parse(bytes.data(), bytes.size(), t).value_or("(no fault)");
  };
  Poke empty(30);
  empty.Nul(0);
  std::vector<uint8_t> cut = Join({Segment("V1", 1, 2, 0, "", "").b, empty.b, Segment("V2", 1, 2, 0, "", "").b});
  cut.pop_back();
  EXPECT_EQ(fault(ParseVicwaysFile, cut),
            "vicways.orv: record 3 at byte 60: the record is cut short after 29 of its 30 bytes");
  EXPECT_EQ(fault(ParseJetwaysFile, Join({Segment("J1", 1, 2, 0, "", "").b, Segment("J2", 40001, 2, 0, "", "").b})),
            "jetways.orv: record 2 at byte 30: from index 40001 is outside 0 to 40000");
  EXPECT_EQ(fault(ParseJetwaysFile, Segment("J2", 0, -3, 0, "", "").b),
            "jetways.orv: record 1 at byte 0: to index -3 is outside 0 to 40000");
}

// ------------------------------------------------------------------ fixes.orv

TEST(FixesFile, ReadsFixesWhoseIdentIsSetAndTakesTheVariationFromTheGrid) {
  Poke noIdent = Fix("XX", "", 1, 1);
  noIdent.Nul(2);
  Poke noCountry = Fix("", "KEPT", 0.5f, -0.5f);
  noCountry.Nul(0);
  std::vector<uint8_t> bytes = Join({Fix("YM", "BOREE", -33.5f, 151.2f).b, noIdent.b, noCountry.b});
  NavaidTables t;
  ASSERT_EQ(ParseFixesFile(bytes.data(), bytes.size(), TestGrid(), t), std::nullopt);
  ASSERT_EQ(t.Fixes.size(), 2u);
  const FixRec& f = t.Fixes[0];
  EXPECT_EQ(f.Country.View(), "YM");
  EXPECT_EQ(f.Ident.View(), "BOREE");
  EXPECT_EQ(f.Name.Str(), "FIX BOREE");
  EXPECT_EQ(f.Lat, -33.5f);
  EXPECT_EQ(f.Lon, 151.2f);
  EXPECT_EQ(f.MagVar, Cell(-34, 151));
  EXPECT_EQ(f.Value, 3.5f);
  // The empty-record test looks at the Ident, not at the Country before it.
  EXPECT_EQ(t.Fixes[1].Ident.Str(), "KEPT");
  EXPECT_EQ(t.Fixes[1].MagVar, Cell(0, 359));  // longitude -0.5 lies in column 359

  // Written back with the grid's variation, the first record is the hand-laid one.
  std::vector<uint8_t> built = BuildFixesFile(t.Fixes);
  EXPECT_EQ(std::vector<uint8_t>(built.begin(), built.begin() + 48),
            Fix("YM", "BOREE", -33.5f, 151.2f).Num<float>(40, Cell(-34, 151)).b);
  NavaidTables back;
  ASSERT_EQ(ParseFixesFile(built.data(), built.size(), TestGrid(), back), std::nullopt);
  EXPECT_EQ(back.Fixes, t.Fixes);

  std::vector<uint8_t> cut = bytes;
  cut.resize(48 * 2 + 47);
  EXPECT_EQ(ParseFixesFile(cut.data(), cut.size(), TestGrid(), t),
            "fixes.orv: record 3 at byte 96: the record is cut short after 47 of its 48 bytes");
  bytes = Join({bytes, Fix("YM", "BAD", std::numeric_limits<float>::quiet_NaN(), 0).b});
  EXPECT_EQ(ParseFixesFile(bytes.data(), bytes.size(), TestGrid(), t),
            "fixes.orv: record 4 at byte 144: latitude is not a finite number");
}

// ------------------------------------------------------------------ vor.orv

TEST(VorFile, WidensTextsNamesTheTypeAndSkipsEmptyRecords) {
  Poke empty(56);
  empty.Nul(0);
  std::vector<uint8_t> bytes = Join({
      Vor("SYD", -33.5f, 151.2f, 2).b,
      empty.b,
      Vor("ABCDEFGHIJ", 10, 20, 5).b,
  });
  NavaidTables t;
  ASSERT_EQ(ParseVorFile(bytes.data(), bytes.size(), TestGrid(), t), std::nullopt);
  ASSERT_EQ(t.Vors.size(), 2u);
  const VorRec& v = t.Vors[0];
  EXPECT_EQ(v.Ident.View(), "SYD" + std::string(17, ' '));
  EXPECT_EQ(v.Name.View(), "VOR SYD" + std::string(63, ' '));
  EXPECT_EQ(v.Lat, -33.5f);
  EXPECT_EQ(v.Lon, 151.2f);
  EXPECT_EQ(v.Frequency, 112.1f);
  EXPECT_EQ(v.MagVar, Cell(-34, 151));
  EXPECT_EQ(v.Value, 7.5f);
  EXPECT_EQ(v.TypeCode, 2);
  EXPECT_EQ(v.Value2, -2);
  EXPECT_EQ(v.Value3, 300);
  EXPECT_EQ(v.TypeName.Str(), "VORTAC");
  EXPECT_EQ(t.Vors[1].Ident.Str(), "ABCDEFGHIJ");
  EXPECT_EQ(t.Vors[1].TypeName.Str(), "VOR");  // code 5 is unknown

  std::vector<uint8_t> built = BuildVorFile(t.Vors);
  EXPECT_EQ(std::vector<uint8_t>(built.begin(), built.begin() + 56),
            Vor("SYD", -33.5f, 151.2f, 2).Num<float>(42, Cell(-34, 151)).b);
  NavaidTables back;
  ASSERT_EQ(ParseVorFile(built.data(), built.size(), TestGrid(), back), std::nullopt);
  EXPECT_EQ(back.Vors, t.Vors);

  // A widened text longer than the file's field is cut back to it.
  VorRec wide = t.Vors[0];
  wide.Ident = FixedStr<20>("ABCDEFGHIJKLMNOPQRST");
  std::vector<uint8_t> cutBack = BuildVorFile({wide});
  EXPECT_EQ(std::string(cutBack.begin(), cutBack.begin() + 11), "ABCDEFGHIJV");
}

TEST(VorFile, TypeNamesAndFaults) {
  EXPECT_EQ(VorTypeName(1).Str(), "VOR");
  EXPECT_EQ(VorTypeName(2).Str(), "VORTAC");
  EXPECT_EQ(VorTypeName(3).Str(), "TACAN");
  EXPECT_EQ(VorTypeName(4).Str(), "VOR-DME");
  EXPECT_EQ(VorTypeName(9).Str(), "DME");
  for (int16_t other : {0, 5, 8, 10, -1}) EXPECT_EQ(VorTypeName(other).Str(), "VOR") << other;

  NavaidTables t;
  std::vector<uint8_t> bytes = Vor("X", 45, 200, 1).b;
  EXPECT_EQ(ParseVorFile(bytes.data(), bytes.size(), TestGrid(), t),
            "vor.orv: record 1 at byte 0: longitude 200 is outside -180 to 180");
  bytes = Join({Vor("A", 0, 0, 1).b, std::vector<uint8_t>(10, 'Z')});
  EXPECT_EQ(ParseVorFile(bytes.data(), bytes.size(), TestGrid(), t),
            "vor.orv: record 2 at byte 56: the record is cut short after 10 of its 56 bytes");
}

// ------------------------------------------------------------------ ndb.orv

TEST(NdbFile, ReadsNdbsAndNamesTheDmeOnesByTheirTypeNumber) {
  Poke empty(53);
  empty.Nul(0);
  std::vector<uint8_t> bytes = Join({
      Ndb("BK", 51.25f, -0.75f, "7  ").b,
      empty.b,
      Ndb("OX", -10, 10, "5  ").b,
  });
  NavaidTables t;
  ASSERT_EQ(ParseNdbFile(bytes.data(), bytes.size(), TestGrid(), t), std::nullopt);
  ASSERT_EQ(t.Ndbs.size(), 2u);
  const NdbRec& n = t.Ndbs[0];
  EXPECT_EQ(n.Ident.View(), "BK" + std::string(18, ' '));
  EXPECT_EQ(n.Name.View(), "NDB BK" + std::string(64, ' '));
  EXPECT_EQ(n.Lat, 51.25f);
  EXPECT_EQ(n.Lon, -0.75f);
  EXPECT_EQ(n.Frequency, 375.5f);
  EXPECT_EQ(n.MagVar, Cell(51, 359));
  EXPECT_EQ(n.Value, 8.25f);
  EXPECT_EQ(n.TypeText.View(), "7  ");
  EXPECT_EQ(n.TypeName.Str(), "NDB-DME");
  EXPECT_EQ(t.Ndbs[1].TypeName.Str(), "NDB");

  std::vector<uint8_t> built = BuildNdbFile(t.Ndbs);
  EXPECT_EQ(std::vector<uint8_t>(built.begin(), built.begin() + 53),
            Ndb("BK", 51.25f, -0.75f, "7  ").Num<float>(42, Cell(51, 359)).b);
  NavaidTables back;
  ASSERT_EQ(ParseNdbFile(built.data(), built.size(), TestGrid(), back), std::nullopt);
  EXPECT_EQ(back.Ndbs, t.Ndbs);

  for (std::string_view dme : {"7  ", " 7 ", "07 ", "7.0", "7ab"})
    EXPECT_EQ(NdbTypeName(FixedStr<3>(dme)).Str(), "NDB-DME") << dme;
  for (std::string_view plain : {"5  ", "17 ", "7.5", "   ", "70 ", "X7 "})
    EXPECT_EQ(NdbTypeName(FixedStr<3>(plain)).Str(), "NDB") << plain;

  bytes = Join({Ndb("BK", 0, 0, "7").b, Ndb("BAD", -90.5f, 0, "7").b});
  EXPECT_EQ(ParseNdbFile(bytes.data(), bytes.size(), TestGrid(), t),
            "ndb.orv: record 2 at byte 53: latitude -90.5 is outside -90 to 90");
}

}  // namespace
}  // namespace orv
