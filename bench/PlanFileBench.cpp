// Saving and reopening plans on the world-sized database: a 1000-row plan
// (the plan's limit) written as the program's ".pln" and as the simulator XML
// and X-Plane plans, and read back into memory, each point matched to the
// database again. A ".pln" carries at most 500 rows, so its reopening is
// measured at that bound. Files go through the disk as the program writes and
// reads them.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "core/FileIo.h"
#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/PlanFile.h"
#include "planning/PlanFormats.h"
#include "planning/WPTable.h"

#include "support/WorldFixture.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

struct World {
  NavDatabase db;
  std::unique_ptr<NavLookupDb> nav;
  AircraftRec aircraft;
  fs::path dir;
};

World& TheWorld() {
  static World* w = [] {
    auto* world = new World;
    test::BuildWorldDatabase(world->db);
    world->nav = std::make_unique<NavLookupDb>(world->db);
    world->aircraft.CruiseSpeed = 450;
    world->aircraft.ApproachSpeed = 150;
    world->aircraft.CruiseLevel = 350;
    world->dir = fs::temp_directory_path() / ("orvanta-planbench-" + std::to_string(::getpid()));
    fs::create_directories(world->dir);
    return world;
  }();
  return *w;
}

// A plan of `rows` rows in all: EDDF, VORs of the world in array order with
// an airway on every other row, and the last airport as destination.
FlightPlan MakePlan(int rows) {
  World& w = TheWorld();
  FlightPlan p;
  int dep = w.nav->FindAirport("EDDF");
  int dest = -1;
  float lat, lon;
  for (int a = w.nav->AirportCount() - 1; a >= 0 && dest < 0; --a)
    if (a != dep && w.nav->AirportPosition(a, lat, lon) && !w.nav->AirportIcao(a).empty()) dest = a;
  p.Waypoints[0] = AirportRow(w.db.Airports, dep);
  int r = 1;
  for (int v = 0; r < rows - 1 && v < static_cast<int>(w.db.Navaids.Vors.size()); ++v) {
    if (w.db.Navaids.Vors[static_cast<std::size_t>(v)].Ident.IsEmptySlot()) continue;
    WaypointRec row = VorRow(w.db.Navaids, v);
    row.Origin = kOriginEnroute;
    if (r % 2 == 0) {
      row.Airway.Assign("UL" + std::to_string(r));
      row.MinAltitude = 24500;
      row.MaxAltitude = 46000;
    }
    p.Waypoints[static_cast<std::size_t>(r++)] = row;
  }
  p.Waypoints[static_cast<std::size_t>(r)] = AirportRow(w.db.Airports, dest);
  p.LastRow = static_cast<int16_t>(r);
  p.DepartureAirport = dep;
  p.DestinationAirport = dest;
  p.DepartType = "Rwy";
  p.CruiseFL = 350;
  p.RouteType = 1;
  return p;
}

void BM_SavePln1000(benchmark::State& state) {
  World& w = TheWorld();
  FlightPlan plan = MakePlan(1001);
  fs::path path = w.dir / "save.pln";
  for (auto _ : state) {
    std::string text = FormatPlanFile(plan, *w.nav, {});
    if (!WriteFileAtomic(path, text)) state.SkipWithError("write failed");
    benchmark::DoNotOptimize(text.data());
  }
}

// Keeps the last message, so that a refused file names its reason.
class LastMessageUi : public SilentUi {
public:
  void MsgBox(std::string_view text, MsgStyle, std::string_view) override { last = std::string(text); }
  std::string last;
};

template <typename Writer>
void Reopen(benchmark::State& state, int rows, const char* name, Writer writer) {
  World& w = TheWorld();
  FlightPlan source = MakePlan(rows);
  fs::path path = w.dir / name;
  WriteFileAtomic(path, writer(source));
  FlightPlan plan;
  PlanPanel panel;
  PlanEditor editor(plan, panel, w.aircraft, *w.nav);
  LastMessageUi ui;
  for (auto _ : state) {
    std::optional<std::string> text = ReadWholeText(path);
    PlanFileState files;
    if (!text || !OpenAnyPlanText(editor, ui, *text, {}, files)) {
      state.SkipWithError(("open failed: " + ui.last).c_str());
      break;
    }
  }
  if (plan.LastRow != source.LastRow) state.SkipWithError("rows lost");
}

void BM_OpenPln500(benchmark::State& state) {
  Reopen(state, 502, "open.pln", [](const FlightPlan& p) { return FormatPlanFile(p, *TheWorld().nav, {}); });
}

void BM_SaveSimXml1000(benchmark::State& state) {
  World& w = TheWorld();
  FlightPlan plan = MakePlan(1001);
  fs::path path = w.dir / "save-xml.pln";
  for (auto _ : state) {
    std::string text = FormatSimXmlPlan(plan, *w.nav, {});
    if (!WriteFileAtomic(path, text)) state.SkipWithError("write failed");
  }
}

void BM_OpenSimXml1000(benchmark::State& state) {
  Reopen(state, 1001, "open-xml.pln", [](const FlightPlan& p) { return FormatSimXmlPlan(p, *TheWorld().nav, {}); });
}

void BM_OpenFms1000(benchmark::State& state) {
  Reopen(state, 1001, "open.fms", [](const FlightPlan& p) { return FormatFmsPlan(p, *TheWorld().nav, {}); });
}

BENCHMARK(BM_SavePln1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenPln500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveSimXml1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenSimXml1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OpenFms1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
