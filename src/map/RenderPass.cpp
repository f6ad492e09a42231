#include "map/RenderPassDetail.h"

#include <cmath>

#include "core/Runtime.h"

namespace orv {

double RunwayUnits(double feet, int32_t scaling) {
  const double metres = std::trunc(feet / 3.2809);
  return metres * scaling / kMetresPerDegree;
}

void MapRenderer::DrawMap(const MapScene& scene, DrawTarget& map, DrawTarget* backBuffer) {
  Pass pass(*this, scene, map);
  pass.Run();
  if (backBuffer) {
    backBuffer->Resize(map.PixelWidth(), map.PixelHeight());
    backBuffer->CopyPicture(map);
  }
}

// The layers in their fixed order: each later one lies over the earlier.
void MapRenderer::Pass::Run() {
  over = scene.Overlays ? scene.Overlays : &noOverlays;
  BeginSurface();

  if (layers.btnMap) DrawCoastlines();
  DrawShapes();
  if (layers.MenuLatLong) DrawLatLong();
  DrawAirspaces();
  for (const ActiveZone& zone : over->ActiveZones) DrawActiveZone(zone);
  StatusFields();
  if (layers.MenuCompass) DrawCompass();
  if (label <= 300 && layers.btnMsa) DrawMsa();
  DrawGround();
  if (layers.btnAP) AirportLoop();
  if (PlanPresent()) DrawRoute();
  // The oceanic tracks and the weather symbols belong to the online layers.
  if (PlanPresent() && over->Sim.Connected) DrawActiveLeg();
  if (layers.btnJet) AirwayLoop(db.Navaids.JetAirways, caches.jetPaths, c.Jet, kHiliteJet);
  if (layers.btnVictor) AirwayLoop(db.Navaids.VictorAirways, caches.victorPaths, c.Victor, kHiliteVictor);
  if (PlanPresent()) PlanWaypoints();
  if (layers.btnVor) VorLoop();
  if (layers.btnNdb) NdbLoop();
  if (!db.Shapes.Markers.empty() && layers.btnIls && v.Scaling >= 14000) MarkerLoop();
  if (layers.btnInter || layers.btnVictor || layers.btnJet) IntersectionLoop();
  if (layers.btnFix) FixLoop();
  if (layers.btnUser) UserWaypointLoop();
  // Online controllers and aircraft: drawn by the online layers.
  if (over->MapPointLat != -500) DrawMapPoint();
  if (layers.MenuTraceActive || over->ReplayMode) DrawTrace();
}

// The declutter grid, the clamp and the bounds of the view, then a clean
// surface with the pass's starting properties.
void MapRenderer::Pass::BeginSurface() {
  self.declutter_.DeclutterReset(map);
  BeginRenderPass(v, map);
  proj = Projector(v);
  label = CurrentLabel(v);
  width = v.ScaleWidth;
  height = v.ScaleHeight;

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

}  // namespace orv
