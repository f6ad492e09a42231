#include "documents/SidView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>
#include <string>

#include "core/Runtime.h"
#include "core/Settings.h"
#include "database/NavDatabase.h"
#include "map/Declutter.h"
#include "map/Navaid.h"
#include "map/Viewport.h"
#include "planning/DepartureArrival.h"
#include "planning/StoredProcedures.h"

namespace orv {

namespace {

// Feet in a nautical mile, for the runway's drawn length.
constexpr double kFeetPerNm = 6076.12;
// The picture's design height: MapUnits units a degree of latitude on a
// surface this high.
constexpr double kDesignHeight = 7000.0;
// The page in twips: A4, with the margins the papers use.
constexpr double kPageWidth = 11906, kPageHeight = 16838, kMargin = 1134;

class SideProjection {
public:
  SideProjection(const ViewBox& box, float lat, float lon, double scaling)
      : box_(box), lat_(lat), lon_(lon), scaling_(scaling) {}
  double X(float lat, float lon) const { return box_.X + SideXFromLon(lon, lat, lon_, box_.Width / 2, scaling_); }
  double Y(float lat) const { return box_.Y + SideYFromLat(lat, lat_, box_.Height / 2, scaling_); }
  // Surface units for a distance in NM.
  double Units(double nm) const { return nm * scaling_ / 60.0; }
  // Inside with room for a symbol and its label around the point.
  bool Inside(double x, double y, double room = 450) const {
    return x >= box_.X + room && x <= box_.X + box_.Width - room && y >= box_.Y + room &&
           y <= box_.Y + box_.Height - room;
  }

private:
  ViewBox box_;
  float lat_, lon_;
  double scaling_;
};

bool Near(float lat, float lon, float cLat, float cLon) {
  return std::fabs(lat - cLat) <= 1.0f && std::fabs(lon - cLon) <= 1.0f;
}

// A label of font size 4 centred 350 units under the symbol.
void LabelUnder(DrawTarget& t, double x, double y, const std::string& text) {
  t.SetFontSize(4);
  t.SetCurrentX(x - t.TextWidth(text) / 2);
  t.SetCurrentY(y + 350);
  t.Print(text);
}

// Compass bearing to the runtime's arc angle: radians counter-clockwise from
// three o'clock, in 0 .. 2 pi, never exactly 0 (0 to 0 would be a circle).
double ArcAngle(double bearing) {
  double a = std::fmod(90.0 - bearing, 360.0);
  if (a < 0) a += 360.0;
  double r = a * kPi / 180.0;
  return r == 0 ? 1e-6 : r;
}

// Units a degree of latitude: MapUnits on the design height, changed so that
// the route around the airport fills the picture (within a zoom of an eighth
// to four times the base, so that a short route does not become a plan of
// the runway).
double FitScaling(const ViewBox& box, const RouteSketch& s, float cLat, float cLon, int16_t mapUnits) {
  const double base = mapUnits * box.Height / kDesignHeight;
  if (!s.Valid) return base;
  double dLat = 0, dLon = 0;
  auto take = [&](double lat, double lon, double marginNm) {
    dLat = std::max(dLat, std::fabs(lat - cLat) + marginNm / 60);
    dLon = std::max(dLon, (std::fabs(lon - cLon) + marginNm / 60) * std::cos(cLat * kPi / 180));
  };
  take(s.RwyLat, s.RwyLon, 1);
  take(s.OutLat, s.OutLon, 1);
  take(s.TargetLat, s.TargetLon, 1);
  if (s.HasArc) take(s.Arc.CentreLat, s.Arc.CentreLon, s.Arc.Radius + 1);
  double fit = 1e12;
  if (dLat > 0) fit = std::min(fit, 0.45 * box.Height / dLat);
  if (dLon > 0) fit = std::min(fit, 0.45 * box.Width / dLon);
  return std::clamp(fit, base / 8, base * 4);
}

// The places labels took, so that a waypoint whose name would print over
// another one's is left out rather than made unreadable.
class LabelSpace {
public:
  bool Take(double x, double y, double w, double h) {
    for (const auto& r : taken_)
      if (x < r[2] && x + w > r[0] && y < r[3] && y + h > r[1]) return false;
    taken_.push_back({x, y, x + w, y + h});
    return true;
  }

private:
  std::vector<std::array<double, 4>> taken_;
};

}  // namespace

void DrawSidView(DrawTarget& t, const ViewBox& box, const FrmSID& frm, const NavDatabase& db,
                 const Settings& colours, bool paper) {
  const float cLat = frm.ShowDeparture ? frm.DepLat : frm.DestLat;
  const float cLon = frm.ShowDeparture ? frm.DepLon : frm.DestLon;
  const SideProjection p(box, cLat, cLon, FitScaling(box, frm.Sketch, cLat, cLon, frm.MapUnits));
  LabelSpace labels;

  t.SetFillStyle(kFillSolid);
  t.SetFillColor(paper ? 0xFFFFFF : colours.Map);
  t.SetDrawWidth(1);
  t.Line(box.X, box.Y, box.X + box.Width, box.Y + box.Height, LineShape::Box, 0);
  t.SetFillStyle(kFillTransparent);

  // The symbols are those of the chart, at a zoom where intersections are
  // triangles.
  ViewState view;
  view.CntrLat = cLat;
  view.CntrLon = cLon;
  Declutter declutter;
  declutter.DeclutterReset(t);
  clsNavaid navaid(t, view, declutter);
  const float savedFont = t.FontSize();

  for (const VorRec& v : db.Navaids.Vors) {
    if (v.Ident.IsEmptySlot() || !Near(v.Lat, v.Lon, cLat, cLon)) continue;
    const double x = p.X(v.Lat, v.Lon), y = p.Y(v.Lat);
    if (!p.Inside(x, y)) continue;
    navaid.sngCenterX = static_cast<float>(x);
    navaid.sngCenterY = static_cast<float>(y);
    navaid.sngFontSize(5);
    navaid.intFillStyle(kFillTransparent);
    navaid.lngColor(colours.Vor);
    navaid.intRadius = 350;
    navaid.sngMagVar = v.MagVar;
    navaid.DrawAsVOR(std::to_string(v.TypeCode));
    const std::string label = v.Ident.Str() + " " + Format(v.Frequency, "000.00");
    t.SetFontSize(4);
    labels.Take(x - t.TextWidth(label) / 2, y + 350, t.TextWidth(label), t.TextHeight(label));
    LabelUnder(t, x, y, label);
  }
  for (const NdbRec& n : db.Navaids.Ndbs) {
    if (n.Ident.IsEmptySlot() || !Near(n.Lat, n.Lon, cLat, cLon)) continue;
    const double x = p.X(n.Lat, n.Lon), y = p.Y(n.Lat);
    if (!p.Inside(x, y)) continue;
    navaid.sngCenterX = static_cast<float>(x);
    navaid.sngCenterY = static_cast<float>(y);
    navaid.lngColor(colours.Ndb);
    navaid.intRadius = 200;
    navaid.DrawAsNDB();
    const std::string label = n.Ident.Str() + " " + Format(n.Frequency, "000.00");
    t.SetFontSize(4);
    labels.Take(x - t.TextWidth(label) / 2, y + 200, t.TextWidth(label), t.TextHeight(label));
    LabelUnder(t, x, y - 150, label);
  }
  auto point = [&](float lat, float lon, const std::string& ident, Colour colour) {
    const double x = p.X(lat, lon), y = p.Y(lat);
    if (!p.Inside(x, y)) return;
    t.SetFontSize(4);
    const double w = t.TextWidth(ident), h = t.TextHeight(ident);
    if (!labels.Take(x - w / 2, y - 265 + 350, w, h)) return;
    navaid.sngCenterX = static_cast<float>(x);
    navaid.sngCenterY = static_cast<float>(y);
    navaid.lngColor(colour);
    navaid.sngLength = 60;
    navaid.DrawAsIntersection();
    LabelUnder(t, x, navaid.sngCenterY - 250, ident);
  };
  for (const IntersectionRec& r : db.Navaids.Intersections)
    if (!r.Ident.IsEmptySlot() && Near(r.Lat, r.Lon, cLat, cLon)) point(r.Lat, r.Lon, r.Ident.Str(), colours.Int);
  for (const FixRec& f : db.Navaids.Fixes)
    if (!f.Ident.IsEmptySlot() && Near(f.Lat, f.Lon, cLat, cLon)) point(f.Lat, f.Lon, f.Ident.Str(), colours.Fix);

  // The route.
  const RouteSketch& s = frm.Sketch;
  if (s.Valid) {
    t.SetForeColor(colours.Route);
    t.SetDrawWidth(1);
    t.SetDrawStyle(kDrawStyleSolid);
    const double rx = p.X(s.RwyLat, s.RwyLon), ry = p.Y(s.RwyLat);
    const double ox = p.X(s.OutLat, s.OutLon), oy = p.Y(s.OutLat);
    const double tx = p.X(s.TargetLat, s.TargetLon), ty = p.Y(s.TargetLat);
    t.Line(rx, ry, ox, oy);
    if (s.HasArc) {
      const TurnArc& a = s.Arc;
      const double ex = p.X(a.ExitLat, a.ExitLon), ey = p.Y(a.ExitLat);
      t.Line(tx, ty, ex, ey);
      // A right turn runs clockwise from the start angle to the end angle,
      // which is counter-clockwise from the end to the start.
      const double from = s.TurnRight ? ArcAngle(a.EndAngle) : ArcAngle(a.StartAngle);
      const double to = s.TurnRight ? ArcAngle(a.StartAngle) : ArcAngle(a.EndAngle);
      t.Circle(p.X(a.CentreLat, a.CentreLon), p.Y(a.CentreLat), p.Units(a.Radius), kForeColour, from, to);
    } else {
      t.Line(ox, oy, tx, ty);
    }
    t.SetFontSize(5);
    t.SetCurrentX(tx + 120);
    t.SetCurrentY(ty - 120);
    t.Print(s.TargetCode);

    // The runway, and its heading as a line on from the threshold end.
    const AirportRec* ap = frm.ViewAirport();
    float length = 10000;
    float width = 150;
    if (ap)
      for (const RunwayRec& r : ap->Runways)
        if (r.Lat == s.RwyLat && r.Lon == s.RwyLon) length = r.LengthFeet, width = r.WidthFeet;
    navaid.sngCenterX = static_cast<float>(rx);
    navaid.sngCenterY = static_cast<float>(ry);
    navaid.sngCourse = s.RwyHeading;
    navaid.sngLength = static_cast<float>(p.Units(length / kFeetPerNm));
    navaid.intWidth = static_cast<int16_t>(std::max(20.0, p.Units(width / kFeetPerNm) * 4));
    navaid.RunwayColor = colours.Rwy;
    navaid.DrawAsRwy();
    const double h = s.RwyHeading * kPi / 180.0;
    const double half = navaid.sngLength / 2;
    t.SetForeColor(colours.Route);
    t.SetDrawWidth(2);
    t.Line(rx + half * std::sin(h), ry - half * std::cos(h), rx + (half + 400) * std::sin(h),
           ry - (half + 400) * std::cos(h));
    t.SetDrawWidth(1);
    t.SetForeColor(0);
    t.SetFontSize(5);
    t.SetCurrentX(rx - (half + 700) * std::sin(h));
    t.SetCurrentY(ry + (half + 700) * std::cos(h) - t.TextHeight("X") / 2);
    t.Print(frm.RwyName);
  }
  t.SetFontSize(savedFont);
  t.SetForeColor(0);
  t.SetDrawWidth(1);
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetFillStyle(kFillTransparent);
  t.Line(box.X, box.Y, box.X + box.Width, box.Y + box.Height, LineShape::Box, 0);
}

void DrawProcedurePreview(DrawTarget& t, const ViewBox& box, const LoadSID& window, const Settings& colours) {
  t.SetFillStyle(kFillSolid);
  t.SetFillColor(colours.Map);
  t.SetDrawWidth(1);
  t.SetDrawStyle(kDrawStyleSolid);
  t.Line(box.X, box.Y, box.X + box.Width, box.Y + box.Height, LineShape::Box, 0);
  t.SetFillStyle(kFillTransparent);
  const int chosen = window.Selected();
  if (chosen < 0 || chosen >= static_cast<int>(window.Procedures().size())) return;
  const ProcedureRec& p = window.Procedures()[static_cast<std::size_t>(chosen)];
  if (p.Points.size() < 2) return;
  // A SID is seen from its departure airport, a STAR from its destination.
  const ProcPointRec& home = window.Sid() ? p.Points.front() : p.Points.back();
  const double nmAcross = std::max(1.0, window.PreviewRange);
  const double scaling = std::min(box.Width, box.Height) / (nmAcross / 60.0);
  const SideProjection proj(box, home.Lat, home.Lon, scaling);
  const std::size_t first = window.Sid() ? 0 : 1, last = window.Sid() ? p.Points.size() - 2 : p.Points.size() - 1;
  t.SetForeColor(colours.Route);
  for (std::size_t i = first; i < last; ++i) {
    const ProcPointRec& a = p.Points[i];
    const ProcPointRec& b = p.Points[i + 1];
    const double ax = proj.X(a.Lat, a.Lon), ay = proj.Y(a.Lat), bx = proj.X(b.Lat, b.Lon), by = proj.Y(b.Lat);
    if (proj.Inside(ax, ay, 0) || proj.Inside(bx, by, 0)) t.Line(ax, ay, bx, by);
  }
  ViewState view;
  Declutter declutter;
  declutter.DeclutterReset(t);
  clsNavaid navaid(t, view, declutter);
  for (std::size_t i = first; i <= last; ++i) {
    const ProcPointRec& pt = p.Points[i];
    const double x = proj.X(pt.Lat, pt.Lon), y = proj.Y(pt.Lat);
    if (!proj.Inside(x, y, 100)) continue;
    navaid.sngCenterX = static_cast<float>(x);
    navaid.sngCenterY = static_cast<float>(y);
    const std::string_view kind = pt.Kind.Trimmed();
    navaid.lngColor(kind == "VOR" ? colours.Vor : kind == "NDB" ? colours.Ndb : kind.empty() ? colours.Ap : colours.Int);
    navaid.sngLength = 60;
    navaid.DrawAsIntersection();
    t.SetFontSize(6);
    t.SetCurrentX(x + 90);
    t.SetCurrentY(navaid.sngCenterY + 60);
    t.Print(pt.Code.Str());
  }
  t.SetForeColor(0);
  t.Line(box.X, box.Y, box.X + box.Width, box.Y + box.Height, LineShape::Box, 0);
}

double PrintWrapped(DrawTarget& t, double x, double y, double width, std::string_view text) {
  const double lineHeight = t.TextHeight("X");
  std::string line;
  auto flush = [&] {
    t.SetCurrentX(x);
    t.SetCurrentY(y);
    t.Print(line);
    y += lineHeight;
    line.clear();
  };
  std::size_t pos = 0;
  while (pos < text.size()) {
    std::size_t blank = text.find(' ', pos);
    std::size_t end = blank == std::string_view::npos ? text.size() : blank;
    std::string_view word = text.substr(pos, end - pos);
    std::string tryLine = line.empty() ? std::string(word) : line + " " + std::string(word);
    if (!line.empty() && t.TextWidth(tryLine) > width) {
      flush();
      line = std::string(word);
    } else {
      line = std::move(tryLine);
    }
    pos = end + 1;
  }
  if (!line.empty()) flush();
  return y;
}

void PrintSidPage(DrawTarget& page, const FrmSID& frm, const NavDatabase& db, const Settings& colours) {
  page.SetScaleWidth(kPageWidth);
  page.SetScaleHeight(kPageHeight);
  page.SetFontName("arial");
  page.SetFontBold(true);
  page.SetFontSize(14);
  page.SetForeColor(0);
  page.SetCurrentX(kMargin);
  page.SetCurrentY(kMargin);
  page.Print("Orvanta Departure and Arrival Routes");
  page.SetFontSize(11);
  page.SetCurrentX(kMargin);
  page.SetCurrentY(kMargin + 600);
  page.Print((frm.ShowDeparture ? "Departure for Rwy " : "Arrival for Rwy ") + frm.RwyName);
  page.SetFontBold(false);
  page.SetFontSize(10);
  page.SetCurrentX(kMargin);
  page.SetCurrentY(kMargin + 1000);
  page.Print(frm.SIDFrame);
  const double width = kPageWidth - 2 * kMargin;
  const ViewBox box{kMargin, kMargin + 1500, width, width};
  DrawSidView(page, box, frm, db, colours, true);
  page.SetFontName("arial");
  page.SetFontSize(10);
  page.SetFontBold(false);
  page.SetForeColor(0);
  PrintWrapped(page, kMargin, box.Y + box.Height + 300, width, frm.Message);
}

}  // namespace orv
