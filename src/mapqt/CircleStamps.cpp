#include "mapqt/CircleStamps.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>

namespace orv {

void CircleStamps::Stamp(const PixelCanvas& canvas, const Key& key, int ix, int iy, uint32_t outline,
                         uint32_t inside) {
  auto found = stamps_.find(key);
  if (found == stamps_.end()) {
    if (stamps_.size() > 4096) stamps_.clear();
    found = stamps_.emplace(key, Make(key)).first;
  }
  for (const Pixel& p : found->second) {
    const int x = ix + p.Dx, y = iy + p.Dy;
    if (x >= 0 && x < canvas.Width && y >= 0 && y < canvas.Height)
      canvas.Bits[static_cast<std::ptrdiff_t>(y) * canvas.Stride + x] = p.Outline ? outline : inside;
  }
}

std::vector<CircleStamps::Pixel> CircleStamps::Make(const Key& key) {
  // Drawn once by QPainter with the target's pen, in two marker colours.
  const int width = key.Width;
  const int margin = static_cast<int>(std::ceil(std::max(key.Rx, key.Ry))) + width + 3;
  QImage scratch(2 * margin + 1, 2 * margin + 1, QImage::Format_RGB32);
  scratch.fill(Qt::white);
  {
    QPainter p(&scratch);
    p.setRenderHint(QPainter::Antialiasing, false);
    if (key.Pen) {
      QPen outline(QColor(255, 0, 0));
      outline.setWidth(width);
      if (width > 1) {
        outline.setCapStyle(Qt::RoundCap);
        outline.setJoinStyle(width == 2 ? Qt::BevelJoin : Qt::RoundJoin);
      }
      p.setPen(outline);
    } else {
      p.setPen(Qt::NoPen);
    }
    p.setBrush(key.Filled ? QBrush(QColor(0, 0, 255)) : QBrush(Qt::NoBrush));
    const double cx = margin + key.Fx, cy = margin + key.Fy;
    p.drawEllipse(QRectF(cx - key.Rx, cy - key.Ry, 2 * key.Rx, 2 * key.Ry));
  }
  std::vector<Pixel> out;
  for (int y = 0; y < scratch.height(); ++y) {
    for (int x = 0; x < scratch.width(); ++x) {
      const QRgb c = scratch.pixel(x, y);
      if (c == qRgb(255, 0, 0)) out.push_back({static_cast<int16_t>(x - margin), static_cast<int16_t>(y - margin), true});
      if (c == qRgb(0, 0, 255)) out.push_back({static_cast<int16_t>(x - margin), static_cast<int16_t>(y - margin), false});
    }
  }
  return out;
}

}  // namespace orv
