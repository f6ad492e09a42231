// The drawing surface every chart, side picture and printed page is drawn on.
//
// A DrawTarget behaves like a picture box of the runtime the program was
// designed for: graphics methods (Line, Circle, PSet, Print) in user units,
// the drawing properties (ForeColor, DrawWidth, DrawMode, ...) as state that
// every later call uses, and a current position (CurrentX, CurrentY) that the
// graphics methods move. The base class keeps all of that state and the
// bookkeeping of the current position; an implementation only turns single
// operations into pixels (QPainterTarget) or records them (RecordingTarget).
//
// Coordinates: user units, X to the right, Y downward, origin at the top left.
// The target maps them to device pixels with one factor per axis, fixed by
// SetScaleWidth/SetScaleHeight; after that a unit keeps its physical size when
// the surface is resized and ScaleWidth/ScaleHeight follow the new size.
// Polygon and Polyline take user units as well: the conversion to device
// pixels that the original drawing code did by hand happens inside the target.
//
// Colours are the settings' values blue * 65536 + green * 256 + red.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace orv {

using Colour = int32_t;

// Passed as a colour argument: draw with the current ForeColor.
inline constexpr Colour kForeColour = -1;

inline constexpr Colour RgbColour(int red, int green, int blue) {
  return static_cast<Colour>((blue & 0xFF) << 16 | (green & 0xFF) << 8 | (red & 0xFF));
}
inline constexpr int RedOf(Colour c) { return c & 0xFF; }
inline constexpr int GreenOf(Colour c) { return (c >> 8) & 0xFF; }
inline constexpr int BlueOf(Colour c) { return (c >> 16) & 0xFF; }

// DrawMode values (the runtime's numbers). Modes not listed draw as copy.
inline constexpr int16_t kDrawModeInvert = 6;   // destination inverted, colour ignored
inline constexpr int16_t kDrawModeXor = 7;      // destination XOR colour: drawing twice restores
inline constexpr int16_t kDrawModeCopy = 13;    // plain colour

// DrawStyle values. As with the runtime's pens, a DrawWidth above 1 draws
// every pattern solid.
inline constexpr int16_t kDrawStyleSolid = 0;
inline constexpr int16_t kDrawStyleDash = 1;
inline constexpr int16_t kDrawStyleDot = 2;
inline constexpr int16_t kDrawStyleDashDot = 3;
inline constexpr int16_t kDrawStyleDashDotDot = 4;
inline constexpr int16_t kDrawStyleTransparent = 5;
inline constexpr int16_t kDrawStyleInsideSolid = 6;

// FillStyle values: the interior of Circle, Polygon and boxes drawn with Line.
inline constexpr int16_t kFillSolid = 0;
inline constexpr int16_t kFillTransparent = 1;
inline constexpr int16_t kFillHorizontal = 2;
inline constexpr int16_t kFillVertical = 3;
inline constexpr int16_t kFillUpwardDiagonal = 4;
inline constexpr int16_t kFillDownwardDiagonal = 5;
inline constexpr int16_t kFillCross = 6;
inline constexpr int16_t kFillDiagonalCross = 7;

// The Line method's forms: a line, a box outline ("B", interior by FillStyle
// and FillColor) or a solid box in the line's colour ("BF").
enum class LineShape : uint8_t { Line, Box, FilledBox };

// After Print: NewLine moves to the start of the next line (the plain Print
// statement); StayOnLine leaves the position just after the text (Print with
// a trailing semicolon).
enum class PrintEnd : uint8_t { NewLine, StayOnLine };

struct DrawPoint {
  float X = 0;
  float Y = 0;
};

// One straight line of a batch, in user units.
struct DrawSegment {
  double X1 = 0;
  double Y1 = 0;
  double X2 = 0;
  double Y2 = 0;
};

// The font every target starts with, as the runtime's picture boxes do.
inline constexpr std::string_view kDefaultFontName = "MS Sans Serif";
inline constexpr float kDefaultFontSize = 8.25f;

class DrawTarget {
public:
  virtual ~DrawTarget() = default;
  DrawTarget(const DrawTarget&) = delete;
  DrawTarget& operator=(const DrawTarget&) = delete;

  // ------------------------------------------------------------ graphics
  // Each method draws with the current properties unless given a colour.

  // Line from (x1, y1) to (x2, y2), or a box with those corners. Leaves
  // CurrentX, CurrentY at (x2, y2).
  void Line(double x1, double y1, double x2, double y2, LineShape shape = LineShape::Line,
            Colour colour = kForeColour);

  // Many separate lines in one colour, the same picture as one Line call per
  // segment in order; a device may draw them in one go (a chart's airways
  // are tens of thousands of them). Leaves CurrentX, CurrentY at the end of
  // the last segment.
  void Lines(const DrawSegment* segments, std::size_t count, Colour colour = kForeColour);
  void Lines(std::span<const DrawSegment> segments, Colour colour = kForeColour) {
    Lines(segments.data(), segments.size(), colour);
  }

  // A circle of the given radius (in horizontal units), outlined in the
  // colour and filled by FillStyle/FillColor. Leaves CurrentX, CurrentY at
  // the centre.
  void Circle(double x, double y, double radius, Colour colour = kForeColour);
  // An arc, pie or ellipse with the runtime's arguments: start and end in
  // radians counter-clockwise from three o'clock, the arc running
  // counter-clockwise from start to end; a negative angle also draws the
  // radius to it (a pie side). Aspect is the ratio of height to width; below
  // 1 the radius is the horizontal half-axis, above 1 the vertical one.
  void Circle(double x, double y, double radius, Colour colour, double start, double end,
              double aspect = 1.0);

  // One point, DrawWidth across. Leaves CurrentX, CurrentY at the point.
  void PSet(double x, double y, Colour colour = kForeColour);

  // A closed outline (ForeColor, DrawWidth, DrawStyle) with its interior
  // filled by FillStyle/FillColor, alternate (even-odd) rule. The points are
  // read, not kept. CurrentX, CurrentY do not move.
  void Polygon(const DrawPoint* points, std::size_t count);
  void Polygon(std::span<const DrawPoint> points) { Polygon(points.data(), points.size()); }
  // An open line through the points. CurrentX, CurrentY do not move.
  void Polyline(const DrawPoint* points, std::size_t count);
  void Polyline(std::span<const DrawPoint> points) { Polyline(points.data(), points.size()); }

  // Clears the surface to BackColor; CurrentX, CurrentY become 0, 0.
  void Cls();

  // ------------------------------------------------------------ text
  // Prints text with its top left corner at CurrentX, CurrentY in ForeColor
  // and the current font, background transparent. A text may hold line
  // breaks (CR LF, CR or LF): each further line starts one line height lower
  // at the same X as the first. Afterwards, with NewLine, CurrentX is 0 and
  // CurrentY is below the last printed line; with StayOnLine, CurrentX is at
  // the end of the last line and CurrentY at its top.
  void Print(std::string_view text, PrintEnd end = PrintEnd::NewLine);
  // Width of the widest line, in horizontal user units.
  double TextWidth(std::string_view text) const;
  // Number of lines times the font's line height, in vertical user units; an
  // empty text counts as one line.
  double TextHeight(std::string_view text) const;

  // ------------------------------------------------------------ pictures
  // Copies the source's picture onto this one, pixel for pixel from the
  // origin (a plain source copy). Sources of another kind are ignored.
  void CopyPicture(const DrawTarget& source);
  // Gives the surface a new size in pixels, keeping the unit size. False
  // when the device cannot change size (a file being written, a printer page).
  virtual bool Resize(int pixelWidth, int pixelHeight);
  // Starts a new page on a paged device; nothing elsewhere.
  virtual void NewPage() {}

  // ------------------------------------------------------------ properties
  Colour ForeColor() const { return foreColor_; }
  void SetForeColor(Colour c) { Restyle(foreColor_, c); }
  Colour FillColor() const { return fillColor_; }
  void SetFillColor(Colour c) { Restyle(fillColor_, c); }
  Colour BackColor() const { return backColor_; }
  void SetBackColor(Colour c) { Restyle(backColor_, c); }
  int16_t FillStyle() const { return fillStyle_; }
  void SetFillStyle(int16_t s) { Restyle(fillStyle_, s); }
  int16_t DrawStyle() const { return drawStyle_; }
  void SetDrawStyle(int16_t s) { Restyle(drawStyle_, s); }
  // At least 1, as the runtime refuses smaller widths.
  int16_t DrawWidth() const { return drawWidth_; }
  void SetDrawWidth(int16_t w) { Restyle(drawWidth_, w < 1 ? int16_t{1} : w); }
  int16_t DrawMode() const { return drawMode_; }
  void SetDrawMode(int16_t m) { Restyle(drawMode_, m); }

  const std::string& FontName() const { return fontName_; }
  void SetFontName(std::string_view name);
  // In points.
  float FontSize() const { return fontSize_; }
  void SetFontSize(float size);
  bool FontBold() const { return fontBold_; }
  void SetFontBold(bool bold);

  double CurrentX() const { return currentX_; }
  void SetCurrentX(double x) { currentX_ = x; }
  double CurrentY() const { return currentY_; }
  void SetCurrentY(double y) { currentY_ = y; }

  // The surface's size in user units.
  double ScaleWidth() const { return pixelWidth_ * unitX_; }
  double ScaleHeight() const { return pixelHeight_ * unitY_; }
  // Chooses the unit so that the surface is this many units wide (high) now.
  void SetScaleWidth(double width);
  void SetScaleHeight(double height);
  int PixelWidth() const { return pixelWidth_; }
  int PixelHeight() const { return pixelHeight_; }
  // User units to device pixels.
  double ScaleX(double units) const { return units / unitX_; }
  double ScaleY(double units) const { return units / unitY_; }

protected:
  // A surface of this many device pixels with one unit per pixel.
  DrawTarget(int pixelWidth, int pixelHeight);

  // Changes the pixel size, keeping the unit size (a resized window).
  void SetPixelSize(int pixelWidth, int pixelHeight);

  // Bumped by every change of a pen, brush or colour property, and of the
  // font, so that an implementation rebuilds its tools only when needed.
  uint32_t StyleRevision() const { return styleRevision_; }
  uint32_t FontRevision() const { return fontRevision_; }

  // The single operations. Colours arrive resolved (never kForeColour).
  virtual void DoLine(double x1, double y1, double x2, double y2, LineShape shape, Colour colour) = 0;
  // The batch form; by default one DoLine per segment.
  virtual void DoLines(const DrawSegment* segments, std::size_t count, Colour colour);
  virtual void DoCircle(double x, double y, double radius, Colour colour, bool isArc, double start,
                        double end, double aspect) = 0;
  virtual void DoPSet(double x, double y, Colour colour) = 0;
  virtual void DoPolygon(const DrawPoint* points, std::size_t count, bool closed) = 0;
  virtual void DoCls() = 0;
  // One line of text without line breaks, top left at (x, y).
  virtual void DoText(double x, double y, std::string_view line) = 0;
  // Width of one line without line breaks, and the line height, in units.
  virtual double LineWidth(std::string_view line) const = 0;
  virtual double LineHeight() const = 0;
  virtual void DoCopyPicture(const DrawTarget& source) = 0;

private:
  // Setting a property to the value it has changes nothing, so that the
  // target keeps its pen: a pass sets the same colour and width on
  // thousands of objects in a row.
  template <typename T>
  void Restyle(T& field, T value) {
    if (field == value) return;
    field = value;
    ++styleRevision_;
  }
  Colour Resolve(Colour c) const { return c == kForeColour ? foreColor_ : c; }

  Colour foreColor_ = 0;
  Colour fillColor_ = 0;
  Colour backColor_ = 0xFFFFFF;
  int16_t fillStyle_ = kFillTransparent;
  int16_t drawStyle_ = kDrawStyleSolid;
  int16_t drawWidth_ = 1;
  int16_t drawMode_ = kDrawModeCopy;
  std::string fontName_{kDefaultFontName};
  float fontSize_ = kDefaultFontSize;
  bool fontBold_ = false;
  double currentX_ = 0;
  double currentY_ = 0;
  int pixelWidth_ = 1;
  int pixelHeight_ = 1;
  double unitX_ = 1;  // user units per pixel
  double unitY_ = 1;
  uint32_t styleRevision_ = 1;
  uint32_t fontRevision_ = 1;
};

// Calls fn(line) for each line of a text split at CR LF, CR or LF; an empty
// text is one empty line. Returns the number of lines.
template <typename F>
std::size_t ForEachTextLine(std::string_view text, F&& fn) {
  std::size_t lines = 0;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char ch = text[i];
    if (ch != '\r' && ch != '\n') continue;
    fn(text.substr(start, i - start));
    ++lines;
    if (ch == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  fn(text.substr(start));
  return lines + 1;
}

}  // namespace orv
