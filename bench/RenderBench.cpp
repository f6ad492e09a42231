// The full render pass into a 1600x1000 picture on a world-sized database:
// 2000 NM over the Atlantic, 400 NM over Europe, 30 NM and 2 NM over a busy
// airport with taxiways. Target: under 8 ms each (Release build), the first
// pass after a zoom change under 10 ms. Each view reports ClearRatio: its
// pass over the time of clearing the same picture, the floor of any pass.
//
// Layers: the defaults of the window plus both airway layers and their
// intersections, the busiest combination a user keeps on.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <algorithm>
#include <ctime>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "BenchFonts.h"
#include "map/RenderPass.h"
#include "mapqt/MapPicture.h"
#include "mapqt/QPainterTarget.h"
#include "simlink/LiveDraw.h"

#include "support/WorldFixture.h"

namespace orv {
namespace {


struct World {
  World() {
    test::BuildWorldDatabase(db);
    layers.btnVictor = layers.btnJet = true;
    // ORV_BENCH_OFF="VOR,Victor,..." switches layers off, to see what each costs.
    if (const char* off = std::getenv("ORV_BENCH_OFF")) {
      std::string_view list(off);
      while (!list.empty()) {
        const std::size_t comma = list.find(',');
        if (bool* sw = FindLayerSwitch(layers, list.substr(0, comma))) *sw = false;
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
      }
    }
  }
  NavDatabase db;
  MapLayers layers;
  Settings colours;
  FlightPlan plan;
};

World& TheWorld() {
  static World world;
  return world;
}


// One chart window: its picture, back buffer and renderer live as long as
// the window does, as in the program, where the map is drawn again every
// half second at the same zoom.
struct Window {
  Window(QtFontSet& fonts, float lat, float lon, int32_t range)
      : map(fonts, 1600, 1000), back(fonts, 1600, 1000) {
    view.CntrLat = lat;
    view.CntrLon = lon;
    PrepareMapPicture(map, view, static_cast<int16_t>(ZoomIndexOfLabel(range)));
    back.SetScaleWidth(map.ScaleWidth());
    back.SetScaleHeight(map.ScaleHeight());
  }
  QPainterTarget map;
  QPainterTarget back;
  ViewState view;
};

// Clearing the picture and copying it to the back buffer, which every pass
// does: the floor the views are measured against, in ms of CPU time.
double ClearMs() {
  static const double ms = [] {
    QtFontSet& fonts = Fonts();
    Window window(fonts, 50.0f, 8.0f, 400);
    window.map.SetBackColor(TheWorld().colours.Map);
    double best = 1e9;
    for (int round = 0; round < 5; ++round) {
      const std::clock_t start = std::clock();
      for (int i = 0; i < 50; ++i) {
        window.map.Cls();
        window.back.CopyPicture(window.map);
      }
      best = std::min(best, 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / 50);
    }
    return best;
  }();
  return ms;
}

void ReportClearRatio(benchmark::State& state) {
  state.counters["ClearMs"] = ClearMs();
  state.counters["ClearRatio"] = benchmark::Counter(ClearMs() / 1000.0, benchmark::Counter::kIsIterationInvariantRate |
                                                                             benchmark::Counter::kInvert);
}

// The pass as the window runs it, again and again; the first pass at a zoom
// (which thins the shapes for it) is the warm-up.
void RenderAt(benchmark::State& state, float lat, float lon, int32_t range) {
  QtFontSet& fonts = Fonts();
  World& w = TheWorld();
  Window window(fonts, lat, lon, range);
  MapRenderer renderer;
  MapScene scene{window.view, w.colours, w.layers, w.db, w.plan};
  renderer.DrawMap(scene, window.map, &window.back);
  for (auto _ : state) {
    renderer.DrawMap(scene, window.map, &window.back);
    benchmark::ClobberMemory();
  }
  ReportClearRatio(state);
}

// The first pass of a new renderer: every shape in view thinned for the
// zoom, the airway bends and the position lists worked out. This is what a
// zoom change or a new database costs once.
void FirstPassAt(benchmark::State& state, float lat, float lon, int32_t range) {
  QtFontSet& fonts = Fonts();
  World& w = TheWorld();
  Window window(fonts, lat, lon, range);
  for (auto _ : state) {
    MapRenderer renderer;
    MapScene scene{window.view, w.colours, w.layers, w.db, w.plan};
    renderer.DrawMap(scene, window.map, &window.back);
    benchmark::ClobberMemory();
  }
  ReportClearRatio(state);
}

// A live tick's drawing: the clean chart back from the back buffer, then the
// active leg, the aircraft and the wind arrow over it; the pass itself runs
// only when the centre or the range change.
void BM_LiveTickOverlay(benchmark::State& state) {
  QtFontSet& fonts = Fonts();
  World& w = TheWorld();
  Window window(fonts, 50.033f, 8.570f, 30);
  MapRenderer renderer;
  MapScene scene{window.view, w.colours, w.layers, w.db, w.plan};
  renderer.DrawMap(scene, window.map, &window.back);
  LiveOverlay overlay;
  overlay.Lat = 50.1f;
  overlay.Lon = 8.7f;
  overlay.TrueHeading = 135;
  overlay.WindDir = 270;
  overlay.WindSpeed = 25;
  for (auto _ : state) {
    window.map.CopyPicture(window.back);
    overlay.TrueHeading += 0.5f;
    DrawLiveOverlay(window.map, window.view, w.plan, overlay);
    benchmark::DoNotOptimize(window.map.Image().constBits());
  }
}

void BM_Atlantic2000(benchmark::State& s) { RenderAt(s, 45.0f, -30.0f, 2000); }
void BM_Europe400(benchmark::State& s) { RenderAt(s, 50.0f, 8.0f, 400); }
void BM_Airport30(benchmark::State& s) { RenderAt(s, 50.033f, 8.570f, 30); }
void BM_Taxiways2(benchmark::State& s) { RenderAt(s, 50.033f, 8.570f, 2); }
void BM_FirstPassAtlantic2000(benchmark::State& s) { FirstPassAt(s, 45.0f, -30.0f, 2000); }
void BM_FirstPassEurope400(benchmark::State& s) { FirstPassAt(s, 50.0f, 8.0f, 400); }
void BM_FirstPassAirport30(benchmark::State& s) { FirstPassAt(s, 50.033f, 8.570f, 30); }
void BM_FirstPassTaxiways2(benchmark::State& s) { FirstPassAt(s, 50.033f, 8.570f, 2); }

BENCHMARK(BM_LiveTickOverlay)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Atlantic2000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Europe400)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Airport30)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Taxiways2)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassAtlantic2000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassEurope400)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassAirport30)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassTaxiways2)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace orv
