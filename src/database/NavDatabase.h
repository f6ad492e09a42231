// The loaded navigation database: every array the start-up fills, held
// together and passed by reference to whoever reads it. Filled once at start;
// only the user waypoints change later.
#pragma once

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
};

}  // namespace orv
