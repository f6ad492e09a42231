#include <gtest/gtest.h>

#include <utility>

#include "core/TextFormats.h"

namespace orv {
namespace {

TEST(CoordinateText, DecimalMinutes) {
  EXPECT_EQ(LatToText(47.4502, true), "N47\xB0" "27.01'");
  EXPECT_EQ(LatToText(-33.946111, true), "S33\xB0" "56.77'");
  EXPECT_EQ(LatToText(0, true), "N00\xB0" "00.00'");
  EXPECT_EQ(LatToText(-0.5, true), "S00\xB0" "30.00'");  // the letter carries the sign of a zero degree
  EXPECT_EQ(LonToText(-0.461389, true), "W000\xB0" "27.68'");
  EXPECT_EQ(LonToText(151.177222, true), "E151\xB0" "10.63'");
  EXPECT_EQ(LonToText(-179.999, true), "W179\xB0" "59.94'");
  // The mask rounds the minutes on their own: a value just below a whole
  // degree shows 60 minutes.
  EXPECT_EQ(LatToText(50.99999, true), "N50\xB0" "60.00'");
}

TEST(CoordinateText, WholeMinutesAndSeconds) {
  EXPECT_EQ(LatToText(47.4502, false), "N47\xB0" "27'00.72\"");
  EXPECT_EQ(LatToText(-33.946111, false), "S33\xB0" "56'46.00\"");
  EXPECT_EQ(LonToText(-0.461389, false), "W000\xB0" "27'41.00\"");
  EXPECT_EQ(LonToText(8.570556, false), "E008\xB0" "34'14.00\"");
  // Minutes are truncated, not rounded: 29.9994' is 29' and 59.96".
  EXPECT_EQ(LatToText(10.49999, false), "N10\xB0" "29'59.96\"");
  // A single-precision coordinate is shown as the float holds it.
  EXPECT_EQ(LatToText(47.4502f, false), "N47\xB0" "27'00.72\"");
  EXPECT_EQ(LatToText(50.1f, true), "N50\xB0" "06.00'");
}

TEST(CoordinateText, PlanForm) {
  EXPECT_EQ(LatToPlanText(47.4502), "N47* 27.01', ");
  EXPECT_EQ(LatToPlanText(-33.946111), "S33* 56.77', ");
  EXPECT_EQ(LonToPlanText(-73.778889), "W073* 46.73', ");
  EXPECT_EQ(LonToPlanText(8.5), "E008* 30.00', ");
  EXPECT_EQ(LonToPlanText(0), "E000* 00.00', ");
}

TEST(VarToText, SideLetterAndThreeDigits) {
  EXPECT_EQ(VarToText(-5.4), "W005");
  EXPECT_EQ(VarToText(3.2), "E003");
  EXPECT_EQ(VarToText(0), " 000");
  EXPECT_EQ(VarToText(-2.5), "W003");   // the mask rounds half away from zero
  EXPECT_EQ(VarToText(350), "W010");    // above 180 loses a turn
  EXPECT_EQ(VarToText(-190), "E170");   // below -180 gains one
  EXPECT_EQ(VarToText(181.5), "W179");
  EXPECT_EQ(VarToText(12.49), "E012");
}

TEST(LatToShortText, GridLabels) {
  EXPECT_EQ(LatToShortText(45), "N45");
  EXPECT_EQ(LatToShortText(5), "N05");
  EXPECT_EQ(LatToShortText(-30), "S30");
  EXPECT_EQ(LatToShortText(0), " 00");
  EXPECT_EQ(LatToShortText(90), "N90");
  EXPECT_EQ(LatToShortText(100), "N10");
  EXPECT_EQ(LatToShortText(-100), "S10");
}

TEST(MinutesToHours, HoursAndMinutes) {
  EXPECT_EQ(MinutesToHours(125), "02:05");
  EXPECT_EQ(MinutesToHours(0), "00:00");
  EXPECT_EQ(MinutesToHours(1500), "25:00");
  EXPECT_EQ(MinutesToHours(59.5), "01:00");  // rounds half to even first
  EXPECT_EQ(MinutesToHours(60.5), "01:00");
  EXPECT_EQ(MinutesToHours(61.5), "01:02");
}

TEST(RunwayOpposite, NumbersSidesAndCompassWords) {
  // Each pair both ways, then the eight compass words.
  for (auto [one, other] : {std::pair{"09L", "27R"}, {"35R", "17L"}, {"01C", "19C"}, {"36", "18"}}) {
    EXPECT_EQ(RunwayOpposite(one), other);
    EXPECT_EQ(RunwayOpposite(other), one);
  }
  EXPECT_EQ(RunwayOpposite("19"), "01");
  EXPECT_EQ(RunwayOpposite("9"), "27");
  EXPECT_EQ(RunwayOpposite("04W"), "22");  // any other last letter is no side
  const char* compass[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(RunwayOpposite(compass[i]), compass[(i + 4) % 8]) << compass[i];
  EXPECT_EQ(RunwayOpposite("NWL"), "SER");
  EXPECT_EQ(RunwayOpposite(" 09L "), "27R");
  EXPECT_EQ(RunwayOpposite("00H"), "00H");  // a helipad has no other end
  EXPECT_EQ(RunwayOpposite(""), "");
}

TEST(TextHelpers, StripLeadingAndNameCase) {
  EXPECT_EQ(StripLeading('0', "00500"), "500");
  EXPECT_EQ(StripLeading('0', "  0045 "), "45");
  EXPECT_EQ(StripLeading('0', "000"), "");
  EXPECT_EQ(StripLeading('0', "FL100"), "FL100");
  EXPECT_EQ(StripLeading('-', "--X-"), "X-");

  EXPECT_EQ(NameCase("NEW YORK-KENNEDY INTL"), "New York-Kennedy Intl");
  EXPECT_EQ(NameCase("o'hare"), "O'Hare");
  // Only letters keep the next character lower case; the rule does not know words.
  EXPECT_EQ(NameCase("ST. JOHN'S"), "St. John'S");
  EXPECT_EQ(NameCase("A320NEO"), "A320Neo");
  EXPECT_EQ(NameCase(""), "");
}

TEST(FuelToUnit, BySetting) {
  EXPECT_EQ(FuelToUnit(100, 0), 100);
  EXPECT_DOUBLE_EQ(FuelToUnit(100, 1), 666);
  EXPECT_DOUBLE_EQ(FuelToUnit(100, 2), 302.8);
  EXPECT_DOUBLE_EQ(FuelToUnit(100, 3), 378.5);
  EXPECT_EQ(FuelToUnit(100, 7), 100);
}

}  // namespace
}  // namespace orv
