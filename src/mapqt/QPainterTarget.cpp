#include "mapqt/QPainterTarget.h"

#include <QBuffer>
#include <QPagedPaintDevice>
#include <QPaintDevice>
#include <QPen>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/Geodesy.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "mapqt/ThinLine.h"

namespace orv {

namespace {

// Coordinates far outside any device (a projected point beyond a pole, a
// shape across half the world at a close zoom) are pinned here; QPainter's
// fixed-point rasteriser misbehaves with larger values.
constexpr double kMaxPixel = 4.0e6;

double Pin(double v) {
  if (!std::isfinite(v)) return v > 0 ? kMaxPixel : -kMaxPixel;
  return std::clamp(v, -kMaxPixel, kMaxPixel);
}

Qt::PenStyle PenStyleOf(int16_t drawStyle, int16_t drawWidth) {
  // Wide pens are always solid, as with the runtime's pens.
  if (drawWidth > 1 && drawStyle >= kDrawStyleDash && drawStyle <= kDrawStyleDashDotDot) return Qt::SolidLine;
  switch (drawStyle) {
    case kDrawStyleDash: return Qt::DashLine;
    case kDrawStyleDot: return Qt::DotLine;
    case kDrawStyleDashDot: return Qt::DashDotLine;
    case kDrawStyleDashDotDot: return Qt::DashDotDotLine;
    case kDrawStyleTransparent: return Qt::NoPen;
    default: return Qt::SolidLine;
  }
}

Qt::BrushStyle BrushStyleOf(int16_t fillStyle) {
  switch (fillStyle) {
    case kFillSolid: return Qt::SolidPattern;
    case kFillHorizontal: return Qt::HorPattern;
    case kFillVertical: return Qt::VerPattern;
    case kFillUpwardDiagonal: return Qt::BDiagPattern;
    case kFillDownwardDiagonal: return Qt::FDiagPattern;
    case kFillCross: return Qt::CrossPattern;
    case kFillDiagonalCross: return Qt::DiagCrossPattern;
    default: return Qt::NoBrush;
  }
}

QString TextOf(std::string_view line) {
  // Plain ASCII (nearly every label) is the same in Windows-1252 and Latin-1.
  bool ascii = true;
  for (char ch : line) ascii &= static_cast<unsigned char>(ch) < 0x80;
  if (ascii) return QString::fromLatin1(line.data(), static_cast<qsizetype>(line.size()));
  std::string utf8 = Latin1ToUtf8(line);
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Drops the points that fall in the device pixel of the point kept before
// them; the first and the last point stay. What is left draws the same shape
// to within a pixel. Returns the new count.
std::size_t ThinToPixels(QPointF* pts, std::size_t count) {
  if (count < 3) return count;
  // The points are pinned to a few million pixels: whole numbers by cutting.
  auto cell = [](double v) {
    const auto i = static_cast<int64_t>(v);
    return i - (v < static_cast<double>(i));
  };
  std::size_t kept = 1;
  int64_t cellX = cell(pts[0].x()), cellY = cell(pts[0].y());
  for (std::size_t i = 1; i + 1 < count; ++i) {
    const int64_t x = cell(pts[i].x()), y = cell(pts[i].y());
    if (x == cellX && y == cellY) continue;
    cellX = x;
    cellY = y;
    pts[kept++] = pts[i];
  }
  pts[kept++] = pts[count - 1];
  return kept;
}

// One side of the frame for the polygon clipper.
enum class FrameSide { Left, Right, Top, Bottom };

bool Inside(const QPointF& p, FrameSide side, double bound) {
  switch (side) {
    case FrameSide::Left: return p.x() >= bound;
    case FrameSide::Right: return p.x() <= bound;
    case FrameSide::Top: return p.y() >= bound;
    case FrameSide::Bottom: return p.y() <= bound;
  }
  return true;
}

QPointF Crossing(const QPointF& a, const QPointF& b, FrameSide side, double bound) {
  if (side == FrameSide::Left || side == FrameSide::Right) {
    const double t = (bound - a.x()) / (b.x() - a.x());
    return {bound, a.y() + t * (b.y() - a.y())};
  }
  const double t = (bound - a.y()) / (b.y() - a.y());
  return {a.x() + t * (b.x() - a.x()), bound};
}

// The closed polygon cut by one side of the frame (Sutherland-Hodgman).
std::size_t ClipSide(const QPointF* in, std::size_t count, std::vector<QPointF>& out, FrameSide side,
                     double bound) {
  out.clear();
  if (count == 0) return 0;
  QPointF prev = in[count - 1];
  bool prevIn = Inside(prev, side, bound);
  for (std::size_t i = 0; i < count; ++i) {
    const QPointF& cur = in[i];
    const bool curIn = Inside(cur, side, bound);
    if (curIn != prevIn) out.push_back(Crossing(prev, cur, side, bound));
    if (curIn) out.push_back(cur);
    prev = cur;
    prevIn = curIn;
  }
  return out.size();
}

// The closed polygon cut to the frame. Cutting a polygon by a convex frame
// keeps every point of the frame inside it as often as before, so the
// even-odd fill within the frame does not change. Sets shape to the result
// (pts itself when nothing lies outside) and returns its count.
std::size_t ClipToFrame(const QPointF* pts, std::size_t count, const QRectF& frame, std::vector<QPointF>& a,
                        std::vector<QPointF>& b, const QPointF*& shape) {
  shape = pts;
  double left = pts[0].x(), right = left, top = pts[0].y(), bottom = top;
  for (std::size_t i = 1; i < count; ++i) {
    left = std::min(left, pts[i].x());
    right = std::max(right, pts[i].x());
    top = std::min(top, pts[i].y());
    bottom = std::max(bottom, pts[i].y());
  }
  if (left >= frame.left() && right <= frame.right() && top >= frame.top() && bottom <= frame.bottom())
    return count;
  if (right < frame.left() || left > frame.right() || bottom < frame.top() || top > frame.bottom()) return 0;
  count = ClipSide(pts, count, a, FrameSide::Left, frame.left());
  count = ClipSide(a.data(), count, b, FrameSide::Right, frame.right());
  count = ClipSide(b.data(), count, a, FrameSide::Top, frame.top());
  count = ClipSide(a.data(), count, b, FrameSide::Bottom, frame.bottom());
  shape = b.data();
  return count;
}

}  // namespace

QPainterTarget::QPainterTarget(const QtFontSet& fonts, int pixelWidth, int pixelHeight, double dpi)
    : DrawTarget(pixelWidth, pixelHeight),
      fonts_(&fonts),
      dpi_(dpi > 0 ? dpi : 96),
      image_(std::max(pixelWidth, 1), std::max(pixelHeight, 1), QImage::Format_RGB32) {
  image_.fill(Qt::white);
  Begin(image_);
}

QPainterTarget::QPainterTarget(const QtFontSet& fonts, QPaintDevice& device, double dpi)
    : DrawTarget(device.width(), device.height()), fonts_(&fonts), dpi_(dpi > 0 ? dpi : 96) {
  Begin(device);
}

QPainterTarget::~QPainterTarget() { End(); }

void QPainterTarget::Begin(QPaintDevice& device) {
  canvas_ = PixelCanvas();
  if (&device == &image_ && image_.format() == QImage::Format_RGB32) {
    // Taken before the painter starts, so that both write the same pixels.
    canvas_.Bits = reinterpret_cast<uint32_t*>(image_.bits());
    canvas_.Stride = image_.bytesPerLine() / 4;
    canvas_.Width = image_.width();
    canvas_.Height = image_.height();
  }
  painter_.begin(&device);
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
  painter_.setBackgroundMode(Qt::TransparentMode);
  penRevision_ = brushRevision_ = modeRevision_ = fontRevision_ = 0;
}

void QPainterTarget::NewPage() {
  FlushLines();
  if (!painter_.isActive()) return;
  if (auto* paged = dynamic_cast<QPagedPaintDevice*>(painter_.device())) paged->newPage();
}

void QPainterTarget::End() {
  FlushLines();
  if (painter_.isActive()) painter_.end();
  canvas_ = PixelCanvas();
}

bool QPainterTarget::DirectPen() const {
  if (canvas_.Bits == nullptr || DrawMode() != kDrawModeCopy || DrawStyle() == kDrawStyleTransparent) return false;
  // Wide pens are always solid; a thin one must be solid itself.
  return DrawWidth() > 1 || DrawStyle() == kDrawStyleSolid || DrawStyle() == kDrawStyleInsideSolid;
}

void QPainterTarget::DirectLine(const QPointF& a, const QPointF& b, uint32_t pixel) {
  queue_.Push({a.x(), a.y(), b.x(), b.y(), pixel, DrawWidth()});
}


void QPainterTarget::FlushLines() const { queue_.Flush(canvas_); }

uint32_t QPainterTarget::PixelOf(Colour colour) { return 0xFF000000u | ToQColor(colour).rgb(); }

bool QPainterTarget::SavePng(const std::filesystem::path& path) const {
  FlushLines();
  if (image_.isNull()) return false;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image_.save(&buffer, "PNG")) return false;
  return WriteFileAtomic(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

bool QPainterTarget::Resize(int pixelWidth, int pixelHeight) {
  FlushLines();
  if (image_.isNull()) return false;
  pixelWidth = std::max(pixelWidth, 1);
  pixelHeight = std::max(pixelHeight, 1);
  if (pixelWidth == image_.width() && pixelHeight == image_.height()) return true;
  End();
  QImage resized(pixelWidth, pixelHeight, QImage::Format_RGB32);
  resized.fill(ToQColor(BackColor()));
  {
    QPainter copy(&resized);
    copy.drawImage(QPointF(0, 0), image_);
  }
  image_ = std::move(resized);
  SetPixelSize(pixelWidth, pixelHeight);
  Begin(image_);
  return true;
}

QPointF QPainterTarget::Px(double x, double y) const { return QPointF(Pin(ScaleX(x)), Pin(ScaleY(y))); }

void QPainterTarget::ApplyMode() {
  if (modeRevision_ == StyleRevision()) return;
  modeRevision_ = StyleRevision();
  QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver;
  const int device = painter_.device()->devType();
  if (device == QInternal::Image || device == QInternal::Pixmap) {
    if (DrawMode() == kDrawModeXor) mode = QPainter::RasterOp_SourceXorDestination;
    if (DrawMode() == kDrawModeInvert) mode = QPainter::RasterOp_NotDestination;
  }
  if (painter_.compositionMode() != mode) painter_.setCompositionMode(mode);
}

void QPainterTarget::ApplyPen(Colour colour) {
  ApplyMode();
  if (colour == penColour_ && penRevision_ == StyleRevision()) return;
  penColour_ = colour;
  penRevision_ = StyleRevision();
  QPen pen(ToQColor(colour));
  pen.setWidth(DrawWidth());
  pen.setStyle(PenStyleOf(DrawStyle(), DrawWidth()));
  if (DrawWidth() > 1) {
    pen.setCapStyle(Qt::RoundCap);
    // A round join of a 2 pixel pen differs from a bevel by less than a
    // third of a pixel, but the stroker works out two angles per join for
    // it: a coastline drawn 2 wide has a hundred thousand joins.
    pen.setJoinStyle(DrawWidth() == 2 ? Qt::BevelJoin : Qt::RoundJoin);
  }
  painter_.setPen(pen);
}

void QPainterTarget::ApplyBrush(bool fill) {
  if (fill == brushFill_ && brushRevision_ == StyleRevision()) return;
  brushFill_ = fill;
  brushRevision_ = StyleRevision();
  Qt::BrushStyle style = fill ? BrushStyleOf(FillStyle()) : Qt::NoBrush;
  if (style == Qt::NoBrush) {
    painter_.setBrush(Qt::NoBrush);
  } else {
    painter_.setBrush(QBrush(ToQColor(FillColor()), style));
  }
}

void QPainterTarget::ApplyFont() const {
  if (fontRevision_ == FontRevision() && metrics_) return;
  fontRevision_ = FontRevision();
  font_ = QFont(fonts_->FamilyFor(FontName()));
  font_.setPixelSize(std::max(1, static_cast<int>(std::lround(FontSize() * dpi_ / 72.0))));
  font_.setBold(FontBold());
  font_.setKerning(false);
  font_.setHintingPreference(QFont::PreferNoHinting);
  font_.setStyleStrategy(QFont::NoFontMerging);
  metrics_ = std::make_unique<QFontMetricsF>(font_);
}

bool QPainterTarget::LineOutside(const QPointF& a, const QPointF& b) const {
  if (image_.isNull()) return false;  // a file keeps every element it is given
  // Half the pen and its round cap, plus a pixel for the rasteriser's rounding.
  const double m = DrawWidth() + 2.0;
  const double w = PixelWidth(), h = PixelHeight();
  return (a.x() < -m && b.x() < -m) || (a.y() < -m && b.y() < -m) || (a.x() > w + m && b.x() > w + m) ||
         (a.y() > h + m && b.y() > h + m);
}

void QPainterTarget::DoLine(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) {
  if (!painter_.isActive()) return;
  if (shape == LineShape::Line) {
    const QPointF a = Px(x1, y1), b = Px(x2, y2);
    if (LineOutside(a, b)) return;
    if (DirectPen()) {
      DirectLine(a, b, PixelOf(colour));
      return;
    }
    FlushLines();
    ApplyPen(colour);
    painter_.drawLine(a, b);
    return;
  }
  FlushLines();
  QRectF box = QRectF(Px(x1, y1), Px(x2, y2)).normalized();
  if (shape == LineShape::FilledBox) {
    ApplyMode();
    // Corner to corner inclusive, as the outline of the same box covers.
    painter_.fillRect(QRectF(box.topLeft(), QSizeF(box.width() + 1, box.height() + 1)), ToQColor(colour));
    return;
  }
  ApplyPen(colour);
  ApplyBrush(true);
  painter_.drawRect(box);
  ApplyBrush(false);
}

void QPainterTarget::DoLines(const DrawSegment* segments, std::size_t count, Colour colour) {
  if (!painter_.isActive()) return;
  if (DirectPen()) {
    const uint32_t pixel = PixelOf(colour);
    for (std::size_t i = 0; i < count; ++i)
      DirectLine(Px(segments[i].X1, segments[i].Y1), Px(segments[i].X2, segments[i].Y2), pixel);
    return;
  }
  FlushLines();
  // One call for the whole batch draws the same pixels as separate calls for
  // a thin solid pen in plain copy mode (each line is rasterised on its own);
  // other pens keep the separate calls, as joined wide or patterned lines may
  // differ where they overlap.
  if (DrawWidth() != 1 || DrawStyle() != kDrawStyleSolid || DrawMode() != kDrawModeCopy) {
    DrawTarget::DoLines(segments, count, colour);
    return;
  }
  lines_.clear();
  if (lines_.capacity() < count) lines_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const QPointF a = Px(segments[i].X1, segments[i].Y1), b = Px(segments[i].X2, segments[i].Y2);
    if (!LineOutside(a, b)) lines_.emplace_back(a, b);
  }
  if (lines_.empty()) return;
  ApplyPen(colour);
  painter_.drawLines(lines_.data(), static_cast<int>(lines_.size()));
}

void QPainterTarget::DoCircle(double x, double y, double radius, Colour colour, bool isArc, double start,
                              double end, double aspect) {
  FlushLines();
  if (!painter_.isActive()) return;
  ApplyPen(colour);
  const QPointF centre = Px(x, y);
  double rx = Pin(std::fabs(ScaleX(radius)));
  double ry = rx;
  if (isArc && std::isfinite(aspect) && aspect > 0) {
    if (aspect < 1) {
      ry = rx * aspect;
    } else {
      rx = rx / aspect;
    }
  }
  const QRectF box(centre.x() - rx, centre.y() - ry, 2 * rx, 2 * ry);
  if (!isArc || (start == 0 && end == 0)) {
    if (StampEllipse(centre, rx, ry, colour)) return;
    ApplyBrush(true);
    painter_.drawEllipse(box);
    ApplyBrush(false);
    return;
  }
  // Angles in radians, counter-clockwise from three o'clock; a negative one
  // also draws the radius to it.
  constexpr double kFullTurn = 2 * kPiExact;
  const double a0 = std::fabs(start), a1 = std::fabs(end);
  double span = a1 - a0;
  if (span <= 0) span += kFullTurn;
  const int start16 = static_cast<int>(std::lround(a0 * 180.0 / kPiExact * 16));
  const int span16 = static_cast<int>(std::lround(span * 180.0 / kPiExact * 16));
  if (start < 0 && end < 0) {
    ApplyBrush(true);
    painter_.drawPie(box, start16, span16);
    ApplyBrush(false);
    return;
  }
  painter_.drawArc(box, start16, span16);
  if (start < 0) painter_.drawLine(centre, QPointF(centre.x() + rx * std::cos(a0), centre.y() - ry * std::sin(a0)));
  if (end < 0) painter_.drawLine(centre, QPointF(centre.x() + rx * std::cos(a1), centre.y() - ry * std::sin(a1)));
}

bool QPainterTarget::StampEllipse(const QPointF& centre, double rx, double ry, Colour colour) {
  // Small rings and discs only (airports, navaid symbols), in the plain
  // styles; the rest goes to QPainter.
  constexpr double kMaxRadius = 24;
  if (canvas_.Bits == nullptr || DrawMode() != kDrawModeCopy || !(rx <= kMaxRadius && ry <= kMaxRadius)) return false;
  const bool pen = DrawStyle() != kDrawStyleTransparent;
  if (pen && !DirectPen()) return false;
  const int16_t fill = FillStyle();
  if (fill != kFillSolid && fill != kFillTransparent) return false;
  const double left = std::floor(centre.x()), top = std::floor(centre.y());
  if (!(std::fabs(left) < 1e6 && std::fabs(top) < 1e6)) return false;
  const int width = DrawWidth();
  if (left + rx + width + 2 < 0 || top + ry + width + 2 < 0 || left - rx - width - 2 >= canvas_.Width ||
      top - ry - width - 2 >= canvas_.Height)
    return true;  // wholly outside the picture

  const int ix = static_cast<int>(left), iy = static_cast<int>(top);
  const CircleStamps::Key key{centre.x() - left, centre.y() - top, rx, ry, width, pen, fill == kFillSolid};
  stamps_.Stamp(canvas_, key, ix, iy, PixelOf(colour), PixelOf(FillColor()));
  return true;
}

void QPainterTarget::DoPSet(double x, double y, Colour colour) {
  FlushLines();
  if (!painter_.isActive()) return;
  const QPointF p = Px(x, y);
  if (canvas_.Bits != nullptr && DrawMode() == kDrawModeCopy) {
    // A square of DrawWidth pixels, as below, without a fill call per point.
    const int w = DrawWidth();
    const int64_t left = static_cast<int64_t>(std::floor(p.x())) - (w > 1 ? w / 2 : 0);
    const int64_t top = static_cast<int64_t>(std::floor(p.y())) - (w > 1 ? w / 2 : 0);
    const uint32_t pixel = PixelOf(colour);
    for (int64_t y = std::max<int64_t>(top, 0); y < std::min<int64_t>(top + w, canvas_.Height); ++y)
      for (int64_t x = std::max<int64_t>(left, 0); x < std::min<int64_t>(left + w, canvas_.Width); ++x)
        canvas_.Bits[y * canvas_.Stride + x] = pixel;
    return;
  }
  ApplyMode();
  const double w = DrawWidth();
  const double corner = w > 1 ? std::floor(w / 2) : 0;
  painter_.fillRect(QRectF(std::floor(p.x()) - corner, std::floor(p.y()) - corner, w, w), ToQColor(colour));
}

void QPainterTarget::DoPolygon(const DrawPoint* points, std::size_t count, bool closed) {
  if (!painter_.isActive()) return;
  if (static_cast<std::size_t>(polygon_.size()) < count) polygon_.resize(static_cast<qsizetype>(count));
  QPointF* pts = polygon_.data();
  for (std::size_t i = 0; i < count; ++i) pts[i] = Px(points[i].X, points[i].Y);
  if (image_.isNull()) {
    ApplyPen(ForeColor());
    // A file or a printer page keeps every point: it may be looked at closer.
    if (closed) {
      ApplyBrush(true);
      painter_.drawPolygon(pts, static_cast<int>(count), Qt::OddEvenFill);
      ApplyBrush(false);
    } else {
      painter_.drawPolyline(pts, static_cast<int>(count));
    }
    return;
  }

  // On the picture, a coastline of a hundred thousand points seen from far
  // away has most of them inside the pixel of the one before, and a shape
  // seen from close lies mostly outside the picture: both parts are left to
  // the rasteriser only once.
  count = ThinToPixels(pts, count);
  if (DirectPen() || (canvas_.Bits != nullptr && DrawStyle() == kDrawStyleTransparent)) {
    // The fill first, then the outline a line at a time, as QPainter would.
    const uint32_t pixel = PixelOf(ForeColor());
    if (closed && FillStyle() != kFillTransparent) {
      const QRectF frame(-2, -2, PixelWidth() + 4, PixelHeight() + 4);
      const QPointF* shape = pts;
      const std::size_t n = ClipToFrame(pts, count, frame, clipA_, clipB_, shape);
      if (n >= 3) {
        FlushLines();
        painter_.setPen(Qt::NoPen);
        penColour_ = -2;  // no colour: the pen is set again before the next line
        ApplyBrush(true);
        painter_.drawPolygon(shape, static_cast<int>(n), Qt::OddEvenFill);
        ApplyBrush(false);
      }
    }
    if (DrawStyle() == kDrawStyleTransparent) return;
    for (std::size_t i = 1; i < count; ++i) DirectLine(pts[i - 1], pts[i], pixel);
    if (closed && count > 2) DirectLine(pts[count - 1], pts[0], pixel);
    return;
  }
  FlushLines();
  ApplyPen(ForeColor());
  const double m = DrawWidth() + 2.0;
  const QRectF keep(-m, -m, PixelWidth() + 2 * m, PixelHeight() + 2 * m);
  if (closed) {
    // Cut to a frame just outside the picture: inside it the fill is the
    // same, and the outline along the cut lies beyond the picture's edge.
    const QPointF* shape = pts;
    count = ClipToFrame(pts, count, keep, clipA_, clipB_, shape);
    if (count < 2) return;
    ApplyBrush(true);
    painter_.drawPolygon(shape, static_cast<int>(count), Qt::OddEvenFill);
    ApplyBrush(false);
    return;
  }
  // An open line is drawn in the runs between its pieces outside the picture.
  std::size_t runStart = 0;
  for (std::size_t i = 1; i <= count; ++i) {
    if (i < count && !LineOutside(pts[i - 1], pts[i])) continue;
    if (i - runStart >= 2) painter_.drawPolyline(pts + runStart, static_cast<int>(i - runStart));
    runStart = i;
  }
}

void QPainterTarget::DoCls() {
  FlushLines();
  if (!painter_.isActive()) return;
  if (canvas_.Bits != nullptr) {
    const uint32_t pixel = PixelOf(BackColor());
    for (int y = 0; y < canvas_.Height; ++y)
      std::fill_n(canvas_.Bits + static_cast<std::ptrdiff_t>(y) * canvas_.Stride, canvas_.Width, pixel);
    return;
  }
  const QPainter::CompositionMode mode = painter_.compositionMode();
  painter_.setCompositionMode(QPainter::CompositionMode_Source);
  painter_.fillRect(QRectF(0, 0, PixelWidth(), PixelHeight()), ToQColor(BackColor()));
  painter_.setCompositionMode(mode);
}

void QPainterTarget::DoText(double x, double y, std::string_view line) {
  FlushLines();
  if (!painter_.isActive()) return;
  ApplyFont();
  const QPointF topLeft = Px(x, y);
  if (!image_.isNull()) {
    // A text wholly outside the picture is not shaped at all; the widest
    // glyph of the font bounds its width, a font size its overhang.
    const double slack = font_.pixelSize() + 2.0;
    const double right = topLeft.x() + metrics_->maxWidth() * static_cast<double>(line.size());
    if (topLeft.x() > PixelWidth() + slack || topLeft.y() > PixelHeight() + slack ||
        topLeft.y() + metrics_->height() < -slack || right < -slack)
      return;
  }
  // Text ignores the draw mode, as the runtime's Print does.
  const QPainter::CompositionMode mode = painter_.compositionMode();
  if (mode != QPainter::CompositionMode_SourceOver) painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter_.setFont(font_);
  ApplyPen(ForeColor());
  painter_.drawText(QPointF(topLeft.x(), topLeft.y() + metrics_->ascent()), TextOf(line));
  if (mode != QPainter::CompositionMode_SourceOver) painter_.setCompositionMode(mode);
}

double QPainterTarget::LineWidth(std::string_view line) const {
  if (line.empty()) return 0;
  ApplyFont();
  return metrics_->horizontalAdvance(TextOf(line)) * (ScaleWidth() / PixelWidth());
}

double QPainterTarget::LineHeight() const {
  ApplyFont();
  return (metrics_->ascent() + metrics_->descent()) * (ScaleHeight() / PixelHeight());
}

void QPainterTarget::DoCopyPicture(const DrawTarget& source) {
  FlushLines();
  if (!painter_.isActive()) return;
  auto* from = dynamic_cast<const QPainterTarget*>(&source);
  if (from == nullptr || from->image_.isNull()) return;
  from->FlushLines();
  if (canvas_.Bits != nullptr && from->image_.format() == image_.format() && from->image_.size() == image_.size() &&
      from->image_.bytesPerLine() == image_.bytesPerLine()) {
    std::memcpy(canvas_.Bits, from->image_.constBits(), static_cast<std::size_t>(image_.sizeInBytes()));
    return;
  }
  const QPainter::CompositionMode mode = painter_.compositionMode();
  painter_.setCompositionMode(QPainter::CompositionMode_Source);
  painter_.drawImage(QPointF(0, 0), from->image_);
  painter_.setCompositionMode(mode);
}

// ------------------------------------------------------------ SVG

SvgPicture::SvgPicture(const QtFontSet& fonts, int pixelWidth, int pixelHeight, const QString& title)
    : buffer_(std::make_unique<QBuffer>()), generator_(std::make_unique<QSvgGenerator>()) {
  buffer_->open(QIODevice::WriteOnly);
  generator_->setOutputDevice(buffer_.get());
  generator_->setSize(QSize(pixelWidth, pixelHeight));
  generator_->setViewBox(QRect(0, 0, pixelWidth, pixelHeight));
  generator_->setResolution(96);
  if (!title.isEmpty()) generator_->setTitle(title);
  target_ = std::make_unique<QPainterTarget>(fonts, *generator_, 96);
}

SvgPicture::~SvgPicture() { target_->End(); }

bool SvgPicture::Save(const std::filesystem::path& path, std::string* error) {
  target_->End();
  const QByteArray& bytes = buffer_->data();
  if (bytes.isEmpty()) {
    if (error) *error = "the SVG drawing produced no data";
    return false;
  }
  if (!WriteFileAtomic(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))) {
    if (error) *error = "cannot write " + path.string();
    return false;
  }
  return true;
}

}  // namespace orv
