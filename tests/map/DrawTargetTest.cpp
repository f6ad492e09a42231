#include <gtest/gtest.h>

#include "map/RecordingTarget.h"

namespace orv {
namespace {

using Ops = std::vector<std::string>;

TEST(DrawTarget, ColoursAreBlueGreenRed) {
  EXPECT_EQ(RgbColour(255, 128, 0), 0x0080FF);
  EXPECT_EQ(RedOf(0x0080FF), 255);
  EXPECT_EQ(GreenOf(0x0080FF), 128);
  EXPECT_EQ(BlueOf(0xC08000), 0xC0);
}

TEST(DrawTarget, GraphicsMethodsMoveTheCurrentPosition) {
  RecordingTarget t;
  t.SetForeColor(0x0000FF);
  t.Line(10, 20, 30, 40);
  EXPECT_EQ(t.CurrentX(), 30);
  EXPECT_EQ(t.CurrentY(), 40);
  t.Circle(500, 600, 25);
  EXPECT_EQ(t.CurrentX(), 500);
  EXPECT_EQ(t.CurrentY(), 600);
  t.PSet(7, 8, 0x00FF00);
  EXPECT_EQ(t.CurrentX(), 7);
  const DrawPoint pts[] = {{1, 2}, {3, 4}, {5, 6}};
  t.Polygon(pts, 3);
  t.Polyline(std::span<const DrawPoint>(pts, 2));
  EXPECT_EQ(t.CurrentX(), 7);  // the point-list calls leave it
  t.Line(0, 0, 100, 50, LineShape::Box);
  t.Line(0, 0, 100, 50, LineShape::FilledBox, 0x123456);
  t.Circle(1, 2, 3, kForeColour, 0.5, -1.5, 2);
  t.Cls();
  EXPECT_EQ(t.CurrentX(), 0);
  EXPECT_EQ(t.CurrentY(), 0);

  EXPECT_EQ(t.Describe(), (Ops{"Line 10 20 30 40", "Circle 500 600 25", "PSet 7 8", "Polygon 1 2 3 4 5 6",
                               "Polyline 1 2 3 4", "Box 0 0 100 50", "FilledBox 0 0 100 50",
                               "Arc 1 2 3 0.5 -1.5 2", "Cls"}));
  const auto& ops = t.Ops();
  EXPECT_EQ(ops[0].Color, 0x0000FF);
  EXPECT_EQ(ops[2].Color, 0x00FF00);  // an explicit colour wins
  EXPECT_EQ(ops[6].Color, 0x123456);
  EXPECT_EQ(ops[7].Color, 0x0000FF);
  EXPECT_EQ(ops[8].Color, 0xFFFFFF);  // Cls in the background colour
}

TEST(DrawTarget, OperationsKeepTheStylesInForce) {
  RecordingTarget t;
  t.SetDrawWidth(3);
  t.SetDrawStyle(kDrawStyleDot);
  t.SetDrawMode(kDrawModeXor);
  t.SetFillStyle(kFillSolid);
  t.SetFillColor(0x3F3F3F);
  t.Circle(0, 0, 10);
  t.SetDrawWidth(0);  // refused as the runtime does: stays at least 1
  t.Line(0, 0, 1, 1);
  const DrawOp& c = t.Ops()[0];
  EXPECT_EQ(c.DrawWidth, 3);
  EXPECT_EQ(c.DrawStyle, kDrawStyleDot);
  EXPECT_EQ(c.DrawMode, 7);
  EXPECT_EQ(c.FillStyle, 0);
  EXPECT_EQ(c.FillColor, 0x3F3F3F);
  EXPECT_EQ(t.Ops()[1].DrawWidth, 1);
  // Fresh surfaces start as the runtime's picture boxes do.
  RecordingTarget fresh;
  EXPECT_EQ(fresh.DrawMode(), kDrawModeCopy);
  EXPECT_EQ(fresh.FillStyle(), kFillTransparent);
  EXPECT_EQ(fresh.FontName(), "MS Sans Serif");
  EXPECT_FLOAT_EQ(fresh.FontSize(), 8.25f);
}

TEST(DrawTarget, PrintMovesLikeThePrintStatement) {
  RecordingTarget t;
  t.SetFontSize(10);  // 100 units a character, 200 a line
  t.SetFontName("Tahoma");
  t.SetCurrentX(100);
  t.SetCurrentY(200);
  t.Print("AB");
  EXPECT_EQ(t.CurrentX(), 0);
  EXPECT_EQ(t.CurrentY(), 400);
  t.SetCurrentX(100);
  t.Print("CDE", PrintEnd::StayOnLine);
  EXPECT_EQ(t.CurrentX(), 400);
  EXPECT_EQ(t.CurrentY(), 400);

  // Each line of a broken text starts at the same X.
  t.SetCurrentX(1000);
  t.SetCurrentY(1000);
  t.Print("A\r\nBC\nD");
  EXPECT_EQ(t.CurrentX(), 0);
  EXPECT_EQ(t.CurrentY(), 1600);
  t.SetCurrentX(1000);
  t.Print("XY\rZ", PrintEnd::StayOnLine);
  EXPECT_EQ(t.CurrentX(), 1100);
  EXPECT_EQ(t.CurrentY(), 1800);
  // An empty text moves one line down and draws nothing.
  t.Print("");
  EXPECT_EQ(t.CurrentY(), 2000);

  EXPECT_EQ(t.Describe(), (Ops{"Text 100 200 AB", "Text 100 400 CDE", "Text 1000 1000 A", "Text 1000 1200 BC",
                               "Text 1000 1400 D", "Text 1000 1600 XY", "Text 1000 1800 Z"}));
  EXPECT_EQ(t.Ops()[0].FontName, "Tahoma");
  EXPECT_FLOAT_EQ(t.Ops()[0].FontSize, 10.0f);

  EXPECT_EQ(t.TextWidth("ABC"), 300);
  EXPECT_EQ(t.TextWidth("A\r\nBCDE\r\n"), 400);
  EXPECT_EQ(t.TextHeight("ABC"), 200);
  EXPECT_EQ(t.TextHeight(""), 200);
  EXPECT_EQ(t.TextHeight("A\r\nB\r\nC"), 600);
  t.SetFontSize(8.25f);
  EXPECT_DOUBLE_EQ(t.TextWidth("EDDF"), 330);
  EXPECT_DOUBLE_EQ(t.TextHeight("EDDF"), 165);
}

TEST(DrawTarget, UserScaleKeepsItsUnitOnResize) {
  RecordingTarget t(1000, 700);
  EXPECT_EQ(t.ScaleWidth(), 1000);
  t.SetScaleWidth(10000);
  t.SetScaleHeight(7000);
  EXPECT_EQ(t.ScaleWidth(), 10000);
  EXPECT_EQ(t.ScaleHeight(), 7000);
  EXPECT_EQ(t.ScaleX(10000), 1000);
  EXPECT_EQ(t.ScaleY(70), 7);
  ASSERT_TRUE(t.Resize(2000, 350));
  EXPECT_EQ(t.PixelWidth(), 2000);
  EXPECT_EQ(t.ScaleWidth(), 20000);
  EXPECT_EQ(t.ScaleHeight(), 3500);
  t.SetScaleWidth(0);  // refused
  t.SetScaleHeight(-5);
  EXPECT_EQ(t.ScaleWidth(), 20000);
  EXPECT_EQ(t.ScaleHeight(), 3500);
}

TEST(DrawTarget, CopyPictureNamesItsSource) {
  RecordingTarget map(100, 100, "Map");
  RecordingTarget back(100, 100, "VMap(0)");
  back.CopyPicture(map);
  back.CopyPicture(back);  // onto itself: nothing
  map.CopyPicture(back);
  map.NewPage();
  EXPECT_EQ(back.Describe(), (Ops{"Copy Map"}));
  EXPECT_EQ(map.Describe(), (Ops{"Copy VMap(0)", "NewPage"}));
  map.ClearOps();
  EXPECT_TRUE(map.Ops().empty());
  EXPECT_TRUE(map.Points().empty());
}

TEST(DrawTarget, EmptyPointListsDrawNothing) {
  RecordingTarget t;
  t.Polygon(nullptr, 3);
  const DrawPoint p{1, 1};
  t.Polyline(&p, 0);
  EXPECT_TRUE(t.Ops().empty());
}

}  // namespace
}  // namespace orv
