#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "database/AirportFile.h"
#include "database/ByteReader.h"
#include "database/MagVar.h"

namespace orv {
namespace {

// ---------------------------------------------------------------- hand builders
// Each writes the record field by field in the file's order; the size checks
// pin every record to its stated length.

struct Header {
  int32_t index = 0;
  std::string icao = "KSEA", name = "Seattle Tacoma Intl", city = "Seattle", state = "Washington",
              country = "United States";
  float lat = 47.449f, lon = -122.309f;
  int32_t elevation = 433, word2 = 7;
  int32_t runways = 0, frequencies = 0, ils = 0, parking = 0;
  std::string unusedWords = std::string(8, '\0');
  std::string region = "";
};

Header Named(int32_t index, std::string icao, int32_t runways = 0) {
  Header h;
  h.index = index;
  h.icao = std::move(icao);
  h.runways = runways;
  return h;
}

// No code and the position 0,0: a deleted slot if a higher one is stored.
Header Blank(int32_t index) {
  Header h = Named(index, "");
  h.lat = h.lon = 0;
  return h;
}

void PutHeader(ByteWriter& w, const Header& h) {
  std::size_t start = w.bytes.size();
  w.I32(h.index);            // 0
  w.Text(h.icao, 5);         // 4
  w.Text(h.name, 40);        // 9
  w.Text(h.city, 40);        // 49
  w.Text(h.state, 40);       // 89
  w.Text(h.country, 40);     // 129
  w.F32(h.lat);              // 169
  w.F32(h.lon);              // 173
  w.Raw(h.unusedWords);      // 177
  w.I32(h.elevation);        // 185
  w.I32(h.word2);            // 189
  w.Text(h.region, 15);      // 193
  w.I32(h.runways);          // 208
  w.I32(h.frequencies);      // 212
  w.I32(h.ils);              // 216
  w.I32(h.parking);          // 220
  ASSERT_EQ(w.bytes.size() - start, 224u);
}

struct Runway {
  std::string unused = "", low = "16L", high = "34R";
  float lat = 47.46f, lon = -122.31f, heading = 179.9f, value = 1.5f;
  int16_t length = 11901, width = 150;
  uint8_t surface = 4, spare = 0;
  std::string lowIls = "ISNQ", highIls = "", flag = "";
};

void PutRunway(ByteWriter& w, const Runway& r) {
  std::size_t start = w.bytes.size();
  w.Text(r.unused, 5);   // 0
  w.Text(r.low, 5);      // 5
  w.Text(r.high, 5);     // 10
  w.F32(r.lat);          // 15
  w.F32(r.lon);          // 19
  w.F32(r.heading);      // 23
  w.F32(r.value);        // 27
  w.I16(r.length);       // 31
  w.I16(r.width);        // 33
  w.U8(r.surface);       // 35
  w.U8(r.spare);         // 36
  w.Text(r.lowIls, 5);   // 37
  w.Text(r.highIls, 5);  // 42
  w.Text(r.flag, 1);     // 47
  ASSERT_EQ(w.bytes.size() - start, 48u);
}

struct Frequency {
  std::string ident = "KSEA", name = "SEATTLE ATIS";
  float word1 = 1.25f, word2 = -2.5f, mhz = 118.0f;
  uint8_t kind = 1;
};

void PutFrequency(ByteWriter& w, const Frequency& f) {
  std::size_t start = w.bytes.size();
  w.Text(f.ident, 5);   // 0
  w.Text(f.name, 40);   // 5
  w.F32(f.word1);       // 45
  w.F32(f.word2);       // 49
  w.F32(f.mhz);         // 53
  w.U8(f.kind);         // 57
  ASSERT_EQ(w.bytes.size() - start, 58u);
}

struct Parking {
  std::string ident = "A1";
  float lat = 47.44f, lon = -122.30f;
  int32_t number = 12, kind = 9, nameCode = 12, value = 270;
};

void PutParking(ByteWriter& w, const Parking& p) {
  std::size_t start = w.bytes.size();
  w.Text(p.ident, 5);  // 0
  w.F32(p.lat);        // 5
  w.F32(p.lon);        // 9
  w.I32(p.number);     // 13
  w.I32(p.kind);       // 17
  w.I32(p.nameCode);   // 21
  w.I32(p.value);      // 25
  ASSERT_EQ(w.bytes.size() - start, 29u);
}

struct Ils {
  int32_t airport = 0;
  std::string ident = "ISNQ", name = "Seattle 16L", runway = "16L";
  float values[8] = {110.3f, 179.9f, 47.48f, -122.31f, 3.0f, 433.0f, 18.0f, -8.0f};
  std::string unused = "", ident2 = "SNQ", flag = "Y";
};

void PutIls(ByteWriter& w, const Ils& i) {
  std::size_t start = w.bytes.size();
  w.I32(i.airport);                  // 0
  w.Text(i.ident, 5);                // 4
  w.Text(i.name, 40);                // 9
  w.Text(i.runway, 5);               // 49
  for (float v : i.values) w.F32(v);  // 54 .. 82
  w.Text(i.unused, 15);              // 86
  w.Text(i.ident2, 5);               // 101
  w.Text(i.flag, 1);                 // 106
  ASSERT_EQ(w.bytes.size() - start, 107u);
}

// A variation grid whose every cell differs, so a lookup at the wrong cell shows.
const MagVarGrid& Grid() {
  static const MagVarGrid grid = [] {
    MagVarGrid g;
    g.Assign(BuildMagVarFile([](int lat, int lon) { return lat * 0.25 + lon * 0.01; }));
    return g;
  }();
  return grid;
}

std::optional<std::string> Parse(const std::vector<uint8_t>& bytes, AirportTables& t) {
  return ParseAirportFile(bytes.data(), bytes.size(), Grid(), t);
}

void PutInt(std::vector<uint8_t>& bytes, std::size_t at, int32_t v) { std::memcpy(bytes.data() + at, &v, 4); }
void PutFloat(std::vector<uint8_t>& bytes, std::size_t at, float v) { std::memcpy(bytes.data() + at, &v, 4); }

// ---------------------------------------------------------------- layout

TEST(AirportFile, HandBuiltAirportWithEveryListReadsFieldByField) {
  ByteWriter w;
  w.I32(1);
  Header h;
  h.unusedWords = "\x11\x22\x33\x44\x55\x66\x77\x88";
  h.region = "North America";
  h.runways = 2;
  h.frequencies = 1;
  h.ils = 1;
  h.parking = 2;
  PutHeader(w, h);
  Runway r1;
  r1.unused = "JUNK!";
  r1.spare = 0xEE;
  r1.flag = "F";
  PutRunway(w, r1);
  Runway r2;
  r2.low = "37";
  r2.high = "41";
  r2.lowIls = "";
  r2.highIls = "IXYZ";
  r2.surface = 254;
  r2.length = -1;  // a 16-bit field read as signed
  PutRunway(w, r2);
  Frequency f;
  f.name = std::string(30, 'N') + "0123456789";  // 40 characters, kept as 30
  f.kind = 12;
  PutFrequency(w, f);
  // Parking before ILS, although the header gives the ILS count first.
  Parking p1;
  PutParking(w, p1);
  Parking p2;
  p2.ident = "B22";
  p2.number = -3;
  p2.kind = 13;
  p2.nameCode = 37;
  p2.value = -90;
  PutParking(w, p2);
  PutIls(w, Ils{});
  ASSERT_EQ(w.bytes.size(), 4u + 224 + 2 * 48 + 58 + 2 * 29 + 107);

  AirportTables t;
  ASSERT_EQ(Parse(w.bytes, t), std::nullopt);
  ASSERT_EQ(t.Airports.size(), 52u);  // 0..Count+50
  EXPECT_EQ(t.AirportFileCount, 1);
  const AirportRec& a = t.Airports[0];
  EXPECT_EQ(a.Icao.View(), "KSEA      ");  // widened to 10
  EXPECT_EQ(a.Name.Trimmed(), "Seattle Tacoma Intl");
  EXPECT_EQ(a.Name.View().size(), 150u);
  EXPECT_EQ(a.City, "Seattle");
  EXPECT_EQ(a.State, "Washington");
  EXPECT_EQ(a.Country, "United States");
  EXPECT_EQ(a.Lat, 47.449f);
  EXPECT_EQ(a.Lon, -122.309f);
  EXPECT_EQ(a.Elevation, 433);
  EXPECT_EQ(a.Word2, 7);
  // Floors 47 and -123 (column 237): 47 * 0.25 + 2.37 = 14.12 degrees.
  EXPECT_EQ(a.MagVar, static_cast<float>(Grid().At(47, 237)));
  EXPECT_NEAR(a.MagVar, 14.12, 0.003);

  ASSERT_EQ(a.RunwayCount(), 2);
  const RunwayRec& rw = a.Runways[0];
  EXPECT_EQ(rw.LowEnd.View(), "16L  ");
  EXPECT_EQ(rw.HighEnd.View(), "34R  ");
  EXPECT_EQ(rw.Lat, 47.46f);
  EXPECT_EQ(rw.Lon, -122.31f);
  EXPECT_EQ(rw.TrueHeading, 179.9f);
  EXPECT_EQ(rw.Value, 1.5f);
  EXPECT_EQ(rw.LengthFeet, 11901);
  EXPECT_EQ(rw.WidthFeet, 150);
  EXPECT_EQ(rw.Surface, 4);
  EXPECT_EQ(rw.LowIls.Trimmed(), "ISNQ");
  EXPECT_EQ(rw.HighIls.Trimmed(), "");
  EXPECT_EQ(rw.Flag.View(), "F");
  EXPECT_EQ(rw.LowIlsIndex, -1);  // linked only by the later pass
  EXPECT_EQ(a.Runways[1].LowEnd.Trimmed(), "37");  // stored as the file has it
  EXPECT_EQ(a.Runways[1].HighIls.Trimmed(), "IXYZ");
  EXPECT_EQ(a.Runways[1].Surface, 254);
  EXPECT_EQ(a.Runways[1].LengthFeet, -1);

  ASSERT_EQ(a.FrequencyCount(), 1);
  EXPECT_EQ(a.Frequencies[0].Ident.Trimmed(), "KSEA");
  EXPECT_EQ(a.Frequencies[0].Name.View(), std::string(30, 'N'));
  EXPECT_EQ(a.Frequencies[0].Word1, 1.25f);
  EXPECT_EQ(a.Frequencies[0].Word2, -2.5f);
  EXPECT_EQ(a.Frequencies[0].Frequency, 118.0f);
  EXPECT_EQ(a.Frequencies[0].Kind, 12);

  ASSERT_EQ(a.ParkingCount(), 2);
  EXPECT_EQ(a.Parking[0].Ident.View(), "A1" + std::string(48, ' '));  // widened to 50
  EXPECT_EQ(a.Parking[0].Lat, 47.44f);
  EXPECT_EQ(a.Parking[0].Lon, -122.30f);
  EXPECT_EQ(a.Parking[0].Number, 12);
  EXPECT_EQ(a.Parking[0].Kind, 9);
  EXPECT_EQ(a.Parking[0].NameCode, 12);
  EXPECT_EQ(a.Parking[0].Value, 270);
  EXPECT_EQ(a.Parking[1].Ident.Trimmed(), "B22");
  EXPECT_EQ(a.Parking[1].Number, -3);
  EXPECT_EQ(a.Parking[1].Kind, 13);
  EXPECT_EQ(a.Parking[1].NameCode, 37);
  EXPECT_EQ(a.Parking[1].Value, -90);

  ASSERT_EQ(a.IlsCount(), 1);
  const IlsRec& ils = a.Ils[0];
  EXPECT_EQ(ils.LoadFlag, -1);
  EXPECT_EQ(ils.Airport, 0);
  EXPECT_EQ(ils.Ident.Trimmed(), "ISNQ");
  EXPECT_EQ(ils.Name.Trimmed(), "Seattle 16L");
  EXPECT_EQ(ils.Runway.Trimmed(), "16L");
  const float expected[8] = {110.3f, 179.9f, 47.48f, -122.31f, 3.0f, 433.0f, 18.0f, -8.0f};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(ils.Values[i], expected[i]) << i;
  EXPECT_EQ(ils.Ident2.Trimmed(), "SNQ");
  EXPECT_EQ(ils.Flag.View(), "Y");
  EXPECT_EQ(ils.RunwayIndex, -1);

  for (std::size_t i = 1; i < t.Airports.size(); ++i) EXPECT_FALSE(IsAirportSlotUsed(t.Airports[i])) << i;
}

TEST(AirportFile, PokedHeaderOffsets) {
  // A file from the writer, then single fields changed at their documented
  // byte offsets: the reader must see each change at that place.
  AirportRec a;
  a.Icao.Assign("EGLL");
  a.Name.Assign("Heathrow");
  a.Lat = 51.0f;
  a.Lon = -0.5f;
  auto bytes = BuildAirportFile({a});
  ASSERT_EQ(bytes.size(), 4u + 224);
  const std::size_t h = 4;
  PutInt(bytes, h + 0, 3);
  std::memcpy(bytes.data() + h + 4, "LFPG", 4);
  std::memcpy(bytes.data() + h + 129, "France", 6);
  PutFloat(bytes, h + 169, -33.5f);
  PutFloat(bytes, h + 173, 151.25f);
  PutInt(bytes, h + 185, 21);
  PutInt(bytes, h + 189, -4);

  AirportTables t;
  ASSERT_EQ(Parse(bytes, t), std::nullopt);
  const AirportRec& r = t.Airports[3];
  EXPECT_EQ(r.Icao.Trimmed(), "LFPG");
  EXPECT_EQ(r.Country, "France");
  EXPECT_EQ(r.Lat, -33.5f);
  EXPECT_EQ(r.Lon, 151.25f);
  EXPECT_EQ(r.Elevation, 21);
  EXPECT_EQ(r.Word2, -4);
  // The floor of -33.5 is -34, not -33.
  EXPECT_EQ(r.MagVar, static_cast<float>(Grid().At(-34, 151)));
  EXPECT_NEAR(r.MagVar, -34 * 0.25 + 1.51, 0.003);
  EXPECT_FALSE(IsAirportSlotUsed(t.Airports[0]));
}

TEST(AirportFile, ListCountsAreReadInHeaderOrder) {
  // Distinct counts at 208, 212, 216, 220 (runways, frequencies, ILS, parking)
  // with the lists behind in the order runways, frequencies, parking, ILS.
  ByteWriter w;
  w.I32(1);
  Header h;
  h.runways = 1;
  h.frequencies = 2;
  h.ils = 3;
  h.parking = 4;
  PutHeader(w, h);
  PutRunway(w, Runway{});
  PutFrequency(w, Frequency{});
  PutFrequency(w, Frequency{});
  for (int i = 0; i < 4; ++i) {
    Parking p;
    p.number = 100 + i;
    PutParking(w, p);
  }
  for (int i = 0; i < 3; ++i) {
    Ils ils;
    ils.ident = "I" + std::to_string(i);
    PutIls(w, ils);
  }
  AirportTables t;
  ASSERT_EQ(Parse(w.bytes, t), std::nullopt);
  const AirportRec& a = t.Airports[0];
  EXPECT_EQ(a.RunwayCount(), 1);
  EXPECT_EQ(a.FrequencyCount(), 2);
  ASSERT_EQ(a.IlsCount(), 3);
  ASSERT_EQ(a.ParkingCount(), 4);
  EXPECT_EQ(a.Parking[3].Number, 103);
  EXPECT_EQ(a.Ils[2].Ident.Trimmed(), "I2");
  // With the unused fields blank, the writer gives back the hand-built bytes.
  EXPECT_EQ(BuildAirportFile(t.Airports), w.bytes);
}

// ---------------------------------------------------------------- placing

TEST(AirportFile, RecordsArePlacedByIndexAndZeroCountsGiveEmptyLists) {
  ByteWriter w;
  w.I32(3);
  PutHeader(w, Named(2, "CYVR"));  // no lists: the next header follows at once
  PutHeader(w, Named(0, "KPDX", 1));
  PutRunway(w, Runway{});
  PutHeader(w, Named(53, "PANC"));  // the last slot: Count + 50

  AirportTables t;
  ASSERT_EQ(Parse(w.bytes, t), std::nullopt);
  ASSERT_EQ(t.Airports.size(), 54u);
  EXPECT_EQ(t.Airports[2].Icao.Trimmed(), "CYVR");
  EXPECT_TRUE(t.Airports[2].Runways.empty());
  EXPECT_TRUE(t.Airports[2].Frequencies.empty());
  EXPECT_TRUE(t.Airports[2].Ils.empty());
  EXPECT_TRUE(t.Airports[2].Parking.empty());
  EXPECT_EQ(t.Airports[0].Icao.Trimmed(), "KPDX");
  EXPECT_EQ(t.Airports[0].RunwayCount(), 1);
  EXPECT_EQ(t.Airports[53].Icao.Trimmed(), "PANC");
  EXPECT_FALSE(IsAirportSlotUsed(t.Airports[1]));
}

TEST(AirportFile, DeletedSlotsAndNegativeIndexesAreSkipped) {
  ByteWriter w;
  w.I32(5);
  Header nullIsland = Blank(0);  // a real airport at 0,0 in slot 0: nothing stored before it
  nullIsland.icao = "ZERO";
  PutHeader(w, nullIsland);
  PutHeader(w, Named(1, "ONE"));
  PutHeader(w, Blank(0));  // after slot 1 was stored: a deleted slot
  Header gone = Named(-1, "GONE", 1);  // negative index: passed over with its lists
  gone.parking = 1;
  PutHeader(w, gone);
  PutRunway(w, Runway{});
  Parking bad;
  bad.nameCode = 99;  // not checked: the record is not stored
  PutParking(w, bad);
  PutHeader(w, Named(2, "TWO"));

  AirportTables t;
  ASSERT_EQ(Parse(w.bytes, t), std::nullopt);
  EXPECT_EQ(t.DeletedSlots, 1);
  EXPECT_EQ(t.Airports[0].Icao.Trimmed(), "ZERO");
  EXPECT_EQ(t.Airports[1].Icao.Trimmed(), "ONE");
  EXPECT_EQ(t.Airports[2].Icao.Trimmed(), "TWO");
  EXPECT_EQ(t.Airports[2].RunwayCount(), 0);
}

TEST(AirportFile, ABlankHeaderRightAfterSlotZeroIsNotADeletedSlot) {
  // "Lower than the last stored one": with only slot 0 stored, a blank header
  // with index 0 is not lower, so it is stored over slot 0.
  ByteWriter w;
  w.I32(2);
  PutHeader(w, Named(0, "KSEA"));
  PutHeader(w, Blank(0));
  AirportTables t;
  ASSERT_EQ(Parse(w.bytes, t), std::nullopt);
  EXPECT_EQ(t.DeletedSlots, 0);
  EXPECT_FALSE(IsAirportSlotUsed(t.Airports[0]));
}

// ---------------------------------------------------------------- writer

AirportRec SampleAirport(const char* icao, float lat, float lon) {
  AirportRec a;
  a.Icao.Assign(icao);
  a.Name.Assign(std::string("Airport ") + icao);
  a.City = "City";
  a.State = "";
  a.Country = "Country";
  a.Lat = lat;
  a.Lon = lon;
  a.Elevation = 1234;
  a.Word2 = -1;
  RunwayRec rw;
  rw.LowEnd.Assign("09");
  rw.HighEnd.Assign("27");
  rw.Lat = lat;
  rw.Lon = lon;
  rw.TrueHeading = 92.5f;
  rw.LengthFeet = 8000;
  rw.WidthFeet = 100;
  rw.Surface = 254;
  rw.LowIls.Assign("IABC");
  a.Runways = {rw, rw};
  FrequencyRec f;
  f.Ident.Assign(icao);
  f.Name.Assign("TOWER");
  f.Frequency = 121.1f;
  f.Kind = 6;
  a.Frequencies = {f};
  ParkingRec p;
  p.Ident.Assign("G1");
  p.Lat = lat;
  p.Lon = lon;
  p.Kind = 10;
  p.NameCode = 10;
  a.Parking = {p, p, p};
  IlsRec ils;
  ils.Ident.Assign("IABC");
  ils.Values[0] = 109.9f;
  a.Ils = {ils};
  return a;
}

TEST(AirportFile, RoundTripThroughTheWriter) {
  std::vector<AirportRec> airports(4);
  airports[0] = SampleAirport("AAAA", 10.5f, 20.5f);
  airports[2] = SampleAirport("CCCC", -10.5f, -20.5f);  // slot 1 stays unused
  auto bytes = BuildAirportFile(airports);
  // Slots 0..2 written: slot 1 as an empty header with index -1, slot 3 not at all.
  ASSERT_EQ(bytes.size(), 4u + 3 * 224 + 2 * (2 * 48 + 58 + 3 * 29 + 107));
  EXPECT_EQ(bytes[0], 3);
  int32_t gapIndex;
  std::memcpy(&gapIndex, bytes.data() + 4 + 224 + 2 * 48 + 58 + 3 * 29 + 107, 4);
  EXPECT_EQ(gapIndex, -1);

  AirportTables t;
  ASSERT_EQ(Parse(bytes, t), std::nullopt);
  ASSERT_EQ(t.Airports.size(), 54u);
  EXPECT_FALSE(IsAirportSlotUsed(t.Airports[1]));
  const AirportRec& c = t.Airports[2];
  EXPECT_EQ(c.Name.Trimmed(), "Airport CCCC");
  EXPECT_EQ(c.City, "City");
  EXPECT_EQ(c.State, "");
  EXPECT_EQ(c.Lat, -10.5f);
  EXPECT_EQ(c.Elevation, 1234);
  EXPECT_EQ(c.Word2, -1);
  EXPECT_EQ(c.MagVar, static_cast<float>(Grid().At(-11, -21)));
  ASSERT_EQ(c.RunwayCount(), 2);
  EXPECT_EQ(c.Runways[1].TrueHeading, 92.5f);
  EXPECT_EQ(c.Runways[1].Surface, 254);
  EXPECT_EQ(c.Frequencies[0].Name.Trimmed(), "TOWER");
  EXPECT_EQ(c.ParkingCount(), 3);
  EXPECT_EQ(c.Ils[0].Values[0], 109.9f);
  EXPECT_EQ(BuildAirportFile(t.Airports), bytes);
}

// ---------------------------------------------------------------- bad input

std::vector<uint8_t> OneAirport(const Header& h) {
  ByteWriter w;
  w.I32(1);
  PutHeader(w, h);
  return w.bytes;
}

TEST(AirportFile, BadCountsAndHeaders) {
  AirportTables t;
  std::vector<uint8_t> tiny = {0, 0, 0};
  EXPECT_EQ(Parse(tiny, t), "airport.orv: record 0 at byte 0: the file is too short to hold its count");

  auto negative = OneAirport(Header{});
  PutInt(negative, 0, -7);
  EXPECT_EQ(Parse(negative, t), "airport.orv: record 0 at byte 0: count -7 is negative");

  auto huge = OneAirport(Header{});
  PutInt(huge, 0, 2);  // one header cannot hold two airports
  EXPECT_EQ(Parse(huge, t), "airport.orv: record 0 at byte 0: count 2 runs past the end of the file");
  PutInt(huge, 0, std::numeric_limits<int32_t>::max());
  EXPECT_EQ(Parse(huge, t), "airport.orv: record 0 at byte 0: count 2147483647 runs past the end of the file");

  auto cut = OneAirport(Header{});
  cut.resize(cut.size() + 100, ' ');
  EXPECT_EQ(Parse(cut, t), "airport.orv: record 2 at byte 228: the header is cut short (100 of 224 bytes)");

  Header far;
  far.index = 52;
  EXPECT_EQ(Parse(OneAirport(far), t), "airport.orv: record 1 at byte 4: index 52 is beyond the last slot 51");
}

TEST(AirportFile, BadListCounts) {
  AirportTables t;
  Header h;
  h.runways = 70000;
  EXPECT_EQ(Parse(OneAirport(h), t),
            "airport.orv: record 1 at byte 4: runway count 70000 runs past the end of the file");
  h = Header{};
  h.frequencies = -1;
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: frequency count -1 is negative");
  h = Header{};
  h.ils = std::numeric_limits<int32_t>::min();
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: ILS count -2147483648 is negative");

  // Counts are checked together: one runway fits, but the parking list after
  // it does not.
  ByteWriter w;
  w.I32(2);
  PutHeader(w, Header{});
  Header second;
  second.index = 1;
  second.runways = 1;
  second.parking = 1;
  PutHeader(w, second);
  PutRunway(w, Runway{});
  PutParking(w, Parking{});
  const uint8_t last = w.bytes.back();
  w.bytes.pop_back();
  EXPECT_EQ(Parse(w.bytes, t), "airport.orv: record 2 at byte 228: parking count 1 runs past the end of the file");
  w.bytes.push_back(last);
  EXPECT_EQ(Parse(w.bytes, t), std::nullopt) << "exactly enough bytes";

  // A list too long for the rest stops the negative-index record as well.
  Header gone;
  gone.index = -5;
  gone.ils = 1;
  EXPECT_EQ(Parse(OneAirport(gone), t), "airport.orv: record 1 at byte 4: ILS count 1 runs past the end of the file");
}

TEST(AirportFile, BadPositionsAndCodes) {
  AirportTables t;
  Header h;
  h.lat = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: latitude is not a finite number");
  h = Header{};
  h.lon = -std::numeric_limits<float>::infinity();
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: longitude is not a finite number");
  h = Header{};
  h.lat = 1e30f;
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: latitude 1E+30 is outside -90..90");
  h = Header{};
  h.lon = 180.5f;
  EXPECT_EQ(Parse(OneAirport(h), t), "airport.orv: record 1 at byte 4: longitude 180.5 is outside -180..180");

  auto withList = [](auto put, int32_t Header::*count) {
    ByteWriter w;
    w.I32(1);
    Header hh;
    hh.*count = 2;
    PutHeader(w, hh);
    put(w, 0);
    put(w, 1);
    return w.bytes;
  };
  auto runways = withList(
      [](ByteWriter& w, int i) {
        Runway r;
        if (i == 1) r.lat = 91;
        PutRunway(w, r);
      },
      &Header::runways);
  EXPECT_EQ(Parse(runways, t), "airport.orv: record 1 at byte 4: runway 2 latitude 91 is outside -90..90");

  for (int kind : {0, 13}) {
    auto freqs = withList(
        [kind](ByteWriter& w, int i) {
          Frequency f;
          if (i == 0) f.kind = static_cast<uint8_t>(kind);
          PutFrequency(w, f);
        },
        &Header::frequencies);
    EXPECT_EQ(Parse(freqs, t),
              "airport.orv: record 1 at byte 4: frequency 1 kind " + std::to_string(kind) + " is outside 1..12");
  }

  auto parkingWith = [&](int32_t Parking::*field, int32_t value) {
    return withList(
        [field, value](ByteWriter& w, int i) {
          Parking p;
          if (i == 1) p.*field = value;
          PutParking(w, p);
        },
        &Header::parking);
  };
  EXPECT_EQ(Parse(parkingWith(&Parking::nameCode, 38), t),
            "airport.orv: record 1 at byte 4: parking 2 name code 38 is outside 0..37");
  EXPECT_EQ(Parse(parkingWith(&Parking::nameCode, -1), t),
            "airport.orv: record 1 at byte 4: parking 2 name code -1 is outside 0..37");
  EXPECT_EQ(Parse(parkingWith(&Parking::kind, 0), t),
            "airport.orv: record 1 at byte 4: parking 2 kind 0 is outside 1..13");
  auto parkingNan = withList(
      [](ByteWriter& w, int i) {
        Parking p;
        if (i == 0) p.lon = std::numeric_limits<float>::quiet_NaN();
        PutParking(w, p);
      },
      &Header::parking);
  EXPECT_EQ(Parse(parkingNan, t), "airport.orv: record 1 at byte 4: parking 1 longitude is not a finite number");

  // None of these touched the tables.
  EXPECT_TRUE(t.Airports.empty());
}

// ---------------------------------------------------------------- runways

TEST(RunwayText, DesignatorRewriteAndListName) {
  EXPECT_EQ(RunwayDesignator("09L  "), "09L");
  EXPECT_EQ(RunwayDesignator("36   "), "36");
  EXPECT_EQ(RunwayDesignator("37   "), "N");
  const char* points[] = {"NE", "E", "SE", "S", "SW", "W"};  // 38 to 43
  for (int n = 38; n <= 43; ++n) EXPECT_EQ(RunwayDesignator(std::to_string(n)), points[n - 38]) << n;
  EXPECT_EQ(RunwayDesignator("44W"), "NWW");  // the rest stays behind the point
  EXPECT_EQ(RunwayDesignator("37C"), "NC");
  EXPECT_EQ(RunwayDesignator("45"), "45");    // no compass point above 44
  EXPECT_EQ(RunwayDesignator("9"), "9");
  EXPECT_EQ(RunwayDesignator("N"), "N");
  EXPECT_EQ(RunwayDesignator(std::string_view("38\0\0\0", 5)), "NE");
  EXPECT_EQ(RunwayDesignator(""), "");

  EXPECT_EQ(RunwayListName("09L  "), "Rwy 09L");
  EXPECT_EQ(RunwayListName("37"), "Rwy N");
  EXPECT_EQ(RunwayListName("00H  "), "Heli  00H");
  EXPECT_EQ(RunwayListName("100H"), "Heli  100H");
  EXPECT_EQ(RunwayListName("00"), "Rwy 00");
}

TEST(RunwayText, HeadingsSubtractVariationOnlyAtTheLowEnd) {
  RunwayRec rw;
  rw.TrueHeading = 270.0f;
  EXPECT_EQ(LowEndHeading(rw, -12.5f), 282.5f);
  EXPECT_EQ(HighEndHeading(rw), 450.0f);  // not wrapped, no variation
  rw.TrueHeading = 92.5f;
  EXPECT_EQ(LowEndHeading(rw, 3.25f), 89.25f);
  EXPECT_EQ(HighEndHeading(rw), 272.5f);
}

// ---------------------------------------------------------------- ILS links

TEST(IlsLinks, IdentsTieToRunwayEnds) {
  AirportRec a;
  a.Runways.resize(3);
  a.Runways[0].LowIls.Assign("iabc ");   // upper-cased before the compare
  a.Runways[1].HighIls.Assign(" IXYZ");  // trimmed before the compare
  a.Runways[2].LowIls.Assign("IQQQ");
  a.Ils.resize(4);
  a.Ils[0].Ident.Assign("IABC");
  a.Ils[1].Ident.Assign("IXYZ ");
  a.Ils[2].Ident.Assign("iqqq");  // the ILS ident itself is not upper-cased
  a.Ils[3].Ident.Assign("");      // a blank ident ties to nothing, not to blank runway fields

  LinkIlsToRunways(a);
  EXPECT_EQ(a.Ils[0].RunwayIndex, 0);
  EXPECT_EQ(a.Ils[0].End, RunwayEnd::Low);
  EXPECT_EQ(a.Ils[1].RunwayIndex, 1);
  EXPECT_EQ(a.Ils[1].End, RunwayEnd::High);
  EXPECT_EQ(a.Ils[2].RunwayIndex, -1);
  EXPECT_EQ(a.Ils[2].End, RunwayEnd::None);
  EXPECT_EQ(a.Ils[3].RunwayIndex, -1);

  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::Low), &a.Ils[0]);
  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::High), nullptr);
  EXPECT_EQ(IlsForRunwayEnd(a, 1, RunwayEnd::High), &a.Ils[1]);
  EXPECT_EQ(IlsForRunwayEnd(a, 2, RunwayEnd::Low), nullptr);
  EXPECT_EQ(IlsForRunwayEnd(a, 3, RunwayEnd::Low), nullptr);
  EXPECT_EQ(IlsForRunwayEnd(a, -1, RunwayEnd::Low), nullptr);
  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::None), nullptr);

  // A second pass after a change drops the old tie.
  a.Runways[0].LowIls.Assign("");
  a.Runways[2].HighIls.Assign("IABC");
  LinkIlsToRunways(a);
  EXPECT_EQ(a.Ils[0].RunwayIndex, 2);
  EXPECT_EQ(a.Ils[0].End, RunwayEnd::High);
  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::Low), nullptr);
  EXPECT_EQ(IlsForRunwayEnd(a, 2, RunwayEnd::High), &a.Ils[0]);
}

TEST(IlsLinks, LastMatchWinsAndTablesPassCoversEveryAirport) {
  AirportRec a;
  a.Runways.resize(2);
  a.Runways[0].LowIls.Assign("IDUP");
  a.Runways[0].HighIls.Assign("IDUP");
  a.Runways[1].LowIls.Assign("IDUP");
  a.Ils.resize(1);
  a.Ils[0].Ident.Assign("IDUP");
  LinkIlsToRunways(a);
  EXPECT_EQ(a.Ils[0].RunwayIndex, 1);
  EXPECT_EQ(a.Ils[0].End, RunwayEnd::Low);
  // Every end that names it still finds it.
  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::Low), &a.Ils[0]);
  EXPECT_EQ(IlsForRunwayEnd(a, 0, RunwayEnd::High), &a.Ils[0]);

  std::vector<AirportRec> airports = {SampleAirport("AAAA", 1, 1), SampleAirport("BBBB", 2, 2)};
  AirportTables t;
  auto bytes = BuildAirportFile(airports);
  ASSERT_EQ(Parse(bytes, t), std::nullopt);
  LinkIlsToRunways(t);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(t.Airports[i].Ils[0].RunwayIndex, 1) << i;  // both runways name "IABC"; the last wins
    EXPECT_EQ(IlsForRunwayEnd(t.Airports[i], 0, RunwayEnd::Low), &t.Airports[i].Ils[0]);
  }
}

// An airport by its code: blanks and case do not count, empty slots never
// match, the first of two slots with the code wins; the ILS values by name.
TEST(AirportFile, AirportByIcaoAndIlsValues) {
  AirportTables tables;
  tables.Airports = {SampleAirport("EDDF", 50, 8), AirportRec{}, SampleAirport("KJFK", 40, -73),
                     SampleAirport("eddf", 1, 1)};
  EXPECT_EQ(FindAirportByIcao(tables, " eddf "), 0);
  EXPECT_EQ(FindAirportByIcao(tables, "KJFK"), 2);
  EXPECT_EQ(FindAirportByIcao(tables, "EDDM"), -1);
  EXPECT_EQ(FindAirportByIcao(tables, "  "), -1);

  IlsRec ils;
  ils.Values[0] = 110.3f, ils.Values[1] = 249.4f, ils.Values[2] = 3.0f;
  EXPECT_EQ(IlsFrequency(ils), 110.3f);
  EXPECT_EQ(IlsGlideSlope(ils), 3.0f);
  EXPECT_EQ(IlsCourseOr(ils, 250.0f), 249.4f);
  for (float stored : {0.0f, -5.0f, 360.5f}) {
    ils.Values[1] = stored;
    EXPECT_EQ(IlsCourseOr(ils, 250.0f), 250.0f) << stored;  // no course stored: the runway's
  }
  ils.Values[1] = 360.0f;
  EXPECT_EQ(IlsCourseOr(ils, 250.0f), 360.0f);
}

}  // namespace
}  // namespace orv
