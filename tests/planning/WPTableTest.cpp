#include "planning/WPTable.h"

#include <gtest/gtest.h>

#include "planning/Aircraft.h"
#include "planning/FakeNav.h"

namespace orv {
namespace {

using test::Row;

TEST(WPTableTest, HeadingsAndWidths) {
  WPTable t;
  const char* headings[] = {"Sym", "Code", "Name", "Freq", "Course", "Distance", "ETA", "ATA", "GS", "Altitude", "Fuel (kg)"};
  ASSERT_EQ(t.Rows(), 1);
  for (int c = 0; c < WPTable::kColumns; ++c) EXPECT_EQ(t.Text(0, c), headings[c]) << c;
  // The unit of FUEL=; one beyond the four units counts as kg, as the fuel
  // window reads it.
  AppState state{AppFolder(".")};
  state.FuelUnits = {"gal", "lbs", "kg", "lit"};
  state.Config.Fuel = 1;
  t.SetFuelUnitOf(state);
  EXPECT_EQ(t.Text(0, WPTable::kFuel), "Fuel (lbs)");
  state.Config.Fuel = 4;
  t.SetFuelUnitOf(state);
  EXPECT_EQ(t.Text(0, WPTable::kFuel), "Fuel (kg)");

  const int narrow[] = {400, 700, 2200, 600, 900, 750, 500, 1, 1, 1, 1};
  const int extended[] = {400, 700, 2200, 600, 900, 750, 500, 500, 600, 700, 950};
  for (int c = 0; c < WPTable::kColumns; ++c) EXPECT_EQ(t.ColWidth(c), narrow[c]) << c;
  t.SetExtended(true);
  for (int c = 0; c < WPTable::kColumns; ++c) EXPECT_EQ(t.ColWidth(c), extended[c]) << c;
}

TEST(WPTableTest, SymbolPictureByKindAndOrigin) {
  struct Case {
    const char* kind;
    uint8_t origin;
    int picture;
  } cases[] = {
      {"VOR", kOriginEnroute, 0}, {"NDB", kOriginEnroute, 1}, {"Int", kOriginEnroute, 2}, {"Fix", kOriginEnroute, 3},
      {"Uwp", kOriginEnroute, 3}, {"VOR", kOriginStar, 4},    {"NDB", kOriginSid, 5},     {"Int", kOriginStar, 6},
      {"Fix", kOriginSid, 7},     {"Uwp", kOriginStar, 7},    {"", kOriginAirport, 8},    {"VOR", kOriginAirport, 8},
      {"Fix", kOriginSpecial, 9},
  };
  for (const Case& c : cases) EXPECT_EQ(SymbolPicture(Row(c.kind, "X", 0, 0, c.origin)), c.picture) << c.kind << int(c.origin);
}

TEST(WPTableTest, CodeColourByObject) {
  TableColours colours;
  EXPECT_EQ(CodeColour(Row("VOR", "X", 0, 0), colours), 0x0080FF);
  EXPECT_EQ(CodeColour(Row("NDB", "X", 0, 0), colours), 0x00BF00);
  EXPECT_EQ(CodeColour(Row("Int", "X", 0, 0), colours), 0xC08000);
  EXPECT_EQ(CodeColour(Row("Fix", "X", 0, 0), colours), 0x004DEC);
  EXPECT_EQ(CodeColour(Row("Uwp", "X", 0, 0), colours), 0x808080);
  EXPECT_EQ(CodeColour(Row("", "X", 0, 0, kOriginAirport), colours), 0x000000);
  colours.Vor = 0x123456;
  EXPECT_EQ(CodeColour(Row("VOR", "X", 0, 0), colours), 0x123456);
}

TEST(WPTableTest, CellTexts) {
  EXPECT_EQ(FreqCellText(114.3f), "114.30");
  EXPECT_EQ(FreqCellText(385), "385.00");
  EXPECT_EQ(FreqCellText(0), "      ");

  // Magnetic first, from true minus variation (east positive), wrapped once.
  EXPECT_EQ(CourseCellText(90, 10), "080\xB0/090\xB0");
  EXPECT_EQ(CourseCellText(90, -10), "100\xB0/090\xB0");
  EXPECT_EQ(CourseCellText(5, 10), "355\xB0/005\xB0");
  EXPECT_EQ(CourseCellText(355, -10), "005\xB0/355\xB0");

  // Distances rounded half to even before the mask.
  EXPECT_EQ(DistanceCellText(12.5f), "012 NM");
  EXPECT_EQ(DistanceCellText(13.5f), "014 NM");
  EXPECT_EQ(DistanceCellText(1234.4f), "1234 NM");

  WaypointRec w = Row("Int", "ALPHA", 47.5f, 8.25f);
  w.Name.Assign("ALPHA INT");
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT");
  w.Airway.Assign("J55");
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT (J55)");
  w.MinAltitude = 18000;
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT (J55)");  // one limit is not enough
  w.MaxAltitude = 45000;
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT (J55 180-450)");
  w.MaxAltitude = -1;
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT (J55)");
  // A track row's text starts with a letter, so it shows too.
  w.Airway.Assign("Track A");
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT (Track A)");
  // Only a first character at or above "0" counts.
  w.Airway.Assign("(X)");
  EXPECT_EQ(NameCellText(w, false, true), "ALPHA INT");

  EXPECT_EQ(NameCellText(w, true, true), "N47\xB0" "30.00' E008\xB0" "15.00'");
  WaypointRec s = Row("VOR", "S", -33.5125f, -70.25f);
  EXPECT_EQ(NameCellText(s, true, false), "S33\xB0" "30'45.00\" W070\xB0" "15'00.00\"");
}

TEST(WPTableTest, PlanLinesShowLegsOnlyWhereTheyBelong) {
  FlightPlan plan;
  PlanPanel panel;
  AircraftRec ac;
  ac.CruiseSpeed = 240;
  ac.ApproachSpeed = 120;
  test::FakeNav nav;
  PlanEditor ed(plan, panel, ac, nav);
  plan.Waypoints[0] = Row("", "LSZH", 0, 0, kOriginAirport);
  plan.Waypoints[0].Name.Assign("Zurich");
  plan.Waypoints[0].MagVar = 2;
  plan.Waypoints[1] = Row("", "LFPG", 0, 2, kOriginAirport);
  plan.Waypoints[1].MagVar = -30;
  ed.SetDirectPlan(1);

  WaypointRec vor = Row("VOR", "ABC", 0, 1);
  vor.Frequency = 114.3f;
  vor.MagVar = 10;
  ed.InsertWaypoint(0, vor, true);
  WaypointRec special = Row("Fix", "Fix", 0, 1.5f, kOriginSpecial);
  special.MagVar = -5;
  ed.InsertWaypoint(1, special, true);
  ASSERT_EQ(panel.Table.Rows(), 5);

  const WPTable& t = panel.Table;
  // The departure: picture, code and name, no leg.
  EXPECT_EQ(t.Picture(1), 8);
  EXPECT_EQ(t.Text(1, WPTable::kCode), "LSZH");
  EXPECT_EQ(t.Text(1, WPTable::kName), "Zurich");
  EXPECT_EQ(t.Text(1, WPTable::kFreq), "      ");
  EXPECT_EQ(t.Text(1, WPTable::kCourse), "");
  EXPECT_EQ(t.Text(1, WPTable::kDistance), "");
  EXPECT_EQ(t.Text(1, WPTable::kEta), "00:00");

  // An enroute VOR: the leg with its own variation.
  EXPECT_EQ(t.Picture(2), 0);
  EXPECT_EQ(t.Cell(2, WPTable::kCode).ForeColor, 0x0080FF);
  EXPECT_EQ(t.Text(2, WPTable::kFreq), "114.30");
  EXPECT_EQ(t.Text(2, WPTable::kCourse), "080\xB0/090\xB0");
  EXPECT_EQ(t.Text(2, WPTable::kDistance), "060 NM");
  EXPECT_EQ(t.Text(2, WPTable::kEta), "00:15");

  // A special row: its own picture, no leg.
  EXPECT_EQ(t.Picture(3), 9);
  EXPECT_EQ(t.Text(3, WPTable::kCode), "FIX 02");  // codes are upper-cased by the merge pass
  EXPECT_EQ(t.Text(3, WPTable::kCourse), "");

  // The destination: the last leg, with the variation of the row before it.
  EXPECT_EQ(t.Picture(4), 8);
  EXPECT_EQ(t.Text(4, WPTable::kCourse), "095\xB0/090\xB0");
  EXPECT_EQ(t.Text(4, WPTable::kDistance), "030 NM");
  EXPECT_EQ(t.Text(3, WPTable::kEta), "00:22");  // 15 + 7.5 rounds half to even
  EXPECT_EQ(t.Text(4, WPTable::kEta), "00:37");  // then + 15 at approach speed
  EXPECT_EQ(t.Cell(4, WPTable::kName).BackColor, kGridBackColour);
}

}  // namespace
}  // namespace orv
