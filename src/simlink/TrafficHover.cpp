#include "simlink/TrafficHover.h"

#include <cmath>

namespace orv {

namespace {

std::string AltitudeText(float altitude) {
  if (altitude >= 10000) return "FL" + std::to_string(static_cast<int32_t>((altitude + 1) / 100));
  return std::to_string(static_cast<int32_t>(altitude)) + " ft";
}

}  // namespace

void AppendTrafficHoverLines(std::span<const TrafficEntry> entries, std::span<const TrafficExtEntry> ext,
                             const Projector& proj, double x, double y, std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const TrafficEntry& e = entries[i];
    if (e.AtcId[0] == '\0') break;
    if (e.Id == 0) continue;
    if (!(std::fabs(proj.Y(e.Latitude) - y) < kTrafficHoverRadius)) continue;
    if (!(std::fabs(proj.X(e.Longitude, e.Latitude) - x) < kTrafficHoverRadius)) continue;
    std::string id = TrafficAtcId(e);
    while (!id.empty() && id.back() == ' ') id.pop_back();
    while (!id.empty() && id.front() == ' ') id.erase(0, 1);
    lines.push_back(std::move(id));
    lines.push_back(AltitudeText(e.Altitude));
    lines.push_back(std::to_string(e.GroundSpeed) + " kt");
    if (i < ext.size()) {
      std::string route = TrafficRoute(ext[i]);
      if (!route.empty()) lines.push_back(std::move(route));
    }
  }
}

}  // namespace orv
