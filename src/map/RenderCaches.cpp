#include "map/RenderCaches.h"

#include <algorithm>
#include <cmath>

namespace orv {

void RenderCaches::Sync(const NavDatabase& db) {
  if (db_ == &db && revision_ == db.Revision) return;
  db_ = &db;
  revision_ = db.Revision;
  for (Positions* p : {&airportPositions, &intersectionPositions, &vorPositions, &ndbPositions}) p->Valid = false;
  victorPaths.Valid = jetPaths.Valid = false;
  worldPolygonsThin.Valid = worldLinesThin.Valid = airspacesThin.Valid = false;
  airspaceClassesValid_ = airwayFlagsValid_ = groundHeadsValid_ = false;
}

std::span<const clsNavaid::PolygonHead> RenderCaches::GroundHeads(const std::vector<GroundPolyRec>& polygons) {
  if (!groundHeadsValid_ || groundHeadsOf_ != polygons.size()) {
    groundHeadsValid_ = true;
    groundHeadsOf_ = polygons.size();
    groundHeads_.clear();
    // "L" adds a point, NUL and letters past "M" pass unseen, anything else
    // closes the open polygon and opens the next.
    for (std::size_t i = 0; i < polygons.size(); ++i) {
      const char kind = polygons[i].Kind.chars[0];
      if (kind == 'L' || kind == '\0' || static_cast<unsigned char>(kind) > 'M') continue;
      if (!groundHeads_.empty()) groundHeads_.back().Next = static_cast<uint32_t>(i);
      groundHeads_.push_back({polygons[i].Lat, polygons[i].Lon, static_cast<uint32_t>(i), UINT32_MAX});
    }
  }
  return groundHeads_;
}

std::span<const ShapePoint> RenderCaches::Thinned(ThinnedShapes& set,
                                                  std::size_t shapes, std::size_t index,
                                                  std::span<const ShapePoint> raw, std::size_t maxPoints,
                                                  double cell) {
  raw = raw.first(std::min(raw.size(), maxPoints));
  if (!(cell > 0) || !std::isfinite(cell) || index >= shapes) return raw;
  if (!set.Valid || set.First.size() != shapes || set.Cell != cell) {
    set.Valid = true;
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
      std::vector<ShapePoint>& pts = thinScratch_;
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
      KeepShapePoints(pts, cell / 2, keep_, stack_);
      for (std::size_t i = 0; i < pts.size(); ++i)
        if (keep_[i]) set.Points.push_back(pts[i]);
    }
    set.First[index] = static_cast<uint32_t>(first);
    set.Count[index] = static_cast<uint32_t>(set.Points.size() - first);
  }
  return {set.Points.data() + set.First[index], set.Count[index]};
}

void RenderCaches::PrepareAirwayPaths(const std::vector<IntersectionRec>& ints, const std::vector<AirwayRec>& airways,
                                      AirwayPaths& paths) {
  if (paths.Valid && paths.IntCount == ints.size() && paths.Ends.size() == airways.size()) return;
  paths.Valid = true;
  paths.IntCount = ints.size();
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

const std::vector<AirspaceClass>& RenderCaches::AirspaceClasses(const AirspaceTables& s) {
  if (!airspaceClassesValid_ || airspaceClasses_.size() != s.Airspaces.size()) {
    airspaceClassesValid_ = true;
    airspaceClasses_.resize(s.Airspaces.size());
    for (std::size_t i = 0; i < s.Airspaces.size(); ++i)
      airspaceClasses_[i] = AirspaceClassOf(s.Airspaces[i].Class.View());
  }
  return airspaceClasses_;
}

void RenderCaches::AirwayFlags(const NavDatabase& db) {
  const auto& n = db.Navaids;
  const std::size_t sizes[3] = {n.Intersections.size(), n.VictorAirways.size(), n.JetAirways.size()};
  if (airwayFlagsValid_ && std::equal(sizes, sizes + 3, airwayFlagsSizes_)) return;
  airwayFlagsValid_ = true;
  std::copy(sizes, sizes + 3, airwayFlagsSizes_);
  onVictor.assign(sizes[0], 0);
  onJet.assign(sizes[0], 0);
  auto mark = [&](const std::vector<AirwayRec>& list, std::vector<uint8_t>& flags) {
    for (const AirwayRec& seg : list) {
      if (seg.FromIndex >= 0 && static_cast<std::size_t>(seg.FromIndex) < sizes[0]) flags[static_cast<std::size_t>(seg.FromIndex)] = 1;
      if (seg.ToIndex >= 0 && static_cast<std::size_t>(seg.ToIndex) < sizes[0]) flags[static_cast<std::size_t>(seg.ToIndex)] = 1;
    }
  };
  mark(n.VictorAirways, onVictor);
  mark(n.JetAirways, onJet);
}

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

}  // namespace orv
