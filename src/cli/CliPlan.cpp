#include "cli/CliPlan.h"

#include <ostream>

#include "app/ProgramLoad.h"
#include "cli/CliUi.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "planning/NavLookupDb.h"
#include "planning/Profile.h"
#include "planning/WPTable.h"

namespace orv::cli {

void MessageUi::MsgBox(std::string_view text, MsgStyle, std::string_view) {
  err_ << Latin1ToUtf8(Replace(text, "\r\n", "\n")) << '\n';
}

int TakePlanOption(const Args& args, std::size_t& i, PlanArgs& out, std::ostream& err, const std::string& command) {
  const std::string& a = args[i];
  if (a == "--high") out.Kind = PlanKind::HighAltitude;
  else if (a == "--low") out.Kind = PlanKind::LowAltitude;
  else if (a == "--navaid") out.Kind = PlanKind::Navaid;
  else if (a == "--aircraft" || a == "--level") {
    if (i + 1 >= args.size()) {
      err << command << ": " << a << " needs a value\n";
      return -1;
    }
    std::string value = args[++i];
    if (a == "--aircraft") {
      out.AircraftNumber = CInt(Val(value));
    } else {
      // "FL350" or "350": hundreds of feet either way.
      if (UCase(Left(value, 2)) == "FL") value = Mid(value, 3);
      out.Level = CLng(Val(value));
      if (out.Level <= 0) {
        err << command << ": not a flight level: '" << args[i] << "'\n";
        return -1;
      }
    }
  } else {
    return 0;
  }
  return 1;
}

bool ParsePlanArgs(const Args& args, PlanArgs& out, Args& rest, std::string& why) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--high") out.Kind = PlanKind::HighAltitude;
    else if (a == "--low") out.Kind = PlanKind::LowAltitude;
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

int LoadForPlan(const PlanArgs& args, std::string_view command, std::ostream& out, std::ostream& err,
                ProgramState& s) {
  s.AircraftNumber = args.AircraftNumber;
  MessageUi ui(out, err);
  SystemClock clock;
  if (LoadProgram(s, ui, clock).ProgramEnds()) return 1;
  if (s.Aircraft.List.empty()) {
    err << command << ": no aircraft in " << s.Core.Folder.Resolve(kAircraftFile).string() << "\n";
    return 1;
  }
  if (args.Level > 0) s.Aircraft.Current.CruiseLevel = args.Level;
  return 0;
}

int BuildPlan(const PlanArgs& args, std::string_view command, std::ostream& out, std::ostream& err,
              ProgramState& s) {
  if (int code = LoadForPlan(args, command, out, err, s)) return code;
  const std::string name(command);
  MessageUi ui(out, err);

  int32_t ends[2];
  for (int k = 0; k < 2; ++k) {
    ends[k] = FindAirportIndex(s.Db, args.Airports[static_cast<std::size_t>(k)]);
    if (ends[k] < 0) {
      err << name << ": unknown airport '" << args.Airports[static_cast<std::size_t>(k)] << "'\n";
      return 1;
    }
  }
  SetPlanEnds(s, ends[0], ends[1]);
  s.Layers.btnVor = s.Layers.btnNdb = s.Layers.btnInter = true;
  return CreatePlan(s, args.Kind, ui) ? 0 : 1;
}

void PrintPlan(ProgramState& s, std::ostream& out, std::ostream& err) {
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
  const int fuelType = s.Core.Config.Fuel < kFuelUnitFactors.size() ? s.Core.Config.Fuel : 2;
  MessageUi ui(out, err);
  if (fuel.Load(ui, s.Plan, s.Aircraft.Current, nav, fuelType)) out << Latin1ToUtf8(fuel.TripFuelLabel) << '\n';
}

}  // namespace orv::cli
