// The airways and the navaid point loops: VOR, NDB, intersections, GPS
// fixes and user waypoints.
#include "map/RenderPassDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "core/Runtime.h"
#include "core/TextFormats.h"

namespace orv {

void MapRenderer::Pass::AirwayLoop(const std::vector<AirwayRec>& airways, RenderCaches::AirwayPaths& paths, Colour colour,
                                   HiliteKind hiliteKind) {
  RenderCaches::PrepareAirwayPaths(db.Navaids.Intersections, airways, paths);
  map.SetDrawWidth(1);
  map.SetDrawStyle(kDrawStyleSolid);
  const bool labels = label <= 100 && (layers.ShowIcao || layers.ShowName);
  const DrawPoint* bends = paths.Bends.data();
  for (std::size_t i = 0; i < paths.Ends.size(); ++i) {
    const RenderCaches::AirwayEnds& p = paths.Ends[i];
    if (!InView(v, p.Lat1, p.Lon1) && !InView(v, p.Lat2, p.Lon2)) continue;
    // The lines of a run of segments in one colour are drawn in one call,
    // before any label that must lie over them.
    const Colour segColour = Pick(colour, hiliteKind, static_cast<int32_t>(i));
    if (segColour != map.ForeColor()) {
      FlushSegments();
      map.SetForeColor(segColour);
    }
    RenderCaches::AirwayBends& bent = paths.BendsOf[i];
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

void MapRenderer::Pass::VorLoop() {
  const auto& vors = db.Navaids.Vors;
  const LatLon* at = RenderCaches::PositionsOf(caches.vorPositions, vors, [](const VorRec&) { return true; });
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
  const LatLon* at = RenderCaches::PositionsOf(caches.ndbPositions, ndbs, [](const NdbRec&) { return true; });
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

void MapRenderer::Pass::IntersectionLoop() {
  caches.AirwayFlags(db);
  const auto& ints = db.Navaids.Intersections;
  const LatLon* at =
      RenderCaches::PositionsOf(caches.intersectionPositions, ints, [](const IntersectionRec& r) { return !r.Ident.IsEmptySlot(); });
  for (std::size_t i = 0; i < ints.size(); ++i) {
    if (!InView(v, at[i].Lat, at[i].Lon)) continue;
    const IntersectionRec& rec = ints[i];
    // Shown for the intersection switch, or as a point of a shown airway.
    bool shown = layers.btnInter;
    if (!shown && layers.btnVictor && caches.onVictor[i]) shown = true;
    if (!shown && layers.btnJet && caches.onJet[i]) shown = true;
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

}  // namespace orv
