// Row 14 of the hover box: the AI traffic under the pointer, from the
// simulator's traffic tables as the live tick last read them.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "map/MapLayer.h"
#include "simlink/SimData.h"

namespace orv {

// The pointer's reach around a traffic symbol, either way in X and in Y.
inline constexpr double kTrafficHoverRadius = 150;

// For each slot under the pointer (x, y in surface units), in slot order:
//   "DLH123"        the ATC identifier, trimmed
//   "FL350"         the altitude: "FL" and (A + 1) / 100 cut from 10000 ft
//                   up, else the feet cut and " ft" ("3500 ft")
//   "250 kt"        the ground speed
//   "EDDF-KJFK"     departure and destination (or the gate's route), when known
// A free slot (id 0) is passed over; an empty identifier ends the table, as
// it ends the drawing walk.
// ext holds the extended entries of the same slots (fewer: no route).
void AppendTrafficHoverLines(std::span<const TrafficEntry> entries, std::span<const TrafficExtEntry> ext,
                             const Projector& proj, double x, double y, std::vector<std::string>& lines);

}  // namespace orv
