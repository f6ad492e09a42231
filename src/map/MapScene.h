// The inputs of the render pass (MapScene): the view, the colours, the layer
// switches, the database, the plan, the highlighted object and the inputs of
// the live and online layers; and the fixed sizes the pass draws with.
#pragma once

#include <cstdint>
#include <span>

#include "core/Settings.h"
#include "database/FrmFind.h"
#include "database/NavDatabase.h"
#include "map/MapLayers.h"
#include "map/Viewport.h"
#include "planning/FlightPlan.h"

namespace orv {

class MapLayerRegistry;

// ------------------------------------------------------------ highlight

// The kinds are HiliteKind (FrmFind.h): kHiliteNone, then the search's
// kinds kHiliteAirport (1) to kHiliteJet (8).

// The object the hover logic or a search selected. Index is the array index
// of the kind (the airway segment for 7 and 8); an ILS is named by its
// airport in Index and its place in the airport's Ils list in SubIndex.
struct MapHighlight {
  HiliteKind Kind = kHiliteNone;
  int32_t Index = -1;
  int32_t SubIndex = -1;
};

// ------------------------------------------------------------ live layers
// Inputs of layers that later modules own. Empty by default: the pass then
// draws nothing for them.

struct SimMapState {
  bool Connected = false;
  float MagVar = 0;     // variation at the aircraft
  float Lat = 0;
  float Lon = 0;
  int32_t ActiveLegRow = -1;  // the plan row the aircraft flies to
};

// One entry of the control zone monitor's list of active zones.
struct ActiveZone {
  int32_t AirspaceIndex = -1;
  bool AircraftInside = false;
};

// One recorded sample of the track.
struct TraceMapSample {
  float Lat = 0;
  float Lon = 0;
  float Altitude = 0;  // feet
};

struct MapOverlays {
  SimMapState Sim;
  std::span<const ActiveZone> ActiveZones;
  std::span<const TraceMapSample> Trace;
  bool ReplayMode = false;
  int32_t TraceAltThreshold = 1000;  // TRACEALT: altitudes are written above it
  // The point set with the right mouse button; -500 when none.
  float MapPointLat = -500;
  float MapPointLon = 0;
  // Online traffic, weather, oceanic tracks and recorded holdings are drawn
  // by their modules' layers at their places (MapLayer.h).
};

// ------------------------------------------------------------ the pass

struct MapScene {
  ViewState& View;  // the head of the pass clamps CntrLat and sets the bounds
  const Settings& Colours;
  const MapLayers& Layers;
  const NavDatabase& Db;
  const FlightPlan& Plan;
  MapHighlight Highlight{};
  const MapOverlays* Overlays = nullptr;  // nullptr: all live layers empty
  const MapLayerRegistry* Registry = nullptr;  // the other modules' layers; nullptr: none
};

// WorldShapeRec kinds the pass tells apart.
inline constexpr uint8_t kWorldLakeKind = 2;   // worldpolygon.bin: a lake
inline constexpr uint8_t kWorldRiverKind = 2;  // worldline.bin: a river

// Radius of the ILS markers by kind, and of the map point circle.
inline constexpr int16_t kOuterMarkerRadius = 120;
inline constexpr int16_t kMiddleMarkerRadius = 90;
inline constexpr int16_t kInnerMarkerRadius = 60;
// The length of an ILS feather, in NM on the ground.
inline constexpr double kIlsFeatherNm = 10.0;
// A leg longer than this many NM is drawn bent along its great circle.
inline constexpr double kBendLegNm = 100.0;
// At a label of 200 or more a VOR is its symbol below this label, a square above.
inline constexpr int32_t kVorSymbolLimit = 400;

// Metres per degree of latitude, for runway sizes.
inline constexpr double kMetresPerDegree = 111130.556;
// A runway length in feet as surface units: whole metres (cut), at Scaling.
double RunwayUnits(double feet, int32_t scaling);

}  // namespace orv
