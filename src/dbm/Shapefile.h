// The ESRI shapefile geometry (.shp) of the Natural Earth land and river
// data, read into the world shapes of "\map\worldpolygon.bin" and
// "\map\worldline.bin".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "database/AirspaceTables.h"

namespace orv::dbm {

// Every part (ring or line) of every polygon or polyline record, as points
// of latitude and longitude. False with a message naming the file and the
// record for a file that is not a shapefile or is cut short or corrupt.
bool ReadShapefileParts(const uint8_t* data, std::size_t size, const std::string& name,
                        std::vector<std::vector<ShapePoint>>& parts, std::string& error);

// The kinds the map tells apart (worldpolygon.bin: 1 land, 2 lake;
// worldline.bin: 1 coast line, 2 river).
inline constexpr uint8_t kLandKind = 1;
inline constexpr uint8_t kLakeKind = 2;
inline constexpr uint8_t kCoastLineKind = 1;
inline constexpr uint8_t kRiverKind = 2;

// Adds the parts as world polygons of `kind`, numbered on from the shapes
// already there. The array ends at index 15200: when there are more parts the
// ones with the most points are kept. Returns the number of parts left out.
std::size_t AddWorldPolygons(std::vector<std::vector<ShapePoint>>& parts, uint8_t kind, AirspaceTables& shapes);
// Adds the parts as world lines of `kind`; lines have no index limit.
void AddWorldLines(const std::vector<std::vector<ShapePoint>>& parts, uint8_t kind, AirspaceTables& shapes);

}  // namespace orv::dbm
