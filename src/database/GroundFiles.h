// The ground layout of the airports, in the simulator's database folder:
// taxi.orv (26-byte taxiway segments), poly.orv (16-byte ground polygon
// points) and marker.orv (14-byte ILS marker beacons). Each file may be
// empty; a file that is not a whole number of records is corrupt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/AirspaceTables.h"

namespace orv {

inline constexpr std::size_t kTaxiRecordSize = 26;
inline constexpr std::size_t kGroundPolyRecordSize = 16;
inline constexpr std::size_t kMarkerRecordSize = 14;

// Fills out.TaxiSegments. Every record is kept (the file has no empty-record
// mark); the name is trimmed. A position that is not a finite number is an error.
std::optional<std::string> ParseTaxiFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildTaxiFile(const AirspaceTables& tables);

// Fills out.GroundPolygons. A record whose Kind is NUL is left out.
std::optional<std::string> ParseGroundPolyFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildGroundPolyFile(const AirspaceTables& tables);

// Fills out.Markers. A record whose Kind starts with NUL is left out.
std::optional<std::string> ParseMarkerFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildMarkerFile(const AirspaceTables& tables);

}  // namespace orv
