// The papers of a long flight as a PDF file of 20 pages: the general flight
// information with both generator pictures, the waypoint list of a long plan
// and the control zones along its legs, on the world-sized database.
// Target: under 200 ms for the whole file (Release build).
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cmath>
#include <filesystem>
#include <memory>

#include "BenchFonts.h"
#include "core/AppState.h"
#include "core/Startup.h"
#include "documents/Papers.h"
#include "mapqt/PaperPdf.h"
#include "mapqt/QtFontSet.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/WPTable.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

// Rows of the plan: enough for 20 pages with every part chosen.
constexpr int kRows = 215;

struct Flight {
  Flight() {
    test::BuildWorldDatabase(db);
    FillNameTables(state);
    ac.AircraftName = "Boeing 737-800";
    ac.ClimbRate = 2500, ac.ClimbSpeed = 280, ac.DescentRate = 2000, ac.DescentSpeed = 280;
    ac.CruiseSpeed = 450, ac.CruiseLevel = 350, ac.ApproachSpeed = 145, ac.MaxFuel = 20800, ac.MinRunway = 6500;
    NavLookupDb nav(db, state.ParkingNames);
    const int dep = nav.FindAirport("EDDF");
    // The airport nearest to Rome, some 520 NM away.
    int dest = -1;
    double best = 1e9;
    for (std::size_t i = 0; i < db.Airports.Airports.size(); ++i) {
      const AirportRec& a = db.Airports.Airports[i];
      if (a.Icao.IsEmptySlot() || a.Runways.empty()) continue;
      const double d = std::hypot(a.Lat - 41.8, a.Lon - 12.25);
      if (d < best) best = d, dest = static_cast<int>(i);
    }
    PlanPanel panel;
    PlanEditor e(plan, panel, ac, nav);
    plan.Waypoints[0] = AirportRow(db.Airports, dep);
    plan.Waypoints[1] = AirportRow(db.Airports, dest);
    plan.DepartureAirport = dep, plan.DestinationAirport = dest;
    plan.DestLat = plan.Waypoints[1].Lat, plan.DestLon = plan.Waypoints[1].Lon;
    e.SetDirectPlan(1);
    // Points along the way, a little off the straight line each, as a
    // navaid plan's rows would lie.
    const WaypointRec a = plan.Waypoints[0], b = plan.Waypoints[1];
    for (int k = 1; k <= kRows; ++k) {
      const double f = static_cast<double>(k) / (kRows + 1);
      WaypointRec w;
      w.Kind.Assign("Int");
      w.Code.Assign("WP" + std::to_string(k));
      w.Name.Assign("WAYPOINT " + std::to_string(k));
      w.Lat = static_cast<float>(a.Lat + (b.Lat - a.Lat) * f + 0.02 * std::sin(k));
      w.Lon = static_cast<float>(a.Lon + (b.Lon - a.Lon) * f);
      w.Origin = kOriginEnroute;
      e.InsertWaypoint(k - 1, w, false);
    }
    e.RefreshRows(0);
    e.RefreshTotals();
    plan.NetKind = 3;
    this->nav = std::make_unique<NavLookupDb>(db, state.ParkingNames);
  }
  NavDatabase db;
  AppState state;
  AircraftRec ac;
  FlightPlan plan;
  // The program keeps one lookup over its database.
  std::unique_ptr<NavLookupDb> nav;
};


void BM_PapersPdf(benchmark::State& st) {
  QtFontSet& fonts = Fonts();
  static Flight flight;
  const PaperSources sources{&flight.plan, &flight.db, &flight.ac, &flight.state, -1, -1, flight.nav.get()};
  const PrintFP dialog;
  const auto path = std::filesystem::temp_directory_path() / "orvanta-papers-bench.pdf";
  int pages = 0;
  for (auto _ : st) pages = WritePapersPdf(path, fonts, dialog, sources);
  st.counters["pages"] = pages;
  st.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  std::filesystem::remove(path);
}
BENCHMARK(BM_PapersPdf)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
