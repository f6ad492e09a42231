// A DrawTarget that draws nothing and keeps every operation with its
// coordinates, colour and the drawing properties in force, so that geometry
// can be checked figure by figure without a window system.
//
// Text metric, chosen to be easy to work out by hand: every character of a
// line is FontSize * 10 user units wide and a line is FontSize * 20 units
// high, whatever the font name, the boldness and the pixel scale. With the
// default font size 8.25 a character is 82.5 units wide and a line 165 high.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "map/DrawTarget.h"

namespace orv {

enum class DrawOpKind : uint8_t {
  Line,
  Box,
  FilledBox,
  Circle,     // a full circle
  Arc,        // Circle with start, end and aspect
  PSet,
  Polygon,
  Polyline,
  Text,       // one line of printed text
  Cls,
  Copy,       // CopyPicture; Text holds the source's name
  NewPage,
};

struct DrawOp {
  DrawOpKind Kind = DrawOpKind::Line;
  // Line and boxes: the two corners. Circle, Arc, PSet, Text: X1, Y1.
  double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  double Radius = 0;
  double Start = 0, End = 0, Aspect = 1;
  Colour Color = 0;  // the colour drawn with (resolved ForeColor or the argument)
  Colour FillColor = 0;
  int16_t FillStyle = 0;
  int16_t DrawStyle = 0;
  int16_t DrawWidth = 1;
  int16_t DrawMode = kDrawModeCopy;
  std::string Text;      // printed text, or the source of a Copy
  std::string FontName;  // for Text
  float FontSize = 0;
  bool FontBold = false;
  // Polygon and Polyline: a range of Points().
  std::size_t PointStart = 0;
  std::size_t PointCount = 0;
};

class RecordingTarget : public DrawTarget {
public:
  // A surface of pixelWidth x pixelHeight pixels, one user unit per pixel
  // until SetScaleWidth/SetScaleHeight choose otherwise.
  explicit RecordingTarget(int pixelWidth = 10000, int pixelHeight = 7000, std::string name = "Map");

  const std::string& Name() const { return name_; }
  const std::vector<DrawOp>& Ops() const { return ops_; }
  const std::vector<DrawPoint>& Points() const { return points_; }
  std::span<const DrawPoint> PointsOf(const DrawOp& op) const {
    return std::span<const DrawPoint>(points_).subspan(op.PointStart, op.PointCount);
  }
  // Forgets the recorded operations; the properties stay.
  void ClearOps();

  // One line per operation, geometry only, numbers in their plain text form:
  //   "Line x1 y1 x2 y2", "Box x1 y1 x2 y2", "FilledBox x1 y1 x2 y2",
  //   "Circle x y r", "Arc x y r start end aspect", "PSet x y",
  //   "Polygon x y x y ...", "Polyline x y ...", "Text x y <text>", "Cls",
  //   "Copy <source>", "NewPage".
  std::string Describe(const DrawOp& op) const;
  std::vector<std::string> Describe() const;

  bool Resize(int pixelWidth, int pixelHeight) override;
  void NewPage() override;

protected:
  void DoLine(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) override;
  void DoCircle(double x, double y, double radius, Colour colour, bool isArc, double start, double end,
                double aspect) override;
  void DoPSet(double x, double y, Colour colour) override;
  void DoPolygon(const DrawPoint* points, std::size_t count, bool closed) override;
  void DoCls() override;
  void DoText(double x, double y, std::string_view line) override;
  double LineWidth(std::string_view line) const override;
  double LineHeight() const override;
  void DoCopyPicture(const DrawTarget& source) override;

private:
  DrawOp& Add(DrawOpKind kind, Colour colour);

  std::string name_;
  std::vector<DrawOp> ops_;
  std::vector<DrawPoint> points_;
};

}  // namespace orv
