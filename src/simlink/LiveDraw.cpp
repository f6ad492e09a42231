#include "simlink/LiveDraw.h"

#include <array>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "map/RenderPass.h"
#include "planning/FlightPlan.h"
#include "simlink/LiveTracking.h"

namespace orv {

namespace {

// The aircraft's outline, nose up, in units of 20: fuselage, wings, tail.
constexpr std::array<DrawPoint, 16> kShape = {{
    {0, -10}, {1, -8}, {1, -2}, {9, 2}, {9, 3}, {1, 1}, {1, 6}, {4, 8},
    {4, 9}, {0, 8}, {-4, 9}, {-4, 8}, {-1, 6}, {-1, 1}, {-9, 3}, {-9, 2},
}};
constexpr double kShapeUnit = 20;

struct PenKeeper {
  explicit PenKeeper(DrawTarget& t)
      : target(t), width(t.DrawWidth()), colour(t.ForeColor()), fill(t.FillColor()), fillStyle(t.FillStyle()),
        style(t.DrawStyle()) {}
  ~PenKeeper() {
    target.SetDrawWidth(width);
    target.SetForeColor(colour);
    target.SetFillColor(fill);
    target.SetFillStyle(fillStyle);
    target.SetDrawStyle(style);
  }
  DrawTarget& target;
  int16_t width;
  Colour colour, fill;
  int16_t fillStyle, style;
};

}  // namespace

void DrawLiveAircraft(DrawTarget& map, const ViewState& view, float lat, float lon, float trueHeading,
                      Colour colour) {
  DrawAircraftShape(map, view, lat, lon, trueHeading, colour, kShapeUnit);
}

void DrawAircraftShape(DrawTarget& map, const ViewState& view, float lat, float lon, float trueHeading,
                       Colour colour, double unit) {
  PenKeeper keep(map);
  const double cx = MapXFromLon(view, lon, lat), cy = MapYFromLat(view, lat);
  const double a = DegToRad(trueHeading), s = std::sin(a), c = std::cos(a);
  std::array<DrawPoint, kShape.size()> pts;
  for (size_t i = 0; i < kShape.size(); ++i) {
    const double x = kShape[i].X * unit, y = kShape[i].Y * unit;
    pts[i] = {static_cast<float>(cx + x * c - y * s), static_cast<float>(cy + x * s + y * c)};
  }
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  map.SetForeColor(colour);
  map.SetFillColor(colour);
  map.SetFillStyle(kFillSolid);
  map.Polygon(pts);
}

void DrawLiveActiveLeg(DrawTarget& map, const ViewState& view, const FlightPlan& plan, int activeRow, Colour colour) {
  if (activeRow < 1 || activeRow > plan.LastRow || activeRow > kMaxPlanRow) return;
  PenKeeper keep(map);
  const WaypointRec& a = plan.Waypoints[static_cast<size_t>(activeRow) - 1];
  const WaypointRec& b = plan.Waypoints[static_cast<size_t>(activeRow)];
  map.SetForeColor(colour);
  map.SetDrawWidth(5);
  map.Line(MapXFromLon(view, a.Lon, a.Lat), MapYFromLat(view, a.Lat), MapXFromLon(view, b.Lon, b.Lat),
           MapYFromLat(view, b.Lat));
  if (CurrentLabel(view) < 1000) {
    map.SetDrawWidth(1);
    map.SetDrawStyle(kDrawStyleDot);
    map.SetFillStyle(kFillTransparent);
    map.Circle(MapXFromLon(view, b.Lon, b.Lat), MapYFromLat(view, b.Lat), 200);
  }
}

void DrawWindArrow(DrawTarget& map, int16_t windDir, int16_t windSpeed, Colour colour) {
  PenKeeper keep(map);
  map.SetDrawWidth(2);
  map.SetForeColor(colour);
  map.SetCurrentX(80);
  map.SetCurrentY(50);
  map.Print(Format(windSpeed, "00") + "  kn");
  constexpr double cx = 270, cy = 350, reach = 150;
  auto along = [](double deg, double r, double& x, double& y) {
    x = r * std::sin(DegToRad(deg));
    y = -r * std::cos(DegToRad(deg));
  };
  double tx, ty, hx, hy;
  along(windDir - 180.0, reach, tx, ty);
  along(windDir, reach, hx, hy);
  tx += cx, ty += cy, hx += cx, hy += cy;
  map.Line(tx, ty, hx, hy);
  for (double side : {45.0, -45.0}) {
    double bx, by;
    along(windDir + side, reach, bx, by);
    map.Line(tx, ty, tx + bx, ty + by);
  }
}

void DrawLiveOverlay(DrawTarget& map, const ViewState& view, const FlightPlan& plan, const LiveOverlay& o) {
  if (plan.LastRow >= 1) DrawLiveActiveLeg(map, view, plan, o.ActiveRow, o.RouteColour);
  if (o.Aircraft) DrawLiveAircraft(map, view, o.Lat, o.Lon, o.TrueHeading, o.AircraftColour);
  if (o.Wind) DrawWindArrow(map, o.WindDir, o.WindSpeed, o.WindColour);
}

SimMapState LiveMapState(const LiveTracking& live) {
  SimMapState s;
  s.Connected = live.Connected();
  s.MagVar = live.Snap.SimMagVar;
  s.Lat = live.Snap.Latitude;
  s.Lon = live.Snap.Longitude;
  s.ActiveLegRow = live.State().ActiveRow;
  return s;
}

LiveOverlay LiveOverlayOf(const LiveTracking& live) {
  LiveOverlay o;
  o.Aircraft = live.State().TrackingActive;
  o.Lat = live.Snap.Latitude;
  o.Lon = live.Snap.Longitude;
  o.TrueHeading = live.Snap.TrueHeading;
  o.ActiveRow = live.Connected() ? live.State().ActiveRow : 0;
  o.Wind = live.Connected() && !live.Menus.MenuReplay;
  o.WindDir = live.Snap.WindDir;
  o.WindSpeed = live.Snap.WindSpeed;
  return o;
}

}  // namespace orv
