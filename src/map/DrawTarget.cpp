#include "map/DrawTarget.h"

#include <algorithm>
#include <cmath>

namespace orv {

DrawTarget::DrawTarget(int pixelWidth, int pixelHeight)
    : pixelWidth_(std::max(pixelWidth, 1)), pixelHeight_(std::max(pixelHeight, 1)) {}

void DrawTarget::SetPixelSize(int pixelWidth, int pixelHeight) {
  pixelWidth_ = std::max(pixelWidth, 1);
  pixelHeight_ = std::max(pixelHeight, 1);
}

bool DrawTarget::Resize(int, int) { return false; }

void DrawTarget::SetScaleWidth(double width) {
  // A zero, negative or non-finite width would make every later coordinate
  // meaningless; the unit stays as it was.
  if (std::isfinite(width) && width > 0) unitX_ = width / pixelWidth_;
}

void DrawTarget::SetScaleHeight(double height) {
  if (std::isfinite(height) && height > 0) unitY_ = height / pixelHeight_;
}

void DrawTarget::SetFontName(std::string_view name) {
  if (name == fontName_) return;
  fontName_.assign(name);
  ++fontRevision_;
}

void DrawTarget::SetFontSize(float size) {
  if (!(size > 0) || !std::isfinite(size)) return;
  if (size == fontSize_) return;
  fontSize_ = size;
  ++fontRevision_;
}

void DrawTarget::SetFontBold(bool bold) {
  if (bold == fontBold_) return;
  fontBold_ = bold;
  ++fontRevision_;
}

void DrawTarget::Line(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) {
  DoLine(x1, y1, x2, y2, shape, Resolve(colour));
  currentX_ = x2;
  currentY_ = y2;
}

void DrawTarget::Lines(const DrawSegment* segments, std::size_t count, Colour colour) {
  if (count == 0) return;
  DoLines(segments, count, Resolve(colour));
  currentX_ = segments[count - 1].X2;
  currentY_ = segments[count - 1].Y2;
}

void DrawTarget::DoLines(const DrawSegment* segments, std::size_t count, Colour colour) {
  for (std::size_t i = 0; i < count; ++i)
    DoLine(segments[i].X1, segments[i].Y1, segments[i].X2, segments[i].Y2, LineShape::Line, colour);
}

void DrawTarget::Circle(double x, double y, double radius, Colour colour) {
  DoCircle(x, y, radius, Resolve(colour), false, 0, 0, 1.0);
  currentX_ = x;
  currentY_ = y;
}

void DrawTarget::Circle(double x, double y, double radius, Colour colour, double start, double end,
                        double aspect) {
  DoCircle(x, y, radius, Resolve(colour), true, start, end, aspect);
  currentX_ = x;
  currentY_ = y;
}

void DrawTarget::PSet(double x, double y, Colour colour) {
  DoPSet(x, y, Resolve(colour));
  currentX_ = x;
  currentY_ = y;
}

void DrawTarget::Polygon(const DrawPoint* points, std::size_t count) {
  if (points == nullptr || count == 0) return;
  DoPolygon(points, count, true);
}

void DrawTarget::Polyline(const DrawPoint* points, std::size_t count) {
  if (points == nullptr || count == 0) return;
  DoPolygon(points, count, false);
}

void DrawTarget::Cls() {
  DoCls();
  currentX_ = 0;
  currentY_ = 0;
}

void DrawTarget::Print(std::string_view text, PrintEnd end) {
  const double x = currentX_;
  const double lineHeight = LineHeight();
  double y = currentY_;
  double lastWidth = 0;
  bool first = true;
  ForEachTextLine(text, [&](std::string_view line) {
    if (!first) y += lineHeight;
    first = false;
    if (!line.empty()) DoText(x, y, line);
    lastWidth = end == PrintEnd::StayOnLine ? LineWidth(line) : 0;
  });
  if (end == PrintEnd::NewLine) {
    currentX_ = 0;
    currentY_ = y + lineHeight;
  } else {
    currentX_ = x + lastWidth;
    currentY_ = y;
  }
}

double DrawTarget::TextWidth(std::string_view text) const {
  double widest = 0;
  ForEachTextLine(text, [&](std::string_view line) { widest = std::max(widest, LineWidth(line)); });
  return widest;
}

double DrawTarget::TextHeight(std::string_view text) const {
  std::size_t lines = ForEachTextLine(text, [](std::string_view) {});
  return static_cast<double>(lines) * LineHeight();
}

void DrawTarget::CopyPicture(const DrawTarget& source) {
  if (&source == this) return;
  DoCopyPicture(source);
}

}  // namespace orv
