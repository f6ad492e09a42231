// The live tick against the in-process partner, and a whole simulated flight
// through the command line.
//
//   LiveTick: one tmGPS tick of an aircraft in cruise with a plan (the
//   liveness read, the snapshot's round trips, the status and GPS lines,
//   following, sequencing); the simulator is not stepped in the loop, so
//   every tick does the same work. Target: under 0.1 ms.
//
//   FlyDemo: "orvanta-cli fly EDDF EDDM --autopilot" on the demo folder
//   (ORV_DEMO, default "demo", built by scripts/make-demo.sh) at time scale
//   0, start-up and plan building included. Target: under 2 s.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "cli/Cli.h"
#include "simlink/FlightWorld.h"
#include "simlink/SimFlight.h"

namespace orv {
namespace {

void LiveTick(benchmark::State& state) {
  NavDatabase db;
  test::BuildFlightWorld(db);
  const AircraftRec jet = test::FlightJet();
  FlightPlan plan;
  PlanPanel panel;
  if (!test::BuildFlightPlan(db, "EDDF", "EDDM", jet, plan, panel)) {
    state.SkipWithError("no plan");
    return;
  }
  SilentUi ui;
  SimFlight flight(plan, panel, db.MagVar, ui);
  const SimRoute route = RouteFromPlan(plan, db.Airports.Airports);
  flight.Sim().SetPerformance(PerformanceOf(jet));
  flight.Sim().Park(route.Departure);
  std::string error;
  if (!flight.Connect(error)) {
    state.SkipWithError(error.c_str());
    return;
  }
  flight.Sim().Fly(route);
  // Some ten minutes on: climbing out on the first legs, takeoff work done.
  for (int i = 0; i < 1200; ++i) {
    flight.Sim().Step(0.5);
    flight.Advance(500);
  }
  LiveTracking& live = flight.Live();
  for (auto _ : state) {
    live.TmGpsTick();
    benchmark::DoNotOptimize(live.Snap.Latitude);
  }
}
BENCHMARK(LiveTick)->Unit(benchmark::kMicrosecond);

void FlyDemo(benchmark::State& state) {
  const char* env = std::getenv("ORV_DEMO");
  const std::string demo = env ? env : "demo";
  if (!std::filesystem::exists(std::filesystem::path(demo) / "orv.ini") &&
      !std::filesystem::exists(std::filesystem::path(demo) / "database")) {
    state.SkipWithError("no demo folder (scripts/make-demo.sh, or set ORV_DEMO)");
    return;
  }
  for (auto _ : state) {
    std::ostringstream out, err;
    const int code = cli::Run({"--appdir", demo, "fly", "EDDF", "EDDM", "--autopilot", "--time-scale", "0"}, out, err);
    if (code != 0) {
      state.SkipWithError(err.str().c_str());
      return;
    }
  }
}
BENCHMARK(FlyDemo)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace orv
