#include <gtest/gtest.h>

#include <cmath>

#include "map/RecordingTarget.h"
#include "planning/FlightPlan.h"
#include "simlink/LiveDraw.h"

namespace orv {
namespace {

TEST(LiveDraw, WindArrowAircraftAndActiveLeg) {
  RecordingTarget map;
  map.SetDrawWidth(1);
  map.SetForeColor(0x123456);
  // Wind from the west: the line runs from 150 east of (270, 350) to 150
  // west of it; the barbs go out from the east end toward 315 and 225.
  DrawWindArrow(map, 270, 25, 0x00FF00);
  const std::vector<std::string> ops = map.Describe();
  ASSERT_EQ(ops.size(), 4u);
  EXPECT_EQ(ops[0], "Text 80 50 25  kn");
  auto line = [&](size_t i, double x1, double y1, double x2, double y2) {
    const DrawOp& op = map.Ops()[i];
    EXPECT_EQ(op.Kind, DrawOpKind::Line);
    EXPECT_NEAR(op.X1, x1, 1e-3);
    EXPECT_NEAR(op.Y1, y1, 1e-3);
    EXPECT_NEAR(op.X2, x2, 1e-3);
    EXPECT_NEAR(op.Y2, y2, 1e-3);
  };
  const double r = 150 / std::sqrt(2.0);
  line(1, 420, 350, 120, 350);
  line(2, 420, 350, 420 - r, 350 - r);
  line(3, 420, 350, 420 - r, 350 + r);
  EXPECT_EQ(map.Ops()[1].DrawWidth, 2);
  EXPECT_EQ(map.Ops()[1].Color, 0x00FF00);
  EXPECT_EQ(map.DrawWidth(), 1);
  EXPECT_EQ(map.ForeColor(), 0x123456);

  // The aircraft: a filled outline around its map point, nose along the
  // heading (east: the nose is the rightmost point).
  ViewState view;
  map.ClearOps();
  DrawLiveAircraft(map, view, 0, 0, 90, 0xFFFF00);
  ASSERT_EQ(map.Ops().size(), 1u);
  const DrawOp& plane = map.Ops()[0];
  EXPECT_EQ(plane.Kind, DrawOpKind::Polygon);
  EXPECT_EQ(plane.FillStyle, kFillSolid);
  EXPECT_EQ(plane.FillColor, 0xFFFF00);
  auto pts = map.PointsOf(plane);
  EXPECT_NEAR(pts[0].X, 5000 + 200, 0.01);
  EXPECT_NEAR(pts[0].Y, 3500, 0.01);

  // The active leg: a thick line from the row before it, the ring at its end.
  FlightPlan plan;
  plan.LastRow = 1;
  plan.Waypoints[1].Lat = 0.125f;
  map.ClearOps();
  DrawLiveActiveLeg(map, view, plan, 1, 0xFF);
  ASSERT_EQ(map.Ops().size(), 2u);
  EXPECT_EQ(map.Ops()[0].DrawWidth, 5);
  EXPECT_EQ(map.Describe(map.Ops()[0]), "Line 5000 3500 5000 1750");
  EXPECT_EQ(map.Ops()[1].Kind, DrawOpKind::Circle);
  EXPECT_EQ(map.Ops()[1].DrawStyle, kDrawStyleDot);
}

}  // namespace
}  // namespace orv
