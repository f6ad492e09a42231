// The network data: a world's METAR file, the VATSIM v3 feed and the IVAO
// text file into the arrays, and the pilots and weather symbols drawn at
// 400 NM on the window's QPainter picture.
#include <benchmark/benchmark.h>

#include <QGuiApplication>

#include "BenchFonts.h"
#include "database/NavDatabase.h"
#include "map/Viewport.h"
#include "mapqt/MapPicture.h"
#include "mapqt/QPainterTarget.h"
#include "online/Metar.h"
#include "online/OnlineData.h"
#include "online/OnlineDraw.h"
#include "support/OnlineSamples.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

NavDatabase& World() {
  static NavDatabase* db = [] {
    auto* d = new NavDatabase;
    test::BuildWorldDatabase(*d);
    return d;
  }();
  return *db;
}

void BM_Metar30000(benchmark::State& state) {
  const std::string stations = test::WxStationFile(15000);
  const std::string reports = test::MetarReports(15000, 2);
  for (auto _ : state) {
    WxStations st;
    st.Load(stations);
    std::vector<MetarRec> recs = ParseMetarFile(reports, st);
    benchmark::DoNotOptimize(recs.data());
    if (recs.size() != 30000) state.SkipWithError("wrong count");
  }
  state.counters["MB"] = static_cast<double>(stations.size() + reports.size()) / 1e6;
}

void BM_VatsimV3Feed(benchmark::State& state) {
  const std::string feed = test::VatsimV3Json(test::ManyPilots(2000), test::ManyAtcs(300));
  AirportFinder finder(&World().Airports);
  for (auto _ : state) {
    OnlineData d;
    std::string error;
    if (!ParseVatsimJson(feed, finder, d, error)) state.SkipWithError("refused");
    benchmark::DoNotOptimize(d.Pilots.data());
  }
  state.counters["MB"] = static_cast<double>(feed.size()) / 1e6;
}

void BM_AirportFinder(benchmark::State& state) {
  for (auto _ : state) {
    AirportFinder finder(&World().Airports);
    benchmark::DoNotOptimize(finder.Find("EDDF"));
  }
}

void BM_IvaoText2000(benchmark::State& state) {
  const std::string text = test::IvaoWhazzupText(test::ManyPilots(1700), test::ManyAtcs(300));
  AirportFinder finder(&World().Airports);
  for (auto _ : state) {
    OnlineData d;
    ParseIvaoText(text, finder, d);
    benchmark::DoNotOptimize(d.Pilots.data());
  }
}


// 2,000 pilots and 2,000 weather stations all inside a 400 NM view over
// Europe: the worst a busy evening gives.
void BM_DrawPilotsAndWeather400(benchmark::State& state) {
  QPainterTarget map(Fonts(), 1600, 1000);
  ViewState view;
  view.CntrLat = 50;
  view.CntrLon = 8;
  PrepareMapPicture(map, view, static_cast<int16_t>(ZoomIndexOfLabel(400)));
  BeginRenderPass(view, map);
  OnlineData d;
  d.Network = OnlineNetwork::Vatsim;
  std::vector<MetarRec> wx;
  for (int i = 0; i < 2000; ++i) {
    OnlineClientRec p;
    p.Callsign = "DLH" + std::to_string(i);
    p.Latitude = 47.0f + (i * 37 % 600) / 100.0f;
    p.Longitude = 2.0f + (i * 71 % 1200) / 100.0f;
    p.Heading = i * 7 % 360;
    p.Altitude = 35000;
    p.GroundSpeed = 450;
    p.Departure = "EDDF";
    p.Destination = "EGLL";
    d.Pilots.push_back(p);
    MetarRec m;
    m.Icao = "ED" + std::to_string(i);
    m.Latitude = 47.0f + (i * 53 % 600) / 100.0f;
    m.Longitude = 2.0f + (i * 29 % 1200) / 100.0f;
    m.Rain = i % 3 == 0 ? -1 : 0;
    m.Fog = i % 7 == 0 ? -1 : 0;
    m.CloudText = i % 2 ? "brkn at 2000ft " : "";
    wx.push_back(m);
  }
  OnlineDrawStyle style;
  for (auto _ : state) {
    DrawWeatherSymbols(map, view, wx, 400);
    DrawOnlinePilots(map, view, d, style, 400);
    benchmark::ClobberMemory();
  }
}

BENCHMARK(BM_Metar30000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_VatsimV3Feed)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_AirportFinder)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly(true);
BENCHMARK(BM_IvaoText2000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_DrawPilotsAndWeather400)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace orv
