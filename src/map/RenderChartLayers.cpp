// The furniture of the chart: the latitude and longitude grid, the status
// texts of the view and the compass rose.
#include "map/RenderPassDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "map/MapGeodesy.h"

namespace orv {

namespace {

// A longitude as the grid labels it: "E", "W" or a blank, then "000".
std::string LonShortText(double lon) {
  while (lon > 180) lon -= 360;
  while (lon < -180) lon += 360;
  const char* mark = lon > 0 ? "E" : lon < 0 ? "W" : " ";
  return mark + Format(std::fabs(lon), "000");
}

}  // namespace

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

}  // namespace orv
