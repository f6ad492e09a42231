// A plan built for the commands that work on one (sidstar, print): the
// database loaded as the program starts, the aircraft of the folder, and an
// airway or navaid plan between two airports, as the plan command builds it.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "core/AppState.h"
#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"

namespace orv::cli {

enum class PlanKind { High, Low, Navaid };

struct PlanRequest {
  std::vector<std::string> Airports;  // departure and destination
  PlanKind Kind = PlanKind::High;
  int16_t Aircraft = 0;
  int32_t Level = -1;
};

// Takes a plan option at args[i] (--high, --low, --navaid, --aircraft N,
// --level FL), moving i past its value. 1 when taken, 0 when args[i] is no
// plan option, -1 (with the reason on err) when its value is wrong.
int TakePlanOption(const Args& args, std::size_t& i, PlanRequest& request, std::ostream& err,
                   const std::string& command);

struct CliPlan {
  AppState State;
  NavDatabase Db;
  AircraftDb Aircraft;
  FlightPlan Plan;
  PlanPanel Panel;
};

// Loads the folder and builds the plan; false with the reason on err.
bool BuildCliPlan(const Context& ctx, const PlanRequest& request, CliPlan& out, std::ostream& err,
                  const std::string& command);

}  // namespace orv::cli
