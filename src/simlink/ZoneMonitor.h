// The control zone monitor: where the plan runs through a control zone. The
// check walks every leg against every control zone near it and marks the
// leg's row in the plan table in red with " [CTRZ!!]"; Control Zone
// Violation then shows, while connected, the zones the aircraft is in and
// the aircraft in the ACINCTRZ= colour (the render pass and the program's
// aircraft layer do that part).
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "database/AirspaceTables.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"

namespace orv {

inline constexpr std::string_view kViolationMark = " [CTRZ!!]";
inline constexpr int32_t kViolationColour = 255;

struct ZoneCheck {
  int16_t ViolationCount = 0;      // rows marked, one for each leg and zone
  std::vector<int> Rows;           // the plan rows marked, in the order found
  std::vector<int32_t> Zones;      // the zone of each, index into Airspaces
};

// The row that ends a leg, on its grid line: the name trimmed and proper-cased
// and the mark, in red.
void MarkRowViolation(WPTable& table, const FlightPlan& plan, int row);

// The check of the plan: for each leg from a row to the next, each control
// zone that the leg can reach (both ends within the leg's length plus the
// zone's size of its centre) is walked edge by edge, closed from the last
// point to the first, in latitude and longitude as plane coordinates; the
// first edge the leg crosses marks the leg's row. Nothing without a plan.
ZoneCheck CheckPlanZones(const FlightPlan& plan, const AirspaceTables& shapes, WPTable& table);
// The marked rows back to their plain name in the grid's colour.
void ClearRowViolations(WPTable& table, const FlightPlan& plan, const ZoneCheck& check);

}  // namespace orv
