// orvanta-cli plan DEP DEST: loads the database of an application folder as
// the program does at start, builds a high altitude, low altitude or navaid
// plan between the two airports and prints the plan table and its totals.
#include <ostream>
#include <string>

#include "app/PlanCommands.h"
#include "app/ProgramLoad.h"
#include "cli/Cli.h"
#include "cli/CliUi.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "planning/NavLookupDb.h"
#include "planning/Profile.h"
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

int CmdPlan(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  std::vector<std::string> airports;
  PlanKind kind = PlanKind::HighAltitude;
  int16_t aircraftNumber = 0;
  int32_t level = -1;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--high") kind = PlanKind::HighAltitude;
    else if (a == "--low") kind = PlanKind::LowAltitude;
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
  if (airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");

  ProgramState s(ctx.appDir);
  s.AircraftNumber = aircraftNumber;
  PlanUi ui(out, err);
  SystemClock clock;
  if (LoadProgram(s, ui, clock).ProgramEnds()) return 1;
  if (s.Aircraft.List.empty()) {
    err << "plan: no aircraft in " << s.Core.Folder.Resolve(kAircraftFile).string() << "\n";
    return 1;
  }
  if (level > 0) s.Aircraft.Current.CruiseLevel = level;

  int32_t ends[2];
  for (int k = 0; k < 2; ++k) {
    ends[k] = FindAirportIndex(s.Db, airports[static_cast<std::size_t>(k)]);
    if (ends[k] < 0) {
      err << "plan: unknown airport '" << airports[static_cast<std::size_t>(k)] << "'\n";
      return 1;
    }
  }
  SetPlanEnds(s, ends[0], ends[1]);
  // The command has no navaid buttons: a navaid plan may use every kind.
  s.Layers.btnVor = s.Layers.btnNdb = s.Layers.btnInter = true;
  if (!CreatePlan(s, kind, ui)) return 1;

  const PlanPanel& panel = s.Panel;
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
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  int fuelType = s.Core.Config.Fuel < kFuelUnitFactors.size() ? s.Core.Config.Fuel : 2;
  if (fuel.Load(ui, s.Plan, s.Aircraft.Current, nav, fuelType)) out << Latin1ToUtf8(fuel.TripFuelLabel) << '\n';
  return 0;
}

}  // namespace orv::cli
