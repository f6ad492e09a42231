// orvanta-cli plan DEP DEST: loads the database of an application folder as
// the program does at start, builds a high altitude, low altitude or navaid
// plan between the two airports (or opens a plan file with --open) and prints
// the plan table and its totals; the plan file options then save and export it.
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliUi.h"
#include "cli/CmdPlanFiles.h"
#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/PlanFile.h"
#include "planning/Profile.h"
#include "planning/RouteCreation.h"
#include "planning/WPTable.h"

namespace orv::cli {

namespace {

constexpr const char* kPlanUsage =
    "usage: orvanta-cli --appdir DIR plan DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]\n"
    "                   [--save FILE] [--export FORMAT[,FORMAT...] --out DIR]\n"
    "       orvanta-cli --appdir DIR plan --open FILE [--aircraft N] [--save FILE] [--export ... --out DIR]";

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

enum class PlanKind { High, Low, Navaid };

int Refuse(std::ostream& err, const std::string& why) {
  err << "plan: " << why << "\n" << kPlanUsage << "\n";
  return 2;
}

// Builds the plan between the two airports into the editor's plan. False
// when an airport is unknown (said on err) or no route exists.
bool BuildPlan(const AppState& state, Ui& ui, NavDatabase& db, const NavLookupDb& nav, const AircraftRec& aircraft,
               PlanEditor& editor, const std::vector<std::string>& airports, PlanKind kind, std::ostream& err) {
  int ends[2];
  for (int k = 0; k < 2; ++k) {
    ends[k] = nav.FindAirport(airports[static_cast<std::size_t>(k)]);
    if (ends[k] < 0) {
      err << "plan: unknown airport '" << airports[static_cast<std::size_t>(k)] << "'\n";
      return false;
    }
  }
  FlightPlan& plan = editor.Plan();
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
  RouteBuilder builder(editor, aircraft, db.Navaids, search, ui);
  if (kind == PlanKind::Navaid) {
    NavaidPlanOptions options;
    options.SecLen = state.Config.SecLen;
    options.SecWidth = state.Config.SecWidth;
    options.GreatCircle = state.Config.Gc;
    return builder.CreateNavaidPlan(row, options);
  }
  return builder.CreateAirwayPlan(kind == PlanKind::High ? 'J' : 'V', row);
}

}  // namespace

int CmdPlan(const Context& ctx, const Args& allArgs, std::ostream& out, std::ostream& err) {
  Args args = allArgs;
  PlanFileOptions files;
  std::string why = TakePlanFileOptions(args, files);
  if (!why.empty()) return Refuse(err, why);
  bool opening = !files.Open.empty();
  std::vector<std::string> airports;
  PlanKind kind = PlanKind::High;
  int16_t aircraftNumber = 0;
  int32_t level = -1;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--high") kind = PlanKind::High;
    else if (a == "--low") kind = PlanKind::Low;
    else if (a == "--navaid") kind = PlanKind::Navaid;
    else if (a == "--aircraft" || a == "--level") {
      if (i + 1 >= args.size()) return Refuse(err, a + " needs a value");
      std::string value = args[++i];
      if (a == "--aircraft") {
        aircraftNumber = CInt(Val(value));
      } else {
        // "FL350" or "350": hundreds of feet either way.
        if (UCase(Left(value, 2)) == "FL") value = Mid(value, 3);
        level = CLng(Val(value));
        if (level <= 0) return Refuse(err, "not a flight level: '" + args[i] + "'");
      }
    } else if (a.rfind("--", 0) == 0) {
      return Refuse(err, "unknown option '" + a + "'");
    } else {
      airports.push_back(a);
    }
  }
  if (opening && !airports.empty()) return Refuse(err, "--open takes no airports");
  if (!opening && airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");

  AppState state{AppFolder(ctx.appDir)};
  PlanUi ui(out, err);
  SystemClock clock;
  NavDatabase db;
  DatabaseLoader loader(db);
  if (RunStartup(state, ui, clock, loader).ProgramEnds()) return 1;

  AircraftDb aircraft;
  LoadAircraft(state.Folder.Resolve(kAircraftFile), aircraftNumber, aircraft, ui);
  if (aircraft.List.empty()) {
    err << "plan: no aircraft in " << state.Folder.Resolve(kAircraftFile).string() << "\n";
    return 1;
  }
  if (level > 0) aircraft.Current.CruiseLevel = level;

  NavLookupDb nav(db, state.ParkingNames);
  FlightPlan plan;
  PlanPanel panel;
  PlanEditor editor(plan, panel, aircraft.Current, nav);
  PlanFileState fileState;
  if (opening) {
    if (!OpenPlanForCli(ui, editor, fileState, files.Open)) return 1;
  } else if (!BuildPlan(state, ui, db, nav, aircraft.Current, editor, airports, kind, err)) {
    return 1;
  }

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
  if (fuel.Load(ui, plan, aircraft.Current, nav, fuelType)) out << Latin1ToUtf8(fuel.TripFuelLabel) << '\n';
  return WritePlanFileOutputs(files, plan, nav, aircraft.Current, fileState, out, err);
}

}  // namespace orv::cli
