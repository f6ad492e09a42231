// One-pixel solid lines written straight into a 32-bit picture.
//
// A chart at a far zoom is tens of thousands of thin lines (airways, rivers,
// borders, airspace outlines) a few dozen pixels long. QPainter's cosmetic
// stroker pays a span blend per pixel for them; for the one case the chart
// uses most (width 1, solid, plain copy, no transform) a line is a run of
// stores. The pixels chosen are the ones QPainter chooses for a separate
// line with a square cap: along the longer axis every pixel from the one
// holding the start to the one holding the end, across it the pixel under
// the line, with positions in 64ths of a pixel as the raster engine keeps
// them, so that a chart looks the same whichever way a line was drawn.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orv {

struct PixelCanvas {
  uint32_t* Bits = nullptr;  // the first row
  std::ptrdiff_t Stride = 0;  // pixels from one row to the next
  int Width = 0;
  int Height = 0;
  // Only rows RowFrom .. RowTo - 1 are written; the pixels chosen stay those
  // of the whole picture, so that two bands drawn apart make one picture.
  int RowFrom = 0;
  int RowTo = 1 << 30;
};

// Draws the line from (x1, y1) to (x2, y2), in device pixels, clipped to the
// canvas. Coordinates may lie anywhere; non-finite ones draw nothing.
void DrawThinLine(const PixelCanvas& canvas, double x1, double y1, double x2, double y2, uint32_t pixel);

// Draws a line `width` pixels wide with round ends: every pixel whose centre
// lies within width / 2 of the segment. Lines drawn end to end this way meet
// in round joins. Coordinates may lie anywhere; non-finite ones draw nothing.
void DrawWideLine(const PixelCanvas& canvas, double x1, double y1, double x2, double y2, double width,
                  uint32_t pixel);

// A line kept for later: DrawThinLine when Width is 1, else DrawWideLine.
struct QueuedLine {
  double X1, Y1, X2, Y2;
  uint32_t Pixel;
  int Width;
};
// Draws them in order.
void DrawQueuedLines(const PixelCanvas& canvas, const QueuedLine* lines, std::size_t count);

}  // namespace orv
