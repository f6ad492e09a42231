// Small circles and ellipses (airports, navaid symbols) from kept copies of
// QPainter's own pixels: the same sizes, pen and place within a pixel give
// the same pixels anywhere on a picture, and a chart's positions fall on a
// few fractions of a pixel, so the copies stay few and each symbol is a
// handful of pixel writes instead of a trip through the rasteriser.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

#include "mapqt/ThinLine.h"

namespace orv {

class CircleStamps {
public:
  struct Key {
    double Fx, Fy;  // the centre's place within its pixel
    double Rx, Ry;
    int Width;
    bool Pen, Filled;
    bool operator==(const Key&) const = default;
  };

  // Writes the stamp of key with its top left pixel cell at (ix, iy): the
  // outline's pixels in outline, the inside's in inside, clipped to canvas.
  void Stamp(const PixelCanvas& canvas, const Key& key, int ix, int iy, uint32_t outline, uint32_t inside);

private:
  struct Pixel {
    int16_t Dx, Dy;
    bool Outline;
  };
  struct Hash {
    std::size_t operator()(const Key& k) const {
      const std::hash<double> h;
      return h(k.Fx) ^ (h(k.Fy) * 31) ^ (h(k.Rx) * 131) ^ (h(k.Ry) * 521) ^
             static_cast<std::size_t>(k.Width * 8 + k.Pen * 2 + k.Filled);
    }
  };
  static std::vector<Pixel> Make(const Key& key);

  std::unordered_map<Key, std::vector<Pixel>, Hash> stamps_;
};

}  // namespace orv
