#include "map/RenderPass.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "map/RecordingTarget.h"
#include "support/SmallWorld.h"

namespace orv {
namespace {

// Zoom steps by their labels.
constexpr int16_t kL1 = 0, kL2 = 1, kL3 = 2, kL10 = 4, kL20 = 5, kL30 = 6, kL75 = 8, kL100 = 9, kL150 = 10,
                  kL200 = 11, kL300 = 12, kL400 = 13, kL900 = 18, kL2000 = 19;

// Every colour of the pass different, so that an operation tells its layer.
Settings DistinctColours() {
  Settings s;
  s.Map = 0xFFFFFF;
  s.Coast = 1, s.Land = 2, s.River = 3, s.LatLong = 4, s.Ctrz = 5, s.Air1 = 6, s.Air2 = 7, s.Comp = 8;
  s.Msa = 9, s.Taxi = 10, s.Rwy = 11, s.Parking = 12, s.Ils = 13, s.Ap = 14, s.Route = 15, s.Jet = 16;
  s.Victor = 17, s.Vor = 18, s.Ndb = 19, s.Int = 20, s.Fix = 21, s.User = 22, s.Hilite = 23, s.MovAc = 24;
  s.AcAtCtrz = 25, s.AcInCtrz = 26;
  return s;
}

class RenderPassTest : public ::testing::Test {
protected:
  RenderPassTest() {
    test::BuildSmallWorld(db);
    view.CntrLat = 50.0f;
    view.CntrLon = 8.0f;
  }

  void Draw(int16_t zoomIndex, int32_t scaling = 0) {
    view.ZoomIndex = zoomIndex;
    view.Scaling = scaling ? scaling : ZoomTable[static_cast<std::size_t>(zoomIndex)].Scale;
    map.ClearOps();
    MapScene scene{view, colours, layers, db, plan, highlight, &overlays, registry};
    renderer.DrawMap(scene, map, backBuffer ? &*backBuffer : nullptr);
  }

  // Index of the first operation drawn in this colour, or -1.
  long First(Colour colour) const {
    const auto& ops = map.Ops();
    for (std::size_t i = 0; i < ops.size(); ++i)
      if (ops[i].Kind != DrawOpKind::Cls && ops[i].Color == colour) return static_cast<long>(i);
    return -1;
  }
  int Count(Colour colour, DrawOpKind kind) const {
    return static_cast<int>(std::count_if(map.Ops().begin(), map.Ops().end(), [&](const DrawOp& op) {
      return op.Color == colour && op.Kind == kind;
    }));
  }
  // Ground polygons: filled in the taxi colour (runways are filled with RWY=).
  int GroundPolygons() const {
    return static_cast<int>(std::count_if(map.Ops().begin(), map.Ops().end(), [&](const DrawOp& op) {
      return op.Kind == DrawOpKind::Polygon && op.FillColor == colours.Taxi;
    }));
  }
  int MarkerCircles() const {
    return static_cast<int>(std::count_if(map.Ops().begin(), map.Ops().end(), [&](const DrawOp& op) {
      return op.Kind == DrawOpKind::Circle && op.Color == colours.Ils && op.Radius == kOuterMarkerRadius;
    }));
  }
  bool HasText(std::string_view text) const {
    return std::any_of(map.Ops().begin(), map.Ops().end(),
                       [&](const DrawOp& op) { return op.Kind == DrawOpKind::Text && op.Text == text; });
  }
  std::vector<std::string> OpsIn(Colour colour) const {
    std::vector<std::string> out;
    for (const DrawOp& op : map.Ops())
      if (op.Color == colour && op.Kind != DrawOpKind::Cls) out.push_back(map.Describe(op));
    return out;
  }

  NavDatabase db;
  FlightPlan plan;
  Settings colours = DistinctColours();
  MapLayers layers;
  ViewState view;
  MapHighlight highlight;
  MapOverlays overlays;
  RecordingTarget map;
  std::optional<RecordingTarget> backBuffer;
  const MapLayerRegistry* registry = nullptr;
  MapRenderer renderer;
};

TEST_F(RenderPassTest, LayersFollowTheFixedOrder) {
  layers = MapLayers{};
  layers.btnMsa = layers.btnJet = layers.btnVictor = layers.btnInter = layers.btnFix = true;
  test::BuildSmallPlan(plan);
  Draw(kL10);
  ASSERT_EQ(map.Ops().front().Kind, DrawOpKind::Cls);
  // Coast, lake, grid, zones, compass, MSA, ground, airports (runways in the
  // taxi colour, then ILS, then the symbol), route, jet, victor, VOR, NDB,
  // intersections, fixes, user waypoints.
  const Colour order[] = {colours.Coast, colours.River, colours.LatLong, colours.Ctrz, colours.Air2,
                          colours.Comp,  colours.Msa,   colours.Taxi,    colours.Ils,  colours.Ap,
                          colours.Route, colours.Jet,   colours.Victor,  colours.Vor,  colours.Ndb,
                          colours.Int,   colours.Fix,   colours.User};
  long previous = -1;
  for (Colour c : order) {
    const long at = First(c);
    ASSERT_GT(at, previous) << "colour " << c;
    previous = at;
  }
  // The land is one polygon filled by the settings (FILL=0: outline only).
  EXPECT_EQ(Count(colours.Coast, DrawOpKind::Polygon), 1);
  for (const DrawOp& op : map.Ops()) {
    if (op.Kind == DrawOpKind::Polygon && op.Color == colours.Coast) { EXPECT_EQ(op.FillStyle, kFillTransparent); }
  }
}

TEST_F(RenderPassTest, ZoomThresholdsOfTheLayers) {
  layers.btnMsa = true;
  // MSA at 300 but not at 400.
  Draw(kL300);
  EXPECT_EQ(Count(colours.Msa, DrawOpKind::Box), 1);
  EXPECT_TRUE(HasText("4"));  // 4300 ft: "4" large, "3" small
  EXPECT_TRUE(HasText("3"));
  Draw(kL400);
  EXPECT_EQ(Count(colours.Msa, DrawOpKind::Box), 0);

  // Ground polygons and taxiways at 10, not at 20; designators only at 1 and 2.
  Draw(kL10);
  EXPECT_EQ(GroundPolygons(), 1);
  EXPECT_FALSE(HasText("A"));
  Draw(kL20);
  EXPECT_EQ(GroundPolygons(), 0);
  Draw(kL2);
  EXPECT_TRUE(HasText("A"));
  Draw(kL3);
  EXPECT_FALSE(HasText("A"));

  // Control zones up to 300, other areas below 1000.
  Draw(kL300);
  EXPECT_EQ(Count(colours.Ctrz, DrawOpKind::Polyline), 1);
  Draw(kL400);
  EXPECT_EQ(Count(colours.Ctrz, DrawOpKind::Polyline), 0);
  EXPECT_EQ(Count(colours.Air2, DrawOpKind::Polyline), 1);
  Draw(kL2000);
  EXPECT_EQ(Count(colours.Air2, DrawOpKind::Polyline), 0);

  // River lines: width 2 between 50 and 2000 exclusive, else 1.
  Draw(kL100);
  for (const DrawOp& op : map.Ops()) {
    if (op.Kind == DrawOpKind::Polyline && op.Color == colours.River) { EXPECT_EQ(op.DrawWidth, 2); }
  }
  Draw(kL30);
  for (const DrawOp& op : map.Ops()) {
    if (op.Kind == DrawOpKind::Polyline && op.Color == colours.River) { EXPECT_EQ(op.DrawWidth, 1); }
  }
}

TEST_F(RenderPassTest, IlsFeatherFormsByLabel) {
  Draw(kL75);
  EXPECT_TRUE(HasText("ILS IXX"));
  EXPECT_TRUE(HasText("Rwy 07 IXX 070\xB0"));
  Draw(kL100);
  EXPECT_FALSE(HasText("ILS IXX"));
  EXPECT_TRUE(HasText("IXX"));  // the short form prints the code alone
  EXPECT_EQ(Count(colours.Ils, DrawOpKind::Line), 4);
  Draw(kL150);
  EXPECT_EQ(First(colours.Ils), -1);
  layers.btnIls = false;
  Draw(kL75);
  EXPECT_EQ(First(colours.Ils), -1);
}

TEST_F(RenderPassTest, ViolationWatchOutlinesTheControlZoneTheAircraftIsIn) {
  // The aircraft inside the CTR EDXX (and the FIR around it).
  overlays.Sim.Connected = true;
  overlays.Sim.Lat = 50.0f;
  overlays.Sim.Lon = 8.0f;
  auto outlines = [&](int16_t zoom) {
    Draw(zoom);
    return Count(colours.AcInCtrz, DrawOpKind::Polygon);
  };
  EXPECT_EQ(outlines(kL30), 0);  // Control Zone Violation unchecked
  layers.MenuViolation = true;
  ASSERT_EQ(outlines(kL30), 1);
  for (const DrawOp& op : map.Ops())
    if (op.Color == colours.AcInCtrz) { EXPECT_EQ(op.DrawWidth, 2); EXPECT_EQ(op.FillStyle, kFillTransparent); }
  EXPECT_EQ(outlines(kL100), 1);
  EXPECT_EQ(outlines(kL150), 0);  // only up to 100 NM
  layers.btnCtrz = false;
  EXPECT_EQ(outlines(kL30), 0);   // nor with the control zones hidden
  layers.btnCtrz = true;
  overlays.Sim.Lat = 50.5f;       // in the FIR only
  EXPECT_EQ(outlines(kL30), 0);
  overlays.Sim.Lat = 50.0f;
  overlays.Sim.Connected = false;
  EXPECT_EQ(outlines(kL30), 0);
}

TEST_F(RenderPassTest, MarkersNeedScalingOf14000) {
  Draw(kL30, 14000);
  EXPECT_EQ(MarkerCircles(), 1);
  Draw(kL30, 13999);  // a smaller window at 30 NM
  EXPECT_EQ(MarkerCircles(), 0);
}

TEST_F(RenderPassTest, AirportsOffTakeRunwaysIlsAndParkingButNotMarkers) {
  Draw(kL2);
  EXPECT_GT(Count(colours.Taxi, DrawOpKind::Polygon), 0);  // runway outline and ground polygon
  EXPECT_GT(Count(colours.Parking, DrawOpKind::Circle), 0);
  EXPECT_TRUE(HasText("GATE 1"));
  layers.btnAP = false;
  Draw(kL2);
  EXPECT_EQ(First(colours.Taxi), -1);
  EXPECT_EQ(First(colours.Parking), -1);
  EXPECT_EQ(First(colours.Ap), -1);
  EXPECT_FALSE(HasText("IXX"));
  EXPECT_EQ(MarkerCircles(), 1);  // the marker stays
}

TEST_F(RenderPassTest, RunwayAndAirportFigures) {
  Draw(kL10);
  // The runway: 10000 ft is 3047 whole metres, at Scaling 42000 about 1151.6
  // units long, drawn as one polygon filled with RWY=.
  const DrawOp* runway = nullptr;
  for (const DrawOp& op : map.Ops())
    if (op.Kind == DrawOpKind::Polygon && op.FillColor == colours.Rwy) runway = &op;
  ASSERT_NE(runway, nullptr);
  auto pts = map.PointsOf(*runway);
  ASSERT_EQ(pts.size(), 4u);
  const double length = std::hypot(pts[0].X - pts[1].X, pts[0].Y - pts[1].Y);
  EXPECT_NEAR(length, 1151.56, 1.5);
  EXPECT_NEAR(RunwayUnits(10000, 42000), 1151.5645, 1e-3);
  // The airport's circle of 30 at its projected place; its label at label 10.
  const auto ap = OpsIn(colours.Ap);
  ASSERT_FALSE(ap.empty());
  EXPECT_EQ(ap[0], "Circle 5000 3500 30");
  EXPECT_TRUE(HasText("EDXX"));
  // Labels stop at 150; symbols become dots above 900.
  Draw(kL150);
  EXPECT_EQ(OpsIn(colours.Ap)[0], "Circle 5000 3500 30");
  EXPECT_FALSE(HasText("EDXX"));
  Draw(kL2000);
  EXPECT_EQ(OpsIn(colours.Ap)[0], "PSet 5000 3500");
}

TEST_F(RenderPassTest, VorRoseAndLabel) {
  layers.ShowIcao = true;
  layers.ShowFreq = true;
  Draw(kL30);
  // FFM at 50.05N 8.3E: X = floor(5000 + 0.3 * 14000 * cos 50) = 7699, Y = 2800;
  // a range of 20 NM is a radius of 4667 units.
  const auto ops = OpsIn(colours.Vor);
  ASSERT_FALSE(ops.empty());
  EXPECT_EQ(ops[0], "Circle 7699 2800 4667");
  EXPECT_TRUE(HasText("FFM"));
  EXPECT_TRUE(HasText("114.20"));
  EXPECT_TRUE(HasText("350.00"));  // the NDB
  // No labels at 150 and above.
  Draw(kL150);
  EXPECT_FALSE(HasText("FFM"));
}

TEST_F(RenderPassTest, AirwayIntersectionsFollowTheirAirwaySwitch) {
  layers.btnInter = false;
  layers.btnVictor = true;
  Draw(kL30);
  EXPECT_TRUE(HasText("ALPHA"));
  EXPECT_TRUE(HasText("BRAVO"));
  EXPECT_FALSE(HasText("CHARL"));
  EXPECT_GT(Count(colours.Victor, DrawOpKind::Line), 0);
  EXPECT_EQ(First(colours.Jet), -1);
  layers.btnVictor = false;
  layers.btnJet = true;
  Draw(kL30);
  EXPECT_FALSE(HasText("ALPHA"));
  EXPECT_TRUE(HasText("CHARL"));
  EXPECT_TRUE(HasText("DELTA"));
  layers.btnJet = false;
  layers.btnInter = true;
  Draw(kL30);
  for (const char* name : {"ALPHA", "BRAVO", "CHARL", "DELTA"}) EXPECT_TRUE(HasText(name)) << name;
  // Intersection names stop at 150.
  Draw(kL150);
  EXPECT_FALSE(HasText("ALPHA"));
}

TEST_F(RenderPassTest, HighlightedObjectsTakeTheHiliteColour) {
  highlight = {kHiliteVor, 1, -1};
  Draw(kL30);
  const auto lit = OpsIn(colours.Hilite);
  ASSERT_FALSE(lit.empty());
  // TAU at 49.8N 7.6E; FFM keeps the VOR colour.
  EXPECT_EQ(lit[0].substr(0, 6), "Circle");
  EXPECT_EQ(OpsIn(colours.Vor)[0], "Circle 7699 2800 4667");

  highlight = {kHiliteIls, 0, 0};
  Draw(kL75);
  EXPECT_EQ(First(colours.Ils), -1);
  EXPECT_EQ(Count(colours.Hilite, DrawOpKind::Line), 4);

  highlight = {kHiliteAirport, 0, -1};
  Draw(kL30);
  EXPECT_EQ(OpsIn(colours.Hilite)[0], "Circle 5000 3500 30");

  layers.btnVictor = true;
  highlight = {kHiliteVictor, 0, -1};
  Draw(kL30);
  EXPECT_EQ(First(colours.Victor), -1);
  EXPECT_GT(Count(colours.Hilite, DrawOpKind::Line), 0);
}

TEST_F(RenderPassTest, PlanRouteAndWaypoints) {
  test::BuildSmallPlan(plan);
  Draw(kL30);
  const auto route = OpsIn(colours.Route);
  ASSERT_EQ(route.size(), 2u);
  EXPECT_EQ(route[0], "Line 5000 3500 7699 2800");
  EXPECT_TRUE(HasText("FFM"));
  EXPECT_TRUE(HasText("EDYY"));
  for (const DrawOp& op : map.Ops()) {
    if (op.Color == colours.Route) { EXPECT_EQ(op.DrawWidth, 2); }
  }

  // A leg longer than 100 NM is bent along its great circle in 16 NM pieces.
  plan = FlightPlan{};
  plan.Waypoints[0].Lat = 50.0f, plan.Waypoints[0].Lon = 8.0f;
  plan.Waypoints[1].Lat = 50.0f, plan.Waypoints[1].Lon = 12.0f;  // about 154 NM
  plan.LastRow = 1;
  Draw(kL200);
  const auto bent = OpsIn(colours.Route);
  EXPECT_EQ(bent.size(), 10u);  // nine of 16 NM and the rest
}

TEST_F(RenderPassTest, AntimeridianViewUsesTheOrForm) {
  NavDatabase world;
  VorRec vor;
  vor.Ident.Assign("EAST");
  vor.Lat = 0, vor.Lon = 179.5f, vor.TypeCode = 1;
  world.Navaids.Vors.push_back(vor);
  vor.Ident.Assign("WEST");
  vor.Lon = -179.5f;
  world.Navaids.Vors.push_back(vor);
  view.CntrLat = 0;
  view.CntrLon = 180;
  view.ZoomIndex = kL100;
  view.Scaling = ZoomTable[kL100].Scale;
  layers.ShowIcao = true;
  MapScene scene{view, colours, layers, world, plan};
  renderer.DrawMap(scene, map);
  EXPECT_TRUE(view.MapWraps);
  EXPECT_TRUE(HasText("EAST"));
  EXPECT_TRUE(HasText("WEST"));
}

TEST_F(RenderPassTest, StatusTextsAndBackBuffer) {
  backBuffer.emplace(400, 300, "VMap(0)");
  Draw(kL30);
  EXPECT_EQ(renderer.MagVarStatus().substr(0, 8), "MagVar: ");
  EXPECT_FALSE(renderer.PositionStatus().empty());
  ASSERT_FALSE(backBuffer->Ops().empty());
  EXPECT_EQ(backBuffer->Describe(backBuffer->Ops().back()), "Copy Map");
  EXPECT_EQ(backBuffer->PixelWidth(), map.PixelWidth());
  EXPECT_EQ(backBuffer->PixelHeight(), map.PixelHeight());

  overlays.MapPointLat = 50.0f;
  overlays.MapPointLon = 8.0f;
  Draw(kL30);
  EXPECT_EQ(OpsIn(colours.Hilite).back(), "Circle 5000 3500 60");
}

TEST_F(RenderPassTest, LiveLayersDrawNothingWhenEmpty) {
  layers.MenuTraceActive = true;
  Draw(kL30);
  EXPECT_EQ(First(colours.MovAc), -1);
  const TraceMapSample samples[] = {{50.0f, 8.0f, 0}, {50.1f, 8.1f, 0}};
  overlays.Trace = samples;
  Draw(kL30);
  EXPECT_GT(Count(colours.MovAc, DrawOpKind::Line), 0);
}

// The other modules' layers draw at their places: the tracks after the route
// and before the airways, the networks' traffic after the user waypoints,
// the aircraft over the finished chart after its clean copy; the layers
// after them draw with the pass's own pens and fonts.
TEST_F(RenderPassTest, RegisteredLayersDrawAtTheirPlaces) {
  struct Mark : MapLayer {
    explicit Mark(Colour c) : colour(c) {}
    void Draw(const LayerContext& context, DrawTarget& target) override {
      target.SetDrawWidth(7);
      target.SetFontName("Courier");
      target.SetForeColor(colour);
      target.Line(context.X(8.0, 50.0), context.Y(50.0), 0, 0);
      label = context.Label;
      font = context.FontName;
    }
    Colour colour;
    int32_t label = -1;
    std::string_view font;
  };
  Mark tracks(101), online(102), aircraft(103);
  MapLayerRegistry places;
  ASSERT_TRUE(places.Add(MapLayerPlace::Tracks, tracks));
  ASSERT_TRUE(places.Add(MapLayerPlace::Online, online));
  ASSERT_TRUE(places.Add(MapLayerPlace::Aircraft, aircraft));
  EXPECT_FALSE(places.Add(MapLayerPlace::Count, online));
  registry = &places;
  layers.btnJet = layers.ShowIcao = true;
  test::BuildSmallPlan(plan);
  backBuffer.emplace(400, 300, "VMap(0)");
  Draw(kL30);

  EXPECT_EQ(tracks.label, 30);
  EXPECT_EQ(tracks.font, "Arial");
  EXPECT_EQ(OpsIn(101), (std::vector<std::string>{"Line 5000 3500 0 0"}));
  EXPECT_LT(First(colours.Route), First(101));
  EXPECT_LT(First(101), First(colours.Jet));
  EXPECT_LT(First(colours.User), First(102));
  EXPECT_EQ(map.Ops().back().Color, 103u);
  EXPECT_EQ(backBuffer->Describe(backBuffer->Ops().back()), "Copy Map");
  for (const DrawOp& op : map.Ops()) {
    if (op.Color == colours.Jet) EXPECT_EQ(op.DrawWidth, 1);
    if (op.Kind == DrawOpKind::Text && op.Color == colours.Vor) EXPECT_EQ(op.FontName, "Arial");
  }

  // The live tick draws the layers over the chart alone.
  map.ClearOps();
  MapScene scene{view, colours, layers, db, plan, highlight, &overlays, registry};
  renderer.DrawLiveLayers(scene, map);
  ASSERT_EQ(map.Ops().size(), 1u);
  EXPECT_EQ(map.Ops()[0].Color, 103u);
  places.Remove(aircraft);
  map.ClearOps();
  renderer.DrawLiveLayers(scene, map);
  EXPECT_TRUE(map.Ops().empty());
}

// The positions the pass keeps are those of the database's revision: a VOR
// moved away leaves the view once the change is counted, and a user waypoint
// changed through the window counts.
TEST_F(RenderPassTest, KeptPositionsFollowTheDatabaseRevision) {
  layers.ShowIcao = true;
  Draw(kL30);
  ASSERT_TRUE(HasText("FFM"));
  VorRec& ffm = db.Navaids.Vors[0];
  ffm.Lat += 20;
  db.Changed();
  Draw(kL30);
  EXPECT_FALSE(HasText("FFM"));
  ffm.Lat -= 20;
  db.Changed();
  Draw(kL30);
  EXPECT_TRUE(HasText("FFM"));
}

TEST(RenderLayerNames, MenuCaptionsControlsAndButtons) {
  MapLayers layers;
  EXPECT_EQ(FindLayerSwitch(layers, "VOR"), &layers.btnVor);
  EXPECT_EQ(FindLayerSwitch(layers, "vor"), &layers.btnVor);
  EXPECT_EQ(FindLayerSwitch(layers, "MenuVOR"), &layers.btnVor);
  EXPECT_EQ(FindLayerSwitch(layers, "btnvor"), &layers.btnVor);
  EXPECT_EQ(FindLayerSwitch(layers, "Airports"), &layers.btnAP);
  EXPECT_EQ(FindLayerSwitch(layers, "Control Zones"), &layers.btnCtrz);
  EXPECT_EQ(FindLayerSwitch(layers, "Jet (High Alt)"), &layers.btnJet);
  EXPECT_EQ(FindLayerSwitch(layers, "victor"), &layers.btnVictor);
  EXPECT_EQ(FindLayerSwitch(layers, "Minimum Safe Altitude"), &layers.btnMsa);
  EXPECT_EQ(FindLayerSwitch(layers, "Coastlines"), &layers.btnMap);
  EXPECT_EQ(FindLayerSwitch(layers, "btnFreq"), &layers.ShowFreq);
  EXPECT_EQ(FindLayerSwitch(layers, "Round World"), nullptr);
  EXPECT_EQ(FindLayerSwitch(layers, "nothing"), nullptr);

  EXPECT_EQ(AirspaceClassOf("CTR    "), AirspaceClass::Ctrz);
  EXPECT_EQ(AirspaceClassOf("tma"), AirspaceClass::TCA);
  EXPECT_EQ(AirspaceClassOf("FIR"), AirspaceClass::FIR);
  EXPECT_EQ(AirspaceClassOf("D"), AirspaceClass::CTA);
  EXPECT_EQ(AirspaceClassOf("XYZ"), AirspaceClass::Unknown);
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

// The points of a line kept for drawing: within the tolerance of the line
// through the kept ones, and every corner that sticks out further.
TEST(ShapeThinning, KeepsTheCornersThatShow) {
  std::vector<uint8_t> keep;
  std::vector<std::pair<uint32_t, uint32_t>> stack;
  std::vector<ShapePoint> straight;
  for (int i = 0; i <= 100; ++i) straight.push_back({50.0f + 0.001f * static_cast<float>(i % 2), 0.01f * static_cast<float>(i)});
  KeepShapePoints(straight, 0.002, keep, stack);
  EXPECT_EQ(std::count(keep.begin(), keep.end(), 1), 2);  // a wobble of 0.001 within 0.002: the ends alone
  EXPECT_EQ(keep.front(), 1);
  EXPECT_EQ(keep.back(), 1);

  // A square, corner to corner: each corner stays.
  const std::vector<ShapePoint> square = {{0, 0}, {0, 0.5f}, {0, 1}, {0.5f, 1}, {1, 1}, {1, 0.5f}, {1, 0}, {0.5f, 0}, {0, 0}};
  KeepShapePoints(square, 0.01, keep, stack);
  EXPECT_EQ(keep, (std::vector<uint8_t>{1, 0, 1, 0, 1, 0, 1, 0, 1}));

  // A spike that doubles back along itself lies on the line through its
  // ends, but its tip is far from the segment between them.
  const std::vector<ShapePoint> spike = {{0, 0}, {0, 2}, {0, 1}};
  KeepShapePoints(spike, 0.01, keep, stack);
  EXPECT_EQ(keep, (std::vector<uint8_t>{1, 1, 1}));

  KeepShapePoints({}, 0.01, keep, stack);
  EXPECT_TRUE(keep.empty());
}

// A coastline of thousands of points in a few pixels at 2000 NM reaches the
// surface as a handful, with its first and last point; at a close zoom the
// same coast keeps its detail.
TEST_F(RenderPassTest, FineCoastlinesAreThinnedToTheZoom) {
  AirspaceTables& s = db.Shapes;
  s.WorldPolygons.clear();
  s.WorldPolygonPoints.clear();
  s.WorldLines.clear();
  s.WorldLinePoints.clear();
  WorldShapeRec coast;
  coast.First = 0;
  coast.Kind = 1;
  const int n = 4000;
  for (int i = 0; i < n; ++i) {
    const double t = 6.283185307179586 * i / (n - 1);
    s.WorldPolygonPoints.push_back(
        {static_cast<float>(50 + 0.5 * std::sin(t) + 0.0005 * std::sin(40 * t)), static_cast<float>(8 + 0.5 * std::cos(t))});
  }
  coast.Count = n;
  coast.North = 50.6f, coast.South = 49.4f, coast.East = 8.6f, coast.West = 7.4f;
  s.WorldPolygons.push_back(coast);
  layers.btnMap = true;

  auto coastPoints = [&] {
    for (const DrawOp& op : map.Ops())
      if (op.Kind == DrawOpKind::Polygon && op.FillColor == colours.Land) return map.PointsOf(op);
    return std::span<const DrawPoint>();
  };
  Draw(kL2000);
  const std::span<const DrawPoint> far = coastPoints();
  ASSERT_GE(far.size(), 3u);
  EXPECT_LT(far.size(), 200u);
  const auto& first = s.WorldPolygonPoints.front();
  const auto& last = s.WorldPolygonPoints.back();
  EXPECT_EQ(far.front().X, std::floor(view.ScaleWidth / 2 - LonDelta(view.CntrLon, first.Lon) * view.Scaling * CosLat(view.CntrLat)));
  EXPECT_EQ(far.back().Y, std::floor((view.CntrLat - last.Lat) * view.Scaling + view.ScaleHeight / 2));

  Draw(kL30);
  EXPECT_GT(coastPoints().size(), 4 * far.size());
  Draw(kL2000);  // back at the far zoom: thinned again for it
  EXPECT_EQ(coastPoints().size(), far.size());
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

// An island across the date line, seen from the other side of the world:
// its outline stays in one piece instead of running across the whole chart.
TEST_F(RenderPassTest, ShapesAcrossTheOppositeMeridianStayWhole) {
  AirspaceTables& s = db.Shapes;
  s.WorldPolygons.clear();
  s.WorldPolygonPoints.clear();
  s.WorldLines.clear();
  s.WorldLinePoints.clear();
  s.WorldPolygonPoints = {{60, 170}, {60, -170}, {70, -170}, {70, 170}, {60, 170}};
  WorldShapeRec island;
  island.First = 0;
  island.Count = 5;
  island.Kind = 1;
  island.North = 70, island.South = 60, island.West = -180, island.East = 180;  // its box spans the world
  s.WorldPolygons.push_back(island);
  view.CntrLat = 65.0f;
  view.CntrLon = -5.0f;  // 175 E lies opposite
  layers.btnMap = true;
  Draw(kL2000);
  const DrawOp* op = nullptr;
  for (const DrawOp& o : map.Ops())
    if (o.Kind == DrawOpKind::Polygon && o.FillColor == colours.Land) op = &o;
  ASSERT_NE(op, nullptr);
  const auto pts = map.PointsOf(*op);
  ASSERT_EQ(pts.size(), 5u);
  const double degree = view.Scaling * CosLat(view.CntrLat);  // one degree of longitude
  for (std::size_t i = 1; i < pts.size(); ++i)
    EXPECT_LE(std::fabs(pts[i].X - pts[i - 1].X), 20 * degree + 1) << i;
  // 170 E is 175 degrees east of the centre, 170 W twenty degrees further on.
  EXPECT_EQ(pts[0].X, std::floor(view.ScaleWidth / 2 + 175.0f * view.Scaling * CosLat(view.CntrLat)));
  EXPECT_EQ(pts[1].X, std::floor(view.ScaleWidth / 2 + 195.0f * view.Scaling * CosLat(view.CntrLat)));
}

}  // namespace
}  // namespace orv
