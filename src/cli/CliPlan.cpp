#include "cli/CliPlan.h"

#include <ostream>

#include "cli/CliUi.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"

namespace orv::cli {

namespace {

// Loading is silent; messages go to the error stream with plain line ends.
class QuietUi : public StreamUi {
public:
  QuietUi(std::ostream& out, std::ostream& err) : StreamUi(out, err), err_(err) {}
  void MsgBox(std::string_view text, MsgStyle, std::string_view) override {
    err_ << Latin1ToUtf8(Replace(text, "\r\n", "\n")) << '\n';
  }
  void ShowProgress(std::string_view) override {}

private:
  std::ostream& err_;
};

}  // namespace

int TakePlanOption(const Args& args, std::size_t& i, PlanRequest& request, std::ostream& err,
                   const std::string& command) {
  const std::string& a = args[i];
  if (a == "--high") request.Kind = PlanKind::High;
  else if (a == "--low") request.Kind = PlanKind::Low;
  else if (a == "--navaid") request.Kind = PlanKind::Navaid;
  else if (a == "--aircraft" || a == "--level") {
    if (i + 1 >= args.size()) {
      err << command << ": " << a << " needs a value\n";
      return -1;
    }
    std::string value = args[++i];
    if (a == "--aircraft") {
      request.Aircraft = CInt(Val(value));
    } else {
      if (UCase(Left(value, 2)) == "FL") value = Mid(value, 3);
      request.Level = CLng(Val(value));
      if (request.Level <= 0) {
        err << command << ": not a flight level: '" << args[i] << "'\n";
        return -1;
      }
    }
  } else {
    return 0;
  }
  return 1;
}

bool BuildCliPlan(const Context& ctx, const PlanRequest& request, CliPlan& out, std::ostream& err,
                  const std::string& command) {
  if (request.Airports.size() != 2) {
    err << command << ": expected the departure and the destination airport\n";
    return false;
  }
  out.State = AppState(AppFolder(ctx.appDir));
  std::ostream quiet(nullptr);
  QuietUi ui(quiet, err);
  SystemClock clock;
  DatabaseLoader loader(out.Db);
  if (RunStartup(out.State, ui, clock, loader).ProgramEnds()) return false;

  int16_t number = request.Aircraft;
  LoadAircraft(out.State.Folder.Resolve(kAircraftFile), number, out.Aircraft, ui);
  if (out.Aircraft.List.empty()) {
    err << command << ": no aircraft in " << out.State.Folder.Resolve(kAircraftFile).string() << "\n";
    return false;
  }
  if (request.Level > 0) out.Aircraft.Current.CruiseLevel = request.Level;

  NavLookupDb nav(out.Db, out.State.ParkingNames);
  int ends[2];
  for (int k = 0; k < 2; ++k) {
    ends[k] = nav.FindAirport(request.Airports[static_cast<std::size_t>(k)]);
    if (ends[k] < 0) {
      err << command << ": unknown airport '" << request.Airports[static_cast<std::size_t>(k)] << "'\n";
      return false;
    }
  }
  FlightPlan& plan = out.Plan;
  PlanEditor editor(plan, out.Panel, out.Aircraft.Current, nav);
  plan.Waypoints[0] = AirportRow(out.Db.Airports, ends[0]);
  plan.Waypoints[1] = AirportRow(out.Db.Airports, ends[1]);
  plan.DepartureAirport = ends[0];
  plan.DestinationAirport = ends[1];
  plan.DepartLat = plan.Waypoints[0].Lat;
  plan.DepartLon = plan.Waypoints[0].Lon;
  plan.DestLat = plan.Waypoints[1].Lat;
  plan.DestLon = plan.Waypoints[1].Lon;
  editor.SetDirectPlan(1);
  const int row = editor.PrepareRouteCreation();

  RouteSearch search;
  RouteBuilder builder(editor, out.Aircraft.Current, out.Db.Navaids, search, ui);
  bool built = false;
  if (request.Kind == PlanKind::Navaid) {
    NavaidPlanOptions options;
    options.SecLen = out.State.Config.SecLen;
    options.SecWidth = out.State.Config.SecWidth;
    options.GreatCircle = out.State.Config.Gc;
    built = builder.CreateNavaidPlan(row, options);
  } else {
    built = builder.CreateAirwayPlan(request.Kind == PlanKind::High ? 'J' : 'V', row);
  }
  return built;
}

}  // namespace orv::cli
