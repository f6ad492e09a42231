// The airport layers: the ground layout, the airport loop with its runways,
// end numbers, parking positions and ILS feathers, and the ILS markers.
#include "map/RenderPassDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

namespace {

int16_t MarkerRadius(std::string_view kind) {
  if (!kind.empty() && (kind[0] == 'O' || kind[0] == 'o')) return kOuterMarkerRadius;
  if (!kind.empty() && (kind[0] == 'M' || kind[0] == 'm')) return kMiddleMarkerRadius;
  return kInnerMarkerRadius;
}

}  // namespace

// The ground polygons and taxiways at a close view, the taxiway names at
// the closest.
void MapRenderer::Pass::DrawGround() {
  if (label <= 10 && layers.btnAP) {
    if (!db.Shapes.GroundPolygons.empty())
      navaid.DrawAsPolygon(db.Shapes.GroundPolygons, caches.GroundHeads(db.Shapes.GroundPolygons));
    if (!db.Shapes.TaxiSegments.empty()) navaid.DrawAsTaxiway(db.Shapes.TaxiSegments);
  }
  if (label < 3 && layers.btnAP && !db.Shapes.TaxiSegments.empty())
    navaid.DrawAsTaxiwayDesignator(db.Shapes.TaxiSegments);
}

void MapRenderer::Pass::AirportLoop() {
  const auto& airports = db.Airports.Airports;
  const LatLon* at = RenderCaches::PositionsOf(caches.airportPositions, airports, [](const AirportRec& a) { return IsAirportSlotUsed(a); });
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
        const float course = IlsCourseOr(ils, runwayCourse);
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
        navaid.sngFrequency = IlsFrequency(ils);
        navaid.sngILSGlideAngle = IlsGlideSlope(ils);
        navaid.blnILSType = IlsGlideSlope(ils) > 0;
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
          self.text_ += Format(IlsFrequency(ils), "000.00");
        }
        PrintLabel(x + 60, y + 60, kLabelNavaid);
      }
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

}  // namespace orv
