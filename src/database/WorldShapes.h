// The world coastline files in "\map\": worldpolygon.bin (land and lake
// polygons) and worldline.bin (rivers and coast lines). Each shape is a
// 25-byte head (Index, Kind, PointCount, box North, South, East, West)
// followed at once by PointCount + 1 points of two 32-bit floats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "database/AirspaceTables.h"

namespace orv {

inline constexpr std::size_t kWorldShapeHeadSize = 25;
// The world polygon array has the fixed indexes 0 to 15200.
inline constexpr int32_t kLastWorldPolygonIndex = 15200;

// Fills out.WorldPolygons and out.WorldPolygonPoints. A cut-short head, a
// negative point count or one that runs past the end, an Index outside
// 0..15200, more shapes than the array holds, or a box or point that is not
// a finite number gives the message and leaves out as it was.
std::optional<std::string> ParseWorldPolygonFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildWorldPolygonFile(const AirspaceTables& tables);

// Fills out.WorldLines and out.WorldLinePoints; as above, without a limit on
// the Index.
std::optional<std::string> ParseWorldLineFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildWorldLineFile(const AirspaceTables& tables);

// Appends a shape (for writers and tests): PointCount, First, Count and the
// box come from the points. A shape needs at least one point (the file's
// count is one less than the number of points); an empty list adds nothing.
void AddWorldShape(std::vector<WorldShapeRec>& shapes, std::vector<ShapePoint>& points, int32_t index,
                   uint8_t kind, std::span<const ShapePoint> shapePoints);

}  // namespace orv
