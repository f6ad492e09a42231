// The DrawTarget that draws with QPainter: on an image it owns (the map and
// its back buffer, side pictures, PNG export), or on any paint device the
// caller owns (an SVG generator, a printer page, a widget's pixmap).
//
// Lines and shapes are drawn without anti-aliasing, as the program's charts
// always were; text is anti-aliased. Exclusive-or and invert drawing use the
// raster operations of QPainter and so work on images only; on other devices
// they draw as a plain copy. Font sizes are points at the given dots per inch
// (96 unless told), rounded to whole pixels.
#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <QString>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "map/DrawTarget.h"
#include "mapqt/CircleStamps.h"
#include "mapqt/LineQueue.h"
#include "mapqt/QtFontSet.h"
#include "mapqt/ThinLine.h"

class QBuffer;
class QSvgGenerator;

namespace orv {

// A colour of the settings (blue * 65536 + green * 256 + red) as a QColor.
inline QColor ToQColor(Colour c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }

class QPainterTarget : public DrawTarget {
public:
  // A picture of its own, pixelWidth x pixelHeight, cleared to white.
  QPainterTarget(const QtFontSet& fonts, int pixelWidth, int pixelHeight, double dpi = 96);
  // Draws on a device that must outlive the target (or its End()).
  QPainterTarget(const QtFontSet& fonts, QPaintDevice& device, double dpi = 96);
  ~QPainterTarget() override;

  // The picture drawn so far (an empty image on a foreign device).
  const QImage& Image() const {
    FlushLines();
    return image_;
  }
  // Writes the picture as a PNG file, whole or not at all.
  bool SavePng(const std::filesystem::path& path) const;
  // Finishes painting; a file device writes its last bytes. Later drawing
  // calls do nothing.
  void End();

  // Owned pictures only: a new size keeping the top left of the picture and
  // the unit size; the new area is cleared to BackColor.
  bool Resize(int pixelWidth, int pixelHeight) override;
  // On a paged device (a PDF writer, a printer) the next page; elsewhere
  // nothing.
  void NewPage() override;

protected:
  void DoLine(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) override;
  void DoLines(const DrawSegment* segments, std::size_t count, Colour colour) override;
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
  void Begin(QPaintDevice& device);
  // Brings the painter's pen, brush and composition in line with the
  // properties, touching QPainter only when something changed.
  void ApplyPen(Colour colour);
  void ApplyBrush(bool fill);
  void ApplyMode();
  void ApplyFont() const;
  QPointF Px(double x, double y) const;
  // True when lines of any width go straight into the pixels (solid, plain
  // copy, on an owned 32-bit picture); DirectLine draws one.
  bool DirectPen() const;
  void DirectLine(const QPointF& a, const QPointF& b, uint32_t pixel);
  // Direct lines wait in queue_ until anything else is drawn or the picture
  // is read.
  void FlushLines() const;
  // A small circle or ellipse from a kept copy of QPainter's pixels for the
  // same size, pen and place within a pixel; false when it must be drawn.
  bool StampEllipse(const QPointF& centre, double rx, double ry, Colour colour);
  static uint32_t PixelOf(Colour colour);
  // True when a line between the device points with the current pen
  // cannot touch the picture: on an image, such lines are skipped (a chart
  // at a close zoom walks thousands of them far outside the window).
  bool LineOutside(const QPointF& a, const QPointF& b) const;

  const QtFontSet* fonts_;
  double dpi_;
  QImage image_;
  PixelCanvas canvas_;  // image_'s pixels while painting on it
  QPainter painter_;
  QPolygonF polygon_;  // reused point buffer
  std::vector<QLineF> lines_;  // reused line buffer
  std::vector<QPointF> clipA_, clipB_;  // polygon clipping scratch
  mutable LineQueue queue_;
  CircleStamps stamps_;

  // What the painter holds now.
  Colour penColour_ = -1;
  uint32_t penRevision_ = 0;
  bool brushFill_ = false;
  uint32_t brushRevision_ = 0;
  uint32_t modeRevision_ = 0;
  mutable uint32_t fontRevision_ = 0;
  mutable QFont font_;
  mutable std::unique_ptr<QFontMetricsF> metrics_;
};

// An SVG drawing made through a QPainterTarget and written as a file in one
// piece when saved.
class SvgPicture {
public:
  SvgPicture(const QtFontSet& fonts, int pixelWidth, int pixelHeight, const QString& title = QString());
  ~SvgPicture();

  QPainterTarget& Target() { return *target_; }
  // Ends the drawing and writes the file; false (with the reason) on failure.
  bool Save(const std::filesystem::path& path, std::string* error = nullptr);

private:
  std::unique_ptr<QBuffer> buffer_;
  std::unique_ptr<QSvgGenerator> generator_;
  std::unique_ptr<QPainterTarget> target_;
};

}  // namespace orv
