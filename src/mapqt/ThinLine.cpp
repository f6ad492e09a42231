#include "mapqt/ThinLine.h"

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

void Put(const PixelCanvas& c, int64_t x, int64_t y, uint32_t pixel) {
  if (x >= 0 && x < c.Width && y >= 0 && y < c.Height) c.Bits[y * c.Stride + x] = pixel;
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
  // if the line went on.
  if (!ClipToBox(x1, y1, x2, y2, -1.0, -1.0, c.Width + 1.0, c.Height + 1.0)) return;

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
  const int64_t step = (b2 - b1) * 65536 / (a2 - a1);
  // Both end pixels belong to the line: the span runs half a pixel further at
  // each end. The other axis is read at the pixel's centre when it grows
  // along the walk and at the pixel's start when it shrinks.
  const int64_t first = a1 >> 6;
  const int64_t end = (a2 + 64) >> 6;
  const int64_t at = step > 0 ? 32 : 0;
  int64_t b = (b1 << 10) - (step >> 1) + ((((first << 6) + at - (a1 - 32)) * step) >> 6);
  if (steep) {
    for (int64_t a = first; a < end; ++a, b += step) Put(c, b >> 16, a, pixel);
  } else {
    for (int64_t a = first; a < end; ++a, b += step) Put(c, a, b >> 16, pixel);
  }
}

}  // namespace orv
