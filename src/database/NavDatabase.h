// The loaded navigation database: every array the start-up fills, held
// together and passed by reference to whoever reads it. Filled once at start;
// only the user waypoints change later.
//
// Revision counts the changes: every file loaded into it and every change of
// the user waypoints adds one, so that whoever keeps figures worked out from
// the arrays (the render pass's caches) knows when to work them out again.
// Whoever changes an array in place calls Changed().
#pragma once

#include <cstdint>
#include <vector>

#include "database/AirportFile.h"
#include "database/AirspaceFiles.h"
#include "database/AirspaceTables.h"
#include "database/GroundFiles.h"
#include "database/UserObjects.h"
#include "database/WorldShapes.h"
#include "database/MagVar.h"
#include "database/NavaidFiles.h"
#include "database/UserWaypoints.h"

namespace orv {

struct NavDatabase {
  MagVarGrid MagVar;
  AirportTables Airports;
  NavaidTables Navaids;
  AirspaceTables Shapes;
  std::vector<UserWaypointRec> UserWaypoints;
  uint64_t Revision = 0;

  void Changed() { ++Revision; }
};

}  // namespace orv
