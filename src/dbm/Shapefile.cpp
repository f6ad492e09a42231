#include "dbm/Shapefile.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "database/WorldShapes.h"

namespace orv::dbm {

namespace {

uint32_t Big32(const uint8_t* p) {
  return (uint32_t(p[0]) << 24) | (uint32_t(p[1]) << 16) | (uint32_t(p[2]) << 8) | uint32_t(p[3]);
}
int32_t Little32(const uint8_t* p) {
  return static_cast<int32_t>(uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16) | (uint32_t(p[3]) << 24));
}
double LittleDouble(const uint8_t* p) {
  double d;
  std::memcpy(&d, p, sizeof d);  // the machines this builds on are little-endian
  return d;
}

constexpr int32_t kNull = 0, kPolyLine = 3, kPolygon = 5, kPolyLineZ = 13, kPolygonZ = 15, kPolyLineM = 23, kPolygonM = 25;

}  // namespace

bool ReadShapefileParts(const uint8_t* data, std::size_t size, const std::string& name,
                        std::vector<std::vector<ShapePoint>>& parts, std::string& error) {
  if (size < 100 || Big32(data) != 9994 || Little32(data + 28) != 1000) {
    error = name + ": not a shapefile (no file code 9994 and version 1000 in the 100-byte header)";
    return false;
  }
  std::size_t pos = 100;
  int64_t record = 0;
  auto fail = [&](std::size_t at, const std::string& what) {
    error = name + ": record " + std::to_string(record) + " at byte " + std::to_string(at) + ": " + what;
    return false;
  };
  while (pos + 8 <= size) {
    ++record;
    std::size_t start = pos;
    uint64_t contentBytes = uint64_t(Big32(data + pos + 4)) * 2;
    pos += 8;
    if (contentBytes < 4 || contentBytes > size - pos) return fail(start, "the record runs past the end of the file");
    const uint8_t* c = data + pos;
    std::size_t end = pos + static_cast<std::size_t>(contentBytes);
    int32_t type = Little32(c);
    if (type == kNull) {
      pos = end;
      continue;
    }
    if (type != kPolyLine && type != kPolygon && type != kPolyLineZ && type != kPolygonZ && type != kPolyLineM &&
        type != kPolygonM)
      return fail(start, "shape type " + std::to_string(type) + " is neither a polygon nor a polyline");
    if (contentBytes < 44) return fail(start, "the record is too short for its box and counts");
    int32_t numParts = Little32(c + 36), numPoints = Little32(c + 40);
    uint64_t need = 44 + uint64_t(std::max(numParts, 0)) * 4 + uint64_t(std::max(numPoints, 0)) * 16;
    if (numParts < 0 || numPoints < 0 || need > contentBytes)
      return fail(start, "part or point count does not fit the record");
    const uint8_t* partStarts = c + 44;
    const uint8_t* points = partStarts + std::size_t(numParts) * 4;
    for (int32_t p = 0; p < numParts; ++p) {
      int32_t first = Little32(partStarts + std::size_t(p) * 4);
      int32_t last = p + 1 < numParts ? Little32(partStarts + std::size_t(p + 1) * 4) : numPoints;
      if (first < 0 || last > numPoints || first > last) return fail(start, "a part starts outside the point list");
      std::vector<ShapePoint> part;
      part.reserve(std::size_t(last - first));
      for (int32_t i = first; i < last; ++i) {
        double x = LittleDouble(points + std::size_t(i) * 16), y = LittleDouble(points + std::size_t(i) * 16 + 8);
        if (!std::isfinite(x) || !std::isfinite(y) || y < -90.5 || y > 90.5 || x < -180.5 || x > 180.5)
          return fail(start, "a point is not a longitude and latitude in degrees");
        part.push_back({static_cast<float>(y), static_cast<float>(x)});
      }
      if (!part.empty()) parts.push_back(std::move(part));
    }
    pos = end;
  }
  return true;
}

std::size_t AddWorldPolygons(std::vector<std::vector<ShapePoint>>& parts, uint8_t kind, AirspaceTables& shapes) {
  std::size_t room = static_cast<std::size_t>(kLastWorldPolygonIndex) + 1;
  room = shapes.WorldPolygons.size() >= room ? 0 : room - shapes.WorldPolygons.size();
  std::size_t leftOut = 0;
  if (parts.size() > room) {
    std::stable_sort(parts.begin(), parts.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
    leftOut = parts.size() - room;
    parts.resize(room);
  }
  for (const auto& part : parts)
    AddWorldShape(shapes.WorldPolygons, shapes.WorldPolygonPoints, static_cast<int32_t>(shapes.WorldPolygons.size()),
                  kind, part);
  return leftOut;
}

void AddWorldLines(const std::vector<std::vector<ShapePoint>>& parts, uint8_t kind, AirspaceTables& shapes) {
  for (const auto& part : parts)
    AddWorldShape(shapes.WorldLines, shapes.WorldLinePoints, static_cast<int32_t>(shapes.WorldLines.size()), kind, part);
}

}  // namespace orv::dbm
