// What the render pass works out once per loaded database (or once per zoom)
// and keeps from one run to the next: the positions of the big tables side by
// side, the airway ends and their great-circle bends, the shapes thinned to
// the zoom's pixel, the airspace classes and the airway membership of the
// intersections. They are worked out afresh when the pass is given another
// database or the database's Revision moved on (Sync); a cache whose table
// has another length than the cache is rebuilt as well, so that a table
// changed without a new revision is never read past its end.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "core/Geodesy.h"
#include "database/NavDatabase.h"
#include "map/DrawTarget.h"
#include "map/MapLayers.h"
#include "map/Navaid.h"

namespace orv {

// Marks (in keep) the points of a line to draw so that every other point lies
// within `tolerance` degrees of the line through the kept ones, longitude
// measured at the equator's scale; the first and last point are kept.
void KeepShapePoints(const std::vector<ShapePoint>& pts, double tolerance, std::vector<uint8_t>& keep,
                     std::vector<std::pair<uint32_t, uint32_t>>& stack);

// A BendsOf entry whose bends are not worked out yet.
inline constexpr uint32_t kBendsUnknown = UINT32_MAX;

struct RenderCaches {
  // The airways as the pass draws them, worked out once per loaded
  // database: both ends of each segment side by side (the in-view test
  // reads nothing else) and the points of the long legs bent along their
  // great circle, which cost a dozen sines each.
  struct AirwayEnds {
    float Lat1 = 0, Lon1 = 0, Lat2 = 0, Lon2 = 0;  // NaN latitudes: not drawn (an empty slot)
  };
  struct AirwayBends {
    uint32_t First = 0;
    uint32_t Count = 0;
  };
  struct AirwayPaths {
    bool Valid = false;
    std::size_t IntCount = 0;
    std::vector<AirwayEnds> Ends;
    std::vector<AirwayBends> BendsOf;
    std::vector<DrawPoint> Bends;  // X longitude, Y latitude
  };
  // A set of shapes (coastlines, rivers, airspaces) with the points left
  // out that lie in the cell of the point kept before them, a cell being a
  // pixel of the present zoom: a coastline of a hundred thousand points is a
  // few thousand at 2000 NM. Each shape is thinned when first drawn at a
  // zoom; a new zoom or a new database starts afresh.
  struct ThinnedShapes {
    bool Valid = false;
    double Cell = 0;  // degrees
    std::vector<uint32_t> First;
    std::vector<uint32_t> Count;
    std::vector<ShapePoint> Points;
  };
  // The positions of a table's records side by side, a NaN latitude for an
  // empty slot: the in-view test of forty thousand airports reads 320 KB
  // instead of a cache line per record.
  struct Positions {
    bool Valid = false;
    std::vector<LatLon> At;
  };

  // Marks every cache stale when db is another database than the last one or
  // its Revision moved on. The pass calls it first.
  void Sync(const NavDatabase& db);

  // The positions of table's records, worked out when the table changed;
  // used(rec) false gives the record a NaN latitude, so that it is never in
  // view.
  template <typename Rec, typename Used>
  static const LatLon* PositionsOf(Positions& cache, const std::vector<Rec>& table, Used used) {
    if (!cache.Valid || cache.At.size() != table.size()) {
      cache.Valid = true;
      cache.At.resize(table.size());
      for (std::size_t i = 0; i < table.size(); ++i)
        cache.At[i] = used(table[i]) ? LatLon{table[i].Lat, table[i].Lon} : LatLon{std::nanf(""), 0};
    }
    return cache.At.data();
  }

  // The first maxPoints points of shape `index` of a set, thinned to a
  // pixel of `cell` degrees.
  std::span<const ShapePoint> Thinned(ThinnedShapes& set, std::size_t shapes,
                                      std::size_t index, std::span<const ShapePoint> raw, std::size_t maxPoints,
                                      double cell);
  // The ends of every segment of airways, found in the intersection table.
  static void PrepareAirwayPaths(const std::vector<IntersectionRec>& ints, const std::vector<AirwayRec>& airways,
                                 AirwayPaths& paths);
  // AirspaceClassOf of each airspace of the tables.
  const std::vector<AirspaceClass>& AirspaceClasses(const AirspaceTables& shapes);
  // onVictor and onJet for the navaid tables of db.
  void AirwayFlags(const NavDatabase& db);
  // The records of the ground polygons that open a polygon, with the one
  // that closes each.
  std::span<const clsNavaid::PolygonHead> GroundHeads(const std::vector<GroundPolyRec>& polygons);

  Positions airportPositions;
  Positions intersectionPositions;
  Positions vorPositions;
  Positions ndbPositions;
  AirwayPaths victorPaths;
  AirwayPaths jetPaths;
  ThinnedShapes worldPolygonsThin;
  ThinnedShapes worldLinesThin;
  ThinnedShapes airspacesThin;
  std::vector<uint8_t> onVictor;  // per intersection slot: on a victor airway
  std::vector<uint8_t> onJet;     // per intersection slot: on a jet airway

private:
  std::vector<ShapePoint> thinScratch_;
  std::vector<uint8_t> keep_;
  std::vector<std::pair<uint32_t, uint32_t>> stack_;
  std::vector<AirspaceClass> airspaceClasses_;
  bool airspaceClassesValid_ = false;
  std::vector<clsNavaid::PolygonHead> groundHeads_;
  bool groundHeadsValid_ = false;
  std::size_t groundHeadsOf_ = 0;
  bool airwayFlagsValid_ = false;
  std::size_t airwayFlagsSizes_[3] = {};
  const NavDatabase* db_ = nullptr;
  uint64_t revision_ = 0;
};

}  // namespace orv
