// What the live tick draws over the finished map: the aircraft symbol, the
// leg the aircraft is flying with its end waypoint, and the wind arrow. The
// render pass leaves the clean picture behind; these go on top of it on each
// tick, in the map's user units.
#pragma once

#include <cstdint>

#include "map/DrawTarget.h"
#include "map/Viewport.h"

namespace orv {

struct FlightPlan;
struct SimMapState;
class LiveTracking;

struct LiveOverlay {
  bool Aircraft = true;
  float Lat = 0, Lon = 0;
  float TrueHeading = 0;
  // The plan row the aircraft flies to; 0 or less draws no active leg.
  int ActiveRow = 0;
  bool Wind = true;
  int16_t WindDir = 0;
  int16_t WindSpeed = 0;
  Colour AircraftColour = 0xFFFF00;  // MOVAC=
  Colour RouteColour = 0x0000FF;     // ROUTE=
  Colour WindColour = 0x000000;      // WIND=
};

// The aircraft, nose along the heading, centred on its position; about 400
// units long.
void DrawLiveAircraft(DrawTarget& map, const ViewState& view, float lat, float lon, float trueHeading,
                      Colour colour);
// The same outline at another size: unit is a twentieth of the length.
void DrawAircraftShape(DrawTarget& map, const ViewState& view, float lat, float lon, float trueHeading,
                       Colour colour, double unit);
// The leg from the row before activeRow to activeRow with a thick pen, and the
// dotted ring of the active waypoint below a range of 1000 NM.
void DrawLiveActiveLeg(DrawTarget& map, const ViewState& view, const FlightPlan& plan, int activeRow, Colour colour);
// The wind's speed at (80, 50) ("00" and "  kn") and its arrow around (270,
// 350): a line of reach 150 each way along the wind and two barbs at the
// downwind end. Width and colour are restored afterwards.
void DrawWindArrow(DrawTarget& map, int16_t windDir, int16_t windSpeed, Colour colour);
// All three, as the tick draws them: leg, aircraft, wind.
void DrawLiveOverlay(DrawTarget& map, const ViewState& view, const FlightPlan& plan, const LiveOverlay& overlay);

// What the render pass needs of the link (its active leg and status fields)
// and what the overlay draws, from the live tick's state; the colours are
// left for the caller to set from the settings.
SimMapState LiveMapState(const LiveTracking& live);
LiveOverlay LiveOverlayOf(const LiveTracking& live);

}  // namespace orv
