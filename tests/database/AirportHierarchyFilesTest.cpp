#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "database/AirportFile.h"
#include "database/ByteReader.h"

namespace orv {
namespace {

std::optional<std::string> Region(const std::vector<uint8_t>& b, AirportTables& t) {
  return ParseRegionFile(b.data(), b.size(), t);
}

// A file of its count and then the given texts, each blank-padded to its width.
std::vector<uint8_t> File(int32_t count, std::initializer_list<std::pair<std::string_view, std::size_t>> fields) {
  ByteWriter w;
  w.I32(count);
  for (const auto& [text, width] : fields) w.Text(text, width);
  return std::move(w.bytes);
}

TEST(RegionFile, HandBuiltRecordsAreTrimmedAndNulRecordsTakeNoSlot) {
  ByteWriter w;
  w.I32(3);
  w.Text("Europe", 30);
  w.Zeros(30);                   // an empty slot
  w.Text("  North America", 30);  // leading blanks go too
  w.Text("Asia", 30);
  ASSERT_EQ(w.bytes.size(), 4u + 4 * 30);

  AirportTables t;
  ASSERT_EQ(Region(w.bytes, t), std::nullopt);
  ASSERT_EQ(t.Regions.size(), 4u);  // indexes 0..Count
  EXPECT_EQ(t.RegionCount, 3);
  EXPECT_EQ(t.Regions[0], "Europe");
  EXPECT_EQ(t.Regions[1], "North America");
  EXPECT_EQ(t.Regions[2], "Asia");
  EXPECT_EQ(t.Regions[3], "");
}

TEST(RegionFile, ANulInsideANameEndsIt) {
  AirportTables t;
  ASSERT_EQ(Region(File(1, {{std::string_view("Oceania\0xx", 10), 10}, {"", 20}}), t), std::nullopt);
  EXPECT_EQ(t.Regions[0], "Oceania");
}

TEST(HierarchyFiles, FieldsSitAtTheirColumns) {
  // Names that fill their whole field: a column read one byte off shows.
  const std::string name40(40, 'C');
  {
    const auto b = File(1, {{name40, 40}, {"South America", 30}});
    ASSERT_EQ(b.size(), 4u + 70);
    AirportTables t;
    ASSERT_EQ(ParseCountryFile(b.data(), b.size(), t), std::nullopt);
    ASSERT_EQ(t.Countries.size(), 4u);  // indexes 0..Count+2
    EXPECT_EQ(t.CountryCount, 1);
    EXPECT_EQ(t.Countries[0].Name, name40);
    EXPECT_EQ(t.Countries[0].Region, "South America");
    EXPECT_EQ(t.Countries[1].Name, "");
  }
  {
    const auto b = File(1, {{name40, 40}, {"Brazil", 40}});
    ASSERT_EQ(b.size(), 4u + 80);
    AirportTables t;
    ASSERT_EQ(ParseStateFile(b.data(), b.size(), t), std::nullopt);
    ASSERT_EQ(t.States.size(), 4u);
    EXPECT_EQ(t.States[0].Name, name40);
    EXPECT_EQ(t.States[0].Country, "Brazil");
  }
  {
    const std::string name40S(40, 'S');
    // 8-bit text is kept as bytes.
    const auto b = File(2, {{name40, 40}, {name40S, 40}, {"Germany", 40}, {"S\xE3o Paulo", 40}, {"SP", 40}, {"Brazil", 40}});
    ASSERT_EQ(b.size(), 4u + 240);
    AirportTables t;
    ASSERT_EQ(ParseCityFile(b.data(), b.size(), t), std::nullopt);
    ASSERT_EQ(t.Cities.size(), 5u);
    EXPECT_EQ(t.CityCount, 2);
    EXPECT_EQ(t.Cities[0].Name, name40);
    EXPECT_EQ(t.Cities[0].State, name40S);
    EXPECT_EQ(t.Cities[0].Country, "Germany");
    EXPECT_EQ(t.Cities[1].Name, "S\xE3o Paulo");
    EXPECT_EQ(t.Cities[1].State, "SP");
    EXPECT_EQ(t.Cities[1].Country, "Brazil");
  }
}

TEST(HierarchyFiles, CountryArrayTakesTwoMoreEntriesThanCount) {
  // Count 1: Countries 0..3 holds up to four entries; the NUL record takes none.
  ByteWriter w;
  w.I32(1);
  for (const char* name : {"A", "B", "C"}) {
    w.Text(name, 40);
    w.Text("R", 30);
  }
  w.Zeros(70);
  AirportTables t;
  ASSERT_EQ(ParseCountryFile(w.bytes.data(), w.bytes.size(), t), std::nullopt);
  EXPECT_EQ(t.CountryCount, 3);
  EXPECT_EQ(t.Countries[2].Name, "C");

  w.Text("D", 40);
  w.Text("R", 30);
  AirportTables t2;
  ASSERT_EQ(ParseCountryFile(w.bytes.data(), w.bytes.size(), t2), std::nullopt);
  EXPECT_EQ(t2.Countries[3].Name, "D");

  w.Text("E", 40);
  w.Text("R", 30);
  AirportTables t3;
  EXPECT_EQ(ParseCountryFile(w.bytes.data(), w.bytes.size(), t3),
            "country.orv: record 6 at byte 354: more records than the count 1 allows");
}

TEST(HierarchyFiles, WritersRoundTrip) {
  std::vector<std::string> regions = {"Europe", "Africa", ""};
  std::vector<CountryEntry> countries = {{"France", "Europe"}, {"Kenya", "Africa"}};
  std::vector<StateEntry> states = {{"Bretagne", "France"}};
  std::vector<CityEntry> cities = {{"Brest", "Bretagne", "France"}, {"Nairobi", "", "Kenya"}};

  auto rb = BuildRegionFile(regions);
  auto cb = BuildCountryFile(countries);
  auto sb = BuildStateFile(states);
  auto ib = BuildCityFile(cities);
  EXPECT_EQ(rb.size(), 4u + 3 * 30);
  EXPECT_EQ(cb.size(), 4u + 2 * 70);
  EXPECT_EQ(sb.size(), 4u + 1 * 80);
  EXPECT_EQ(ib.size(), 4u + 2 * 120);
  EXPECT_EQ(rb[0], 3);  // Count little-endian
  EXPECT_EQ(rb[1], 0);

  AirportTables t;
  ASSERT_EQ(ParseRegionFile(rb.data(), rb.size(), t), std::nullopt);
  ASSERT_EQ(ParseCountryFile(cb.data(), cb.size(), t), std::nullopt);
  ASSERT_EQ(ParseStateFile(sb.data(), sb.size(), t), std::nullopt);
  ASSERT_EQ(ParseCityFile(ib.data(), ib.size(), t), std::nullopt);

  EXPECT_EQ(std::vector<std::string>(t.Regions.begin(), t.Regions.begin() + t.RegionCount), regions);
  ASSERT_EQ(t.CountryCount, 2);
  EXPECT_EQ(t.Countries[1].Name, "Kenya");
  EXPECT_EQ(t.Countries[1].Region, "Africa");
  EXPECT_EQ(t.States[0].Country, "France");
  EXPECT_EQ(t.Cities[1].State, "");
  EXPECT_EQ(t.Cities[1].Country, "Kenya");

  EXPECT_EQ(BuildCountryFile({t.Countries.begin(), t.Countries.begin() + t.CountryCount}), cb);
  EXPECT_EQ(BuildCityFile({t.Cities.begin(), t.Cities.begin() + t.CityCount}), ib);
}

TEST(HierarchyFiles, BadInputNamesFileRecordAndByte) {
  AirportTables t;
  t.Regions = {"kept"};
  t.RegionCount = 1;
  std::vector<uint8_t> shortFile = {1, 0};
  EXPECT_EQ(Region(shortFile, t), "region.orv: record 0 at byte 0: the file is too short to hold its count");

  const auto negative = File(-2, {});
  EXPECT_EQ(Region(negative, t), "region.orv: record 0 at byte 0: count -2 is negative");
  EXPECT_EQ(Region(File(2000000000, {{"Europe", 30}}), t),
            "region.orv: record 0 at byte 0: count 2000000000 runs past the end of the file");
  EXPECT_EQ(Region(File(1, {{"Europe", 30}, {"Asi", 12}}), t),
            "region.orv: record 2 at byte 34: the record is cut short (12 of 30 bytes)");
  EXPECT_EQ(Region(File(0, {{"Europe", 30}, {"Asia", 30}}), t),
            "region.orv: record 2 at byte 34: more records than the count 0 allows");
  const auto cityCut = File(0, {{"X", 119}});
  EXPECT_EQ(ParseCityFile(cityCut.data(), cityCut.size(), t),
            "city.orv: record 1 at byte 4: the record is cut short (119 of 120 bytes)");
  EXPECT_EQ(ParseStateFile(negative.data(), negative.size(), t), "state.orv: record 0 at byte 0: count -2 is negative");

  // A refused file leaves the tables as they were.
  ASSERT_EQ(t.Regions.size(), 1u);
  EXPECT_EQ(t.Regions[0], "kept");
  EXPECT_EQ(t.RegionCount, 1);
}

TEST(HierarchyFiles, CountOnlyFileGivesEmptyArrays) {
  const auto b = File(0, {});
  AirportTables t;
  ASSERT_EQ(ParseStateFile(b.data(), b.size(), t), std::nullopt);
  EXPECT_EQ(t.States.size(), 3u);
  EXPECT_EQ(t.StateCount, 0);
}

}  // namespace
}  // namespace orv
