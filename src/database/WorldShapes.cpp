#include "database/WorldShapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

#include "database/ByteReader.h"
#include "database/LargeArrays.h"
#include "database/ShapeFileDetail.h"

namespace orv {
namespace {

using shapefile::Finite;
using shapefile::RecordError;

template <typename T>
T Load(const uint8_t* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

struct ShapeFileKind {
  std::string_view File;
  std::string_view What;  // the plural in messages
  bool IndexLimited;
  int32_t LastIndex;
};

constexpr ShapeFileKind kPolygonFile{"worldpolygon.bin", "world polygons", true, kLastWorldPolygonIndex};
constexpr ShapeFileKind kLineFile{"worldline.bin", "world lines", false, 0};

std::optional<std::string> ParseShapes(const ShapeFileKind& kind, const uint8_t* data, std::size_t size,
                                       std::vector<WorldShapeRec>& outShapes,
                                       std::vector<ShapePoint>& outPoints) {
  // Walk the heads first: every count and index is checked before anything
  // is stored, and the exact sizes let both arrays be allocated once.
  const std::size_t maxShapes = kind.IndexLimited ? static_cast<std::size_t>(kind.LastIndex) + 1
                                                  : std::numeric_limits<std::size_t>::max();
  std::size_t pos = 0;
  std::size_t record = 0;
  std::size_t totalPoints = 0;
  while (pos < size) {
    ++record;
    std::size_t rest = size - pos;
    if (rest < kWorldShapeHeadSize)
      return RecordError(kind.File, record, pos,
                         "the shape head is cut short: " + std::to_string(rest) + " of 25 bytes remain");
    const uint8_t* head = data + pos;
    auto index = Load<int32_t>(head);
    auto count = Load<int32_t>(head + 5);
    if (kind.IndexLimited && (index < 0 || index > kind.LastIndex))
      return RecordError(kind.File, record, pos,
                         "index " + std::to_string(index) + " is outside the " + std::string(kind.What) +
                             " indexes 0 to " + std::to_string(kind.LastIndex));
    if (record > maxShapes)
      return RecordError(kind.File, record, pos,
                         "more than " + std::to_string(maxShapes) + " " + std::string(kind.What) +
                             "; the array holds indexes 0 to " + std::to_string(kind.LastIndex));
    if (count < 0)
      return RecordError(kind.File, record, pos, "point count " + std::to_string(count) + " is negative");
    // The list holds PointCount + 1 points; worked out in 64 bits so that the
    // largest count cannot wrap.
    uint64_t pointBytes = (static_cast<uint64_t>(count) + 1) * sizeof(ShapePoint);
    if (pointBytes > rest - kWorldShapeHeadSize)
      return RecordError(kind.File, record, pos,
                         "point count " + std::to_string(count) + " runs past the end of the file");
    totalPoints += static_cast<std::size_t>(count) + 1;
    pos += kWorldShapeHeadSize + static_cast<std::size_t>(pointBytes);
  }

  std::vector<WorldShapeRec> shapes(record);
  std::vector<ShapePoint> points;
  SizeRecords(points, totalPoints);
  ByteReader reader(data, size);
  std::size_t nextPoint = 0;
  for (std::size_t i = 0; i < record; ++i) {
    std::size_t start = reader.Pos();
    WorldShapeRec& s = shapes[i];
    s.Index = reader.I32();
    s.Kind = reader.U8();
    s.PointCount = reader.I32();
    s.North = reader.F32();
    s.South = reader.F32();
    s.East = reader.F32();
    s.West = reader.F32();
    if (!Finite(s.North, s.South) || !Finite(s.East, s.West))
      return RecordError(kind.File, i + 1, start, "the bounding box is not a finite number");
    s.First = static_cast<uint32_t>(nextPoint);
    s.Count = static_cast<uint32_t>(s.PointCount) + 1;
    ShapePoint* dst = points.data() + nextPoint;
    std::memcpy(dst, data + reader.Pos(), s.Count * sizeof(ShapePoint));
    reader.Skip(s.Count * sizeof(ShapePoint));
    nextPoint += s.Count;
    for (uint32_t k = 0; k < s.Count; ++k)
      if (!Finite(dst[k].Lat, dst[k].Lon))
        return RecordError(kind.File, i + 1, start,
                           "point " + std::to_string(k + 1) + " is not a finite latitude and longitude");
  }
  outShapes = std::move(shapes);
  outPoints = std::move(points);
  return std::nullopt;
}

// A shape's points, cut to the array so that a record edited by hand cannot
// reach past it.
std::span<const ShapePoint> ShapePoints(const WorldShapeRec& s, const std::vector<ShapePoint>& points) {
  if (s.First > points.size()) return {};
  std::size_t count = std::min<std::size_t>(s.Count, points.size() - s.First);
  return std::span<const ShapePoint>(points.data() + s.First, count);
}

std::vector<uint8_t> BuildShapes(const std::vector<WorldShapeRec>& shapes, const std::vector<ShapePoint>& points) {
  std::size_t total = 0;
  for (const WorldShapeRec& s : shapes) total += kWorldShapeHeadSize + ShapePoints(s, points).size() * sizeof(ShapePoint);
  ByteWriter w;
  w.bytes.reserve(total);
  for (const WorldShapeRec& s : shapes) {
    std::span<const ShapePoint> pts = ShapePoints(s, points);
    if (pts.empty()) continue;  // the format cannot hold a shape without points
    w.I32(s.Index);
    w.U8(s.Kind);
    w.I32(static_cast<int32_t>(pts.size() - 1));
    w.F32(s.North);
    w.F32(s.South);
    w.F32(s.East);
    w.F32(s.West);
    for (const ShapePoint& p : pts) {
      w.F32(p.Lat);
      w.F32(p.Lon);
    }
  }
  return std::move(w.bytes);
}

}  // namespace

std::optional<std::string> ParseWorldPolygonFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  return ParseShapes(kPolygonFile, data, size, out.WorldPolygons, out.WorldPolygonPoints);
}

std::optional<std::string> ParseWorldLineFile(const uint8_t* data, std::size_t size, AirspaceTables& out) {
  return ParseShapes(kLineFile, data, size, out.WorldLines, out.WorldLinePoints);
}

std::vector<uint8_t> BuildWorldPolygonFile(const AirspaceTables& tables) {
  return BuildShapes(tables.WorldPolygons, tables.WorldPolygonPoints);
}

std::vector<uint8_t> BuildWorldLineFile(const AirspaceTables& tables) {
  return BuildShapes(tables.WorldLines, tables.WorldLinePoints);
}

void AddWorldShape(std::vector<WorldShapeRec>& shapes, std::vector<ShapePoint>& points, int32_t index,
                   uint8_t kind, std::span<const ShapePoint> shapePoints) {
  if (shapePoints.empty()) return;
  WorldShapeRec s;
  s.Index = index;
  s.Kind = kind;
  s.PointCount = static_cast<int32_t>(shapePoints.size() - 1);
  s.First = static_cast<uint32_t>(points.size());
  s.Count = static_cast<uint32_t>(shapePoints.size());
  s.North = s.South = shapePoints[0].Lat;
  s.East = s.West = shapePoints[0].Lon;
  for (const ShapePoint& p : shapePoints) {
    s.North = std::max(s.North, p.Lat);
    s.South = std::min(s.South, p.Lat);
    s.East = std::max(s.East, p.Lon);
    s.West = std::min(s.West, p.Lon);
  }
  points.insert(points.end(), shapePoints.begin(), shapePoints.end());
  shapes.push_back(s);
}

}  // namespace orv

