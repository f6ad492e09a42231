#include <gtest/gtest.h>

#include "core/Startup.h"
#include "map/HoverText.h"

namespace orv {
namespace {

using Lines = std::vector<std::string>;

RunwayRec Runway(std::string_view low, std::string_view high, int16_t length, uint8_t surface) {
  RunwayRec r;
  r.LowEnd.Assign(low);
  r.HighEnd.Assign(high);
  r.LengthFeet = length;
  r.Surface = surface;
  return r;
}

FrequencyRec Frequency(uint8_t kind, float mhz, std::string_view name = "") {
  FrequencyRec f;
  f.Kind = kind;
  f.Frequency = mhz;
  f.Name.Assign(name);
  return f;
}

AirportRec HandBuiltAirport() {
  AirportRec a;
  a.Icao.Assign("EDDF");
  a.Name.Assign("Frankfurt Main");
  a.City = "Frankfurt";
  a.State = "Hessen";
  a.Country = "Germany";
  a.Elevation = 364;
  a.Lat = 50.5f;
  a.Lon = 8.25f;
  a.Runways = {Runway("07C", "25C", 13123, 4), Runway("37", "41", 3000, 254), Runway("00H", "", 60, 1),
               Runway("39L ", "43R", 1200, 24), Runway("09", "27", 500, 200)};
  IlsRec ils;
  ils.Ident.Assign("IFRA");
  ils.Values[0] = 110.3f;
  ils.Values[1] = 249.4f;
  IlsRec loc;
  loc.Ident.Assign("IFE");
  loc.Values[0] = 109.5f;
  loc.Values[1] = 68.6f;
  a.Ils = {ils, loc};
  a.Frequencies = {Frequency(1, 118.025f), Frequency(6, 119.9f), Frequency(12, 127.2f),
                   Frequency(0, 120.8f, "LANGEN RADAR"), Frequency(13, 121.5f)};
  return a;
}

AppState NamedState(int16_t decSec) {
  AppState state;
  FillNameTables(state);
  state.Config.DecSec = decSec;
  return state;
}

TEST(HoverText, AirportLines) {
  AppState state = NamedState(1);
  EXPECT_EQ(AirportInfoLines(HandBuiltAirport(), state),
            (Lines{
                "Frankfurt Main (EDDF)",
                "Frankfurt Germany Hessen",
                "364 ft",
                "N50\xB0" "30.00'  E008\xB0" "15.00'",
                "",
                "Rwy: 07C - 25C / 13123 ft  Asphalt",
                "Rwy: N - S / 3000 ft  Unknown",   // 37 and 41 are compass points; surface 254
                "Heli  00H / 60 ft  Grass",        // a helipad has one end
                "Rwy: EL - WR / 1200 ft  Dirt",    // the rest stays behind the point; 24 is the second Dirt
                "Rwy: 09 - 27 / 500 ft  ",         // a surface code without a name
                "ILS IFRA  110.300  249\xB0",
                "ILS IFE  109.500  069\xB0",
                "ATIS: 118.025",
                "Tower: 119.900",
                "ASOS: 127.200",
                "LANGEN RADAR: 120.800",          // no kind: the frequency's own name
                ": 121.500",
            }));
}

TEST(HoverText, AirportPositionFollowsTheCoordinateSettingAndHemisphere) {
  AirportRec a;
  a.Icao.Assign("SCEL");
  a.Name.Assign("Santiago");
  a.Lat = -33.5f;
  a.Lon = -70.75f;
  a.Elevation = -12;
  Lines decimal = AirportInfoLines(a, NamedState(1));
  ASSERT_EQ(decimal.size(), 5u);  // no runways, ILS or frequencies: the blank line closes it
  EXPECT_EQ(decimal[1], "  ");    // city, country and state all empty, still joined
  EXPECT_EQ(decimal[2], "-12 ft");
  EXPECT_EQ(decimal[3], "S33\xB0" "30.00'  W070\xB0" "45.00'");
  EXPECT_EQ(decimal[4], "");
  EXPECT_EQ(AirportInfoLines(a, NamedState(0))[3], "S33\xB0" "30'00.00\"  W070\xB0" "45'00.00\"");
}

TEST(HoverText, LinesOfTheOtherPointsAppendBehindTheAirport) {
  NavaidTables n;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  IntersectionRec x;
  x.Index = 12;
  x.Ident.Assign("RUDUS");
  x.Lat = 50.25f;
  x.Lon = -1.5f;
  auto link = [](std::string_view airway) {
    AirwayLinkRec l;
    l.AirwayName.Assign(airway);
    return l;
  };
  std::vector<AirwayLinkRec> low = {link("V1"), link("V3"), link("V1")};
  std::vector<AirwayLinkRec> high = {link("UL607")};
  ASSERT_TRUE(PlaceIntersection(n, x, low, high));

  Lines lines = {"before"};
  AppendIntersectionLines(n, 12, true, lines);
  AppendIntersectionLines(n, 40001, true, lines);  // outside the array: nothing
  FixRec fix;
  fix.Ident.Assign("DF123");
  fix.Name.Assign("ALPHA");
  fix.Lat = 1;
  fix.Lon = 2;
  AppendFixLines(fix, true, lines);
  UserWaypointRec home;
  home.Ident.Assign("HOME1");
  home.Lat = -0.5f;
  home.Lon = 0.5f;
  AppendUserWaypointLines(home, false, lines);
  EXPECT_EQ(lines, (Lines{
                       "before",
                       "Int RUDUS",  // no name: the ident stands in
                       "N50\xB0" "15.00'  W001\xB0" "30.00'",
                       "LowAlt: V1 V3",
                       "HighAlt: UL607",
                       "Fix ALPHA",
                       "N01\xB0" "00.00'  E002\xB0" "00.00'",
                       "User WP HOME1",
                       "S00\xB0" "30'00.00\"  E000\xB0" "30'00.00\"",
                   }));
}

}  // namespace
}  // namespace orv
