// Building a plan between two airports from the command line's arguments, as
// "plan" and "fly" both do: loads the application folder's database and the
// aircraft, then runs the route builder.
#pragma once

#include <iosfwd>
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

// The arguments both commands share: DEP DEST [--high|--low|--navaid]
// [--aircraft N] [--level FL].
struct PlanArgs {
  std::vector<std::string> Airports;
  PlanKind Kind = PlanKind::High;
  int16_t AircraftNumber = 0;
  int32_t Level = -1;
};

// Takes the plan options out of args and leaves the rest in `rest`. False
// with the reason in why.
bool ParsePlanArgs(const Args& args, PlanArgs& out, Args& rest, std::string& why);

struct BuiltPlan {
  AppState State;
  NavDatabase Db;
  AircraftDb Aircraft;
  FlightPlan Plan;
  PlanPanel Panel;
};

// Loads the folder and builds the plan; 0 on success, else the exit code,
// with the message on err under the command's name.
int BuildPlan(const Context& ctx, const PlanArgs& args, std::string_view command, std::ostream& out,
              std::ostream& err, BuiltPlan& built);

}  // namespace orv::cli
