// orvanta-cli fly DEP DEST: builds the plan as "plan" does, connects to the
// built-in simulator and flies it on simulated time with the live tick (and
// the autopilot coupled with --autopilot), printing the takeoff, every passed
// waypoint with its ATA cells, and the landing; with --traffic N the
// simulator carries N AI aircraft, one of them converging, and each TCAS
// advisory is a line.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "core/AppFolder.h"
#include "core/Clock.h"
#include "core/FileIo.h"
#include "core/Runtime.h"
#include "simlink/SimFlight.h"

namespace orv::cli {

namespace {

constexpr const char* kFlyUsage =
    "usage: orvanta-cli --appdir DIR fly DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL] "
    "[--autopilot] [--time-scale N] [--record FILE.rcd] [--log] [--traffic N]";

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
  std::string recordFile;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--record") {
      if (i + 1 >= args.size()) return Refuse(err, "--record needs a file");
      recordFile = args[++i];
      options.Record = true;
    } else if (args[i] == "--traffic") {
      if (i + 1 >= args.size()) return Refuse(err, "--traffic needs a number");
      std::optional<double> count = ParseNumber(args[++i]);
      if (!count || *count < 0 || *count > kTrafficMaxCount || *count != static_cast<int>(*count))
        return Refuse(err, "not a number of aircraft (0 to " + std::to_string(kTrafficMaxCount) + "): '" + args[i] + "'");
      options.TrafficCount = static_cast<int>(*count);
    } else if (args[i] == "--log") {
      options.Autolog = true;
    } else if (args[i] == "--time-scale") {
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
      case FlightEvent::Tcas:
        out << "tcas " << (e.Level == Advisory::Resolution ? "RA " : "TA ") << e.Ident
            << (e.Caption.empty() ? "" : " " + e.Caption) << '\n';
        break;
    }
    out.flush();
  };
  FlyResult result = FlyPlan(s->Plan, s->Panel, s->Db.Airports.Airports, s->Aircraft.Current, s->Db.MagVar, options,
                             clock, print);
  int code = 0;
  if (options.Record) {
    Recording& trace = result.Trace;
    trace.RecDescription = std::string(s->Plan.Waypoints[0].Code.Trimmed()) + " " +
                           std::string(s->Plan.Waypoints[static_cast<size_t>(s->Plan.LastRow)].Code.Trimmed());
    std::string why;
    const std::string bytes = WriteRecording(trace, &why);
    if (bytes.empty() || !WriteFileAtomic(recordFile, bytes)) {
      err << "fly: the recording is not written: " << (why.empty() ? "cannot write " + recordFile : why) << '\n';
      code = 1;
    } else {
      out << "recorded " << trace.Samples.size() << " samples to " << recordFile << '\n';
    }
  }
  for (const LogbookEntry& entry : result.LogEntries) {
    const LogbookWrite w = AddLogbookEntry(AppFolder(ctx.appDir).Resolve(kLogbookFile), entry);
    if (!w.message.empty()) err << "fly: " << w.message << '\n';
    if (w.ok) out << "logbook " << entry.Departure << " " << entry.Destination << " to " << w.writtenTo.string() << '\n';
    else code = 1;
  }
  if (!result.AtDestination) {
    err << "fly: " << (result.Error.empty() ? std::string("the aircraft did not land at the destination") : result.Error)
        << '\n';
    return 1;
  }
  return code;
}

}  // namespace orv::cli
