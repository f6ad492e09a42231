#include "simlink/SimFlight.h"

#include <algorithm>
#include <cmath>

#include "core/Clock.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "database/AirportFile.h"
#include "map/MapGeodesy.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"
#include "simlink/Autopilot.h"
#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/OffsetImage.h"

namespace orv {

namespace {

// The partner answers at once: the built-in simulator never makes the
// channel wait, so its pauses need no wall-clock time either.
class BuiltinPartner : public ImagePartner {
public:
  using ImagePartner::ImagePartner;
  void SleepMs(std::uint32_t) override {}
};

// The simulated time the loop moves on by between looks at the flight.
constexpr int64_t kSliceMs = 250;

}  // namespace

SimFlight::SimFlight(FlightPlan& plan, PlanPanel& panel, const MagVarGrid& grid, Ui& ui, int fuelUnit)
    : plan_(plan), image_(std::make_unique<OffsetImage>()),
      partner_(std::make_unique<BuiltinPartner>(*image_)),
      channel_(std::make_unique<FsuipcChannel>(*partner_)),
      sim_(std::make_unique<BuiltinSim>(*image_, &grid)),
      geo_(std::make_unique<MapGeodesy>(grid)) {
  view_.CntrLat = plan.Waypoints[0].Lat;
  view_.CntrLon = plan.Waypoints[0].Lon;
  view_.CurrentLat = view_.CntrLat;
  view_.CurrentLon = view_.CntrLon;
  ComputeBounds(view_);
  live_ = std::make_unique<LiveTracking>(*channel_, timers_, ui, host_, plan, panel, view_, *geo_, fuelUnit);
  autopilot_ = std::make_unique<AutopilotCoupling>(*live_);
}

SimFlight::~SimFlight() = default;

bool SimFlight::Connect(std::string& error) {
  live_->MenuLocalClick();
  if (!live_->Connected()) {
    error = std::string(kUnableToConnect) + channel_->LastIpcMessage();
    return false;
  }
  ++gpsTicks_;
  live_->TmGpsTick();
  return true;
}

void SimFlight::Advance(int64_t ms) {
  timers_.Advance(ms, [&](TimerId id) {
    if (id == TimerId::Gps) {
      ++gpsTicks_;
      live_->TmGpsTick();
      if (AfterGpsTick) AfterGpsTick();
    } else if (id == TimerId::AutoPilot) {
      ++apTicks_;
      autopilot_->TmAutoPilotTick();
    }
  });
}

FlyResult FlyPlan(FlightPlan& plan, PlanPanel& panel, const std::vector<AirportRec>& airports,
                  const AircraftRec& aircraft, const MagVarGrid& grid, const FlyOptions& options, Clock& clock,
                  const std::function<void(const FlightEvent&)>& onEvent) {
  FlyResult result;
  if (plan.LastRow < 1) {
    result.Error = "no flight plan";
    return result;
  }
  SilentUi ui;
  SimFlight flight(plan, panel, grid, ui, options.FuelUnit);
  BuiltinSim& sim = flight.Sim();
  LiveTracking& live = flight.Live();
  const SimRoute route = RouteFromPlan(plan, airports);
  sim.SetPerformance(PerformanceOf(aircraft));
  sim.SetWeather(options.Weather);
  sim.SetConvergingTraffic(options.ConvergingTraffic);
  if (options.TrafficCount >= 0) sim.SetTrafficCount(options.TrafficCount);
  sim.SetUtcSeconds(options.StartUtcSeconds);
  sim.Park(route.Departure);

  bool landed = false;
  auto event = [](FlightEvent::Kind kind) {
    FlightEvent e;
    e.What = kind;
    return e;
  };
  auto report = [&](FlightEvent e) {
    e.Time = live.Snap.UtcTimeText;
    if (onEvent) onEvent(e);
    result.Events.push_back(std::move(e));
  };
  HeadlessLiveHost& host = flight.Host();
  host.Takeoff = [&] { report(event(FlightEvent::Takeoff)); };
  host.Passed = [&](int row) {
    FlightEvent e = event(FlightEvent::Pass);
    e.Row = row;
    e.Ident = std::string(plan.Waypoints[static_cast<size_t>(row)].Code.Trimmed());
    const WPTable& table = panel.Table;
    for (int c = 0; c < 4; ++c) e.Cells[static_cast<size_t>(c)] = table.Text(row + 1, WPTable::kAta + c);
    report(std::move(e));
  };
  host.Advised = [&](const AdvisoryEvent& a) {
    FlightEvent e = event(FlightEvent::Tcas);
    e.Ident = a.Callsign;
    e.Level = a.Level;
    e.Caption = a.Caption;
    report(std::move(e));
  };
  host.Landed = [&] {
    landed = true;
    report(event(FlightEvent::Landing));
  };

  // Recording and the logbook.
  TraceRecorder recorder;
  if (options.Record)
    flight.AfterGpsTick = [&] {
      RecordTick(recorder, live.Snap, 0, ReadInMenu(live.Channel()), ReadPaused(live.Channel()));
    };
  host.LogEntry = [&] {
    const DateTime today = clock.NowUtc();
    result.LogEntries.push_back(AutologEntry(std::string(plan.Waypoints[0].Code.Trimmed()),
                                             std::string(plan.Waypoints[static_cast<size_t>(plan.LastRow)].Code.Trimmed()),
                                             ReadAtcStrings(live.Channel()), DateToDays(today), live.State(),
                                             live.Snap));
  };

  if (!flight.Connect(result.Error)) return result;
  live.Menus.menuAutolog = options.Autolog;
  live.Menus.btnAI = options.TrafficCount >= 0;
  result.Connected = true;
  if (options.Autopilot) flight.Autopilot().CmdAutoHdgClick();
  sim.Fly(route);

  const double limit =
      (options.MaxHours > 0 ? options.MaxHours : (plan.TotalTime * 3.0 + 120.0) / 60.0) * 3600.0;
  const int64_t wallStart = clock.TickMs();
  double simSeconds = 0;
  while (!landed && live.Connected() && simSeconds < limit) {
    sim.Step(kSliceMs / 1000.0);
    flight.Advance(kSliceMs);
    simSeconds += kSliceMs / 1000.0;
    if (options.TimeScale > 0) {
      const int64_t due = wallStart + static_cast<int64_t>(simSeconds * 1000.0 / options.TimeScale);
      const int64_t now = clock.TickMs();
      if (due > now) clock.Sleep(static_cast<int>(due - now));
    }
  }
  result.SimSeconds = simSeconds;
  result.Trace = std::move(recorder.Trace);
  result.GpsTicks = flight.GpsTicks();
  result.AutopilotTicks = flight.AutopilotTicks();
  result.Landed = landed;
  const WaypointRec& dest = plan.Waypoints[static_cast<size_t>(plan.LastRow)];
  result.AtDestination = landed && RhumbDistance(live.Snap.Latitude, live.Snap.Longitude, dest.Lat, dest.Lon) <= 5.0;
  if (!live.Connected() && !landed) result.Error = std::string(kConnectionTerminated);
  else if (!landed) result.Error = "no landing within " + NumText(std::round(limit / 60.0)) + " minutes";
  return result;
}

}  // namespace orv
