// The plan's layers and the live ones of the pass: the route, the active
// leg, the plan's waypoints, the map point and the recorded track.
#include "map/RenderPassDetail.h"
#include "map/ZoneWatch.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

void MapRenderer::Pass::DrawRouteLeg(float lat1, float lon1, float lat2, float lon2, double dist, bool batch) {
  double px = proj.X(lon1, lat1), py = proj.Y(lat1);
  BendPoints(lat1, lon1, lat2, lon2, LegLength(lat1, lon1, lat2, lon2, dist), [&](const LatLon& p) {
    const double x = proj.X(p.Lon, p.Lat), y = proj.Y(p.Lat);
    LegLine(px, py, x, y, batch);
    px = x;
    py = y;
  });
  LegLine(px, py, proj.X(lon2, lat2), proj.Y(lat2), batch);
}

void MapRenderer::Pass::DrawRoute() {
  map.SetForeColor(c.Route);
  map.SetDrawStyle(kDrawStyleSolid);
  map.SetDrawWidth(layers.btnJet || layers.btnVictor ? 3 : 2);
  const auto& rows = plan.Waypoints;
  const int last = std::min<int>(plan.LastRow, static_cast<int>(rows.size()) - 1);
  for (int i = 0; i < last; ++i) {
    const WaypointRec& a = rows[static_cast<std::size_t>(i)];
    const WaypointRec& b = rows[static_cast<std::size_t>(i) + 1];
    DrawRouteLeg(a.Lat, a.Lon, b.Lat, b.Lon, -1);
  }
  map.SetDrawWidth(1);
}

void MapRenderer::Pass::DrawActiveLeg() {
  const int row = over->Sim.ActiveLegRow;
  if (row < 1 || row > plan.LastRow || static_cast<std::size_t>(row) >= plan.Waypoints.size()) return;
  const WaypointRec& a = plan.Waypoints[static_cast<std::size_t>(row) - 1];
  const WaypointRec& b = plan.Waypoints[static_cast<std::size_t>(row)];
  map.SetForeColor(c.Route);
  map.SetDrawWidth(5);
  DrawRouteLeg(a.Lat, a.Lon, b.Lat, b.Lon, GcDistance(a.Lat, a.Lon, b.Lat, b.Lon));
  map.SetDrawWidth(1);
  if (label < 1000) {
    Place(static_cast<float>(proj.X(b.Lon, b.Lat)), static_cast<float>(proj.Y(b.Lat)));
    navaid.intRadius = 400;
    navaid.lngColor(c.Route);
    navaid.DrawAsActiveWP();
  }
}

void MapRenderer::Pass::PlanWaypoints() {
  const auto& rows = plan.Waypoints;
  const int last = std::min<int>(plan.LastRow, static_cast<int>(rows.size()) - 1);
  for (int i = 0; i <= last; ++i) {
    const WaypointRec& w = rows[static_cast<std::size_t>(i)];
    if (!InView(v, w.Lat, w.Lon)) continue;
    const float x = static_cast<float>(proj.X(w.Lon, w.Lat)), y = static_cast<float>(proj.Y(w.Lat));
    Place(x, y);
    const std::string_view kind = w.Kind.Trimmed();
    navaid.intRadius = 180;
    navaid.sngLength = 60;
    if (kind == "VOR") {
      navaid.lngColor(c.Vor);
      navaid.DrawAsVorSymbol("1");
    } else if (kind == "NDB") {
      navaid.lngColor(c.Ndb);
      navaid.DrawAsNDB();
    } else if (kind == "Int") {
      navaid.lngColor(c.Int);
      navaid.DrawAsIntersection();
    } else if (kind == "Fix") {
      navaid.lngColor(c.Fix);
      navaid.DrawAsIntersection();
    } else if (kind == "Uwp") {
      navaid.lngColor(c.User);
      navaid.DrawAsIntersection();
    } else {
      navaid.lngColor(c.Ap);
      navaid.DrawAsAirportCircle();
    }
    if (label < 2000) {
      self.text_.assign(w.Code.Trimmed());
      PrintLabel(navaid.sngCenterX + 80, navaid.sngCenterY + 40, kLabelBelowOrSide);
    }
  }
}

// The point set with the right mouse button.
void MapRenderer::Pass::DrawMapPoint() {
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
  map.Circle(proj.X(over->MapPointLon, over->MapPointLat), proj.Y(over->MapPointLat), 60, c.Hilite);
}

void MapRenderer::Pass::DrawTrace() {
  const auto samples = over->Trace;
  if (samples.empty()) return;
  std::size_t step = 80;
  if (label < 50)
    step = 5;
  else if (label < 200)
    step = 10;
  else if (label < 500)
    step = 20;
  else if (label < 1000)
    step = 40;
  map.SetForeColor(c.MovAc);
  map.SetDrawWidth(1);
  std::size_t prev = 0;
  for (std::size_t i = step; i < samples.size() + step; i += step) {
    const std::size_t at = std::min(i, samples.size() - 1);
    const TraceMapSample& a = samples[prev];
    const TraceMapSample& b = samples[at];
    const double x1 = proj.X(a.Lon, a.Lat), y1 = proj.Y(a.Lat), x2 = proj.X(b.Lon, b.Lat), y2 = proj.Y(b.Lat);
    map.Line(x1, y1, x2, y2);
    // A direction mark across the path at each drawn sample.
    const double dx = x2 - x1, dy = y2 - y1, len = std::hypot(dx, dy);
    if (len > 0) map.Line(std::round(x2 - dy / len * 40), std::round(y2 + dx / len * 40),
                          std::round(x2 + dy / len * 40), std::round(y2 - dx / len * 40));
    if (layers.menuShowAlt && b.Altitude > over->TraceAltThreshold) {
      map.SetCurrentX(x2 + 60);
      map.SetCurrentY(y2);
      map.Print(Format(b.Altitude, "0"));
    }
    prev = at;
    if (at == samples.size() - 1) break;
  }
}

void MapRenderer::Pass::DrawViolations() {
  std::vector<int32_t> zones;
  ZonesHolding(db.Shapes, over->Sim.Lat, over->Sim.Lon, zones);
  map.SetForeColor(c.AcInCtrz);
  map.SetDrawWidth(2);
  map.SetFillStyle(kFillTransparent);
  for (int32_t z : zones) PolylineOf(db.Shapes.PointsOf(db.Shapes.Airspaces[static_cast<std::size_t>(z)]), 1000, true);
  map.SetDrawWidth(1);
}

}  // namespace orv
