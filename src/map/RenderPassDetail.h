// The parts of the render pass that its files share: the projection of the
// view, the bounds test, the great-circle steps of long legs, and the
// declaration of one run of the pass. Only the pass's own files include it.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "core/Geodesy.h"
#include "map/MapLayer.h"
#include "map/Navaid.h"
#include "map/RenderPass.h"

namespace orv {

// The bounds test on a shape's box: the box must overlap the view. Across the
// antimeridian the east-west test is reduced to the two halves of the view.
inline bool BoxOverlaps(const ViewState& v, float north, float south, float east, float west) {
  if (north < v.MapSouth || south > v.MapNorth) return false;
  if (v.MapWraps) return east > v.MapWest || west < v.MapEast;
  return !(east < v.MapWest || west > v.MapEast);
}

// Points part of the way along the great circle from (lat1, lon1) to
// (lat2, lon2); fraction 0 is the start, 1 the end. The terms that do not
// depend on the fraction are worked out once per leg: a long leg is drawn
// in dozens of steps.
struct GreatCircleSteps {
  GreatCircleSteps(double lat1, double lon1, double lat2, double lon2)
      : lat1(lat1), lon1(lon1), p1(lat1 * kDegToRad), l1(lon1 * kDegToRad), p2(lat2 * kDegToRad),
        l2(lon2 * kDegToRad) {
    d = 2 * std::asin(std::sqrt(std::pow(std::sin((p1 - p2) / 2), 2) +
                                std::cos(p1) * std::cos(p2) * std::pow(std::sin((l1 - l2) / 2), 2)));
    sinD = std::sin(d);
    cosP1 = std::cos(p1), cosL1 = std::cos(l1), sinL1 = std::sin(l1), sinP1 = std::sin(p1);
    cosP2 = std::cos(p2), cosL2 = std::cos(l2), sinL2 = std::sin(l2), sinP2 = std::sin(p2);
  }

  LatLon At(double fraction) const {
    if (d == 0) return {static_cast<float>(lat1), static_cast<float>(lon1)};
    const double a = std::sin((1 - fraction) * d) / sinD;
    const double b = std::sin(fraction * d) / sinD;
    const double x = a * cosP1 * cosL1 + b * cosP2 * cosL2;
    const double y = a * cosP1 * sinL1 + b * cosP2 * sinL2;
    const double z = a * sinP1 + b * sinP2;
    return {static_cast<float>(std::atan2(z, std::sqrt(x * x + y * y)) / kDegToRad),
            static_cast<float>(std::atan2(y, x) / kDegToRad)};
  }

  double lat1, lon1, p1, l1, p2, l2;
  double d = 0, sinD = 0;
  double cosP1 = 0, cosL1 = 0, sinL1 = 0, sinP1 = 0, cosP2 = 0, cosL2 = 0, sinL2 = 0, sinP2 = 0;
};

// The length of a leg for the choice between a straight and a bent line;
// dist < 0 when not known yet. A leg that is short on the flat chart is short
// on the sphere too, and needs no great-circle distance.
inline double LegLength(float lat1, float lon1, float lat2, float lon2, double dist) {
  if (dist >= 0) return dist;
  const double dLat = lat2 - lat1, dLon = LonDelta(lon1, lon2) * std::cos((lat1 + lat2) * (kDegToRad / 2));
  return (dLat * dLat + dLon * dLon) * 3600 < 80.0 * 80.0 ? 0 : GcDistance(lat1, lon1, lat2, lon2);
}

// The points between the ends of a leg longer than kBendLegNm: along the
// great circle in steps of 16 NM (the last piece runs to the true end).
template <typename Sink>
void BendPoints(float lat1, float lon1, float lat2, float lon2, double dist, Sink&& sink) {
  if (dist <= kBendLegNm) return;
  const GreatCircleSteps circle(lat1, lon1, lat2, lon2);
  for (double along = 16; along < dist; along += 16) sink(circle.At(along / dist));
}

// One run of the pass: the scene's parts under short names, the symbol
// drawer and the projection of the view. The layer groups are defined in
// their own files (RenderWorldLayers, RenderAirportLayers,
// RenderNavaidLayers, RenderPlanLayers, RenderChartLayers); Run calls them in
// the fixed order.
struct MapRenderer::Pass {
  Pass(MapRenderer& r, const MapScene& s, DrawTarget& m)
      : self(r),
        caches(r.caches_),
        scene(s),
        v(s.View),
        c(s.Colours),
        layers(s.Layers),
        db(s.Db),
        plan(s.Plan),
        hi(s.Highlight),
        map(m),
        navaid(m, s.View, r.declutter_),
        proj(s.View) {}

  MapRenderer& self;
  RenderCaches& caches;
  const MapScene& scene;
  ViewState& v;
  const Settings& c;
  const MapLayers& layers;
  const NavDatabase& db;
  const FlightPlan& plan;
  MapHighlight hi;
  DrawTarget& map;
  clsNavaid navaid;
  Projector proj;
  MapOverlays noOverlays;
  const MapOverlays* over = nullptr;
  int32_t label = 0;
  double width = 0, height = 0;

  bool Lit(HiliteKind kind, int32_t index) const { return hi.Kind == kind && hi.Index == index; }
  Colour Pick(Colour own, HiliteKind kind, int32_t index) const { return Lit(kind, index) ? c.Hilite : own; }
  bool PlanPresent() const { return plan.LastRow > 0; }

  void Place(float x, float y) {
    navaid.sngCenterX = x;
    navaid.sngCenterY = y;
  }

  // RenderPass.cpp: the order of the layers and the surface's start.
  void Run();
  void BeginSurface();
  void DrawPlace(MapLayerPlace place);
  // Prints the lines of self.text_ (split at CR LF) from place, each line at
  // the same X.
  void PrintLines(LabelPlace place);
  void PrintLabel(float x, float y, int kind);

  // RenderWorldLayers.cpp: world shapes, user shapes, airspaces, MSA.
  void DrawCoastlines();
  void DrawWorldLines();
  void DrawShapes();
  void DrawAirspaces();
  void DrawActiveZone(const ActiveZone& zone);
  // The control zones the aircraft is inside, outlined in ACINCTRZ=.
  void DrawViolations();
  void DrawMsa();
  void PolylineOf(std::span<const ShapePoint> pts, std::size_t maxPoints, bool closed);
  // The first maxPoints points of shape `index` of a set, thinned to the
  // present zoom's pixel.
  std::span<const ShapePoint> Thinned(RenderCaches::ThinnedShapes& set,
                                      std::size_t shapes, std::size_t index, std::span<const ShapePoint> raw,
                                      std::size_t maxPoints);

  // RenderChartLayers.cpp: grid, status texts, compass.
  void DrawLatLong();
  void StatusFields();
  void DrawCompass();

  // RenderAirportLayers.cpp: ground layout, airports, runways, ILS, parking,
  // markers.
  void DrawGround();
  void AirportLoop();
  void DrawRunwayItems(const AirportRec& ap, int32_t apIndex);
  void MarkerLoop();

  // RenderPlanLayers.cpp: the route, the active leg, the plan's waypoints,
  // the map point and the recorded track.
  void DrawRoute();
  void DrawActiveLeg();
  // With batch, the lines go to self.segments_ for FlushSegments.
  void DrawRouteLeg(float lat1, float lon1, float lat2, float lon2, double dist, bool batch = false);
  void LegLine(double x1, double y1, double x2, double y2, bool batch) {
    if (batch)
      self.segments_.push_back({x1, y1, x2, y2});
    else
      map.Line(x1, y1, x2, y2);
  }
  void FlushSegments() {
    if (self.segments_.empty()) return;
    map.Lines(self.segments_);
    self.segments_.clear();
  }
  void PlanWaypoints();
  void DrawMapPoint();
  void DrawTrace();

  // RenderNavaidLayers.cpp: airways and the navaid point loops.
  void AirwayLoop(const std::vector<AirwayRec>& airways, RenderCaches::AirwayPaths& paths, Colour colour,
                  HiliteKind hiliteKind);
  void VorLoop();
  void NdbLoop();
  void IntersectionLoop();
  void FixLoop();
  void UserWaypointLoop();
};

}  // namespace orv
