#include "map/RecordingTarget.h"

#include "core/Runtime.h"

namespace orv {

RecordingTarget::RecordingTarget(int pixelWidth, int pixelHeight, std::string name)
    : DrawTarget(pixelWidth, pixelHeight), name_(std::move(name)) {}

void RecordingTarget::ClearOps() {
  ops_.clear();
  points_.clear();
}

bool RecordingTarget::Resize(int pixelWidth, int pixelHeight) {
  SetPixelSize(pixelWidth, pixelHeight);
  return true;
}

void RecordingTarget::NewPage() { Add(DrawOpKind::NewPage, ForeColor()); }

DrawOp& RecordingTarget::Add(DrawOpKind kind, Colour colour) {
  DrawOp& op = ops_.emplace_back();
  op.Kind = kind;
  op.Color = colour;
  op.FillColor = FillColor();
  op.FillStyle = FillStyle();
  op.DrawStyle = DrawStyle();
  op.DrawWidth = DrawWidth();
  op.DrawMode = DrawMode();
  return op;
}

void RecordingTarget::DoLine(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) {
  DrawOpKind kind = shape == LineShape::Box         ? DrawOpKind::Box
                    : shape == LineShape::FilledBox ? DrawOpKind::FilledBox
                                                    : DrawOpKind::Line;
  DrawOp& op = Add(kind, colour);
  op.X1 = x1;
  op.Y1 = y1;
  op.X2 = x2;
  op.Y2 = y2;
}

void RecordingTarget::DoCircle(double x, double y, double radius, Colour colour, bool isArc, double start,
                               double end, double aspect) {
  DrawOp& op = Add(isArc ? DrawOpKind::Arc : DrawOpKind::Circle, colour);
  op.X1 = x;
  op.Y1 = y;
  op.Radius = radius;
  op.Start = start;
  op.End = end;
  op.Aspect = aspect;
}

void RecordingTarget::DoPSet(double x, double y, Colour colour) {
  DrawOp& op = Add(DrawOpKind::PSet, colour);
  op.X1 = x;
  op.Y1 = y;
}

void RecordingTarget::DoPolygon(const DrawPoint* points, std::size_t count, bool closed) {
  DrawOp& op = Add(closed ? DrawOpKind::Polygon : DrawOpKind::Polyline, ForeColor());
  op.PointStart = points_.size();
  op.PointCount = count;
  points_.insert(points_.end(), points, points + count);
}

void RecordingTarget::DoCls() { Add(DrawOpKind::Cls, BackColor()); }

void RecordingTarget::DoText(double x, double y, std::string_view line) {
  DrawOp& op = Add(DrawOpKind::Text, ForeColor());
  op.X1 = x;
  op.Y1 = y;
  op.Text.assign(line);
  op.FontName = FontName();
  op.FontSize = FontSize();
  op.FontBold = FontBold();
}

double RecordingTarget::LineWidth(std::string_view line) const {
  return static_cast<double>(line.size()) * FontSize() * 10.0;
}

double RecordingTarget::LineHeight() const { return FontSize() * 20.0; }

void RecordingTarget::DoCopyPicture(const DrawTarget& source) {
  DrawOp& op = Add(DrawOpKind::Copy, ForeColor());
  auto* recorded = dynamic_cast<const RecordingTarget*>(&source);
  op.Text = recorded ? recorded->Name() : std::string("?");
}

std::string RecordingTarget::Describe(const DrawOp& op) const {
  auto n = [](double v) { return NumText(v); };
  switch (op.Kind) {
    case DrawOpKind::Line:
    case DrawOpKind::Box:
    case DrawOpKind::FilledBox: {
      const char* word = op.Kind == DrawOpKind::Line ? "Line" : op.Kind == DrawOpKind::Box ? "Box" : "FilledBox";
      return std::string(word) + " " + n(op.X1) + " " + n(op.Y1) + " " + n(op.X2) + " " + n(op.Y2);
    }
    case DrawOpKind::Circle:
      return "Circle " + n(op.X1) + " " + n(op.Y1) + " " + n(op.Radius);
    case DrawOpKind::Arc:
      return "Arc " + n(op.X1) + " " + n(op.Y1) + " " + n(op.Radius) + " " + n(op.Start) + " " + n(op.End) + " " +
             n(op.Aspect);
    case DrawOpKind::PSet:
      return "PSet " + n(op.X1) + " " + n(op.Y1);
    case DrawOpKind::Polygon:
    case DrawOpKind::Polyline: {
      std::string s = op.Kind == DrawOpKind::Polygon ? "Polygon" : "Polyline";
      for (const DrawPoint& p : PointsOf(op)) s += " " + NumText(p.X) + " " + NumText(p.Y);
      return s;
    }
    case DrawOpKind::Text:
      return "Text " + n(op.X1) + " " + n(op.Y1) + " " + op.Text;
    case DrawOpKind::Cls:
      return "Cls";
    case DrawOpKind::Copy:
      return "Copy " + op.Text;
    case DrawOpKind::NewPage:
      return "NewPage";
  }
  return "?";
}

std::vector<std::string> RecordingTarget::Describe() const {
  std::vector<std::string> out;
  out.reserve(ops_.size());
  for (const DrawOp& op : ops_) out.push_back(Describe(op));
  return out;
}

}  // namespace orv
