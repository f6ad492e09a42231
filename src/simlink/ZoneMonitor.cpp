#include "simlink/ZoneMonitor.h"

#include <algorithm>
#include <string>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "map/MapLayers.h"
#include "map/ZoneWatch.h"

namespace orv {

void MarkRowViolation(WPTable& table, const FlightPlan& plan, int row) {
  if (row < 0 || row > plan.LastRow || row > kMaxPlanRow || row + 1 >= table.Rows()) return;
  GridCell& cell = table.Cell(row + 1, WPTable::kName);
  cell.ForeColor = kViolationColour;
  cell.Text = ProperCase(plan.Waypoints[static_cast<std::size_t>(row)].Name.Trimmed()) + std::string(kViolationMark);
}

void ClearRowViolations(WPTable& table, const FlightPlan& plan, const ZoneCheck& check) {
  for (int row : check.Rows) {
    if (row < 0 || row > plan.LastRow || row > kMaxPlanRow || row + 1 >= table.Rows()) continue;
    GridCell& cell = table.Cell(row + 1, WPTable::kName);
    cell.ForeColor = kGridTextColour;
    cell.Text = NameCellText(plan.Waypoints[static_cast<std::size_t>(row)], table.ShowCoordinates, table.DecimalSeconds);
  }
}

ZoneCheck CheckPlanZones(const FlightPlan& plan, const AirspaceTables& shapes, WPTable& table) {
  ZoneCheck check;
  const int last = std::min<int>(plan.LastRow, kMaxPlanRow);
  if (last < 1) return check;
  for (int row = 0; row < last; ++row) {
    const WaypointRec& a = plan.Waypoints[static_cast<std::size_t>(row)];
    const WaypointRec& b = plan.Waypoints[static_cast<std::size_t>(row) + 1];
    const double leg = RhumbDistance(a.Lat, a.Lon, b.Lat, b.Lon);
    for (std::size_t z = 0; z < shapes.Airspaces.size(); ++z) {
      const AirspaceRec& zone = shapes.Airspaces[z];
      if (zone.PointCount < 2 || AirspaceClassOf(zone.Class.Trimmed()) != AirspaceClass::Ctrz) continue;
      // A leg reaches a zone only if both its ends lie within the leg's
      // length plus the zone's half diagonal of the zone's centre.
      const float cLat = (zone.North + zone.South) / 2, cLon = (zone.East + zone.West) / 2;
      const double reach = leg + std::max(RhumbDistance(cLat, cLon, zone.North, zone.East),
                                          RhumbDistance(cLat, cLon, zone.South, zone.West));
      if (RhumbDistance(a.Lat, a.Lon, cLat, cLon) > reach || RhumbDistance(b.Lat, b.Lon, cLat, cLon) > reach) continue;
      const auto pts = shapes.PointsOf(zone);
      for (std::size_t k = 0; k < pts.size(); ++k) {
        const ShapePoint& p = pts[k];
        const ShapePoint& q = pts[k + 1 < pts.size() ? k + 1 : 0];
        if (!SegmentsCross(a.Lon, a.Lat, b.Lon, b.Lat, p.Lon, p.Lat, q.Lon, q.Lat)) continue;
        ++check.ViolationCount;
        check.Rows.push_back(row + 1);
        check.Zones.push_back(static_cast<int32_t>(z));
        MarkRowViolation(table, plan, row + 1);
        break;
      }
    }
  }
  return check;
}

}  // namespace orv
