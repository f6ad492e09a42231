// orvanta-cli plan DEP DEST: loads the database of an application folder as
// the program does at start, builds a high altitude, low altitude or navaid
// plan between the two airports and prints the plan table and its totals.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "cli/CliUi.h"
#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/Profile.h"
#include "planning/RouteCreation.h"
#include "planning/WPTable.h"

namespace orv::cli {

namespace {

constexpr const char* kPlanUsage =
    "usage: orvanta-cli --appdir DIR plan DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]";

// Loading is silent; messages go to the error stream with plain line ends.
class PlanUi : public StreamUi {
public:
  PlanUi(std::ostream& out, std::ostream& err) : StreamUi(out, err), err_(err) {}
  void MsgBox(std::string_view text, MsgStyle, std::string_view) override {
    err_ << Latin1ToUtf8(Replace(text, "\r\n", "\n")) << '\n';
  }
  void ShowProgress(std::string_view) override {}

private:
  std::ostream& err_;
};

int Refuse(std::ostream& err, const std::string& why) {
  err << "plan: " << why << "\n" << kPlanUsage << "\n";
  return 2;
}

}  // namespace

bool ParsePlanArgs(const Args& args, PlanArgs& out, Args& rest, std::string& why) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--high") out.Kind = PlanKind::High;
    else if (a == "--low") out.Kind = PlanKind::Low;
    else if (a == "--navaid") out.Kind = PlanKind::Navaid;
    else if (a == "--aircraft" || a == "--level") {
      if (i + 1 >= args.size()) {
        why = a + " needs a value";
        return false;
      }
      std::string value = args[++i];
      if (a == "--aircraft") {
        out.AircraftNumber = CInt(Val(value));
      } else {
        // "FL350" or "350": hundreds of feet either way.
        if (UCase(Left(value, 2)) == "FL") value = Mid(value, 3);
        out.Level = CLng(Val(value));
        if (out.Level <= 0) {
          why = "not a flight level: '" + args[i] + "'";
          return false;
        }
      }
    } else if (a.rfind("--", 0) == 0) {
      rest.push_back(a);
    } else {
      out.Airports.push_back(a);
    }
  }
  return true;
}

int BuildPlan(const Context& ctx, const PlanArgs& args, std::string_view command, std::ostream& out,
              std::ostream& err, BuiltPlan& built) {
  const std::string name(command);
  built.State = AppState{AppFolder(ctx.appDir)};
  AppState& state = built.State;
  PlanUi ui(out, err);
  SystemClock clock;
  NavDatabase& db = built.Db;
  DatabaseLoader loader(db);
  if (RunStartup(state, ui, clock, loader).ProgramEnds()) return 1;

  int16_t aircraftNumber = args.AircraftNumber;
  AircraftDb& aircraft = built.Aircraft;
  LoadAircraft(state.Folder.Resolve(kAircraftFile), aircraftNumber, aircraft, ui);
  if (aircraft.List.empty()) {
    err << name << ": no aircraft in " << state.Folder.Resolve(kAircraftFile).string() << "\n";
    return 1;
  }
  if (args.Level > 0) aircraft.Current.CruiseLevel = args.Level;

  NavLookupDb nav(db, state.ParkingNames);
  int ends[2];
  for (int k = 0; k < 2; ++k) {
    ends[k] = nav.FindAirport(args.Airports[static_cast<std::size_t>(k)]);
    if (ends[k] < 0) {
      err << name << ": unknown airport '" << args.Airports[static_cast<std::size_t>(k)] << "'\n";
      return 1;
    }
  }

  FlightPlan& plan = built.Plan;
  PlanEditor editor(plan, built.Panel, aircraft.Current, nav);
  plan.Waypoints[0] = AirportRow(db.Airports, ends[0]);
  plan.Waypoints[1] = AirportRow(db.Airports, ends[1]);
  plan.DepartureAirport = ends[0];
  plan.DestinationAirport = ends[1];
  plan.DepartLat = plan.Waypoints[0].Lat;
  plan.DepartLon = plan.Waypoints[0].Lon;
  plan.DestLat = plan.Waypoints[1].Lat;
  plan.DestLon = plan.Waypoints[1].Lon;
  editor.SetDirectPlan(1);
  int row = editor.PrepareRouteCreation();

  RouteSearch search;
  RouteBuilder builder(editor, aircraft.Current, db.Navaids, search, ui);
  bool made = false;
  if (args.Kind == PlanKind::Navaid) {
    NavaidPlanOptions options;
    options.SecLen = state.Config.SecLen;
    options.SecWidth = state.Config.SecWidth;
    options.GreatCircle = state.Config.Gc;
    made = builder.CreateNavaidPlan(row, options);
  } else {
    made = builder.CreateAirwayPlan(args.Kind == PlanKind::High ? 'J' : 'V', row);
  }
  return made ? 0 : 1;
}

int CmdPlan(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs planArgs;
  Args rest;
  std::string why;
  if (!ParsePlanArgs(args, planArgs, rest, why)) return Refuse(err, why);
  if (!rest.empty()) return Refuse(err, "unknown option '" + rest[0] + "'");
  if (planArgs.Airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");

  auto built = std::make_unique<BuiltPlan>();
  if (int code = BuildPlan(ctx, planArgs, "plan", out, err, *built)) return code;
  const AppState& state = built->State;
  PlanPanel& panel = built->Panel;
  NavLookupDb nav(built->Db, state.ParkingNames);

  const WPTable& table = panel.Table;
  for (int line = 0; line < table.Rows(); ++line) {
    std::string text;
    for (int col = 0; col < WPTable::kColumns; ++col) {
      if (col > 0) text += '\t';
      text += table.Text(line, col);
    }
    out << Latin1ToUtf8(text) << '\n';
  }
  out << "Total distance: " << panel.TotalDistanceText << '\n';
  out << "Total time: " << panel.TotalTimeText << '\n';
  out << "Flight level: " << panel.LevelBox << '\n';
  FuelWindow fuel;
  int fuelType = state.Config.Fuel < kFuelUnitFactors.size() ? state.Config.Fuel : 2;
  PlanUi ui(out, err);
  if (fuel.Load(ui, built->Plan, built->Aircraft.Current, nav, fuelType)) out << Latin1ToUtf8(fuel.TripFuelLabel) << '\n';
  return 0;
}

}  // namespace orv::cli
