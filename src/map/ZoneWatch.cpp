#include "map/ZoneWatch.h"

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

}  // namespace orv
