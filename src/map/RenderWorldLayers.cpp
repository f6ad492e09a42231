// The background of the chart: the world polygons and lines, the user's
// shapes, the airspaces with the active control zones, and the MSA boxes.
#include "map/RenderPassDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

void MapRenderer::Pass::PolylineOf(std::span<const ShapePoint> pts, std::size_t maxPoints, bool closed) {
  const std::size_t n = std::min(pts.size(), maxPoints);
  if (n < 2) return;
  std::vector<DrawPoint>& buf = self.points_;
  if (buf.size() < n) buf.resize(n);
  // A shape across the meridian opposite the centre stays in one piece: past
  // it, longitudes go on beyond 180 degrees from the centre rather than
  // jumping to the other edge of the world, which would draw a line across
  // the whole chart.
  float offset = 0, last = 0;
  for (std::size_t i = 0; i < n; ++i) {
    float delta = LonDelta(proj.cntrLon, pts[i].Lon) + offset;
    if (i > 0 && delta - last > 180.0f) {
      offset -= 360.0f;
      delta -= 360.0f;
    } else if (i > 0 && delta - last < -180.0f) {
      offset += 360.0f;
      delta += 360.0f;
    }
    last = delta;
    buf[i] = {static_cast<float>(proj.XOfDelta(delta, pts[i].Lat)), static_cast<float>(proj.Y(pts[i].Lat))};
  }
  if (closed)
    map.Polygon(buf.data(), n);
  else
    map.Polyline(buf.data(), n);
}

std::span<const ShapePoint> MapRenderer::Pass::Thinned(RenderCaches::ThinnedShapes& set,
                                                       std::size_t shapes,
                                                       std::size_t index, std::span<const ShapePoint> raw,
                                                       std::size_t maxPoints) {
  // A pixel in degrees of latitude; a degree of longitude is never longer on
  // the chart, so the same cell is at most a pixel wide there too.
  const double cell = map.ScaleWidth() / map.PixelWidth() / static_cast<double>(v.Scaling);
  return caches.Thinned(set, shapes, index, raw, maxPoints, cell);
}

void MapRenderer::Pass::DrawCoastlines() {
  map.SetForeColor(c.Coast);
  map.SetFillColor(c.Land);
  map.SetFillStyle(c.Fill ? kFillSolid : kFillTransparent);
  map.SetDrawWidth(1);
  const AirspaceTables& s = db.Shapes;
  // The land first, then the lakes over it.
  for (int lakes = 0; lakes < 2; ++lakes) {
    if (lakes) {
      map.SetForeColor(c.River);
      map.SetFillColor(c.River);
    }
    for (std::size_t i = 0; i < s.WorldPolygons.size(); ++i) {
      const WorldShapeRec& shape = s.WorldPolygons[i];
      if ((shape.Kind == kWorldLakeKind) != (lakes == 1)) continue;
      if (!BoxOverlaps(v, shape.North, shape.South, shape.East, shape.West)) continue;
      PolylineOf(Thinned(caches.worldPolygonsThin, s.WorldPolygons.size(), i,
                         s.PolygonPointsOf(shape), SIZE_MAX),
                 SIZE_MAX, true);
    }
  }
  map.SetFillStyle(kFillTransparent);
  DrawWorldLines();
}

void MapRenderer::Pass::DrawWorldLines() {
  map.SetDrawWidth(label < 2000 && label > 50 ? 2 : 1);
  const AirspaceTables& s = db.Shapes;
  for (std::size_t i = 0; i < s.WorldLines.size(); ++i) {
    const WorldShapeRec& shape = s.WorldLines[i];
    if (!BoxOverlaps(v, shape.North, shape.South, shape.East, shape.West)) continue;
    map.SetForeColor(shape.Kind == kWorldRiverKind ? c.River : c.Coast);
    PolylineOf(Thinned(caches.worldLinesThin, s.WorldLines.size(), i, s.LinePointsOf(shape),
                       SIZE_MAX),
               SIZE_MAX, false);
  }
  map.SetDrawWidth(1);
}

void MapRenderer::Pass::DrawShapes() {
  const AirspaceTables& s = db.Shapes;
  constexpr std::size_t kMaxRun = 600;
  constexpr float kMargin = 0.5f;
  std::vector<DrawPoint>& buf = self.points_;
  if (buf.size() < kMaxRun) buf.resize(kMaxRun);
  for (const UserObjectRec& obj : s.UserObjects) {
    if (!BoxOverlaps(v, obj.North, obj.South, obj.East, obj.West)) continue;
    const bool filled = obj.Kind == kUserObjectFilledPolygon;
    map.SetDrawStyle(kDrawStyleSolid);
    map.SetDrawWidth(obj.Style);
    map.SetForeColor(obj.Color);
    map.SetFillColor(obj.Color);
    map.SetFillStyle(filled ? kFillSolid : kFillTransparent);
    std::size_t run = 0;
    auto flush = [&] {
      if (run >= 2) {
        if (filled)
          map.Polygon(buf.data(), run);
        else
          map.Polyline(buf.data(), run);
      }
      run = 0;
    };
    for (const ShapePoint& p : s.PointsOf(obj)) {
      const bool kept = p.Lat < v.MapNorth + kMargin && p.Lat > v.MapSouth - kMargin &&
                        (v.MapWraps ? (p.Lon > v.MapWest - kMargin || p.Lon < v.MapEast + kMargin)
                                    : (p.Lon > v.MapWest - kMargin && p.Lon < v.MapEast + kMargin));
      if (!kept) {
        flush();
        continue;
      }
      if (run == kMaxRun) flush();
      buf[run++] = {static_cast<float>(proj.X(p.Lon, p.Lat)), static_cast<float>(proj.Y(p.Lat))};
    }
    flush();
  }
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
}

void MapRenderer::Pass::DrawAirspaces() {
  const AirspaceTables& s = db.Shapes;
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  map.SetFillStyle(kFillTransparent);
  const std::vector<AirspaceClass>& classes = caches.AirspaceClasses(s);
  for (std::size_t i = 0; i < s.Airspaces.size(); ++i) {
    const AirspaceRec& a = s.Airspaces[i];
    if (a.PointCount <= 0) continue;
    if (!BoxOverlaps(v, a.North, a.South, a.East, a.West)) continue;
    const AirspaceClass cls = classes[i];
    if (!AirspaceClassShown(layers, cls, label)) continue;
    Colour colour = c.Air1;
    switch (cls) {
      case AirspaceClass::Ctrz: colour = c.Ctrz; break;
      case AirspaceClass::ARTCC:
      case AirspaceClass::ACC:
      case AirspaceClass::FIR:
      case AirspaceClass::OCA:
      case AirspaceClass::UIR: colour = c.Air2; break;
      default: break;
    }
    map.SetForeColor(colour);
    PolylineOf(Thinned(caches.airspacesThin, s.Airspaces.size(), i, s.PointsOf(a), 5000), SIZE_MAX,
               false);
  }
}

void MapRenderer::Pass::DrawActiveZone(const ActiveZone& zone) {
  const auto& list = db.Shapes.Airspaces;
  if (zone.AirspaceIndex < 0 || static_cast<std::size_t>(zone.AirspaceIndex) >= list.size()) return;
  const AirspaceRec& a = list[static_cast<std::size_t>(zone.AirspaceIndex)];
  map.SetForeColor(zone.AircraftInside ? c.AcAtCtrz : c.Ctrz);
  map.SetDrawWidth(1);
  PolylineOf(db.Shapes.PointsOf(a), 1000, false);
}

void MapRenderer::Pass::DrawMsa() {
  const std::string savedFont = map.FontName();
  const float savedSize = map.FontSize();
  map.SetFontName("Tahoma");
  map.SetForeColor(c.Msa);
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
  for (const MsaRec& m : db.Shapes.MsaCells) {
    const float north = m.FloatValue(0), west = m.FloatValue(1), south = m.FloatValue(2), east = m.FloatValue(3);
    if (!BoxOverlaps(v, north, south, east, west)) continue;
    const double x1 = proj.X(west, north), y1 = proj.Y(north);
    const double x2 = proj.X(east, south), y2 = proj.Y(south);
    map.Line(x1, y1, x2, y2, LineShape::Box);
    // Hundreds of feet: the thousands large, the last hundred small.
    const int32_t hundreds = CLng(m.FloatValue(4) / 100.0);
    if (hundreds <= 0) continue;
    const std::string big = std::to_string(hundreds / 10);
    const std::string small = std::to_string(hundreds % 10);
    map.SetFontSize(14);
    const double bigWidth = map.TextWidth(big), bigHeight = map.TextHeight(big);
    map.SetFontSize(8);
    const double smallWidth = map.TextWidth(small);
    const double x = (x1 + x2) / 2 - (bigWidth + smallWidth) / 2, y = (y1 + y2) / 2 - bigHeight / 2;
    map.SetFontSize(14);
    map.SetCurrentX(x);
    map.SetCurrentY(y);
    map.Print(big, PrintEnd::StayOnLine);
    map.SetFontSize(8);
    map.Print(small, PrintEnd::StayOnLine);
  }
  map.SetFontName(savedFont);
  map.SetFontSize(savedSize);
}

}  // namespace orv
