// The Runway Window's drawing and the airport information lists over the
// small world's EDXX: one 10000 ft runway on 070 through 50N 8E, one parking
// position, one taxiway "A" and one ground polygon.
#include "map/AirportLayout.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/Startup.h"
#include "map/RecordingTarget.h"
#include "support/SmallWorld.h"

namespace orv {
namespace {

struct LayoutFixture {
  NavDatabase db;
  AppState state;
  LayoutFixture() {
    test::BuildSmallWorld(db);
    FillNameTables(state);
  }
  const AirportRec& Edxx() const { return db.Airports.Airports[0]; }
};

const DrawOp* TextOp(const RecordingTarget& t, std::string_view text) {
  for (const DrawOp& op : t.Ops())
    if (op.Kind == DrawOpKind::Text && op.Text == text) return &op;
  return nullptr;
}

TEST(AirportLayout, DrawsTheRunwayToScaleWithGroundTaxiwayAndParking) {
  LayoutFixture f;
  RecordingTarget t(1000, 800);
  const LayoutFrame frame = DrawAirportLayout(t, f.db, f.Edxx(), f.state);
  // The runway spans 1.547 NM east-west (10000 ft on 070); with 8% margins
  // 840 px over that gives about 543 px a mile.
  EXPECT_NEAR(frame.UnitsPerNm, 840 / (10000 / 6076.12 * std::sin(70 * 3.14159265 / 180)), 3);

  const Settings& c = f.state.Config;
  bool ground = false, runway = false, taxiway = false;
  for (const DrawOp& op : t.Ops()) {
    if (op.Kind == DrawOpKind::Polygon && op.FillColor == c.Ap && op.PointCount == 4) ground = true;
    if (op.Kind == DrawOpKind::Line && op.Color == c.Taxi && std::abs(op.Y1 - op.Y2) < 0.01) taxiway = true;
    if (op.Kind == DrawOpKind::Polygon && op.FillColor == c.Rwy) {
      auto p = t.PointsOf(op);
      ASSERT_EQ(p.size(), 4u);
      const double length = std::hypot(p[1].X - p[0].X, p[1].Y - p[0].Y);
      EXPECT_NEAR(length, 10000 / 6076.12 * frame.UnitsPerNm, 2);  // the whole 10000 ft
      EXPECT_LT(p[0].X, p[1].X);  // from the low end towards 070
      EXPECT_GT(p[0].Y, p[1].Y);
      runway = true;
    }
  }
  EXPECT_TRUE(ground);
  EXPECT_TRUE(runway);
  EXPECT_TRUE(taxiway);
  // The end numbers stand beyond their thresholds, the parking name beside
  // its circle, the taxiway's name on it.
  const DrawOp* low = TextOp(t, "07");
  const DrawOp* high = TextOp(t, "25");
  ASSERT_TRUE(low && high);
  EXPECT_LT(low->X1, 500 - 10000 / 6076.12 / 2 * std::sin(70 * 3.14159265 / 180) * frame.UnitsPerNm);
  EXPECT_GT(high->X1, 500 + 10000 / 6076.12 / 2 * std::sin(70 * 3.14159265 / 180) * frame.UnitsPerNm - 10);
  const DrawOp* gate = TextOp(t, "GATE 1");
  ASSERT_NE(gate, nullptr);
  EXPECT_EQ(gate->Color, c.Parking);
  EXPECT_NE(TextOp(t, "A"), nullptr);
  EXPECT_NE(TextOp(t, "EDXX  Main Field"), nullptr);
}

TEST(AirportLayout, InformationListsAndParkingNames) {
  LayoutFixture f;
  const AirportInfoLists info = AirportInfo(f.Edxx(), f.state);
  ASSERT_EQ(info.Runways.size(), 1u);
  EXPECT_EQ(info.Runways[0], "07 / 25   10000 x 150 ft   Concrete   Hdg 070\xB0 / 250\xB0   ILS IXX");
  ASSERT_EQ(info.Ils.size(), 1u);
  EXPECT_EQ(info.Ils[0], "IXX   110.100   Rwy 07   Crs 070\xB0   GS 3.0\xB0   MAIN 07");
  ASSERT_EQ(info.Parking.size(), 1u);
  EXPECT_EQ(info.Parking[0], "GATE 1   Ramp GA");
  EXPECT_EQ(info.Header[2], "Elevation 0 ft");

  // The low end shows its magnetic heading, the high end the true reciprocal.
  AirportRec east = f.Edxx();
  east.MagVar = 3;
  EXPECT_NE(AirportInfo(east, f.state).Runways[0].find("Hdg 067\xB0 / 250\xB0"), std::string::npos);

  ParkingRec p;
  p.NameCode = 12, p.Number = 5;
  EXPECT_EQ(ParkingLabel(p, f.state), "Gate A 5");
  p.NameCode = 0, p.Number = 0;
  EXPECT_EQ(ParkingLabel(p, f.state), "Parking");
}

}  // namespace
}  // namespace orv
