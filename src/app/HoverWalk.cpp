#include "app/HoverWalk.h"

#include <cmath>

#include "map/HoverText.h"
#include "map/MapLayer.h"
#include "online/OnlineDraw.h"
#include "simlink/TrafficHover.h"

namespace orv {

namespace {

// The pointer's test, Y first: it costs no longitude difference.
struct Pointer {
  const Projector& proj;
  double x, y;
  bool Near(float lat, float lon, double radius) const {
    return std::fabs(proj.Y(lat) - y) < radius && std::fabs(proj.X(lon, lat) - x) < radius;
  }
};

// Even-odd test of a position against a closed outline in degrees.
bool InsideOutline(std::span<const ShapePoint> points, float lat, float lon) {
  bool inside = false;
  const std::size_t n = points.size();
  for (std::size_t i = 0, j = n - 1; i < n; j = i++) {
    const ShapePoint& a = points[i];
    const ShapePoint& b = points[j];
    if ((a.Lat > lat) != (b.Lat > lat) &&
        lon < (b.Lon - a.Lon) * (lat - a.Lat) / (b.Lat - a.Lat) + a.Lon)
      inside = !inside;
  }
  return inside;
}

void Append(std::vector<std::string>& lines, std::vector<std::string>&& more) {
  for (std::string& l : more) lines.push_back(std::move(l));
}

}  // namespace

void HoverWalk(const ProgramState& s, const HoverTraffic& traffic, double x, double y, HoverFind& out,
               MapHighlight& highlight) {
  out.Lines.clear();
  out.Zones.clear();
  out.Sector = -1;
  std::vector<std::string>& lines = out.Lines;
  const ViewState& v = s.View;
  const MapLayers& layers = s.Layers;
  const NavDatabase& db = s.Db;
  const bool decSec = s.Core.Config.DecSec != 0;
  const Projector proj(v);
  const Pointer at{proj, x, y};
  auto hilite = [&](HiliteKind kind, std::size_t index) {
    highlight.Kind = kind;
    highlight.Index = static_cast<int32_t>(index);
    highlight.SubIndex = -1;
  };

  // 1. Airports.
  const std::vector<AirportRec>& airports = db.Airports.Airports;
  if (layers.btnAP)
    for (std::size_t i = 0; i < airports.size(); ++i)
      if (at.Near(airports[i].Lat, airports[i].Lon, kHoverRadius) && IsAirportSlotUsed(airports[i])) {
        AppendAirportLines(airports[i], s.Core, lines);
        hilite(kHiliteAirport, i);
      }

  // 2 and 3. The controllers of the network shown.
  const OnlineSession& online = s.Online;
  if (online.ShowControllers && online.Data.Network != OnlineNetwork::None) {
    const std::vector<OnlineSector>& sectors =
        online.Data.Network == OnlineNetwork::Ivao ? online.IvaoSectors : online.VatsimSectors;
    Append(lines, StationHoverLines(online.Data, v, x, y, out.Sector, &sectors));
  }

  // 4 to 8. The navaids.
  const NavaidTables& n = db.Navaids;
  if (layers.btnVor)
    for (std::size_t i = 0; i < n.Vors.size(); ++i)
      if (at.Near(n.Vors[i].Lat, n.Vors[i].Lon, kHoverRadius)) {
        AppendVorLines(n.Vors[i], decSec, lines);
        hilite(kHiliteVor, i);
      }
  if (layers.btnNdb)
    for (std::size_t i = 0; i < n.Ndbs.size(); ++i)
      if (at.Near(n.Ndbs[i].Lat, n.Ndbs[i].Lon, kHoverRadius)) {
        AppendNdbLines(n.Ndbs[i], decSec, lines);
        hilite(kHiliteNdb, i);
      }
  if (layers.btnInter || layers.btnVictor || layers.btnJet)
    for (std::size_t i = 0; i < n.Intersections.size(); ++i) {
      const IntersectionRec& r = n.Intersections[i];
      if (at.Near(r.Lat, r.Lon, kHoverRadius) && !r.Ident.IsEmptySlot()) {
        AppendIntersectionLines(n, static_cast<int32_t>(i), decSec, lines);
        hilite(kHiliteIntersection, i);
      }
    }
  if (layers.btnFix)
    for (std::size_t i = 0; i < n.Fixes.size(); ++i)
      if (at.Near(n.Fixes[i].Lat, n.Fixes[i].Lon, kHoverRadius)) {
        AppendFixLines(n.Fixes[i], decSec, lines);
        hilite(kHiliteFix, i);
      }
  if (layers.btnUser)
    for (const UserWaypointRec& w : db.UserWaypoints)
      if (at.Near(w.Lat, w.Lon, kHoverRadius)) AppendUserWaypointLines(w, decSec, lines);

  // 9. The plan's rows.
  const FlightPlan& plan = s.Plan;
  if (plan.LastRow > 0)
    for (int32_t r = 0; r <= plan.LastRow && r <= kMaxPlanRow; ++r) {
      const WaypointRec& w = plan.Waypoints[static_cast<std::size_t>(r)];
      if (at.Near(w.Lat, w.Lon, kHoverRadius)) lines.push_back(PlanRowHoverLine(w, plan.CruiseFL));
    }

  // 10 and 11. Tracks and weather.
  if (online.ShowNat) Append(lines, TrackHoverLines(online.NatTracks, v, x, y));
  if (online.ShowPacific) Append(lines, TrackHoverLines(online.PacificTracks, v, x, y));
  if (online.ShowWeather) Append(lines, WeatherHoverLines(online.Metar, v, x, y));

  // 12. Airspaces with a name that hold the pointer.
  const int32_t label = CurrentLabel(v);
  const AirspaceTables& shapes = db.Shapes;
  const float lat = MapLatFromY(v, y);
  const float lon = MapLonFromX(v, x, lat);
  for (std::size_t i = 0; i < shapes.Airspaces.size(); ++i) {
    const AirspaceRec& a = shapes.Airspaces[i];
    if (a.PointCount < 3 || !(lat <= a.North && lat >= a.South && lon <= a.East && lon >= a.West)) continue;
    if (a.Name.Trimmed().empty() || !AirspaceClassShown(layers, AirspaceClassOf(a.Class.View()), label)) continue;
    if (!InsideOutline(shapes.PointsOf(a), lat, lon)) continue;
    AppendAirspaceLines(a, lines);
    out.Zones.push_back(static_cast<int32_t>(i));
  }

  // 13. Parking positions, where the map draws them.
  if (layers.btnAP && label < 10)
    for (const AirportRec& ap : airports)
      for (const ParkingRec& p : ap.Parking)
        if (at.Near(p.Lat, p.Lon, kParkingHoverRadius)) lines.push_back(ParkingHoverLine(p, s.Core.ParkingNames));

  // 14. AI traffic.
  if (s.Window.btnAI) {
    AppendTrafficHoverLines(traffic.Air, traffic.AirExt, proj, x, y, lines);
    AppendTrafficHoverLines(traffic.Ground, traffic.GroundExt, proj, x, y, lines);
  }

  // 15. The network's aircraft.
  if (online.ShowPilots && online.Data.Network != OnlineNetwork::None)
    Append(lines, PilotHoverLines(online.Data, v, x, y, OnlineStyleFromSettings(s.Core.Config)));
}

}  // namespace orv
