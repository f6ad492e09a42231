#include "map/ZoneWatch.h"

#include <algorithm>

#include "map/RenderPass.h"

namespace orv {

void ZonesHolding(const AirspaceTables& shapes, float lat, float lon, std::vector<int32_t>& out) {
  out.clear();
  for (std::size_t i = 0; i < shapes.Airspaces.size(); ++i) {
    const AirspaceRec& a = shapes.Airspaces[i];
    if (a.PointCount < 3 || lat > a.North || lat < a.South || lon > a.East || lon < a.West) continue;
    if (AirspaceClassOf(a.Class.Trimmed()) != AirspaceClass::Ctrz) continue;
    // Even-odd rule: count the edges a ray to the east crosses.
    const auto pts = shapes.PointsOf(a);
    bool inside = false;
    for (std::size_t k = 0, j = pts.size() - 1; k < pts.size(); j = k++) {
      const ShapePoint& p = pts[k];
      const ShapePoint& q = pts[j];
      if ((p.Lat > lat) != (q.Lat > lat) &&
          lon < (q.Lon - p.Lon) * (lat - p.Lat) / (q.Lat - p.Lat) + p.Lon)
        inside = !inside;
    }
    if (inside) out.push_back(static_cast<int32_t>(i));
  }
}

bool SegmentsCross(double ax, double ay, double bx, double by, double cx, double cy, double dx, double dy) {
  // The side of P-Q that R lies on: 1 left, -1 right, 0 on the line.
  auto side = [](double px, double py, double qx, double qy, double rx, double ry) {
    const double v = (qx - px) * (ry - py) - (qy - py) * (rx - px);
    return (v > 0) - (v < 0);
  };
  // R, on the line through P and Q, within their box.
  auto within = [](double px, double py, double qx, double qy, double rx, double ry) {
    return std::min(px, qx) <= rx && rx <= std::max(px, qx) && std::min(py, qy) <= ry && ry <= std::max(py, qy);
  };
  const int d1 = side(cx, cy, dx, dy, ax, ay), d2 = side(cx, cy, dx, dy, bx, by);
  const int d3 = side(ax, ay, bx, by, cx, cy), d4 = side(ax, ay, bx, by, dx, dy);
  if (d1 != d2 && d3 != d4 && !(d1 == 0 && d2 == 0)) return true;
  return (d1 == 0 && within(cx, cy, dx, dy, ax, ay)) || (d2 == 0 && within(cx, cy, dx, dy, bx, by)) ||
         (d3 == 0 && within(ax, ay, bx, by, cx, cy)) || (d4 == 0 && within(ax, ay, bx, by, dx, dy));
}

}  // namespace orv
