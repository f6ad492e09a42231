// High and low altitude plans across the world-sized airway graph: from the
// west end of its largest connected component to the east end, entry and
// exit search included, rows inserted through the plan model.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"
#include "planning/WPTable.h"

#include "support/WorldFixture.h"

namespace orv {
namespace {

struct World {
  NavDatabase db;
  std::unique_ptr<NavLookupDb> nav;
  // The two ends of the largest component of each net: westernmost, easternmost.
  int jetWest = -1, jetEast = -1, lowWest = -1, lowEast = -1;
};

// Westernmost and easternmost node of the largest connected component.
void ComponentEnds(const NavaidTables& t, char net, int& west, int& east) {
  const int n = static_cast<int>(t.Intersections.size());
  std::vector<int> comp(static_cast<std::size_t>(n), -1), queue;
  queue.reserve(static_cast<std::size_t>(n));
  int bestSize = 0;
  for (int s = 0; s < n; ++s) {
    if (comp[s] >= 0 || t.Intersections[s].Ident.IsEmptySlot()) continue;
    queue.clear();
    queue.push_back(s);
    comp[s] = s;
    int w = s, e = s;
    for (std::size_t q = 0; q < queue.size(); ++q) {
      int u = queue[q];
      if (t.Intersections[u].Lon < t.Intersections[w].Lon) w = u;
      if (t.Intersections[u].Lon > t.Intersections[e].Lon) e = u;
      auto links = net == 'V' ? t.LowAirways(u) : t.HighAirways(u);
      for (const AirwayLinkRec& l : links) {
        if (l.Target < 0 || l.Target >= n || comp[l.Target] >= 0) continue;
        comp[l.Target] = s;
        queue.push_back(l.Target);
      }
    }
    if (static_cast<int>(queue.size()) > bestSize) {
      bestSize = static_cast<int>(queue.size());
      west = w;
      east = e;
    }
  }
}

World& TheWorld() {
  static World* world = [] {
    auto* w = new World;
    test::BuildWorldDatabase(w->db);
    w->nav = std::make_unique<NavLookupDb>(w->db);
    ComponentEnds(w->db.Navaids, 'J', w->jetWest, w->jetEast);
    ComponentEnds(w->db.Navaids, 'V', w->lowWest, w->lowEast);
    return w;
  }();
  return *world;
}

// An airport-like row a few miles off an intersection.
WaypointRec EndRow(const IntersectionRec& near, const char* code) {
  WaypointRec w;
  w.Code.Assign(code);
  w.Name.Assign(code);
  w.Lat = near.Lat + 0.1f;
  w.Lon = near.Lon + 0.1f;
  w.Origin = kOriginAirport;
  return w;
}

void RunPlan(benchmark::State& state, char net) {
  World& world = TheWorld();
  int west = net == 'J' ? world.jetWest : world.lowWest;
  int east = net == 'J' ? world.jetEast : world.lowEast;
  const auto& ints = world.db.Navaids.Intersections;
  WaypointRec dep = EndRow(ints[static_cast<std::size_t>(west)], "WEST");
  WaypointRec dest = EndRow(ints[static_cast<std::size_t>(east)], "EAST");

  AircraftRec ac;
  ac.CruiseSpeed = 450;
  ac.ApproachSpeed = 140;
  ac.ClimbSpeed = 280;
  ac.ClimbRate = 2500;
  ac.DescentSpeed = 280;
  ac.DescentRate = 2000;
  ac.CruiseLevel = 350;
  FlightPlan plan;
  PlanPanel panel;
  PlanEditor editor(plan, panel, ac, *world.nav);
  RouteSearch search;
  search.Prepare(world.db.Navaids);  // once per loaded database, as the application does
  SilentUi ui;
  RouteBuilder builder(editor, ac, world.db.Navaids, search, ui);
  int rows = 0;
  for (auto _ : state) {
    plan.Waypoints[0] = dep;
    plan.Waypoints[1] = dest;
    plan.CurrentRow = -1;
    editor.SetDirectPlan(1);
    if (!builder.CreateAirwayPlan(net, 0)) {
      state.SkipWithError(search.HeapOverflowed() ? "the search heap overflowed" : "no route");
      return;
    }
    rows = plan.LastRow + 1;
    benchmark::DoNotOptimize(plan.TotalDistance);
  }
  state.counters["rows"] = rows;
  state.counters["pops"] = search.Pops();
  state.counters["nm"] = plan.TotalDistance;
}

// The two halves of a low altitude plan on their own: the search for the
// entry intersection and the exit radius, and the airway search between them.
struct LowLeg {
  World& world = TheWorld();
  AircraftRec ac;
  FlightPlan plan;
  PlanPanel panel;
  PlanEditor editor{plan, panel, ac, *world.nav};
  RouteSearch search;
  SilentUi ui;
  RouteBuilder builder{editor, ac, world.db.Navaids, search, ui};

  LowLeg() {
    const auto& ints = world.db.Navaids.Intersections;
    ac.CruiseLevel = 350;
    plan.Waypoints[0] = EndRow(ints[static_cast<std::size_t>(world.lowWest)], "WEST");
    plan.Waypoints[1] = EndRow(ints[static_cast<std::size_t>(world.lowEast)], "EAST");
    plan.CurrentRow = -1;
    editor.SetDirectPlan(1);
  }
};

void BM_LowAltitudeEntryAndExit(benchmark::State& state) {
  LowLeg leg;
  int entry = 0, radius = 0;
  for (auto _ : state) {
    entry = leg.builder.FindEntryIntersection(0, 'V');
    radius = leg.builder.FindExitRadius(0, 'V');
    benchmark::DoNotOptimize(entry + radius);
  }
  state.counters["entry"] = entry;
  state.counters["radius"] = radius;
}

void BM_LowAltitudeSearchOnly(benchmark::State& state) {
  LowLeg leg;
  NavaidTables& t = leg.world.db.Navaids;
  const int entry = leg.builder.FindEntryIntersection(0, 'V');
  const int radius = leg.builder.FindExitRadius(0, 'V');
  const WaypointRec& dest = leg.plan.Waypoints[1];
  leg.search.Prepare(t);
  int result = 0;
  for (auto _ : state) {
    result = leg.search.RouteToArea(t, entry, 'V', dest.Lat, dest.Lon, radius);
    benchmark::DoNotOptimize(result);
  }
  state.counters["pops"] = leg.search.Pops();
  if (result < 0) state.SkipWithError("no route");
}

void BM_HighAltitudePlanAcrossTheWorld(benchmark::State& state) { RunPlan(state, 'J'); }
void BM_LowAltitudePlanAcrossTheWorld(benchmark::State& state) { RunPlan(state, 'V'); }

BENCHMARK(BM_HighAltitudePlanAcrossTheWorld)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LowAltitudePlanAcrossTheWorld)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LowAltitudeEntryAndExit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LowAltitudeSearchOnly)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
