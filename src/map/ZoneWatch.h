// The control zone violation watch of the map: the zones the aircraft is in.
// The render pass draws their outlines in the "AC in Ctrz" colour when
// Control Zone Violation is checked and the simulator is connected.
#pragma once

#include <cstdint>
#include <vector>

#include "database/AirspaceTables.h"

namespace orv {

// The indexes of the control zones (AirspaceClassOf Ctrz) whose outline
// holds the position, in table order. Latitude and longitude are taken as
// plane coordinates, as the zone check of the plan takes them; a point on
// the outline may count either way.
void ZonesHolding(const AirspaceTables& shapes, float lat, float lon, std::vector<int32_t>& out);

// Whether the segments A-B and C-D have a point in common, in the plane: a
// segment that only touches the other, ends on it or lies along it counts.
bool SegmentsCross(double ax, double ay, double bx, double by, double cx, double cy, double dx, double dy);

}  // namespace orv
