// DrawMap: the render pass that paints the whole chart from the loaded arrays
// onto the map surface in one fixed order (later layers cover earlier ones),
// then keeps a clean copy in the back buffer for the live routines, which
// draw the aircraft and traffic over it and restore the background from it.
//
// The pass is a function of its inputs (MapScene): the view, the colours of
// the settings, the layer switches, the database, the plan, and the inputs of
// the live and online layers, which are empty until their modules fill them.
// A MapRenderer holds the scratch buffers that the pass reuses from one run
// to the next, so that a pass allocates nothing per drawn object.
//
// Field meanings the database manager and the pass agree on (the files keep
// them as plain stored values):
//   IlsRec::Values[0]  frequency in MHz
//   IlsRec::Values[1]  true course of the localizer; 0 or out of range: the
//                      runway end's heading
//   IlsRec::Values[2]  glide slope angle; 0 for a localizer without glide slope
//   VorRec::Value      radius of the compass rose in NM
//   MsaRec             FloatValue(0..3) the cell's North, West, South, East,
//                      FloatValue(4) the minimum safe altitude in feet
//   ParkingRec::Value  heading of the parking position in whole degrees
//   WorldShapeRec::Kind in worldpolygon.bin: 2 a lake (drawn in RIVER= after
//                      the land); in worldline.bin: 2 a river
//   AirspaceRec::Class the class text, see AirspaceClassOf
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Geodesy.h"
#include "core/Settings.h"
#include "database/FrmFind.h"
#include "database/NavDatabase.h"
#include "map/Declutter.h"
#include "map/DrawTarget.h"
#include "map/Viewport.h"
#include "planning/FlightPlan.h"

namespace orv {

// ------------------------------------------------------------ layer switches

// The map's toggles. Paired toggles carry the toolbar button's name (the
// button's value is the truth, the menu entry copies it); the others carry
// the menu entry's name. Round World lives in ViewState, as the projection
// reads it.
struct MapLayers {
  bool btnAP = true;       // menuAirport: airports and everything on them
  bool btnVor = true;      // MenuVOR
  bool btnNdb = true;      // MenuNDB
  bool btnIls = true;      // MenuILS
  bool btnInter = false;   // MenuIntersection
  bool btnFix = false;     // MenuGPSFix
  bool btnUser = true;     // MenuUserWP
  bool btnJet = false;     // MenuJet
  bool btnVictor = false;  // MenuVictor
  bool btnMsa = false;     // MenuMSA
  bool btnMap = true;      // MenuCoastlines

  // Airspace classes; three of them have buttons.
  bool MenuADA = true;
  bool MenuADIZ = true;
  bool menuARTCC = true;
  bool MenuACC = true;
  bool MenuBZ = true;
  bool btnAir1 = true;     // MenuCTA
  bool btnCtrz = true;     // MenuCtrz
  bool btnAir2 = true;     // menuFIR
  bool MenuOCA = true;
  bool menuRA = true;
  bool menuTCA = true;
  bool menuUIR = true;

  bool MenuCompass = true;
  bool MenuLatLong = true;

  // Parts of the labels (btnFreq, btnIcao, btnName).
  bool ShowFreq = false;
  bool ShowIcao = true;
  bool ShowName = false;

  bool MenuTraceActive = false;  // "Show Track"
  bool menuShowAlt = false;      // altitudes beside the track
  bool MenuViolation = false;    // control zone violation watch
};

// The switch a name stands for: a control name ("MenuVOR", "btnVor",
// "menuRoundWorld" is not here), a menu caption without its "&"
// ("VOR", "Airports", "Control Zones", "LatLong"), or a button name; all
// case-insensitive. nullptr for an unknown name.
bool* FindLayerSwitch(MapLayers& layers, std::string_view name);
// Every name FindLayerSwitch knows, for help texts.
std::vector<std::string> LayerSwitchNames();

// Airspace classes, numbered in the order of the airspace menu; 0 unknown.
enum class AirspaceClass : uint8_t {
  Unknown = 0, ADA, ADIZ, ARTCC, ACC, BZ, CTA, Ctrz, FIR, OCA, RA, TCA, UIR,
};
// The class of a record's Class text, trimmed and case-insensitive: the menu
// names ("CTA", "FIR", ...), "CTR" and "CTZ" for control zones, "TMA" for a
// terminal area, and the letters "A" to "E" (controlled airspace) as control
// areas. Anything else is Unknown and drawn with the control areas.
AirspaceClass AirspaceClassOf(std::string_view classText);

// ------------------------------------------------------------ highlight

// Kinds of HiliteKind.
inline constexpr int kHiliteNone = 0;
// kHiliteAirport (1) to kHiliteJet (8) are the search's kinds (FrmFind.h).

// The object the hover logic or a search selected. Index is the array index
// of the kind (the airway segment for 7 and 8); an ILS is named by its
// airport in Index and its place in the airport's Ils list in SubIndex.
struct MapHighlight {
  int Kind = kHiliteNone;
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
  // Online traffic, weather, oceanic tracks and recorded holdings: drawn by
  // their modules' layers once they exist; nothing here yet.
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

// Marks (in keep) the points of a line to draw so that every other point lies
// within `tolerance` degrees of the line through the kept ones, longitude
// measured at the equator's scale; the first and last point are kept.
void KeepShapePoints(const std::vector<ShapePoint>& pts, double tolerance, std::vector<uint8_t>& keep,
                     std::vector<std::pair<uint32_t, uint32_t>>& stack);

class MapRenderer {
public:
  MapRenderer() = default;

  // The whole pass onto map, then the copy into backBuffer when given.
  void DrawMap(const MapScene& scene, DrawTarget& map, DrawTarget* backBuffer = nullptr);

  // The status texts the pass leaves for MapStatus(2) and MapStatus(3).
  const std::string& MagVarStatus() const { return magVarStatus_; }
  const std::string& PositionStatus() const { return positionStatus_; }

  // The declutter grid of the last pass (hover logic reads nothing else).
  const Declutter& Grid() const { return declutter_; }

private:
  struct Pass;
  friend struct Pass;

  Declutter declutter_;
  std::vector<DrawPoint> points_;       // projected shape points
  std::vector<DrawSegment> segments_;   // airway lines waiting to be drawn in one call
  // The airways as the pass draws them, worked out once per loaded
  // database: both ends of each segment side by side (the in-view test
  // reads nothing else) and the points of the long legs bent along their
  // great circle, which cost a dozen sines each.
  struct AirwayEnds {
    float Lat1 = 0, Lon1 = 0, Lat2 = 0, Lon2 = 0;  // NaN latitudes: not drawn (an empty slot)
  };
  struct AirwayBends {
    uint32_t First = 0;
    uint32_t Count = 0;
  };
  struct AirwayPaths {
    const void* Ints = nullptr;
    const void* Segments = nullptr;
    std::size_t IntCount = 0;
    std::size_t SegmentCount = 0;
    std::vector<AirwayEnds> Ends;
    std::vector<AirwayBends> BendsOf;
    std::vector<DrawPoint> Bends;  // X longitude, Y latitude
  };
  // A set of shapes (coastlines, rivers, airspaces) with the points left
  // out that lie in the cell of the point kept before them, a cell being a
  // pixel of the present zoom: a coastline of a hundred thousand points is a
  // few thousand at 2000 NM. Each shape is thinned when first drawn at a
  // zoom; a new zoom or a new database starts afresh.
  struct ThinnedShapes {
    const void* Source = nullptr;
    std::size_t SourceCount = 0;
    std::size_t ShapeCount = 0;
    double Cell = 0;  // degrees
    std::vector<uint32_t> First;
    std::vector<uint32_t> Count;
    std::vector<ShapePoint> Points;
  };
  std::vector<ShapePoint> thinScratch_;
  std::vector<uint8_t> keep_;
  std::vector<std::pair<uint32_t, uint32_t>> stack_;
  ThinnedShapes worldPolygonsThin_;
  ThinnedShapes worldLinesThin_;
  ThinnedShapes airspacesThin_;
  // AirspaceClassOf of each airspace, worked out once per database.
  std::vector<AirspaceClass> airspaceClasses_;
  const void* airspaceClassesFor_ = nullptr;
  // The positions of a table's records side by side, a NaN latitude for an
  // empty slot: the in-view test of forty thousand airports reads 320 KB
  // instead of a cache line per record.
  struct Positions {
    const void* For = nullptr;
    std::size_t Count = 0;
    std::vector<LatLon> At;
  };
  Positions airportPositions_;
  Positions intersectionPositions_;
  Positions vorPositions_;
  Positions ndbPositions_;
  AirwayPaths victorPaths_;
  AirwayPaths jetPaths_;
  std::vector<uint8_t> onVictor_;       // per intersection slot: on a victor airway
  std::vector<uint8_t> onJet_;          // per intersection slot: on a jet airway
  const void* airwayFlagsFor_ = nullptr;
  std::size_t airwayFlagsSizes_[3] = {};
  std::string text_;                    // label scratch
  std::string text2_;
  std::string magVarStatus_;
  std::string positionStatus_;
};

}  // namespace orv
