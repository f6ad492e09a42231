// orvanta-cli fly DEP DEST: builds the plan as "plan" does, connects to the
// built-in simulator and flies it on simulated time with the live tick (and
// the autopilot coupled with --autopilot), printing the takeoff, every passed
// waypoint with its ATA cells, and the landing.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "simlink/SimFlight.h"

namespace orv::cli {

namespace {

constexpr const char* kFlyUsage =
    "usage: orvanta-cli --appdir DIR fly DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL] "
    "[--autopilot] [--time-scale N]";

int Refuse(std::ostream& err, const std::string& why) {
  err << "fly: " << why << "\n" << kFlyUsage << "\n";
  return 2;
}

}  // namespace

int CmdFly(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs planArgs;
  Args rest;
  std::string why;
  // --time-scale takes a value; take it out before the plan options.
  Args planPart;
  FlyOptions options;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--time-scale") {
      if (i + 1 >= args.size()) return Refuse(err, "--time-scale needs a value");
      std::optional<double> scale = ParseNumber(args[++i]);
      if (!scale || *scale < 0) return Refuse(err, "not a time scale: '" + args[i] + "'");
      options.TimeScale = *scale;
    } else {
      planPart.push_back(args[i]);
    }
  }
  if (!ParsePlanArgs(planPart, planArgs, rest, why)) return Refuse(err, why);
  for (const std::string& option : rest) {
    if (option == "--autopilot") options.Autopilot = true;
    else return Refuse(err, "unknown option '" + option + "'");
  }
  if (planArgs.Airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");

  auto s = std::make_unique<ProgramState>(ctx.appDir);
  if (int code = BuildPlan(planArgs, "fly", out, err, *s)) return code;
  const int fuel = s->Core.Config.Fuel;
  options.FuelUnit = fuel >= 0 && fuel < 4 ? fuel : 2;

  SystemClock clock;
  auto print = [&](const FlightEvent& e) {
    switch (e.What) {
      case FlightEvent::Takeoff:
        out << "takeoff " << e.Time << '\n';
        break;
      case FlightEvent::Pass: {
        std::string line = "pass " + e.Ident;
        for (const std::string& cell : e.Cells) line += "\t" + cell;
        out << Latin1ToUtf8(line) << '\n';
        break;
      }
      case FlightEvent::Landing:
        out << "landing " << e.Time << '\n';
        break;
    }
    out.flush();
  };
  FlyResult result = FlyPlan(s->Plan, s->Panel, s->Db.Airports.Airports, s->Aircraft.Current, s->Db.MagVar, options,
                             clock, print);
  if (!result.AtDestination) {
    err << "fly: " << (result.Error.empty() ? std::string("the aircraft did not land at the destination") : result.Error)
        << '\n';
    return 1;
  }
  return 0;
}

}  // namespace orv::cli
