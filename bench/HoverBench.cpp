// The hover box's walk (HoverWalk) on the world-sized database at 400 NM
// over Europe, with every layer it tests switched on: airports, VORs, NDBs,
// intersections, fixes, user waypoints, the plan's rows, every airspace
// class, and a full table of AI traffic. The pointer rests on Frankfurt,
// where the layers are densest. Target: under 2 ms (Release build).
#include <benchmark/benchmark.h>

#include <cstring>

#include "app/HoverWalk.h"
#include "map/RecordingTarget.h"
#include "mapqt/MapPicture.h"
#include "support/SmallWorld.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

void HoverWalkAt400Nm(benchmark::State& state) {
  ProgramState s(".");
  test::BuildWorldDatabase(s.Db);
  MapLayers& l = s.Layers;
  l.btnInter = l.btnFix = l.btnJet = l.btnVictor = true;
  s.Window.btnAI = true;
  test::BuildSmallPlan(s.Plan);
  // A full airborne table, spread over the view.
  std::vector<TrafficEntry> air;
  for (uint32_t i = 0; i < kTrafficMaxCount; ++i) {
    TrafficEntry e;
    e.Id = i + 1;
    e.Latitude = 47.0f + static_cast<float>(i % 10) * 0.6f;
    e.Longitude = 3.0f + static_cast<float>(i / 10) * 1.0f;
    e.Altitude = 35000;
    std::memcpy(e.AtcId.data(), "DLH123", 6);
    air.push_back(e);
  }

  RecordingTarget surface(1600, 1000);
  s.View.CntrLat = 50.03f;
  s.View.CntrLon = 8.57f;
  PrepareMapPicture(surface, s.View, static_cast<int16_t>(ZoomIndexOfLabel(400)));
  BeginRenderPass(s.View, surface);
  const double x = s.View.ScaleWidth / 2, y = s.View.ScaleHeight / 2;
  HoverFind find;
  std::size_t lines = 0;
  for (auto _ : state) {
    HoverWalk(s, HoverTraffic{air, {}, {}, {}}, x, y, find, s.Highlight);
    lines = find.Lines.size();
    benchmark::DoNotOptimize(lines);
  }
  state.counters["lines"] = static_cast<double>(lines);
}
BENCHMARK(HoverWalkAt400Nm)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
