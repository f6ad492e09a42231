#include "mapqt/ThinLine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orv {

namespace {

// Cuts the segment to the box (Liang-Barsky). False when nothing of it is
// inside.
bool ClipToBox(double& x1, double& y1, double& x2, double& y2, double loX, double loY, double hiX, double hiY) {
  const double dx = x2 - x1, dy = y2 - y1;
  double t0 = 0, t1 = 1;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {x1 - loX, hiX - x1, y1 - loY, hiY - y1};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    const double r = q[i] / p[i];
    if (p[i] < 0) {
      if (r > t1) return false;
      if (r > t0) t0 = r;
    } else {
      if (r < t0) return false;
      if (r < t1) t1 = r;
    }
  }
  const double ax = x1 + t0 * dx, ay = y1 + t0 * dy;
  x2 = x1 + t1 * dx;
  y2 = y1 + t1 * dy;
  x1 = ax;
  y1 = ay;
  return true;
}

// floor and ceil of a finite value of moderate size, without the library
// call the baseline instruction set needs for them.
inline int64_t FloorOf(double v) {
  const auto i = static_cast<int64_t>(v);
  return i - (v < static_cast<double>(i));
}
inline int64_t CeilOf(double v) {
  const auto i = static_cast<int64_t>(v);
  return i + (v > static_cast<double>(i));
}

void Put(const PixelCanvas& c, int64_t x, int64_t y, uint32_t pixel) {
  if (x >= 0 && x < c.Width && y >= std::max(c.RowFrom, 0) && y < std::min(c.RowTo, c.Height))
    c.Bits[y * c.Stride + x] = pixel;
}

}  // namespace

void DrawThinLine(const PixelCanvas& c, double x1, double y1, double x2, double y2, uint32_t pixel) {
  if (!(std::isfinite(x1) && std::isfinite(y1) && std::isfinite(x2) && std::isfinite(y2))) return;
  if (c.Bits == nullptr || c.Width <= 0 || c.Height <= 0) return;
  if (x1 == x2 && y1 == y2) {
    // A line without length is the point nearest to it.
    Put(c, static_cast<int64_t>(std::floor(x1 + 0.5)), static_cast<int64_t>(std::floor(y1 + 0.5)), pixel);
    return;
  }
  // The cut leaves a pixel's margin, so that the pixels inside are chosen as
  // if the line went on. Most lines lie wholly inside or wholly beyond one
  // edge, and need no cut.
  const double hiX = c.Width + 1.0, hiY = c.Height + 1.0;
  if ((x1 < -1.0 && x2 < -1.0) || (y1 < -1.0 && y2 < -1.0) || (x1 > hiX && x2 > hiX) || (y1 > hiY && y2 > hiY))
    return;
  const bool inside = x1 >= -1.0 && x2 >= -1.0 && y1 >= -1.0 && y2 >= -1.0 && x1 <= hiX && x2 <= hiX &&
                      y1 <= hiY && y2 <= hiY;
  if (!inside && !ClipToBox(x1, y1, x2, y2, -1.0, -1.0, hiX, hiY)) return;

  // Positions in 64ths of a pixel (cut toward zero), the slope in 65536ths.
  int64_t a1 = static_cast<int64_t>(x1 * 64), b1 = static_cast<int64_t>(y1 * 64);
  int64_t a2 = static_cast<int64_t>(x2 * 64), b2 = static_cast<int64_t>(y2 * 64);
  // Walk along the longer axis (a), one pixel a step; b is the other axis.
  const bool steep = (a2 > a1 ? a2 - a1 : a1 - a2) < (b2 > b1 ? b2 - b1 : b1 - b2);
  if (steep) {
    std::swap(a1, b1);
    std::swap(a2, b2);
  }
  if (a1 > a2) {
    std::swap(a1, a2);
    std::swap(b1, b2);
  }
  if (a1 == a2) return;
  // The quotient cut toward zero, as an integer division gives it; a double
  // division is exact enough for that here (the true quotient lies at least
  // 1 / (a2 - a1) from a whole number unless it is one) and far quicker.
  const auto step = static_cast<int64_t>(static_cast<double>((b2 - b1) * 65536) / static_cast<double>(a2 - a1));
  // Both end pixels belong to the line: the span runs half a pixel further at
  // each end. The other axis is read at the pixel's centre when it grows
  // along the walk and at the pixel's start when it shrinks.
  const int64_t first = a1 >> 6;
  const int64_t end = (a2 + 64) >> 6;
  const int64_t at = step > 0 ? 32 : 0;
  int64_t b = (b1 << 10) - (step >> 1) + ((((first << 6) + at - (a1 - 32)) * step) >> 6);
  // Only the steps inside the picture along the walk; across it, a pixel
  // may still fall just outside.
  const int64_t rowLo = std::max(c.RowFrom, 0), rowHi = std::min(c.RowTo, c.Height);
  const int64_t aLo = steep ? rowLo : 0, aHi = steep ? rowHi : c.Width;
  const int64_t bLo = steep ? 0 : rowLo;
  const auto bSpan = static_cast<uint64_t>(steep ? c.Width : rowHi - rowLo);
  const int64_t from = std::max<int64_t>(first, aLo), to = std::min<int64_t>(end, aHi);
  if (from >= to) return;
  b += (from - first) * step;
  uint32_t* bits = c.Bits;
  const std::ptrdiff_t stride = c.Stride;
  if (steep) {
    for (int64_t a = from; a < to; ++a, b += step) {
      const int64_t col = b >> 16;
      if (static_cast<uint64_t>(col - bLo) < bSpan) bits[a * stride + col] = pixel;
    }
  } else {
    for (int64_t a = from; a < to; ++a, b += step) {
      const int64_t row = b >> 16;
      if (static_cast<uint64_t>(row - bLo) < bSpan) bits[row * stride + a] = pixel;
    }
  }
}

void DrawWideLine(const PixelCanvas& c, double x1, double y1, double x2, double y2, double width, uint32_t pixel) {
  if (!(std::isfinite(x1) && std::isfinite(y1) && std::isfinite(x2) && std::isfinite(y2) && width > 0)) return;
  if (c.Bits == nullptr || c.Width <= 0 || c.Height <= 0) return;
  const double r = width / 2;
  // Only the part that can touch the picture matters; the cut points lie on
  // the line, so the shape inside the picture does not change.
  if (!ClipToBox(x1, y1, x2, y2, -r - 2, -r - 2, c.Width + r + 2, c.Height + r + 2)) return;
  // Walk across the longer extent, one pixel centre a step; for each, the
  // shape's cross-section is one run of pixels (the shape is convex).
  const bool steep = std::fabs(y2 - y1) > std::fabs(x2 - x1);
  if (steep) {
    std::swap(x1, y1);
    std::swap(x2, y2);
  }
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const int64_t rowLo = std::max(c.RowFrom, 0), rowHi = std::min(c.RowTo, c.Height);
  if (rowLo >= rowHi) return;
  const int64_t aLo = steep ? rowLo : 0, limitA = steep ? rowHi : c.Width;
  const int64_t bLo = steep ? 0 : rowLo, limitB = steep ? c.Width : rowHi;
  const double dx = x2 - x1, dy = y2 - y1;
  const double len = std::sqrt(dx * dx + dy * dy);
  // The band along the segment: |(y - y1) * dx - (x - x1) * dy| <= r * len.
  const double halfBand = dx > 0 ? r * len / dx : 0;
  const int64_t first = std::max<int64_t>(CeilOf(x1 - r - 0.5), aLo);
  const int64_t last = std::min<int64_t>(FloorOf(x2 + r - 0.5), limitA - 1);
  const double rr = r * r;
  const double slope = dx > 0 ? dy / dx : 0;
  const double across = dy != 0 ? dx / dy : 0;
  // Between a radius from either end the band alone decides: the round ends
  // do not reach there and the perpendiculars through the ends lie outside.
  const double innerFrom = x1 + r, innerTo = x2 - r;
  for (int64_t a = first; a <= last; ++a) {
    const double x = static_cast<double>(a) + 0.5;
    if (x >= innerFrom && x <= innerTo) {
      const double mid = y1 + (x - x1) * slope;
      const int64_t from = std::max<int64_t>(CeilOf(mid - halfBand - 0.5), bLo);
      const int64_t to = std::min<int64_t>(FloorOf(mid + halfBand - 0.5), limitB - 1);
      if (steep) {
        for (int64_t b = from; b <= to; ++b) c.Bits[a * c.Stride + b] = pixel;
      } else {
        for (int64_t b = from; b <= to; ++b) c.Bits[b * c.Stride + a] = pixel;
      }
      continue;
    }
    double lo = HUGE_VAL, hi = -HUGE_VAL;
    // The band, within the stretch of x where the perpendiculars through
    // the ends bound it.
    if (dx > 0) {
      const double mid = y1 + (x - x1) * slope;
      double bandLo = mid - halfBand, bandHi = mid + halfBand;
      // The perpendicular ends: (x - x1) * dx + (y - y1) * dy >= 0 and
      // (x - x2) * dx + (y - y2) * dy <= 0.
      if (dy != 0) {
        const double e1 = y1 - (x - x1) * across, e2 = y2 - (x - x2) * across;
        if (dy > 0) {
          bandLo = std::max(bandLo, e1);
          bandHi = std::min(bandHi, e2);
        } else {
          bandLo = std::max(bandLo, e2);
          bandHi = std::min(bandHi, e1);
        }
      } else if (x < x1 || x > x2) {
        bandLo = HUGE_VAL;
      }
      if (bandLo <= bandHi) lo = bandLo, hi = bandHi;
    }
    // The round ends.
    for (int end = 0; end < 2; ++end) {
      const double ex = end ? x2 : x1, ey = end ? y2 : y1;
      const double d = x - ex;
      if (d * d > rr) continue;
      const double h = std::sqrt(rr - d * d);
      lo = std::min(lo, ey - h);
      hi = std::max(hi, ey + h);
    }
    if (!(lo <= hi)) continue;
    const int64_t from = std::max<int64_t>(CeilOf(lo - 0.5), bLo);
    const int64_t to = std::min<int64_t>(FloorOf(hi - 0.5), limitB - 1);
    if (steep) {
      for (int64_t b = from; b <= to; ++b) c.Bits[a * c.Stride + b] = pixel;
    } else {
      for (int64_t b = from; b <= to; ++b) c.Bits[b * c.Stride + a] = pixel;
    }
  }
}

void DrawQueuedLines(const PixelCanvas& canvas, const QueuedLine* lines, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const QueuedLine& l = lines[i];
    if (l.Width == 1)
      DrawThinLine(canvas, l.X1, l.Y1, l.X2, l.Y2, l.Pixel);
    else
      DrawWideLine(canvas, l.X1, l.Y1, l.X2, l.Y2, l.Width, l.Pixel);
  }
}

}  // namespace orv
