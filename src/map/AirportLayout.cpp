#include "map/AirportLayout.h"

#include <algorithm>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

constexpr double kFeetPerNm = 6076.12;
// The layout keeps a margin of this share of the picture on every side.
constexpr double kMargin = 0.08;
// Taxiways and polygons this far beyond the runways and parking still
// belong to the airport.
constexpr double kBeltNm = 0.5;

// The two thresholds of a runway: the record holds its middle.
void RunwayEnds(const RunwayRec& r, double& lat1, double& lon1, double& lat2, double& lon2) {
  const float half = static_cast<float>(r.LengthFeet / kFeetPerNm / 2);
  const LatLon low = OffsetLatLon(r.Lat, r.Lon, static_cast<float>(Wrap360(r.TrueHeading + 180.0)), half);
  const LatLon high = OffsetLatLon(r.Lat, r.Lon, r.TrueHeading, half);
  lat1 = low.Lat, lon1 = low.Lon, lat2 = high.Lat, lon2 = high.Lon;
}

double DistanceNm(const LayoutFrame& f, double lat, double lon) {
  const double dx = (lon - f.CentreLon) * 60.0 * f.CosLat;
  const double dy = (lat - f.CentreLat) * 60.0;
  return std::sqrt(dx * dx + dy * dy);
}

void CentredText(DrawTarget& t, double x, double y, const std::string& text) {
  t.SetCurrentX(x - t.TextWidth(text) / 2);
  t.SetCurrentY(y - t.TextHeight(text) / 2);
  t.Print(text);
}

// A bar of a round length near a fifth of the picture's width.
void ScaleBar(DrawTarget& t, const LayoutFrame& f, Colour colour) {
  const double want = t.ScaleWidth() / 5 / f.UnitsPerNm;
  double nm = 0.05;
  for (double step : {0.05, 0.1, 0.2, 0.25, 0.5, 1.0, 2.0, 5.0})
    if (step <= want) nm = step;
  const double x = t.ScaleWidth() * kMargin / 2, y = t.ScaleHeight() * (1 - kMargin / 2);
  const double len = nm * f.UnitsPerNm;
  t.SetDrawWidth(2);
  t.Line(x, y, x + len, y, LineShape::Line, colour);
  t.Line(x, y - t.TextHeight("0") / 3, x, y, LineShape::Line, colour);
  t.Line(x + len, y - t.TextHeight("0") / 3, x + len, y, LineShape::Line, colour);
  t.SetDrawWidth(1);
  t.SetForeColor(colour);
  t.SetCurrentX(x + len + t.TextWidth(" "));
  t.SetCurrentY(y - t.TextHeight("0") / 2);
  t.Print(Format(nm, "0.0#") + " NM");
}

}  // namespace

std::string ParkingLabel(const ParkingRec& p, const AppState& state) {
  std::string name;
  if (p.NameCode >= 1 && p.NameCode < static_cast<int32_t>(state.ParkingNames.size()))
    name = state.ParkingNames[static_cast<std::size_t>(p.NameCode)];
  if (name.empty()) name = p.Ident.Trimmed();
  if (name.empty()) name = "Parking";
  if (p.Number > 0) name += ' ' + std::to_string(p.Number);
  return name;
}

double LayoutFrame::X(double lat, double lon) const {
  (void)lat;
  return MidX + (lon - CentreLon) * 60.0 * CosLat * UnitsPerNm;
}

double LayoutFrame::Y(double lat) const { return MidY - (lat - CentreLat) * 60.0 * UnitsPerNm; }

LayoutFrame FitAirportLayout(const AirportRec& ap, double width, double height) {
  double north = ap.Lat, south = ap.Lat, east = ap.Lon, west = ap.Lon;
  auto grow = [&](double lat, double lon) {
    north = std::max(north, lat), south = std::min(south, lat);
    east = std::max(east, lon), west = std::min(west, lon);
  };
  for (const RunwayRec& r : ap.Runways) {
    double a, b, c, d;
    RunwayEnds(r, a, b, c, d);
    grow(a, b);
    grow(c, d);
  }
  for (const ParkingRec& p : ap.Parking) grow(p.Lat, p.Lon);

  LayoutFrame f;
  f.CentreLat = (north + south) / 2;
  f.CentreLon = (east + west) / 2;
  f.CosLat = std::max(0.01, std::cos(f.CentreLat * kDegToRad));
  // At least a mile across, so that an airport without runways still shows
  // its surroundings at a sensible scale.
  const double spanX = std::max((east - west) * 60.0 * f.CosLat, 1.0);
  const double spanY = std::max((north - south) * 60.0, 1.0);
  f.UnitsPerNm = std::min(width * (1 - 2 * kMargin) / spanX, height * (1 - 2 * kMargin) / spanY);
  f.MidX = width / 2;
  f.MidY = height / 2;
  f.RadiusNm = std::hypot(spanX, spanY) / 2 + kBeltNm;
  return f;
}

LayoutFrame DrawAirportLayout(DrawTarget& t, const NavDatabase& db, const AirportRec& ap, const AppState& state) {
  const Settings& c = state.Config;
  const LayoutFrame f = FitAirportLayout(ap, t.ScaleWidth(), t.ScaleHeight());
  t.SetBackColor(c.Map);
  t.Cls();
  t.SetDrawMode(kDrawModeCopy);
  t.SetDrawStyle(kDrawStyleSolid);
  t.SetDrawWidth(1);
  auto unitsOfFeet = [&](double feet) {
    return std::max(1.0, t.ScaleX(feet / kFeetPerNm * f.UnitsPerNm));  // DrawWidth is in pixels
  };

  // 1. Ground polygons of this airport, grouped as the map groups them.
  t.SetForeColor(c.Ap);
  t.SetFillColor(c.Ap);
  t.SetFillStyle(kFillSolid);
  std::vector<DrawPoint> poly;
  bool open = false;
  auto close = [&] {
    if (open && poly.size() >= 3) t.Polygon(poly.data(), poly.size());
    poly.clear();
    open = false;
  };
  for (const GroundPolyRec& g : db.Shapes.GroundPolygons) {
    const char kind = g.Kind.View().empty() ? '\0' : g.Kind.View()[0];
    const DrawPoint at{static_cast<float>(f.X(g.Lat, g.Lon)), static_cast<float>(f.Y(g.Lat))};
    if (kind == 'L') {
      if (open) poly.push_back(at);
    } else if (kind != '\0' && static_cast<unsigned char>(kind) <= 'M') {
      close();
      if (DistanceNm(f, g.Lat, g.Lon) <= f.RadiusNm) {
        open = true;
        poly.push_back(at);
      }
    }
  }
  close();

  // 2. Taxiways at their width, then their names on top.
  std::vector<const TaxiRec*> taxiways;
  for (const TaxiRec& r : db.Shapes.TaxiSegments)
    if (DistanceNm(f, r.Lat1, r.Lon1) <= f.RadiusNm && DistanceNm(f, r.Lat2, r.Lon2) <= f.RadiusNm)
      taxiways.push_back(&r);
  for (const TaxiRec* r : taxiways) {
    t.SetDrawWidth(static_cast<int16_t>(std::min(60.0, unitsOfFeet(r->Width > 0 ? r->Width : 50))));
    t.Line(f.X(r->Lat1, r->Lon1), f.Y(r->Lat1), f.X(r->Lat2, r->Lon2), f.Y(r->Lat2), LineShape::Line, c.Taxi);
  }
  t.SetDrawWidth(1);

  // 3. Runways as filled strips with a dashed centre line and end numbers.
  const Colour marking = 0xFFFFFF;
  for (const RunwayRec& r : ap.Runways) {
    double lat1, lon1, lat2, lon2;
    RunwayEnds(r, lat1, lon1, lat2, lon2);
    const double x1 = f.X(lat1, lon1), y1 = f.Y(lat1), x2 = f.X(lat2, lon2), y2 = f.Y(lat2);
    const double len = std::hypot(x2 - x1, y2 - y1);
    if (len <= 0) continue;
    const double ux = (x2 - x1) / len, uy = (y2 - y1) / len;  // along, low to high
    const double half = std::max(1.0 / t.ScaleX(1.0), (r.WidthFeet > 0 ? r.WidthFeet : 100) / kFeetPerNm * f.UnitsPerNm / 2);
    const DrawPoint strip[4] = {
        {static_cast<float>(x1 - uy * half), static_cast<float>(y1 + ux * half)},
        {static_cast<float>(x2 - uy * half), static_cast<float>(y2 + ux * half)},
        {static_cast<float>(x2 + uy * half), static_cast<float>(y2 - ux * half)},
        {static_cast<float>(x1 + uy * half), static_cast<float>(y1 - ux * half)},
    };
    t.SetForeColor(c.Rwy);
    t.SetFillColor(c.Rwy);
    t.SetFillStyle(kFillSolid);
    if (RunwayListName(r.LowEnd.View()).starts_with("Heli")) {
      // A helipad: a ringed "H" on its pad rather than two numbered ends.
      const double mx = (x1 + x2) / 2, my = (y1 + y2) / 2, ring = std::max(half, t.TextHeight("H") * 0.7);
      t.Circle(mx, my, ring, c.Rwy);
      t.SetForeColor(marking);
      CentredText(t, mx, my, "H");
      continue;
    }
    t.Polygon(strip, 4);
    t.SetDrawStyle(kDrawStyleDash);
    t.Line(x1, y1, x2, y2, LineShape::Line, marking);
    t.SetDrawStyle(kDrawStyleSolid);
    t.SetForeColor(marking);
    const double out = half + t.TextHeight("0");
    CentredText(t, x1 - ux * out, y1 - uy * out, RunwayDesignator(r.LowEnd.View()));
    CentredText(t, x2 + ux * out, y2 + uy * out, RunwayDesignator(r.HighEnd.View()));
  }

  // 4. Taxiway names, once per name and segment middle.
  t.SetForeColor(marking);
  for (const TaxiRec* r : taxiways) {
    std::string name(r->Name.Trimmed());
    if (name.empty()) continue;
    CentredText(t, (f.X(r->Lat1, r->Lon1) + f.X(r->Lat2, r->Lon2)) / 2, (f.Y(r->Lat1) + f.Y(r->Lat2)) / 2, name);
  }

  // 5. Parking positions with their names.
  t.SetFillStyle(kFillTransparent);
  const double dot = t.TextHeight("0") / 4;
  for (const ParkingRec& p : ap.Parking) {
    const double x = f.X(p.Lat, p.Lon), y = f.Y(p.Lat);
    t.Circle(x, y, dot, c.Parking);
    t.SetForeColor(c.Parking);
    t.SetCurrentX(x + dot * 1.5);
    t.SetCurrentY(y - t.TextHeight("0") / 2);
    t.Print(ParkingLabel(p, state));
  }

  // 6. Title and scale.
  t.SetForeColor(marking);
  t.SetCurrentX(t.ScaleWidth() * kMargin / 2);
  t.SetCurrentY(t.ScaleHeight() * kMargin / 4);
  t.Print(std::string(ap.Icao.Trimmed()) + "  " + std::string(ap.Name.Trimmed()));
  ScaleBar(t, f, marking);
  return f;
}

AirportInfoLists AirportInfo(const AirportRec& ap, const AppState& state) {
  AirportInfoLists out;
  const bool decSec = state.Config.DecSec != 0;
  out.Header.push_back(std::string(ap.Icao.Trimmed()) + "  " + std::string(ap.Name.Trimmed()));
  std::string place = ap.City;
  for (const std::string* part : {&ap.State, &ap.Country})
    if (!part->empty()) place += (place.empty() ? "" : ", ") + *part;
  out.Header.push_back(place);
  out.Header.push_back("Elevation " + Format(ap.Elevation, "0") + " ft");
  out.Header.push_back(LatToText(ap.Lat, decSec) + "  " + LonToText(ap.Lon, decSec));
  out.Header.push_back("MagVar " + VarToText(ap.MagVar));

  for (const RunwayRec& r : ap.Runways) {
    std::string line = RunwayDesignator(r.LowEnd.View()) + " / " + RunwayDesignator(r.HighEnd.View());
    line += "   " + Format(r.LengthFeet, "0") + " x " + Format(r.WidthFeet, "0") + " ft   ";
    line += state.SurfaceKinds[r.Surface];
    // The low end shows its magnetic heading, the high end the true
    // reciprocal, as everywhere in the program.
    line += "   Hdg " + Format(Wrap360(r.TrueHeading - ap.MagVar), "000") + kDegreeSign + " / " +
            Format(Wrap360(r.TrueHeading + 180.0), "000") + kDegreeSign;
    std::string_view low = r.LowIls.Trimmed(), high = r.HighIls.Trimmed();
    if (!low.empty()) line += "   ILS " + std::string(low);
    if (!high.empty()) line += "   ILS " + std::string(high);
    out.Runways.push_back(std::move(line));
  }
  for (const FrequencyRec& fr : ap.Frequencies) {
    std::string kind = fr.Kind >= 1 && fr.Kind < state.FrequencyKinds.size() ? state.FrequencyKinds[fr.Kind] : "";
    if (kind.empty()) kind = "Freq";
    out.Frequencies.push_back(kind + "   " + Format(fr.Frequency, "000.000") + "   " + std::string(fr.Name.Trimmed()));
  }
  for (const IlsRec& i : ap.Ils) {
    std::string line = std::string(i.Ident.Trimmed()) + "   " + Format(IlsFrequency(i), "000.000");
    if (!i.Runway.Trimmed().empty()) line += "   Rwy " + RunwayDesignator(i.Runway.View());
    const float course = IlsCourse(i);
    if (course > 0 && course <= 360) line += "   Crs " + Format(course, "000") + kDegreeSign;
    if (IlsGlideSlope(i) > 0) line += "   GS " + Format(IlsGlideSlope(i), "0.0") + kDegreeSign;
    line += "   " + std::string(i.Name.Trimmed());
    out.Ils.push_back(std::move(line));
  }
  for (const ParkingRec& p : ap.Parking) {
    std::string line = ParkingLabel(p, state);
    if (p.Kind >= 1 && p.Kind < static_cast<int32_t>(state.ParkingKinds.size()))
      line += "   " + state.ParkingKinds[static_cast<std::size_t>(p.Kind)];
    out.Parking.push_back(std::move(line));
  }
  return out;
}

}  // namespace orv
