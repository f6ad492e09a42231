#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <cmath>
#include <random>
#include <vector>

#include "mapqt/QPainterTarget.h"
#include "mapqt/ThinLine.h"

namespace orv {
namespace {

constexpr uint32_t kBlack = 0xFF000000u;

QImage White(int w, int h) {
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

PixelCanvas CanvasOf(QImage& image) {
  return {reinterpret_cast<uint32_t*>(image.bits()), image.bytesPerLine() / 4, image.width(), image.height()};
}

int Differing(const QImage& a, const QImage& b) {
  int n = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) n += a.pixel(x, y) != b.pixel(x, y);
  return n;
}

// The lines a chart draws come at fractional positions of every slope and
// length; each must light the very pixels QPainter lights for it.
TEST(ThinLine, LightsThePixelsQPainterLights) {
  std::mt19937 rng(7);
  std::uniform_real_distribution<double> anywhere(-30, 230), unit(0, 1);
  int lines = 0, badLines = 0, badPixels = 0;
  for (int k = 0; k < 1500; ++k) {
    double x1 = anywhere(rng), y1 = anywhere(rng), x2, y2;
    if (k % 3 == 0) {
      x2 = x1 + (unit(rng) - 0.5) * 20;
      y2 = y1 + (unit(rng) - 0.5) * 20;
    } else {
      x2 = anywhere(rng);
      y2 = anywhere(rng);
    }
    if (k % 7 == 0) y2 = y1;  // level
    if (k % 11 == 0) x2 = x1;  // upright
    QImage qt = White(200, 200), own = White(200, 200);
    {
      QPainter p(&qt);
      p.setRenderHint(QPainter::Antialiasing, false);
      p.setPen(QPen(QColor(0, 0, 0), 1));
      p.drawLine(QPointF(x1, y1), QPointF(x2, y2));
    }
    DrawThinLine(CanvasOf(own), x1, y1, x2, y2, kBlack);
    const int d = Differing(qt, own);
    ++lines;
    badLines += d != 0;
    badPixels += d;
  }
  // Where a line leaves the picture the two cut it in different arithmetic:
  // a pixel or two at the edge may differ, on a few lines in a thousand.
  EXPECT_LE(badLines, lines / 200);
  EXPECT_LE(badPixels, 3 * badLines);
}

TEST(ThinLine, EndsAndDegenerateLines) {
  QImage image = White(20, 10);
  const PixelCanvas c = CanvasOf(image);
  DrawThinLine(c, 2.6, 5.2, 10.6, 5.2, kBlack);  // both end pixels lit
  EXPECT_EQ(image.pixel(1, 5), 0xFFFFFFFFu);
  EXPECT_EQ(image.pixel(2, 5), kBlack);
  EXPECT_EQ(image.pixel(10, 5), kBlack);
  EXPECT_EQ(image.pixel(11, 5), 0xFFFFFFFFu);

  image.fill(Qt::white);
  DrawThinLine(c, 4.4, 3.6, 4.4, 3.6, kBlack);  // no length: the nearest pixel
  EXPECT_EQ(image.pixel(4, 4), kBlack);
  EXPECT_EQ(Differing(image, White(20, 10)), 1);

  image.fill(Qt::white);
  DrawThinLine(c, NAN, 1, 5, 5, kBlack);
  DrawThinLine(c, -1e9, -1e9, -1e9 + 5, -1e9, kBlack);  // far outside
  DrawThinLine(c, -4e6, 5.5, 4e6, 5.5, kBlack);          // across and beyond both edges
  EXPECT_EQ(Differing(image, White(20, 10)), 20);
  for (int x = 0; x < 20; ++x) EXPECT_EQ(image.pixel(x, 5), kBlack) << x;
}

// Rivers, routes and taxiways are drawn with wide pens with round ends;
// their pixels agree with QPainter's but for the odd one on the rim, where
// QPainter rounds its ends with curves.
TEST(ThinLine, WideLinesCoverWhatQPainterCovers) {
  std::mt19937 rng(11);
  std::uniform_real_distribution<double> anywhere(-20, 120), unit(0, 1);
  for (int width : {2, 3, 9}) {
    long lit = 0, differing = 0;
    for (int k = 0; k < 300; ++k) {
      const double x1 = anywhere(rng), y1 = anywhere(rng);
      const double x2 = k % 2 ? anywhere(rng) : x1 + (unit(rng) - 0.5) * 20;
      const double y2 = k % 2 ? anywhere(rng) : y1 + (unit(rng) - 0.5) * 20;
      QImage qt = White(100, 100), own = White(100, 100);
      {
        QPainter p(&qt);
        p.setRenderHint(QPainter::Antialiasing, false);
        QPen pen(QColor(0, 0, 0), width);
        pen.setCapStyle(Qt::RoundCap);
        p.setPen(pen);
        p.drawLine(QPointF(x1, y1), QPointF(x2, y2));
      }
      DrawWideLine(CanvasOf(own), x1, y1, x2, y2, width, kBlack);
      for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x) lit += qt.pixel(x, y) == kBlack;
      differing += Differing(qt, own);
    }
    EXPECT_GT(lit, 1000);
    EXPECT_LT(differing * 100, lit) << "width " << width << ": " << differing << " of " << lit;
  }
}

// Airports and navaids are small rings and discs by the thousand; the target
// keeps QPainter's pixels for each size and place within a pixel.
TEST(ThinLine, SmallCirclesAreQPaintersCircles) {
  const QtFontSet fonts;
  QPainterTarget map(fonts, 120, 120);
  map.SetScaleWidth(1800);  // 15 units a pixel, as on the chart
  map.SetScaleHeight(1800);
  std::mt19937 rng(3);
  std::uniform_int_distribution<int> place(-100, 1900);
  int differing = 0;
  for (int k = 0; k < 400; ++k) {
    const double x = place(rng), y = place(rng), radius = 15 + (k % 6) * 13;
    const int width = 1 + k % 3;
    const bool filled = k % 4 == 0;
    map.SetBackColor(0xFFFFFF);
    map.Cls();
    map.SetDrawWidth(static_cast<int16_t>(width));
    map.SetFillStyle(filled ? kFillSolid : kFillTransparent);
    map.SetFillColor(0xFF0000);
    map.Circle(x, y, radius, 0x0000FF);

    QImage qt = White(120, 120);
    {
      QPainter p(&qt);
      p.setRenderHint(QPainter::Antialiasing, false);
      QPen pen(QColor(255, 0, 0), width);
      if (width > 1) {
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(width == 2 ? Qt::BevelJoin : Qt::RoundJoin);
      }
      p.setPen(pen);
      p.setBrush(filled ? QBrush(QColor(0, 0, 255)) : QBrush(Qt::NoBrush));
      const double r = radius / 15;
      p.drawEllipse(QRectF(x / 15 - r, y / 15 - r, 2 * r, 2 * r));
    }
    differing += Differing(qt, map.Image());
  }
  // The copy is drawn a whole number of pixels away from the real place: the
  // last bit of a coordinate could tip a rim pixel, but hardly ever does.
  EXPECT_LE(differing, 4);
}

// Thousands of lines in a row (airways, airspaces) wait in a queue and are
// drawn by two threads, a half of the rows each: the picture is the one a
// single thread draws line by line, later lines over earlier ones.
TEST(ThinLine, QueuedLinesSharedByTwoThreadsMakeTheSamePicture) {
  const QtFontSet fonts;
  QPainterTarget map(fonts, 300, 200);
  map.SetScaleWidth(300);
  map.SetScaleHeight(200);
  map.SetBackColor(0xFFFFFF);
  map.Cls();
  QImage own = White(300, 200);
  std::mt19937 rng(5);
  std::uniform_real_distribution<double> x(-20, 320), y(-20, 220);
  for (int k = 0; k < 6000; ++k) {
    const DrawSegment s{x(rng), y(rng), x(rng), y(rng)};
    const Colour colour = RgbColour(k % 7 * 30, k % 5 * 50, k % 3 * 100);
    map.SetDrawWidth(k % 10 == 0 ? 2 : 1);
    map.Line(s.X1, s.Y1, s.X2, s.Y2, LineShape::Line, colour);
    const uint32_t pixel = 0xFF000000u | static_cast<uint32_t>(RedOf(colour) << 16 | GreenOf(colour) << 8 | BlueOf(colour));
    if (k % 10 == 0)
      DrawWideLine(CanvasOf(own), s.X1, s.Y1, s.X2, s.Y2, 2, pixel);
    else
      DrawThinLine(CanvasOf(own), s.X1, s.Y1, s.X2, s.Y2, pixel);
  }
  EXPECT_EQ(Differing(own, map.Image()), 0);
}

// A landmass many times the picture's size, with thousands of points inside
// single pixels: the map target thins and cuts it before filling, and the
// picture must be what QPainter draws from all the points.
TEST(ThinLine, HugeFinePolygonFillsAsQPainterFillsIt) {
  const QtFontSet fonts;
  QPainterTarget map(fonts, 160, 100);
  map.SetScaleWidth(160);
  map.SetScaleHeight(100);
  map.SetBackColor(0xFFFFFF);
  map.Cls();
  std::vector<DrawPoint> pts;
  QPolygonF poly;
  for (int i = 0; i < 20000; ++i) {
    const double t = 2 * 3.141592653589793 * i / 20000;
    const double r = 400 + 30 * std::sin(7 * t) + 0.3 * std::sin(900 * t);
    const DrawPoint p{static_cast<float>(-250 + r * std::cos(t)), static_cast<float>(50 + r * std::sin(t))};
    pts.push_back(p);
    poly << QPointF(p.X, p.Y);
  }
  map.SetForeColor(0x000000);
  map.SetFillColor(0x00FF00);
  map.SetFillStyle(kFillSolid);
  map.Polygon(pts);

  QImage qt = White(160, 100);
  {
    QPainter p(&qt);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(QColor(0, 0, 0), 1));
    p.setBrush(QColor(0, 255, 0));
    p.drawPolygon(poly, Qt::OddEvenFill);
  }
  // The coast runs through the picture: thinning moves it by under a pixel.
  const int d = Differing(qt, map.Image());
  EXPECT_LT(d, 160 * 100 / 100) << d;
  EXPECT_EQ(map.Image().pixel(0, 50), qRgb(0, 255, 0));
  EXPECT_EQ(map.Image().pixel(159, 0), qRgb(255, 255, 255));
}

}  // namespace
}  // namespace orv
