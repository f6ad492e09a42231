#include "map/RenderPass.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "map/MapGeodesy.h"
#include "map/Navaid.h"
#include "map/ZoneWatch.h"

namespace orv {

namespace {

constexpr double kPi = 3.14159265;
constexpr double kDegToRad = kPi / 180.0;

// Case-insensitive comparison of two names.
bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

// A menu caption without its access-key mark.
std::string PlainCaption(std::string_view caption) {
  std::string out;
  for (char ch : caption)
    if (ch != '&') out += ch;
  return out;
}

// A caption also answers to its words before a bracket: "Jet (High Alt)" to
// "Jet".
std::string_view ShortCaption(std::string_view plain) {
  const std::size_t bracket = plain.find(" (");
  return bracket == std::string_view::npos ? std::string_view() : plain.substr(0, bracket);
}

struct LayerName {
  std::string_view Control;  // the menu entry
  std::string_view Button;   // its button, if any
  std::string_view Caption;  // the menu caption with "&"
  bool MapLayers::*Member;
};

constexpr LayerName kLayerNames[] = {
    {"menuAirport", "btnAP", "&Airports", &MapLayers::btnAP},
    {"MenuVOR", "btnVor", "&VOR", &MapLayers::btnVor},
    {"MenuNDB", "btnNdb", "&NDB", &MapLayers::btnNdb},
    {"MenuILS", "btnIls", "&ILS", &MapLayers::btnIls},
    {"MenuIntersection", "btnInter", "Int&ersection", &MapLayers::btnInter},
    {"MenuGPSFix", "btnFix", "&GPS Fix", &MapLayers::btnFix},
    {"MenuUserWP", "btnUser", "&User Waypoints", &MapLayers::btnUser},
    {"MenuJet", "btnJet", "&Jet (High Alt)", &MapLayers::btnJet},
    {"MenuVictor", "btnVictor", "&Victor (Low Alt)", &MapLayers::btnVictor},
    {"MenuADA", "", "&Advisory Area", &MapLayers::MenuADA},
    {"MenuADIZ", "", "Air &Defense Identification Zone", &MapLayers::MenuADIZ},
    {"menuARTCC", "", "Air &Route Traffic Control Center", &MapLayers::menuARTCC},
    {"MenuACC", "", "Area &Control Center", &MapLayers::MenuACC},
    {"MenuBZ", "", "&Buffer Zone", &MapLayers::MenuBZ},
    {"MenuCTA", "btnAir1", "C&ontrol Area", &MapLayers::btnAir1},
    {"MenuCtrz", "btnCtrz", "Control &Zones", &MapLayers::btnCtrz},
    {"menuFIR", "btnAir2", "&Flight Information Region", &MapLayers::btnAir2},
    {"MenuOCA", "", "Oc&ean Control Area", &MapLayers::MenuOCA},
    {"menuRA", "", "&Radar Area", &MapLayers::menuRA},
    {"menuTCA", "", "&Terminal Control Area", &MapLayers::menuTCA},
    {"menuUIR", "", "&Upper Flight Information Region", &MapLayers::menuUIR},
    {"MenuMSA", "btnMsa", "Minimum Sa&fe Altitude", &MapLayers::btnMsa},
    {"MenuCoastlines", "btnMap", "Coastline&s", &MapLayers::btnMap},
    {"MenuCompass", "", "&Compass", &MapLayers::MenuCompass},
    {"MenuLatLong", "", "La&tLong", &MapLayers::MenuLatLong},
    {"MenuTraceActive", "", "Show &Track", &MapLayers::MenuTraceActive},
    {"menuShowAlt", "", "Show &Altitude", &MapLayers::menuShowAlt},
    {"MenuViolation", "", "Control Zone &Violation", &MapLayers::MenuViolation},
    {"ShowFreq", "btnFreq", "", &MapLayers::ShowFreq},
    {"ShowIcao", "btnIcao", "", &MapLayers::ShowIcao},
    {"ShowName", "btnName", "", &MapLayers::ShowName},
};

// Blanks trimmed from both ends without a copy.
std::string_view Trimmed(std::string_view text) { return TrimView(text); }

// The plain cylinder of the view with the centre's cosine worked out once:
// the same figures as MapXFromLon and MapYFromLat, without a cosine per point
// unless Round World asks for one.
struct Projector {
  explicit Projector(const ViewState& v)
      : halfW(v.ScaleWidth / 2),
        halfH(v.ScaleHeight / 2),
        scaling(static_cast<double>(v.Scaling)),
        cntrLat(v.CntrLat),
        cntrLon(v.CntrLon),
        cosC(CosLat(v.CntrLat)),
        round(v.RoundWorld) {}

  double X(double lon, double lat) const { return XOfDelta(LonDelta(cntrLon, lon), lat); }
  // X of a point delta degrees of longitude west of the centre.
  double XOfDelta(float delta, double lat) const {
    const double c = round ? CosLat(lat) : cosC;
    return std::floor(halfW - delta * scaling * c);
  }
  double Y(double lat) const { return std::floor((cntrLat - lat) * scaling + halfH); }

  double halfW, halfH, scaling, cntrLat;
  float cntrLon;
  double cosC;
  bool round;
};

// The bounds test on a shape's box: the box must overlap the view. Across the
// antimeridian the east-west test is reduced to the two halves of the view.
bool BoxOverlaps(const ViewState& v, float north, float south, float east, float west) {
  if (north < v.MapSouth || south > v.MapNorth) return false;
  if (v.MapWraps) return east > v.MapWest || west < v.MapEast;
  return !(east < v.MapWest || west > v.MapEast);
}

// A longitude as the grid labels it: "E", "W" or a blank, then "000".
std::string LonShortText(double lon) {
  while (lon > 180) lon -= 360;
  while (lon < -180) lon += 360;
  const char* mark = lon > 0 ? "E" : lon < 0 ? "W" : " ";
  return mark + Format(std::fabs(lon), "000");
}

// Points part of the way along the great circle from (lat1, lon1) to
// (lat2, lon2); fraction 0 is the start, 1 the end. The terms that do not
// depend on the fraction are worked out once per leg: a long leg is drawn
// in dozens of steps.
struct GreatCircleSteps {
  GreatCircleSteps(double lat1, double lon1, double lat2, double lon2)
      : lat1(lat1), lon1(lon1), p1(lat1 * kDegToRad), l1(lon1 * kDegToRad), p2(lat2 * kDegToRad),
        l2(lon2 * kDegToRad) {
    d = 2 * std::asin(std::sqrt(std::pow(std::sin((p1 - p2) / 2), 2) +
                                std::cos(p1) * std::cos(p2) * std::pow(std::sin((l1 - l2) / 2), 2)));
    sinD = std::sin(d);
    cosP1 = std::cos(p1), cosL1 = std::cos(l1), sinL1 = std::sin(l1), sinP1 = std::sin(p1);
    cosP2 = std::cos(p2), cosL2 = std::cos(l2), sinL2 = std::sin(l2), sinP2 = std::sin(p2);
  }

  LatLon At(double fraction) const {
    if (d == 0) return {static_cast<float>(lat1), static_cast<float>(lon1)};
    const double a = std::sin((1 - fraction) * d) / sinD;
    const double b = std::sin(fraction * d) / sinD;
    const double x = a * cosP1 * cosL1 + b * cosP2 * cosL2;
    const double y = a * cosP1 * sinL1 + b * cosP2 * sinL2;
    const double z = a * sinP1 + b * sinP2;
    return {static_cast<float>(std::atan2(z, std::sqrt(x * x + y * y)) / kDegToRad),
            static_cast<float>(std::atan2(y, x) / kDegToRad)};
  }

  double lat1, lon1, p1, l1, p2, l2;
  double d = 0, sinD = 0;
  double cosP1 = 0, cosL1 = 0, sinL1 = 0, sinP1 = 0, cosP2 = 0, cosL2 = 0, sinL2 = 0, sinP2 = 0;
};

int16_t MarkerRadius(std::string_view kind) {
  if (!kind.empty() && (kind[0] == 'O' || kind[0] == 'o')) return kOuterMarkerRadius;
  if (!kind.empty() && (kind[0] == 'M' || kind[0] == 'm')) return kMiddleMarkerRadius;
  return kInnerMarkerRadius;
}

}  // namespace

// ------------------------------------------------------------ layer names

bool* FindLayerSwitch(MapLayers& layers, std::string_view name) {
  for (const LayerName& n : kLayerNames) {
    const std::string plain = PlainCaption(n.Caption);
    const std::string_view shortCaption = ShortCaption(plain);
    if (SameName(name, n.Control) || (!n.Button.empty() && SameName(name, n.Button)) ||
        (!plain.empty() && SameName(name, plain)) || (!shortCaption.empty() && SameName(name, shortCaption)))
      return &(layers.*n.Member);
  }
  return nullptr;
}

std::vector<std::string> LayerSwitchNames() {
  std::vector<std::string> names;
  for (const LayerName& n : kLayerNames) {
    std::string line;
    if (!n.Caption.empty()) line = PlainCaption(n.Caption) + ", ";
    line += n.Control;
    if (!n.Button.empty()) line += ", " + std::string(n.Button);
    names.push_back(std::move(line));
  }
  return names;
}

AirspaceClass AirspaceClassOf(std::string_view classText) {
  const std::string_view c = Trimmed(classText);
  struct Alias {
    std::string_view Text;
    AirspaceClass Class;
  };
  static constexpr Alias kAliases[] = {
      {"ADA", AirspaceClass::ADA},   {"ADIZ", AirspaceClass::ADIZ}, {"ARTCC", AirspaceClass::ARTCC},
      {"ACC", AirspaceClass::ACC},   {"BZ", AirspaceClass::BZ},     {"CTA", AirspaceClass::CTA},
      {"A", AirspaceClass::CTA},     {"B", AirspaceClass::CTA},     {"C", AirspaceClass::CTA},
      {"D", AirspaceClass::CTA},     {"E", AirspaceClass::CTA},     {"CTRZ", AirspaceClass::Ctrz},
      {"CTR", AirspaceClass::Ctrz},  {"CTZ", AirspaceClass::Ctrz},  {"FIR", AirspaceClass::FIR},
      {"OCA", AirspaceClass::OCA},   {"RA", AirspaceClass::RA},     {"TCA", AirspaceClass::TCA},
      {"TMA", AirspaceClass::TCA},   {"UIR", AirspaceClass::UIR},
  };
  for (const Alias& a : kAliases)
    if (SameName(c, a.Text)) return a.Class;
  return AirspaceClass::Unknown;
}

double RunwayUnits(double feet, int32_t scaling) {
  const double metres = std::trunc(feet / 3.2809);
  return metres * scaling / kMetresPerDegree;
}

// ------------------------------------------------------------ the pass

struct MapRenderer::Pass {
  Pass(MapRenderer& r, const MapScene& s, DrawTarget& m)
      : self(r),
        scene(s),
        v(s.View),
        c(s.Colours),
        layers(s.Layers),
        db(s.Db),
        plan(s.Plan),
        hi(s.Highlight),
        map(m),
        navaid(m, s.View, r.declutter_),
        proj(s.View) {}

  MapRenderer& self;
  const MapScene& scene;
  ViewState& v;
  const Settings& c;
  const MapLayers& layers;
  const NavDatabase& db;
  const FlightPlan& plan;
  MapHighlight hi;
  DrawTarget& map;
  clsNavaid navaid;
  Projector proj;
  MapOverlays noOverlays;
  const MapOverlays* over = nullptr;
  int32_t label = 0;
  double width = 0, height = 0;

  bool Lit(int kind, int32_t index) const { return hi.Kind == kind && hi.Index == index; }
  Colour Pick(Colour own, int kind, int32_t index) const { return Lit(kind, index) ? c.Hilite : own; }
  bool PlanPresent() const { return plan.LastRow > 0; }

  void Place(float x, float y) {
    navaid.sngCenterX = x;
    navaid.sngCenterY = y;
  }

  void Run();
  void DrawCoastlines();
  void DrawWorldLines();
  void DrawShapes();
  void DrawLatLong();
  void DrawAirspaces();
  void DrawActiveZone(const ActiveZone& zone);
  void DrawViolations();
  void StatusFields();
  void DrawCompass();
  void DrawMsa();
  void AirportLoop();
  void DrawRunwayItems(const AirportRec& ap, int32_t apIndex);
  void DrawRoute();
  void DrawActiveLeg();
  // With batch, the lines go to self.segments_ for FlushSegments.
  void DrawRouteLeg(float lat1, float lon1, float lat2, float lon2, double dist, bool batch = false);
  void LegLine(double x1, double y1, double x2, double y2, bool batch) {
    if (batch)
      self.segments_.push_back({x1, y1, x2, y2});
    else
      map.Line(x1, y1, x2, y2);
  }
  void FlushSegments() {
    if (self.segments_.empty()) return;
    map.Lines(self.segments_);
    self.segments_.clear();
  }
  void AirwayLoop(const std::vector<AirwayRec>& airways, AirwayPaths& paths, Colour colour, int hiliteKind);
  void PrepareAirwayPaths(const std::vector<AirwayRec>& airways, AirwayPaths& paths);
  void PlanWaypoints();
  void VorLoop();
  void NdbLoop();
  void MarkerLoop();
  void IntersectionLoop();
  void FixLoop();
  void UserWaypointLoop();
  void DrawTrace();
  void PolylineOf(std::span<const ShapePoint> pts, std::size_t maxPoints, bool closed);
  // The first maxPoints points of shape `index` of a set, thinned to the
  // present zoom's pixel.
  std::span<const ShapePoint> Thinned(ThinnedShapes& set, const std::vector<ShapePoint>& all, std::size_t shapes,
                                      std::size_t index, std::span<const ShapePoint> raw, std::size_t maxPoints);
  // Prints the lines of self.text_ (split at CR LF) from place, each line at
  // the same X.
  void PrintLines(LabelPlace place);
  void PrintLabel(float x, float y, int kind);
  void AirwayFlags();
  // The positions of table's records, worked out when the table changed.
  template <typename Rec, typename Used>
  const LatLon* PositionsOf(Positions& cache, const std::vector<Rec>& table, Used used) {
    if (cache.For != table.data() || cache.Count != table.size()) {
      cache.For = table.data();
      cache.Count = table.size();
      cache.At.resize(table.size());
      for (std::size_t i = 0; i < table.size(); ++i)
        cache.At[i] = used(table[i]) ? LatLon{table[i].Lat, table[i].Lon} : LatLon{std::nanf(""), 0};
    }
    return cache.At.data();
  }
};

void MapRenderer::DrawMap(const MapScene& scene, DrawTarget& map, DrawTarget* backBuffer) {
  Pass pass(*this, scene, map);
  pass.Run();
  if (backBuffer) {
    backBuffer->Resize(map.PixelWidth(), map.PixelHeight());
    backBuffer->CopyPicture(map);
  }
}

void MapRenderer::Pass::Run() {
  over = scene.Overlays ? scene.Overlays : &noOverlays;

  // 1. The declutter grid, then the clamp and the bounds of the view.
  self.declutter_.DeclutterReset(map);
  BeginRenderPass(v, map);
  proj = Projector(v);
  label = CurrentLabel(v);
  width = v.ScaleWidth;
  height = v.ScaleHeight;

  // 2. A clean surface with the pass's starting properties.
  map.SetBackColor(c.Map);
  map.Cls();
  map.SetFontBold(false);
  map.SetDrawStyle(kDrawStyleSolid);
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
  map.SetFillColor(0);
  map.SetFontName("Arial");
  map.SetFontSize(c.FontSize ? 9.0f : 7.0f);
  navaid.objTarget(map);
  navaid.RunwayColor = c.Rwy;
  navaid.TaxiColor = c.Taxi;

  if (layers.btnMap) DrawCoastlines();
  DrawShapes();
  if (layers.MenuLatLong) DrawLatLong();
  DrawAirspaces();
  for (const ActiveZone& zone : over->ActiveZones) DrawActiveZone(zone);
  StatusFields();
  if (layers.MenuCompass) DrawCompass();
  if (label <= 300 && layers.btnMsa) DrawMsa();
  if (label <= 10 && layers.btnAP) {
    if (!db.Shapes.GroundPolygons.empty()) navaid.DrawAsPolygon(db.Shapes.GroundPolygons);
    if (!db.Shapes.TaxiSegments.empty()) navaid.DrawAsTaxiway(db.Shapes.TaxiSegments);
  }
  if (label < 3 && layers.btnAP && !db.Shapes.TaxiSegments.empty())
    navaid.DrawAsTaxiwayDesignator(db.Shapes.TaxiSegments);
  if (layers.btnAP) AirportLoop();
  if (PlanPresent()) DrawRoute();
  // The oceanic tracks and the weather symbols belong to the online layers.
  if (PlanPresent() && over->Sim.Connected) DrawActiveLeg();
  if (layers.btnJet) AirwayLoop(db.Navaids.JetAirways, self.jetPaths_, c.Jet, kHiliteJet);
  if (layers.btnVictor) AirwayLoop(db.Navaids.VictorAirways, self.victorPaths_, c.Victor, kHiliteVictor);
  if (PlanPresent()) PlanWaypoints();
  if (layers.btnVor) VorLoop();
  if (layers.btnNdb) NdbLoop();
  if (!db.Shapes.Markers.empty() && layers.btnIls && v.Scaling >= 14000) MarkerLoop();
  if (layers.btnInter || layers.btnVictor || layers.btnJet) IntersectionLoop();
  if (layers.btnFix) FixLoop();
  if (layers.btnUser) UserWaypointLoop();
  // Online controllers and aircraft: drawn by the online layers.
  if (over->MapPointLat != -500) {
    map.SetDrawWidth(1);
    map.SetFillStyle(kFillTransparent);
    map.Circle(proj.X(over->MapPointLon, over->MapPointLat), proj.Y(over->MapPointLat), 60, c.Hilite);
  }
  if (layers.MenuTraceActive || over->ReplayMode) DrawTrace();
  if (over->Sim.Connected && label <= 100 && layers.btnCtrz && layers.MenuViolation) DrawViolations();
}

// ------------------------------------------------------------ background

void MapRenderer::Pass::PolylineOf(std::span<const ShapePoint> pts, std::size_t maxPoints, bool closed) {
  const std::size_t n = std::min(pts.size(), maxPoints);
  if (n < 2) return;
  std::vector<DrawPoint>& buf = self.points_;
  if (buf.size() < n) buf.resize(n);
  // A shape across the meridian opposite the centre stays in one piece: past
  // it, longitudes go on beyond 180 degrees from the centre rather than
  // jumping to the other edge of the world, which would draw a line across
  // the whole chart.
  float offset = 0, last = 0;
  for (std::size_t i = 0; i < n; ++i) {
    float delta = LonDelta(proj.cntrLon, pts[i].Lon) + offset;
    if (i > 0 && delta - last > 180.0f) {
      offset -= 360.0f;
      delta -= 360.0f;
    } else if (i > 0 && delta - last < -180.0f) {
      offset += 360.0f;
      delta += 360.0f;
    }
    last = delta;
    buf[i] = {static_cast<float>(proj.XOfDelta(delta, pts[i].Lat)), static_cast<float>(proj.Y(pts[i].Lat))};
  }
  if (closed)
    map.Polygon(buf.data(), n);
  else
    map.Polyline(buf.data(), n);
}

std::span<const ShapePoint> MapRenderer::Pass::Thinned(ThinnedShapes& set, const std::vector<ShapePoint>& all,
                                                       std::size_t shapes, std::size_t index,
                                                       std::span<const ShapePoint> raw, std::size_t maxPoints) {
  raw = raw.first(std::min(raw.size(), maxPoints));
  // A pixel in degrees of latitude; a degree of longitude is never longer on
  // the chart, so the same cell is at most a pixel wide there too.
  const double cell = map.ScaleWidth() / map.PixelWidth() / static_cast<double>(v.Scaling);
  if (!(cell > 0) || !std::isfinite(cell) || index >= shapes) return raw;
  if (set.Source != all.data() || set.SourceCount != all.size() || set.ShapeCount != shapes || set.Cell != cell) {
    set.Source = all.data();
    set.SourceCount = all.size();
    set.ShapeCount = shapes;
    set.Cell = cell;
    set.First.assign(shapes, UINT32_MAX);
    set.Count.assign(shapes, 0);
    set.Points.clear();
  }
  if (set.First[index] == UINT32_MAX) {
    const std::size_t first = set.Points.size();
    if (raw.size() <= 2) {
      set.Points.insert(set.Points.end(), raw.begin(), raw.end());
    } else {
      // First the points inside the cell of the point before them, then the
      // points of the stretches that run within half a pixel of a straight
      // line between their ends (Douglas-Peucker): a round control zone of a
      // hundred pixels is a few dozen lines rather than a hundred.
      std::vector<ShapePoint>& pts = self.thinScratch_;
      pts.clear();
      const double per = 1.0 / cell;
      double cellLat = std::floor(raw[0].Lat * per), cellLon = std::floor(raw[0].Lon * per);
      pts.push_back(raw[0]);
      for (std::size_t i = 1; i + 1 < raw.size(); ++i) {
        const double lat = std::floor(raw[i].Lat * per), lon = std::floor(raw[i].Lon * per);
        if (lat == cellLat && lon == cellLon) continue;
        cellLat = lat;
        cellLon = lon;
        pts.push_back(raw[i]);
      }
      pts.push_back(raw.back());
      KeepShapePoints(pts, cell / 2, self.keep_, self.stack_);
      for (std::size_t i = 0; i < pts.size(); ++i)
        if (self.keep_[i]) set.Points.push_back(pts[i]);
    }
    set.First[index] = static_cast<uint32_t>(first);
    set.Count[index] = static_cast<uint32_t>(set.Points.size() - first);
  }
  return {set.Points.data() + set.First[index], set.Count[index]};
}

void MapRenderer::Pass::DrawCoastlines() {
  map.SetForeColor(c.Coast);
  map.SetFillColor(c.Land);
  map.SetFillStyle(c.Fill ? kFillSolid : kFillTransparent);
  map.SetDrawWidth(1);
  const AirspaceTables& s = db.Shapes;
  // The land first, then the lakes over it.
  for (int lakes = 0; lakes < 2; ++lakes) {
    if (lakes) {
      map.SetForeColor(c.River);
      map.SetFillColor(c.River);
    }
    for (std::size_t i = 0; i < s.WorldPolygons.size(); ++i) {
      const WorldShapeRec& shape = s.WorldPolygons[i];
      if ((shape.Kind == kWorldLakeKind) != (lakes == 1)) continue;
      if (!BoxOverlaps(v, shape.North, shape.South, shape.East, shape.West)) continue;
      PolylineOf(Thinned(self.worldPolygonsThin_, s.WorldPolygonPoints, s.WorldPolygons.size(), i,
                         s.PolygonPointsOf(shape), SIZE_MAX),
                 SIZE_MAX, true);
    }
  }
  map.SetFillStyle(kFillTransparent);
  DrawWorldLines();
}

void MapRenderer::Pass::DrawWorldLines() {
  map.SetDrawWidth(label < 2000 && label > 50 ? 2 : 1);
  const AirspaceTables& s = db.Shapes;
  for (std::size_t i = 0; i < s.WorldLines.size(); ++i) {
    const WorldShapeRec& shape = s.WorldLines[i];
    if (!BoxOverlaps(v, shape.North, shape.South, shape.East, shape.West)) continue;
    map.SetForeColor(shape.Kind == kWorldRiverKind ? c.River : c.Coast);
    PolylineOf(Thinned(self.worldLinesThin_, s.WorldLinePoints, s.WorldLines.size(), i, s.LinePointsOf(shape),
                       SIZE_MAX),
               SIZE_MAX, false);
  }
  map.SetDrawWidth(1);
}

void MapRenderer::Pass::DrawShapes() {
  const AirspaceTables& s = db.Shapes;
  constexpr std::size_t kMaxRun = 600;
  constexpr float kMargin = 0.5f;
  std::vector<DrawPoint>& buf = self.points_;
  if (buf.size() < kMaxRun) buf.resize(kMaxRun);
  for (const UserObjectRec& obj : s.UserObjects) {
    if (!BoxOverlaps(v, obj.North, obj.South, obj.East, obj.West)) continue;
    const bool filled = obj.Kind == kUserObjectFilledPolygon;
    map.SetDrawStyle(kDrawStyleSolid);
    map.SetDrawWidth(obj.Style);
    map.SetForeColor(obj.Color);
    map.SetFillColor(obj.Color);
    map.SetFillStyle(filled ? kFillSolid : kFillTransparent);
    std::size_t run = 0;
    auto flush = [&] {
      if (run >= 2) {
        if (filled)
          map.Polygon(buf.data(), run);
        else
          map.Polyline(buf.data(), run);
      }
      run = 0;
    };
    for (const ShapePoint& p : s.PointsOf(obj)) {
      const bool kept = p.Lat < v.MapNorth + kMargin && p.Lat > v.MapSouth - kMargin &&
                        (v.MapWraps ? (p.Lon > v.MapWest - kMargin || p.Lon < v.MapEast + kMargin)
                                    : (p.Lon > v.MapWest - kMargin && p.Lon < v.MapEast + kMargin));
      if (!kept) {
        flush();
        continue;
      }
      if (run == kMaxRun) flush();
      buf[run++] = {static_cast<float>(proj.X(p.Lon, p.Lat)), static_cast<float>(proj.Y(p.Lat))};
    }
    flush();
  }
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
}

void MapRenderer::Pass::DrawLatLong() {
  int step = 1;
  if (v.Scaling <= 500)
    step = 10;
  else if (v.Scaling <= 1000)
    step = 5;
  else if (v.Scaling <= 2000)
    step = 2;
  map.SetForeColor(c.LatLong);
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  const int baseLat = static_cast<int>(std::floor(v.CntrLat));
  for (int k = -6; k <= 6; ++k) {
    const int lat = baseLat + k * step;
    if (lat > 90 || lat < -90) continue;
    const double y = proj.Y(lat);
    if (!(y > 0 && y < height)) continue;
    map.Line(0, y, width, y);
    map.SetCurrentX(width - 500);
    map.SetCurrentY(y - 100);
    map.Print(LatToShortText(lat));
  }
  const int baseLon = static_cast<int>(std::floor(v.CntrLon));
  for (int k = -6; k <= 6; ++k) {
    const int lon = baseLon + k * step;
    if (v.RoundWorld) {
      // Meridians converge: a line between the projected ends at the top and
      // bottom edges, the label at the bottom.
      const double xTop = proj.X(lon, v.MapNorth), xBottom = proj.X(lon, v.MapSouth);
      if ((xTop <= 0 && xBottom <= 0) || (xTop >= width && xBottom >= width)) continue;
      map.Line(xTop, proj.Y(v.MapNorth), xBottom, proj.Y(v.MapSouth));
      const double xLabel = proj.X(lon, MapLatFromY(v, height));
      map.SetCurrentX(xLabel + 50);
      map.SetCurrentY(height - 500);
      map.Print(LonShortText(lon));
      continue;
    }
    const double x = proj.X(lon, v.CntrLat);
    if (!(x > 0 && x < width)) continue;
    map.Line(x, 0, x, height);
    map.SetCurrentX(x + 50);
    map.SetCurrentY(height - 500);
    map.Print(LonShortText(lon));
  }
}

void MapRenderer::Pass::DrawAirspaces() {
  const AirspaceTables& s = db.Shapes;
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  map.SetFillStyle(kFillTransparent);
  if (self.airspaceClassesFor_ != s.Airspaces.data() || self.airspaceClasses_.size() != s.Airspaces.size()) {
    self.airspaceClassesFor_ = s.Airspaces.data();
    self.airspaceClasses_.resize(s.Airspaces.size());
    for (std::size_t i = 0; i < s.Airspaces.size(); ++i)
      self.airspaceClasses_[i] = AirspaceClassOf(s.Airspaces[i].Class.View());
  }
  for (std::size_t i = 0; i < s.Airspaces.size(); ++i) {
    const AirspaceRec& a = s.Airspaces[i];
    if (a.PointCount <= 0) continue;
    if (!BoxOverlaps(v, a.North, a.South, a.East, a.West)) continue;
    const AirspaceClass cls = self.airspaceClasses_[i];
    bool on = false;
    Colour colour = c.Air1;
    switch (cls) {
      case AirspaceClass::Ctrz: on = layers.btnCtrz; colour = c.Ctrz; break;
      case AirspaceClass::ADA: on = layers.MenuADA; break;
      case AirspaceClass::ADIZ: on = layers.MenuADIZ; break;
      case AirspaceClass::BZ: on = layers.MenuBZ; break;
      case AirspaceClass::RA: on = layers.menuRA; break;
      case AirspaceClass::TCA: on = layers.menuTCA; break;
      case AirspaceClass::CTA:
      case AirspaceClass::Unknown: on = layers.btnAir1; break;
      case AirspaceClass::ARTCC: on = layers.menuARTCC; colour = c.Air2; break;
      case AirspaceClass::ACC: on = layers.MenuACC; colour = c.Air2; break;
      case AirspaceClass::FIR: on = layers.btnAir2; colour = c.Air2; break;
      case AirspaceClass::OCA: on = layers.MenuOCA; colour = c.Air2; break;
      case AirspaceClass::UIR: on = layers.menuUIR; colour = c.Air2; break;
    }
    if (!on) continue;
    // Control zones up to 300 NM, other areas below 1000 NM.
    if (cls == AirspaceClass::Ctrz ? label > 300 : label >= 1000) continue;
    map.SetForeColor(colour);
    PolylineOf(Thinned(self.airspacesThin_, s.AirspacePoints, s.Airspaces.size(), i, s.PointsOf(a), 5000), SIZE_MAX,
               false);
  }
}

void MapRenderer::Pass::DrawActiveZone(const ActiveZone& zone) {
  const auto& list = db.Shapes.Airspaces;
  if (zone.AirspaceIndex < 0 || static_cast<std::size_t>(zone.AirspaceIndex) >= list.size()) return;
  const AirspaceRec& a = list[static_cast<std::size_t>(zone.AirspaceIndex)];
  map.SetForeColor(zone.AircraftInside ? c.AcAtCtrz : c.Ctrz);
  map.SetDrawWidth(1);
  PolylineOf(db.Shapes.PointsOf(a), 1000, false);
}

// The violation watch: the control zones the aircraft is in, outlined in
// the "AC in Ctrz" colour.
void MapRenderer::Pass::DrawViolations() {
  std::vector<int32_t> zones;
  ZonesHolding(db.Shapes, over->Sim.Lat, over->Sim.Lon, zones);
  map.SetForeColor(c.AcInCtrz);
  map.SetDrawWidth(2);
  map.SetFillStyle(kFillTransparent);
  for (int32_t z : zones) PolylineOf(db.Shapes.PointsOf(db.Shapes.Airspaces[static_cast<std::size_t>(z)]), 1000, true);
  map.SetDrawWidth(1);
}

void MapRenderer::Pass::StatusFields() {
  MapGeodesy geo(db.MagVar);
  if (over->Sim.Connected) {
    self.magVarStatus_ = MagVarText(over->Sim.MagVar, geo);
    self.positionStatus_ = PositionText(v, over->Sim.Lat, over->Sim.Lon, geo);
  } else {
    const double variation =
        geo.MagVarAt(static_cast<int>(std::floor(v.CntrLat)), static_cast<int>(std::floor(v.CntrLon)));
    self.magVarStatus_ = MagVarText(variation, geo);
    self.positionStatus_ = PositionText(v, v.CntrLat, v.CntrLon, geo);
  }
}

void MapRenderer::Pass::DrawCompass() {
  // A small rose in the lower right corner, turned by the variation at the
  // centre, with a short arrow to magnetic north and the variation below.
  const double variation = MagVarAt(db.MagVar, v.CntrLat, v.CntrLon);
  const double cx = width - 600, cy = height - 700, r = 300;
  const std::string savedFont = map.FontName();
  const float savedSize = map.FontSize();
  map.SetFontName("Small Fonts");
  map.SetFontSize(6);
  map.SetForeColor(c.Comp);
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
  map.Circle(cx, cy, r);
  for (int bearing = 0; bearing < 360; bearing += 90) {
    const double a = (bearing + variation) * kDegToRad;
    map.Line(std::round(cx + r * std::sin(a)), std::round(cy - r * std::cos(a)),
             std::round(cx + r * 1.3 * std::sin(a)), std::round(cy - r * 1.3 * std::cos(a)));
  }
  const double north = variation * kDegToRad;
  const double tipX = std::round(cx + r * 0.8 * std::sin(north)), tipY = std::round(cy - r * 0.8 * std::cos(north));
  map.Line(cx, cy, tipX, tipY);
  const double left = north - 2.6, right = north + 2.6;
  map.Line(tipX, tipY, std::round(tipX + 80 * std::sin(left)), std::round(tipY - 80 * std::cos(left)));
  map.Line(tipX, tipY, std::round(tipX + 80 * std::sin(right)), std::round(tipY - 80 * std::cos(right)));
  const std::string text = VarToText(variation);
  map.SetCurrentX(cx - map.TextWidth(text) / 2);
  map.SetCurrentY(cy + r * 1.4);
  map.Print(text);
  map.SetFontName(savedFont);
  map.SetFontSize(savedSize);
}

void MapRenderer::Pass::DrawMsa() {
  const std::string savedFont = map.FontName();
  const float savedSize = map.FontSize();
  map.SetFontName("Tahoma");
  map.SetForeColor(c.Msa);
  map.SetDrawWidth(1);
  map.SetFillStyle(kFillTransparent);
  for (const MsaRec& m : db.Shapes.MsaCells) {
    const float north = m.FloatValue(0), west = m.FloatValue(1), south = m.FloatValue(2), east = m.FloatValue(3);
    if (!BoxOverlaps(v, north, south, east, west)) continue;
    const double x1 = proj.X(west, north), y1 = proj.Y(north);
    const double x2 = proj.X(east, south), y2 = proj.Y(south);
    map.Line(x1, y1, x2, y2, LineShape::Box);
    // Hundreds of feet: the thousands large, the last hundred small.
    const int32_t hundreds = CLng(m.FloatValue(4) / 100.0);
    if (hundreds <= 0) continue;
    const std::string big = std::to_string(hundreds / 10);
    const std::string small = std::to_string(hundreds % 10);
    map.SetFontSize(14);
    const double bigWidth = map.TextWidth(big), bigHeight = map.TextHeight(big);
    map.SetFontSize(8);
    const double smallWidth = map.TextWidth(small);
    const double x = (x1 + x2) / 2 - (bigWidth + smallWidth) / 2, y = (y1 + y2) / 2 - bigHeight / 2;
    map.SetFontSize(14);
    map.SetCurrentX(x);
    map.SetCurrentY(y);
    map.Print(big, PrintEnd::StayOnLine);
    map.SetFontSize(8);
    map.Print(small, PrintEnd::StayOnLine);
  }
  map.SetFontName(savedFont);
  map.SetFontSize(savedSize);
}

// ------------------------------------------------------------ labels

void MapRenderer::Pass::PrintLines(LabelPlace place) {
  double y = place.Y;
  ForEachTextLine(self.text_, [&](std::string_view line) {
    map.SetCurrentX(place.X);
    map.SetCurrentY(y);
    map.Print(line);
    y = map.CurrentY();
  });
}

void MapRenderer::Pass::PrintLabel(float x, float y, int kind) {
  if (self.text_.empty()) return;
  PrintLines(self.declutter_.PlaceLabel(x, y, self.text_, kind));
}

// ------------------------------------------------------------ airports

void MapRenderer::Pass::AirportLoop() {
  const auto& airports = db.Airports.Airports;
  const LatLon* at = PositionsOf(self.airportPositions_, airports, [](const AirportRec& a) { return IsAirportSlotUsed(a); });
  for (std::size_t i = 0; i < airports.size(); ++i) {
    if (!InView(v, at[i].Lat, at[i].Lon)) continue;
    const AirportRec& ap = airports[i];
    const int32_t index = static_cast<int32_t>(i);
    if (label <= 100) DrawRunwayItems(ap, index);

    const float x = static_cast<float>(proj.X(ap.Lon, ap.Lat)), y = static_cast<float>(proj.Y(ap.Lat));
    Place(x, y);
    navaid.lngColor(Pick(c.Ap, kHiliteAirport, index));
    if (label < 200) {
      std::string& name = navaid.strName;
      name.clear();
      if (label < 150) {
        if (layers.ShowIcao) name.assign(ap.Icao.Trimmed());
        if (layers.ShowName) {
          name += ' ';
          name += ap.Name.Trimmed();
        }
      }
      navaid.AirportLabelKind = kLabelNavaid;
      navaid.DrawAsAirport();
    } else {
      navaid.DrawAsAirportCircle();
    }
  }
}

void MapRenderer::Pass::DrawRunwayItems(const AirportRec& ap, int32_t apIndex) {
  // 1. Runways, every one 250 feet wide so that narrow strips stay visible.
  if (label <= 100) {
    navaid.lngColor(c.Taxi);
    navaid.intWidth = CInt(RunwayUnits(250, v.Scaling));
    for (const RunwayRec& rwy : ap.Runways) {
      Place(static_cast<float>(proj.X(rwy.Lon, rwy.Lat)), static_cast<float>(proj.Y(rwy.Lat)));
      navaid.sngCourse = rwy.TrueHeading;
      navaid.sngLength = static_cast<float>(RunwayUnits(rwy.LengthFeet, v.Scaling));
      navaid.DrawAsRwy();
    }
    map.SetDrawStyle(kDrawStyleSolid);
    map.SetFillStyle(kFillTransparent);
  }

  // 2. Runway end numbers and parking positions on a close view.
  if (label < 10) {
    map.SetForeColor(c.Parking);
    for (const RunwayRec& rwy : ap.Runways) {
      const double half = RunwayUnits(rwy.LengthFeet, v.Scaling) / 2 + 60;
      const double cx = proj.X(rwy.Lon, rwy.Lat), cy = proj.Y(rwy.Lat);
      const double s = std::sin(rwy.TrueHeading * kDegToRad), co = std::cos(rwy.TrueHeading * kDegToRad);
      for (int end = 0; end < 2; ++end) {
        // The low end's number stands before its threshold, the high end's
        // beyond the other one.
        const double sign = end == 0 ? -1 : 1;
        const std::string designator = RunwayDesignator((end == 0 ? rwy.LowEnd : rwy.HighEnd).View());
        if (designator.empty()) continue;
        map.SetCurrentX(std::round(cx + sign * half * s - map.TextWidth(designator) / 2));
        map.SetCurrentY(std::round(cy - sign * half * co - map.TextHeight(designator) / 2));
        map.Print(designator);
      }
    }
    for (const ParkingRec& p : ap.Parking) {
      if (!InView(v, p.Lat, p.Lon)) continue;
      const double px = proj.X(p.Lon, p.Lat), py = proj.Y(p.Lat);
      map.SetDrawWidth(1);
      map.Circle(px, py, 20, c.Parking);
      if (label < 5) {
        const double a = p.Value * kDegToRad;
        map.Line(px, py, std::round(px + 80 * std::sin(a)), std::round(py - 80 * std::cos(a)), LineShape::Line,
                 c.Parking);
        std::string_view ident = p.Ident.Trimmed();
        if (!ident.empty()) {
          self.text2_.assign(ident);
          if (p.Number > 0) self.text2_ += ' ' + std::to_string(p.Number);
          map.SetCurrentX(px + 40);
          map.SetCurrentY(py + 20);
          map.Print(self.text2_);
        }
      }
    }
  }

  // 3. The ILS feathers at the runway ends they serve, never above 100 NM.
  if (layers.btnIls) {
    for (const RunwayRec& rwy : ap.Runways) {
      for (int end = 0; end < 2; ++end) {
        const int32_t ilsIndex = end == 0 ? rwy.LowIlsIndex : rwy.HighIlsIndex;
        if (ilsIndex < 0 || ilsIndex >= ap.IlsCount()) continue;
        const IlsRec& ils = ap.Ils[static_cast<std::size_t>(ilsIndex)];
        float runwayCourse = end == 0 ? rwy.TrueHeading : rwy.TrueHeading + 180.0f;
        if (runwayCourse >= 360.0f) runwayCourse -= 360.0f;
        const float course = ils.Values[1] > 0 && ils.Values[1] <= 360 ? ils.Values[1] : runwayCourse;
        // The threshold: half the runway back from its middle against the
        // end's heading.
        const double halfNm = std::trunc(rwy.LengthFeet / 3.2809) / 1852.0 / 2;
        const double a = runwayCourse * kDegToRad;
        const double lat = rwy.Lat - std::cos(a) * halfNm / 60;
        const double lon = rwy.Lon - std::sin(a) * halfNm / 60 / std::max(0.01, std::cos(rwy.Lat * kDegToRad));
        const float x = static_cast<float>(proj.X(lon, lat)), y = static_cast<float>(proj.Y(lat));
        Place(x, y);
        navaid.strName.assign(ils.Name.Trimmed());
        navaid.strCode.assign(ils.Ident.Trimmed());
        navaid.strRwyID.assign(ils.Runway.Trimmed());
        navaid.sngCourse = course;
        navaid.sngFrequency = ils.Values[0];
        navaid.sngILSGlideAngle = ils.Values[2];
        navaid.blnILSType = ils.Values[2] > 0;
        navaid.sngLength = static_cast<float>(kIlsFeatherNm / 60.0 * v.Scaling);
        const bool lit = hi.Kind == kHiliteIls && hi.Index == apIndex && hi.SubIndex == ilsIndex;
        navaid.lngColor(lit ? c.Hilite : c.Ils);
        if (label <= 75)
          navaid.DrawAsILS();
        else
          navaid.DrawAsShortILS();
        self.text_.clear();
        if (layers.ShowIcao) {
          self.text_ += navaid.strName;
          self.text_ += "  ";
          self.text_ += navaid.strCode;
        }
        if (layers.ShowFreq) {
          if (!self.text_.empty()) self.text_ += "\r\n";
          self.text_ += Format(course, "000");
          self.text_ += ' ';
          self.text_ += Format(ils.Values[0], "000.00");
        }
        PrintLabel(x + 60, y + 60, kLabelNavaid);
      }
    }
  }
}

// ------------------------------------------------------------ route

namespace {

constexpr uint32_t kBendsUnknown = UINT32_MAX;

}  // namespace

// Marks the points of a line that keep every left-out point within
// `tolerance` (degrees, longitude taken at the equator's scale) of the line
// through the kept ones: Douglas-Peucker, with a stack of stretches rather
// than recursion. The ends are always kept.
void KeepShapePoints(const std::vector<ShapePoint>& pts, double tolerance, std::vector<uint8_t>& keep,
                     std::vector<std::pair<uint32_t, uint32_t>>& stack) {
  const std::size_t n = pts.size();
  keep.assign(n, 0);
  if (n == 0) return;
  keep[0] = keep[n - 1] = 1;
  stack.clear();
  if (n > 2) stack.emplace_back(0, static_cast<uint32_t>(n - 1));
  const double tol2 = tolerance * tolerance;
  while (!stack.empty()) {
    const auto [a, b] = stack.back();
    stack.pop_back();
    const double ax = pts[a].Lon, ay = pts[a].Lat;
    const double dx = pts[b].Lon - ax, dy = pts[b].Lat - ay;
    const double len2 = dx * dx + dy * dy;
    double worst = -1;
    uint32_t at = a;
    for (uint32_t i = a + 1; i < b; ++i) {
      const double px = pts[i].Lon - ax, py = pts[i].Lat - ay;
      double d2;
      if (len2 == 0) {
        d2 = px * px + py * py;
      } else {
        // Distance to the segment (not the endless line), so that a shape
        // doubling back on itself keeps its far point.
        const double t = std::clamp((px * dx + py * dy) / len2, 0.0, 1.0);
        const double ex = px - t * dx, ey = py - t * dy;
        d2 = ex * ex + ey * ey;
      }
      if (d2 > worst) {
        worst = d2;
        at = i;
      }
    }
    if (worst > tol2) {
      keep[at] = 1;
      if (at - a > 1) stack.emplace_back(a, at);
      if (b - at > 1) stack.emplace_back(at, b);
    }
  }
}

namespace {

// The length of a leg for the choice between a straight and a bent line;
// dist < 0 when not known yet. A leg that is short on the flat chart is short
// on the sphere too, and needs no great-circle distance.
double LegLength(float lat1, float lon1, float lat2, float lon2, double dist) {
  if (dist >= 0) return dist;
  const double dLat = lat2 - lat1, dLon = LonDelta(lon1, lon2) * std::cos((lat1 + lat2) * (kDegToRad / 2));
  return (dLat * dLat + dLon * dLon) * 3600 < 80.0 * 80.0 ? 0 : GcDistance(lat1, lon1, lat2, lon2);
}

// The points between the ends of a leg longer than kBendLegNm: along the
// great circle in steps of 16 NM (the last piece runs to the true end).
template <typename Sink>
void BendPoints(float lat1, float lon1, float lat2, float lon2, double dist, Sink&& sink) {
  if (dist <= kBendLegNm) return;
  const GreatCircleSteps circle(lat1, lon1, lat2, lon2);
  for (double along = 16; along < dist; along += 16) sink(circle.At(along / dist));
}

}  // namespace

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

// ------------------------------------------------------------ airways

void MapRenderer::Pass::PrepareAirwayPaths(const std::vector<AirwayRec>& airways, AirwayPaths& paths) {
  const auto& ints = db.Navaids.Intersections;
  if (paths.Ints == ints.data() && paths.IntCount == ints.size() && paths.Segments == airways.data() &&
      paths.SegmentCount == airways.size())
    return;
  paths.Ints = ints.data();
  paths.IntCount = ints.size();
  paths.Segments = airways.data();
  paths.SegmentCount = airways.size();
  paths.Ends.assign(airways.size(), AirwayEnds{std::nanf(""), 0, std::nanf(""), 0});
  paths.BendsOf.assign(airways.size(), AirwayBends{kBendsUnknown, 0});
  paths.Bends.clear();
  const std::size_t slots = ints.size();
  for (std::size_t i = 0; i < airways.size(); ++i) {
    const AirwayRec& seg = airways[i];
    if (seg.FromIndex < 0 || seg.ToIndex < 0 || static_cast<std::size_t>(seg.FromIndex) >= slots ||
        static_cast<std::size_t>(seg.ToIndex) >= slots)
      continue;
    const IntersectionRec& a = ints[static_cast<std::size_t>(seg.FromIndex)];
    const IntersectionRec& b = ints[static_cast<std::size_t>(seg.ToIndex)];
    // The bends are worked out when the segment is first drawn.
    if (!a.Ident.IsEmptySlot() && !b.Ident.IsEmptySlot()) paths.Ends[i] = {a.Lat, a.Lon, b.Lat, b.Lon};
  }
}

void MapRenderer::Pass::AirwayLoop(const std::vector<AirwayRec>& airways, AirwayPaths& paths, Colour colour,
                                   int hiliteKind) {
  PrepareAirwayPaths(airways, paths);
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  const bool labels = label <= 100 && (layers.ShowIcao || layers.ShowName);
  const DrawPoint* bends = paths.Bends.data();
  for (std::size_t i = 0; i < paths.Ends.size(); ++i) {
    const AirwayEnds& p = paths.Ends[i];
    if (!InView(v, p.Lat1, p.Lon1) && !InView(v, p.Lat2, p.Lon2)) continue;
    // The lines of a run of segments in one colour are drawn in one call,
    // before any label that must lie over them.
    const Colour segColour = Pick(colour, hiliteKind, static_cast<int32_t>(i));
    if (segColour != map.ForeColor()) {
      FlushSegments();
      map.SetForeColor(segColour);
    }
    AirwayBends& bent = paths.BendsOf[i];
    if (bent.First == kBendsUnknown) {
      bent.First = static_cast<uint32_t>(paths.Bends.size());
      BendPoints(p.Lat1, p.Lon1, p.Lat2, p.Lon2, LegLength(p.Lat1, p.Lon1, p.Lat2, p.Lon2, -1),
                 [&](const LatLon& q) { paths.Bends.push_back({q.Lon, q.Lat}); });
      bent.Count = static_cast<uint32_t>(paths.Bends.size() - bent.First);
      bends = paths.Bends.data();
    }
    const double x1 = proj.X(p.Lon1, p.Lat1), y1 = proj.Y(p.Lat1);
    const double x2 = proj.X(p.Lon2, p.Lat2), y2 = proj.Y(p.Lat2);
    double px = x1, py = y1;
    for (uint32_t k = 0; k < bent.Count; ++k) {
      const DrawPoint& q = bends[bent.First + k];
      const double x = proj.X(q.X, q.Y), y = proj.Y(q.Y);
      self.segments_.push_back({px, py, x, y});
      px = x;
      py = y;
    }
    self.segments_.push_back({px, py, x2, y2});
    if (labels) {
      FlushSegments();
      const AirwayRec& seg = airways[i];
      const IntersectionRec& a = db.Navaids.Intersections[static_cast<std::size_t>(seg.FromIndex)];
      const double dist = GcDistance(p.Lat1, p.Lon1, p.Lat2, p.Lon2);
      self.text_.assign(seg.Name.Trimmed());
      if (label < 75) {
        self.text_ += "\r\n";
        self.text_ += Format(Wrap360(GcCourse(p.Lat1, p.Lon1, p.Lat2, p.Lon2) - a.MagVar), "000");
        self.text_ += "\xB0 ";
        self.text_ += Format(dist, "0");
        self.text_ += "NM";
      }
      PrintLabel(static_cast<float>((x1 + x2) / 2), static_cast<float>((y1 + y2) / 2), kLabelSideOnly);
    }
  }
  FlushSegments();
}

// ------------------------------------------------------------ navaids

void MapRenderer::Pass::VorLoop() {
  const auto& vors = db.Navaids.Vors;
  const LatLon* at = PositionsOf(self.vorPositions_, vors, [](const VorRec&) { return true; });
  char type[8];
  for (std::size_t i = 0; i < vors.size(); ++i) {
    if (!InView(v, at[i].Lat, at[i].Lon)) continue;
    const VorRec& vor = vors[i];
    const float x = static_cast<float>(proj.X(vor.Lon, vor.Lat)), y = static_cast<float>(proj.Y(vor.Lat));
    Place(x, y);
    navaid.lngColor(Pick(c.Vor, kHiliteVor, static_cast<int32_t>(i)));
    std::snprintf(type, sizeof type, "%d", static_cast<int>(vor.TypeCode));
    if (label < 200) {
      navaid.intRadius = CInt(vor.Value / 60.0 * v.Scaling);
      navaid.sngMagVar = vor.MagVar;
      navaid.DrawAsVOR(type);
    } else if (label < kVorSymbolLimit) {
      navaid.intRadius = 180;
      navaid.DrawAsVorSymbol(type);
    } else {
      navaid.DrawAsVorSquare();
    }
    if (label < 150 && (layers.ShowIcao || layers.ShowName || layers.ShowFreq)) {
      self.text_.clear();
      if (layers.ShowIcao) self.text_.assign(vor.Ident.Trimmed());
      if (layers.ShowName) {
        if (!self.text_.empty()) self.text_ += "\r\n";
        self.text_ += vor.Name.Trimmed();
      }
      // The frequency's line is measured with the others and printed by
      // PrintFrequency.
      self.text2_ = self.text_;
      if (layers.ShowFreq) {
        if (!self.text2_.empty()) self.text2_ += "\r\n";
        self.text2_ += Format(vor.Frequency, "000.00");
      }
      const LabelPlace place = self.declutter_.PlaceLabel(x + 220, y - 100, self.text2_, kLabelNavaid);
      double nextY = place.Y;
      if (!self.text_.empty()) {
        PrintLines(place);
        nextY = map.CurrentY();
      }
      if (layers.ShowFreq) {
        navaid.sngFrequency = vor.Frequency;
        map.SetCurrentX(place.X);
        map.SetCurrentY(nextY);
        navaid.PrintFrequency();
      }
    }
  }
}

void MapRenderer::Pass::NdbLoop() {
  const auto& ndbs = db.Navaids.Ndbs;
  const LatLon* at = PositionsOf(self.ndbPositions_, ndbs, [](const NdbRec&) { return true; });
  for (std::size_t i = 0; i < ndbs.size(); ++i) {
    if (!InView(v, at[i].Lat, at[i].Lon)) continue;
    const NdbRec& ndb = ndbs[i];
    const float x = static_cast<float>(proj.X(ndb.Lon, ndb.Lat)), y = static_cast<float>(proj.Y(ndb.Lat));
    Place(x, y);
    navaid.lngColor(Pick(c.Ndb, kHiliteNdb, static_cast<int32_t>(i)));
    navaid.intRadius = 180;
    if (label < 200)
      navaid.DrawAsNDB();
    else
      navaid.DrawAsNDBSymbol();
    if (label < 150 && (layers.ShowIcao || layers.ShowName || layers.ShowFreq)) {
      self.text_.clear();
      if (layers.ShowIcao) self.text_.assign(ndb.Ident.Trimmed());
      if (layers.ShowName) {
        if (!self.text_.empty()) self.text_ += "\r\n";
        self.text_ += ndb.Name.Trimmed();
      }
      if (layers.ShowFreq) {
        if (!self.text_.empty()) self.text_ += "\r\n";
        self.text_ += Format(ndb.Frequency, "000.00");
      }
      PrintLabel(x + 120, y - 60, kLabelNavaid);
    }
  }
}

void MapRenderer::Pass::MarkerLoop() {
  map.SetForeColor(c.Ils);
  for (const MarkerRec& m : db.Shapes.Markers) {
    if (!InView(v, m.Lat, m.Lon)) continue;
    Place(static_cast<float>(proj.X(m.Lon, m.Lat)), static_cast<float>(proj.Y(m.Lat)));
    navaid.lngColor(c.Ils);
    navaid.intRadius = MarkerRadius(m.Kind.View());
    navaid.DrawAsMarker();
  }
}

void MapRenderer::Pass::AirwayFlags() {
  const auto& n = db.Navaids;
  const std::size_t sizes[3] = {n.Intersections.size(), n.VictorAirways.size(), n.JetAirways.size()};
  if (self.airwayFlagsFor_ == &db && std::equal(sizes, sizes + 3, self.airwayFlagsSizes_)) return;
  self.airwayFlagsFor_ = &db;
  std::copy(sizes, sizes + 3, self.airwayFlagsSizes_);
  self.onVictor_.assign(sizes[0], 0);
  self.onJet_.assign(sizes[0], 0);
  auto mark = [&](const std::vector<AirwayRec>& list, std::vector<uint8_t>& flags) {
    for (const AirwayRec& seg : list) {
      if (seg.FromIndex >= 0 && static_cast<std::size_t>(seg.FromIndex) < sizes[0]) flags[static_cast<std::size_t>(seg.FromIndex)] = 1;
      if (seg.ToIndex >= 0 && static_cast<std::size_t>(seg.ToIndex) < sizes[0]) flags[static_cast<std::size_t>(seg.ToIndex)] = 1;
    }
  };
  mark(n.VictorAirways, self.onVictor_);
  mark(n.JetAirways, self.onJet_);
}

void MapRenderer::Pass::IntersectionLoop() {
  AirwayFlags();
  const auto& ints = db.Navaids.Intersections;
  const LatLon* at =
      PositionsOf(self.intersectionPositions_, ints, [](const IntersectionRec& r) { return !r.Ident.IsEmptySlot(); });
  for (std::size_t i = 0; i < ints.size(); ++i) {
    if (!InView(v, at[i].Lat, at[i].Lon)) continue;
    const IntersectionRec& rec = ints[i];
    // Shown for the intersection switch, or as a point of a shown airway.
    bool shown = layers.btnInter;
    if (!shown && layers.btnVictor && self.onVictor_[i]) shown = true;
    if (!shown && layers.btnJet && self.onJet_[i]) shown = true;
    if (!shown) continue;
    Place(static_cast<float>(proj.X(rec.Lon, rec.Lat)), static_cast<float>(proj.Y(rec.Lat)));
    navaid.lngColor(Pick(c.Int, kHiliteIntersection, static_cast<int32_t>(i)));
    navaid.sngLength = 60;
    navaid.DrawAsIntersection();
    if (label < 150) {
      self.text_.assign(rec.Ident.Trimmed());
      PrintLabel(navaid.sngCenterX + 80, navaid.sngCenterY + 20, kLabelNavaid);
    }
  }
}

void MapRenderer::Pass::FixLoop() {
  if (label >= 100) return;
  const auto& fixes = db.Navaids.Fixes;
  for (std::size_t i = 0; i < fixes.size(); ++i) {
    const FixRec& fix = fixes[i];
    if (!InView(v, fix.Lat, fix.Lon)) continue;
    Place(static_cast<float>(proj.X(fix.Lon, fix.Lat)), static_cast<float>(proj.Y(fix.Lat)));
    navaid.lngColor(Pick(c.Fix, kHiliteFix, static_cast<int32_t>(i)));
    navaid.sngLength = 60;
    navaid.DrawAsIntersection();
    if (label <= 50) {
      self.text_.assign(fix.Ident.Trimmed());
      PrintLabel(navaid.sngCenterX + 80, navaid.sngCenterY + 20, kLabelNavaid);
    }
  }
}

void MapRenderer::Pass::UserWaypointLoop() {
  for (const UserWaypointRec& w : db.UserWaypoints) {
    if (!InView(v, w.Lat, w.Lon)) continue;
    if (w.Ident.IsEmptySlot()) continue;
    Place(static_cast<float>(proj.X(w.Lon, w.Lat)), static_cast<float>(proj.Y(w.Lat)));
    navaid.lngColor(c.User);
    navaid.sngLength = 60;
    navaid.DrawAsIntersection();
    if (label < 150) {
      self.text_.assign(w.Ident.Trimmed());
      PrintLabel(navaid.sngCenterX + 80, navaid.sngCenterY + 20, kLabelNavaid);
    }
  }
}

// ------------------------------------------------------------ recorded track

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

}  // namespace orv
