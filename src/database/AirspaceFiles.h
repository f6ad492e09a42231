// airspace.orv and msa.orv, both in "\database\": readers over the whole
// file's bytes and the writers that produce the same layout.
//
// airspace.orv: a 132-byte head per airspace, followed at once by PointCount
// points of two 32-bit floats (Lat, Lon). msa.orv: 50-byte records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "database/AirspaceTables.h"

namespace orv {

inline constexpr std::size_t kAirspaceHeadSize = 132;
inline constexpr std::size_t kMsaRecordSize = 50;
// The airspace array has the fixed indexes 0 to 15000.
inline constexpr int kLastAirspaceIndex = 15000;

// Fills out.Airspaces and out.AirspacePoints. A head whose Ident starts with
// NUL is an empty record: it and its points are passed over. Corrupt input
// (a cut-short head, a negative point count or one that runs past the end,
// an Index outside 0..15000, more airspaces than the array holds, a point
// that is not a finite number) gives the message and leaves out as it was.
std::optional<std::string> ParseAirspaceFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildAirspaceFile(const AirspaceTables& tables);
// Appends an airspace with its outline (for writers and tests): sets First,
// PointCount and the box from the points.
void AddAirspace(AirspaceTables& tables, AirspaceRec rec, std::span<const ShapePoint> points);

// Fills out.MsaCells. A record whose Label starts with NUL is left out.
std::optional<std::string> ParseMsaFile(const uint8_t* data, std::size_t size, AirspaceTables& out);
std::vector<uint8_t> BuildMsaFile(const AirspaceTables& tables);

}  // namespace orv
