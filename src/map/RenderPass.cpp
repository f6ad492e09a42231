#include "map/RenderPassDetail.h"

#include <cmath>
#include <string>

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
  pass.DrawPlace(MapLayerPlace::Traffic);
  pass.DrawPlace(MapLayerPlace::Aircraft);
}

void MapRenderer::DrawLiveLayers(const MapScene& scene, DrawTarget& map) {
  Pass pass(*this, scene, map);
  pass.over = scene.Overlays ? scene.Overlays : &pass.noOverlays;
  pass.label = CurrentLabel(scene.View);
  pass.width = scene.View.ScaleWidth;
  pass.height = scene.View.ScaleHeight;
  pass.DrawPlace(MapLayerPlace::Traffic);
  pass.DrawPlace(MapLayerPlace::Aircraft);
}

// The layers in their fixed order: each later one lies over the earlier.
void MapRenderer::Pass::Run() {
  over = scene.Overlays ? scene.Overlays : &noOverlays;
  BeginSurface();

  if (layers.btnMap) DrawCoastlines();
  DrawShapes();
  if (layers.MenuLatLong) DrawLatLong();
  DrawAirspaces();
  DrawPlace(MapLayerPlace::OnlineFirs);
  for (const ActiveZone& zone : over->ActiveZones) DrawActiveZone(zone);
  StatusFields();
  if (layers.MenuCompass) DrawCompass();
  if (label <= 300 && layers.btnMsa) DrawMsa();
  DrawGround();
  if (layers.btnAP) AirportLoop();
  if (PlanPresent() && layers.MenuShowRoute) DrawRoute();
  DrawPlace(MapLayerPlace::Tracks);
  DrawPlace(MapLayerPlace::Weather);
  if (PlanPresent() && over->Sim.Connected) DrawActiveLeg();
  DrawPlace(MapLayerPlace::ActiveLeg);
  if (layers.btnJet) AirwayLoop(db.Navaids.JetAirways, caches.jetPaths, c.Jet, kHiliteJet);
  if (layers.btnVictor) AirwayLoop(db.Navaids.VictorAirways, caches.victorPaths, c.Victor, kHiliteVictor);
  if (PlanPresent()) PlanWaypoints();
  if (layers.btnVor) VorLoop();
  if (layers.btnNdb) NdbLoop();
  if (!db.Shapes.Markers.empty() && layers.btnIls && v.Scaling >= 14000) MarkerLoop();
  if (layers.btnInter || layers.btnVictor || layers.btnJet) IntersectionLoop();
  if (layers.btnFix) FixLoop();
  if (layers.btnUser) UserWaypointLoop();
  DrawPlace(MapLayerPlace::Online);
  if (over->MapPointLat != -500) DrawMapPoint();
  DrawPlace(MapLayerPlace::Holdings);
  if (layers.MenuTraceActive || over->ReplayMode) DrawTrace();
  DrawPlace(MapLayerPlace::ZoneMonitor);
  if (over->Sim.Connected && label <= 100 && layers.btnCtrz && layers.MenuViolation) DrawViolations();
}

// The layers registered at place. A layer may set any pen or font; the pass's
// own are put back after it, so that the layers after it draw as before.
void MapRenderer::Pass::DrawPlace(MapLayerPlace place) {
  const MapLayerRegistry* registry = scene.Registry;
  if (!registry || registry->Empty(place)) return;
  const std::string fontName = map.FontName();
  const float fontSize = map.FontSize();
  const bool bold = map.FontBold();
  const Colour fore = map.ForeColor(), fill = map.FillColor();
  const int16_t fillStyle = map.FillStyle(), drawStyle = map.DrawStyle();
  const int16_t drawWidth = map.DrawWidth(), drawMode = map.DrawMode();
  const LayerContext context{v,     proj, self.declutter_, c, layers, db, plan, *over, label, kMapLabelFontName,
                             LabelFontSize(c)};
  registry->DrawAt(place, context, map);
  map.SetFontName(fontName);
  map.SetFontSize(fontSize);
  map.SetFontBold(bold);
  map.SetForeColor(fore);
  map.SetFillColor(fill);
  map.SetFillStyle(fillStyle);
  map.SetDrawStyle(drawStyle);
  map.SetDrawWidth(drawWidth);
  map.SetDrawMode(drawMode);
}

// The declutter grid, the clamp and the bounds of the view, then a clean
// surface with the pass's starting properties.
void MapRenderer::Pass::BeginSurface() {
  caches.Sync(db);
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
  map.SetFontName(kMapLabelFontName);
  map.SetFontSize(LabelFontSize(c));
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
