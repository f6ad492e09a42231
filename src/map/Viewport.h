// The map's view: where a position lands on the surface and back, the visible
// bounds every layer tests against, the zoom steps and the commands that move
// or scale the view (zoom, rubber band, re-centring, aircraft follow,
// autozoom), with the status texts they leave behind.
//
// The projection is a plain cylinder with one scale factor: Y follows the
// latitude linearly and X the longitude, narrowed by the cosine of the centre
// latitude, or of each point's own latitude in Round World mode. The poles do
// not wrap: the centre latitude is clamped so that the surface stops at them.
// Longitude wraps freely across the 180 degree meridian.
#pragma once

#include "core/Geodesy.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/Ui.h"

namespace orv {

class DrawTarget;

// One zoom step: Scale is the base value of Scaling (surface units per degree
// of latitude), Nm the range label.
struct ZoomStep {
  int32_t Scale;
  int32_t Nm;
};

// The zoom steps. Scale is 420000 divided by the label except rows 18 and 21,
// which are kept as they have always been. Row 21 can never be selected.
inline constexpr std::array<ZoomStep, 22> ZoomTable = {{
    {420000, 1}, {210000, 2}, {140000, 3}, {84000, 5},  {42000, 10}, {21000, 20},
    {14000, 30}, {8400, 50},  {5600, 75},  {4200, 100}, {2800, 150}, {2100, 200},
    {1400, 300}, {1050, 400}, {840, 500},  {700, 600},  {600, 700},  {525, 800},
    {465, 900},  {210, 2000}, {105, 4000}, {80, 6000},
}};

inline constexpr int16_t kDefaultZoomIndex = 6;  // 30 NM
inline constexpr int16_t kLastSelectableZoom = 20;

// Status fields of the map window that the view writes.
inline constexpr int kStatusRange = 1;
inline constexpr int kStatusMagVar = 2;
inline constexpr int kStatusPosition = 3;

// The view state: one per map window.
struct ViewState {
  float CntrLat = 0;
  float CntrLon = 0;
  int32_t Scaling = ZoomTable[kDefaultZoomIndex].Scale;  // surface units per degree of latitude
  int16_t ZoomIndex = kDefaultZoomIndex;
  float ZoomFactor = 1;  // window height / 8535, set by every resize

  // The surface's size in user units (Map.ScaleWidth, Map.ScaleHeight). Kept
  // here so that the projection reads no drawing object; SyncSurface copies
  // them from the map at each pass and resize.
  double ScaleWidth = 10000;
  double ScaleHeight = 7000;

  // Visible bounds with a half degree margin, set by ComputeBounds. Zero
  // until the first pass, so that the zoom command at load (the first
  // resize) sees neither a polar view nor a southern one.
  float MapNorth = 0;
  float MapSouth = 0;
  float MapWest = 0;
  float MapEast = 0;
  bool MapWraps = false;
  // Degrees of latitude on the surface plus 1, and of longitude plus 3, for
  // the loops of the render pass.
  float LatSpan = 0;
  float LonSpan = 0;

  float CurrentLat = 0;  // the aircraft when connected, else the last re-centred position
  float CurrentLon = 0;
  float MagVarLat = 0;   // CurrentLat, CurrentLon at the last variation look-up
  float MagVarLon = 0;
  int FirstMagVarLat = 0;  // whole-degree floors of the saved position, for the first look-up
  int FirstMagVarLon = 0;

  bool MapReady = false;        // the main window has finished loading
  bool RoundWorld = false;      // menuRoundWorld checked
  bool Autozoom = false;        // menuAutozoom checked
  bool AircraftOnMap = false;   // MenuAoM checked
  bool DecimalCoordinates = false;  // position texts in decimal degrees
  bool DecimalSeconds = true;       // DECSEC: the degree-minute form with decimal minutes
};

// What the view's commands do to the window around it.
class ViewHost {
public:
  virtual ~ViewHost() = default;
  // Hands the keyboard focus back after a map command (see FocusMapAction).
  virtual void FocusMap() = 0;
  // A full redraw of the map (the render pass).
  virtual void DrawMap() = 0;
  // Writes the text of MapStatus(field).
  virtual void SetMapStatus(int field, std::string_view text) = 0;
  // Moves the measuring line and its label to the new scale, if shown.
  virtual void RepositionMeasure() = 0;
};

// The navigation and text routines the view borrows from the geodesy module
// and the magnetic variation grid.
class ViewGeodesy {
public:
  virtual ~ViewGeodesy() = default;
  // The point at distanceNm along the true course from (lat, lon).
  virtual LatLon Destination(float lat, float lon, float course, float distanceNm) const = 0;
  // Great-circle distance in nautical miles.
  virtual double Distance(float lat1, float lon1, float lat2, float lon2) const = 0;
  // Degree-minute texts of a latitude and a longitude.
  virtual std::string LatText(double lat, bool decimalSeconds) const = 0;
  virtual std::string LonText(double lon, bool decimalSeconds) const = 0;
  // A variation with its east/west mark.
  virtual std::string VarText(double variation) const = 0;
  // Variation in degrees at whole-degree floors of a position.
  virtual double MagVarAt(int lat, int lon) const = 0;
};

// ------------------------------------------------------------ projection

// The cosine of the reference latitude, with the program's value of pi.
inline double CosLat(double lat) { return std::cos(lat * (kPi / 180.0)); }

// Longitude difference from the centre, as a 32-bit float, brought once into
// -180..180: a point exactly opposite the centre lands on the east side.
inline float LonDelta(double cntrLon, double lon) {
  float d = static_cast<float>(cntrLon - lon);
  if (d <= -180.0f) d += 360.0f;
  if (d >= 180.0f) d -= 360.0f;
  return d;
}

// The same formulas with explicit centre and scale, for the side surfaces
// (airport layout, departure and arrival drawings, procedure editor), whose
// reference latitude is always the point's own.
inline double SideXFromLon(double lon, double lat, double cntrLon, double drawCenter, double scaling) {
  return std::floor(drawCenter - LonDelta(cntrLon, lon) * scaling * CosLat(lat));
}
inline double SideYFromLat(double lat, double cntrLat, double drawCenter, double scaling) {
  return std::floor((cntrLat - lat) * scaling + drawCenter);
}

// Whole-numbered surface X of a longitude; lat matters only in Round World.
inline double MapXFromLon(const ViewState& v, double lon, double lat) {
  double ref = v.RoundWorld ? lat : static_cast<double>(v.CntrLat);
  return std::floor(v.ScaleWidth / 2 - LonDelta(v.CntrLon, lon) * static_cast<double>(v.Scaling) * CosLat(ref));
}

// Whole-numbered surface Y of a latitude.
inline double MapYFromLat(const ViewState& v, double lat) {
  return std::floor((static_cast<double>(v.CntrLat) - lat) * v.Scaling + v.ScaleHeight / 2);
}

float MapLatFromY(const ViewState& v, double y);
// Longitude of a surface X at the given latitude (compute it with MapLatFromY
// first: in Round World the answer depends on it).
float MapLonFromX(const ViewState& v, double x, double lat);

// The in-view test shared by every point layer, run before any projection.
// All comparisons are strict.
inline bool InView(const ViewState& v, float lat, float lon) {
  if (!(lat < v.MapNorth && lat > v.MapSouth)) return false;
  if (v.MapWraps) return lon > v.MapWest || lon < v.MapEast;
  return lon > v.MapWest && lon < v.MapEast;
}

// A legal CntrLat: the top of the surface never shows beyond a pole. The
// edges are tested at the view's present centre; lat is returned when they
// are inside.
float ClampCenterLat(const ViewState& v, float lat);

// MapNorth..MapEast, MapWraps and the two loop spans from the current centre.
void ComputeBounds(ViewState& v);

// Copies the map surface's size in user units into the view.
void SyncSurface(ViewState& v, const DrawTarget& map);

// The view's share of the head of a render pass: surface size, the clamp of
// CntrLat, then the bounds.
void BeginRenderPass(ViewState& v, const DrawTarget& map);

// ------------------------------------------------------------ zoom

// The range label of the current step, in NM.
int32_t CurrentLabel(const ViewState& v);

// "100NM": the label formatted "####" followed by "NM".
std::string RangeText(int32_t nm);

// The zoom command with its refusals "Minimum zoom!" and "Maximum zoom!".
void SetZoom(ViewState& v, int index, bool clearAutozoom, ViewHost& host, Ui& ui);

// The zoom step of a menu entry ("Menu3NM" ... "Menu2000NM"), or -1.
int ZoomIndexOfMenu(std::string_view menuName);

// The zoom keys: Page Down (34), numeric plus (107) and main plus (187) zoom
// in; Page Up (33), numeric minus (109) and main minus (189) zoom out. False
// for any other key.
bool ZoomKey(ViewState& v, int keyCode, ViewHost& host, Ui& ui);

// A mouse wheel step: forward (or zero) zooms in from step 1 upward, back
// zooms out below step 20; the wheel never reaches a refusal.
void WheelZoom(ViewState& v, int delta, ViewHost& host, Ui& ui);

// The main window's load: user scale already set on the surfaces. The saved
// position becomes centre, aircraft position and variation reference; the
// zoom step comes from the settings (an index outside the selectable steps
// falls back to the default) and Scaling straight from the table.
void LoadView(ViewState& v, float lat, float lon, int zoomIndex, ViewHost& host);

// A resize of the window: ZoomFactor from its height, then the same zoom step
// again so that the window shows the same ground range.
void ResizeView(ViewState& v, double windowHeight, const DrawTarget& map, ViewHost& host, Ui& ui);

// The zoom factor of a window windowHeight twips high (its Height over
// 8535, the whole window and not only the map), and Scaling again for the
// present zoom step; nothing is drawn. The window's map surface calls it
// whenever it prepares a picture of a new size.
void ApplyWindowZoomFactor(ViewState& v, double windowHeight);

// Autozoom, run on each simulator tick after FollowAircraft: 2 NM on the
// ground, 50 NM in the air.
void AutoZoomTick(ViewState& v, bool onGround, ViewHost& host, Ui& ui);

// ------------------------------------------------------------ moving the view

// Key Space: the centre jumps to the aircraft (or last re-centred) position.
void CenterOnCurrent(ViewState& v, ViewHost& host);

// Toggling Round World: redraw and focus, centre and scale unchanged.
void ToggleRoundWorld(ViewState& v, ViewHost& host);

// Left button release of a rubber band from (x1, y1) to (x2, y2), a plain
// click being a band of no size: re-centre, and re-scale when the band is
// more than 200 units high. The mouse handler calls it only with the
// measuring tool off, the GPS window's mode off and shift not held.
void ReleaseBand(ViewState& v, double x1, double y1, double x2, double y2, ViewHost& host,
                 const ViewGeodesy& geo);

// What the simulator tick knows when it asks the map to follow the aircraft.
struct FollowInput {
  bool Minimised = false;
  float TrueTrack = 0;
  double AircraftX = 0;  // where the last aircraft draw put the symbol
  double AircraftY = 0;
  double PanelTop = 0;   // height of pnlFlightplan when shown, else 0
  double MapWidth = 0;   // Map.Width, Map.Height
  double MapHeight = 0;
};

// Per simulator tick: keeps the aircraft on the surface by jumping the view
// when it, or its look-ahead point, reaches an edge, and writes the variation
// and position of the aircraft to the status fields.
void FollowAircraft(ViewState& v, const FollowInput& in, ViewHost& host, const ViewGeodesy& geo);

// ------------------------------------------------------------ texts

// The position as MapStatus(3) shows it: decimal "00.0000 / 000.0000" or the
// degree-minute forms joined by " - ".
std::string PositionText(const ViewState& v, float lat, float lon, const ViewGeodesy& geo);

// "MagVar: " and the variation with its east/west mark.
std::string MagVarText(double variation, const ViewGeodesy& geo);

// Where the keyboard goes after a map command.
enum class FocusAction { FocusSurface, Nothing, ActivateSimulator };
FocusAction FocusMapAction(bool foundByFs98Class, bool connected, bool mouseZoom);

}  // namespace orv
