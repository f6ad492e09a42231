#include <gtest/gtest.h>

#include <QImage>
#include <iterator>
#include <string>

#include "core/FileIo.h"
#include "mapqt/QPainterTarget.h"
#include "support/TempDir.h"

namespace orv {
namespace {

constexpr QRgb kWhite = 0xFFFFFFFF;

const QtFontSet& Fonts() {
  static const QtFontSet fonts;  // loaded once for the suite
  return fonts;
}

// A 100 x 70 pixel picture with the map's user scale: 10 units a pixel.
class QtTargetTest : public ::testing::Test {
protected:
  QtTargetTest() : map(Fonts(), 100, 70) {
    map.SetScaleWidth(1000);
    map.SetScaleHeight(700);
  }
  QRgb Pixel(int x, int y) const { return map.Image().pixel(x, y) | 0xFF000000; }

  QPainterTarget map;
};

TEST(QtFonts, WindowsNamesMapToTheFreeFonts) {
  EXPECT_TRUE(Fonts().Missing().isEmpty()) << Fonts().Missing().join(", ").toStdString();
  EXPECT_EQ(Fonts().FamilyFor("Tahoma"), "DejaVu Sans");
  EXPECT_EQ(Fonts().FamilyFor("Small Fonts"), "DejaVu Sans");
  EXPECT_EQ(Fonts().FamilyFor("arial"), "Liberation Sans");
  EXPECT_EQ(Fonts().FamilyFor("Arial"), "Liberation Sans");
  EXPECT_EQ(Fonts().FamilyFor("COURIER NEW"), "Liberation Mono");
  EXPECT_EQ(Fonts().FamilyFor("MS Sans Serif"), "Liberation Sans");
  EXPECT_EQ(Fonts().FamilyFor(""), "Liberation Sans");
}

TEST_F(QtTargetTest, LineColourTurnsBlueGreenRedIntoRgb) {
  map.SetForeColor(0x0080FF);  // red 255, green 128, blue 0
  map.SetDrawWidth(3);
  map.Line(100, 350, 900, 350);
  EXPECT_EQ(Pixel(50, 35), qRgb(255, 128, 0));
  EXPECT_EQ(Pixel(50, 30), kWhite);
  EXPECT_EQ(Pixel(5, 35), kWhite);
  EXPECT_EQ(map.CurrentX(), 900);
}

TEST_F(QtTargetTest, BoxesFilledAndOutlined) {
  map.Line(200, 200, 400, 400, LineShape::FilledBox, 0xFF0000);  // blue
  EXPECT_EQ(Pixel(30, 30), qRgb(0, 0, 255));
  EXPECT_EQ(Pixel(20, 20), qRgb(0, 0, 255));
  EXPECT_EQ(Pixel(40, 40), qRgb(0, 0, 255));
  EXPECT_EQ(Pixel(41, 30), kWhite);

  map.SetForeColor(0x000000);
  map.SetFillStyle(kFillSolid);
  map.SetFillColor(0x00FF00);
  map.Line(500, 100, 900, 500, LineShape::Box);
  EXPECT_EQ(Pixel(70, 30), qRgb(0, 255, 0));
  EXPECT_EQ(Pixel(50, 30), qRgb(0, 0, 0));
  EXPECT_EQ(Pixel(70, 10), qRgb(0, 0, 0));

  map.SetFillStyle(kFillTransparent);
  map.Line(100, 500, 300, 650, LineShape::Box);
  EXPECT_EQ(Pixel(20, 57), kWhite);
  EXPECT_EQ(Pixel(10, 57), qRgb(0, 0, 0));
}

TEST_F(QtTargetTest, CirclesPolygonsAndPoints) {
  map.SetFillStyle(kFillSolid);
  map.SetFillColor(0x0000FF);
  map.Circle(300, 300, 150, 0x000000);
  EXPECT_EQ(Pixel(30, 30), qRgb(255, 0, 0));
  EXPECT_EQ(Pixel(30, 15), qRgb(0, 0, 0));
  EXPECT_EQ(Pixel(30, 10), kWhite);

  map.SetFillColor(0x3F3F3F);
  map.SetForeColor(0xDFDFDF);
  const DrawPoint runway[] = {{600, 100}, {900, 100}, {900, 300}, {600, 300}};
  map.Polygon(runway, 4);
  EXPECT_EQ(Pixel(75, 20), qRgb(0x3F, 0x3F, 0x3F));
  EXPECT_EQ(Pixel(75, 10), qRgb(0xDF, 0xDF, 0xDF));

  map.SetDrawWidth(2);
  map.PSet(505, 605, 0x00FFFF);
  EXPECT_EQ(Pixel(50, 60), qRgb(255, 255, 0));
  EXPECT_EQ(Pixel(49, 59), qRgb(255, 255, 0));
  EXPECT_EQ(Pixel(52, 62), kWhite);
}

TEST_F(QtTargetTest, ExclusiveOrDrawnTwiceRestoresThePicture) {
  map.Line(0, 0, 1000, 700, LineShape::FilledBox, 0x400000);
  map.SetForeColor(0x00FF00);
  map.Line(100, 100, 800, 600);
  const QImage before = map.Image().copy();

  map.SetForeColor(0x0000FF);  // the zoom band: dotted, exclusive or
  map.SetDrawMode(kDrawModeXor);
  map.SetDrawStyle(kDrawStyleDot);
  map.Line(150, 150, 850, 450, LineShape::Box);
  EXPECT_NE(map.Image(), before);
  // Dots along the top edge, each 0x000040 xor 0xFF0000 in RGB.
  int xored = 0;
  for (int x = 15; x <= 85; ++x) {
    if (Pixel(x, 15) == qRgb(0xFF, 0x00, 0x40)) ++xored;
    EXPECT_NE(Pixel(x, 15), qRgb(0xFF, 0x00, 0x00));
  }
  EXPECT_GT(xored, 15);
  map.Line(150, 150, 850, 450, LineShape::Box);
  EXPECT_EQ(map.Image(), before);

  map.SetDrawMode(kDrawModeCopy);
  map.SetDrawStyle(kDrawStyleSolid);
  map.Line(150, 150, 850, 450, LineShape::Box);
  EXPECT_EQ(Pixel(15, 15), qRgb(255, 0, 0));
}

// The batch of lines, the culling of lines and texts outside the picture
// and the ASCII shortcut of the text conversion must leave exactly the
// pixels of the plain calls.
TEST_F(QtTargetTest, BatchedAndCulledDrawingMatchesSingleCalls) {
  QPainterTarget single(Fonts(), 100, 70);
  single.SetScaleWidth(1000);
  single.SetScaleHeight(700);
  const DrawSegment segs[] = {
      {0, 0, 990, 690},       {990, 0, 0, 690},        {-500, 350, 1500, 355},  // across the picture
      {-400, -400, -30, 200}, {-80, -80, -20, -20},                           // ending just off the left
      {1030, 100, 2000, 100}, {5000, 5000, 6000, 6000},                       // wholly outside
      {500, 690, 500, 720},   {300, 300, 300, 300},                           // into the border, a dot
  };
  for (int width : {1, 3}) {
    single.SetDrawWidth(static_cast<int16_t>(width));
    map.SetDrawWidth(static_cast<int16_t>(width));
    for (const DrawSegment& s : segs) single.Line(s.X1, s.Y1, s.X2, s.Y2, LineShape::Line, RgbColour(0, 0, 255));
    map.Lines(segs, std::size(segs), RgbColour(0, 0, 255));
    EXPECT_EQ(map.CurrentX(), 300);
    EXPECT_EQ(map.CurrentY(), 300);
  }
  for (QPainterTarget* t : {&single, &map}) {
    t->SetForeColor(RgbColour(200, 0, 0));
    for (double x : {-900.0, -150.0, -60.0, 10.0, 950.0, 1100.0}) {
      t->SetCurrentX(x);
      t->SetCurrentY(x < 0 ? -100 : 650);
      t->Print("Wx7 \xB0");
    }
  }
  EXPECT_TRUE(single.Image() == map.Image());
  EXPECT_NE(map.Image().pixel(0, 0) | 0xFF000000, kWhite);  // something was drawn
}

TEST_F(QtTargetTest, ClsCopyAndResize) {
  map.SetBackColor(0x400000);
  map.Cls();
  EXPECT_EQ(Pixel(0, 0), qRgb(0, 0, 0x40));
  map.Line(100, 100, 200, 200, LineShape::FilledBox, 0x0000FF);

  QPainterTarget back(Fonts(), 10, 10);
  ASSERT_TRUE(back.Resize(map.PixelWidth(), map.PixelHeight()));
  back.CopyPicture(map);
  EXPECT_EQ(back.Image(), map.Image());

  // Restoring the map from the clean copy drops what was drawn since.
  map.Line(500, 500, 600, 600, LineShape::FilledBox, 0x00FF00);
  map.CopyPicture(back);
  EXPECT_EQ(Pixel(55, 55), qRgb(0, 0, 0x40));
  EXPECT_EQ(Pixel(15, 15), qRgb(255, 0, 0));

  // A bigger window: same unit, more units, the old picture kept.
  ASSERT_TRUE(map.Resize(200, 70));
  EXPECT_EQ(map.ScaleWidth(), 2000);
  EXPECT_EQ(map.ScaleHeight(), 700);
  EXPECT_EQ(Pixel(15, 15), qRgb(255, 0, 0));
  EXPECT_EQ(Pixel(150, 50), qRgb(0, 0, 0x40));
}

TEST_F(QtTargetTest, TextMetricsComeFromTheLoadedFonts) {
  // Liberation Sans has Arial's advances: E 1366, D 1479, F 1251 per 2048.
  // 10 points at 96 dpi are 13 pixels; a pixel is 10 units here.
  map.SetFontName("Arial");
  map.SetFontSize(10);
  EXPECT_NEAR(map.TextWidth("EDDF"), (1366 + 1479 + 1479 + 1251) * 13.0 / 2048 * 10, 0.5);
  EXPECT_NEAR(map.TextHeight("EDDF"), (1854 + 434) * 13.0 / 2048 * 10, 1.0);
  EXPECT_NEAR(map.TextHeight("A\r\nB"), 2 * map.TextHeight("A"), 1e-9);
  map.SetFontName("Courier New");
  EXPECT_NEAR(map.TextWidth("ABC"), 3 * 1229 * 13.0 / 2048 * 10, 0.5);
  map.SetFontBold(true);
  EXPECT_NEAR(map.TextWidth("ABC"), 3 * 1229 * 13.0 / 2048 * 10, 0.5);  // bold mono keeps its pitch
  map.SetFontBold(false);

  map.SetFontName("Tahoma");
  const double tahoma = map.TextWidth("Frankfurt");
  map.SetFontName("Arial");
  EXPECT_NE(tahoma, map.TextWidth("Frankfurt"));

  map.SetForeColor(0x000000);
  map.SetCurrentX(50);
  map.SetCurrentY(50);
  map.Print("EDDF");
  EXPECT_EQ(map.CurrentX(), 0);
  EXPECT_NEAR(map.CurrentY(), 50 + map.TextHeight("EDDF"), 1e-9);
  int dark = 0;
  for (int y = 5; y < 20; ++y)
    for (int x = 5; x < 45; ++x)
      if (qGray(map.Image().pixel(x, y)) < 128) ++dark;
  EXPECT_GT(dark, 20);
  EXPECT_EQ(Pixel(60, 10), kWhite);
}

TEST_F(QtTargetTest, PngWrittenWhole) {
  test::TempDir dir;
  map.Line(0, 0, 500, 700, LineShape::FilledBox, 0x0000FF);
  const auto path = dir.Path() / "map.png";
  ASSERT_TRUE(map.SavePng(path));
  auto bytes = ReadWholeFile(path);
  ASSERT_TRUE(bytes.has_value());
  ASSERT_GT(bytes->size(), 8u);
  EXPECT_EQ(std::string(bytes->begin() + 1, bytes->begin() + 4), "PNG");
  QImage read(QString::fromStdString(path.string()));
  ASSERT_FALSE(read.isNull());
  EXPECT_EQ(read.size(), QSize(100, 70));
  EXPECT_EQ(read.pixel(10, 10) | 0xFF000000, qRgb(255, 0, 0));
  EXPECT_FALSE(std::filesystem::exists(dir.Path() / "map.png.tmp"));
}

TEST(QtSvg, SvgFileWritten) {
  test::TempDir dir;
  SvgPicture svg(Fonts(), 200, 140, "Orvanta map");
  QPainterTarget& t = svg.Target();
  t.SetScaleWidth(10000);
  t.SetScaleHeight(7000);
  t.SetForeColor(0x0080FF);
  t.Line(1000, 1000, 9000, 6000);
  t.SetCurrentX(500);
  t.SetCurrentY(500);
  t.SetFontName("Tahoma");
  t.Print("EDDF");
  t.SetDrawMode(kDrawModeXor);  // no raster operations on a vector device
  t.Circle(5000, 3500, 1000);
  const auto path = dir.Path() / "map.svg";
  std::string error;
  ASSERT_TRUE(svg.Save(path, &error)) << error;
  auto text = ReadWholeText(path);
  ASSERT_TRUE(text.has_value());
  EXPECT_NE(text->find("<svg"), std::string::npos);
  EXPECT_NE(text->find("Orvanta map"), std::string::npos);
  EXPECT_NE(text->find("#ff8000"), std::string::npos);
  EXPECT_NE(text->find("EDDF"), std::string::npos);
  EXPECT_NE(text->find("</svg>"), std::string::npos);
  // Drawing after the save does nothing.
  t.Line(0, 0, 1, 1);
}

}  // namespace
}  // namespace orv
