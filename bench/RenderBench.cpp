// The full render pass into a 1600x1000 picture on a world-sized database:
// 2000 NM over the Atlantic, 400 NM over Europe, 30 NM and 2 NM over a busy
// airport with taxiways. Target: under 10 ms each (Release build).
//
// Layers: the defaults of the window plus both airway layers and their
// intersections, the busiest combination a user keeps on.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "map/RenderPass.h"
#include "mapqt/MapPicture.h"
#include "mapqt/QPainterTarget.h"

#if __has_include("support/WorldFixture.h")
#include "support/WorldFixture.h"
#define ORV_HAVE_WORLD_FIXTURE 1
#else
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include "database/AirspaceFiles.h"
#endif

namespace orv {
namespace {

#ifndef ORV_HAVE_WORLD_FIXTURE
// A stand-in of the world fixture's counts and placement, used until the
// shared fixture is available to this build.
struct Rng {
  uint64_t s = 0x9E3779B97F4A7C15ull;
  uint32_t Next() {
    s ^= s << 13, s ^= s >> 7, s ^= s << 17;
    return static_cast<uint32_t>(s >> 11);
  }
  float Uniform(float a, float b) { return a + (b - a) * static_cast<float>(Next() % 1000000) / 1e6f; }
};

// "X123" without a string concatenation per record.
std::string Name(char first, int i) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%c%d", first, i);
  return buf;
}

void PlacePoint(Rng& r, float& lat, float& lon) {
  const uint32_t k = r.Next() % 10;
  if (k < 4) lat = r.Uniform(36, 60), lon = r.Uniform(-10, 30);        // Europe
  else if (k < 8) lat = r.Uniform(25, 55), lon = r.Uniform(-125, -65); // North America
  else lat = r.Uniform(-50, 70), lon = r.Uniform(-180, 180);
}

void BuildStandInWorld(NavDatabase& db) {
  Rng r;
  auto& aps = db.Airports.Airports;
  aps.resize(40000);
  for (std::size_t i = 0; i < aps.size(); ++i) {
    AirportRec& a = aps[i];
    a.Icao.Assign(i == 0 ? std::string("EDDF") : Name('X', static_cast<int>(i)));
    a.Name.Assign(Name('A', static_cast<int>(i)));
    if (i == 0) a.Lat = 50.033f, a.Lon = 8.570f;
    else PlacePoint(r, a.Lat, a.Lon);
    const int runways = i % 2 ? 1 : 2;
    for (int k = 0; k < runways; ++k) {
      RunwayRec w;
      w.LowEnd.Assign("07");
      w.HighEnd.Assign("25");
      w.Lat = a.Lat + 0.002f * k, w.Lon = a.Lon, w.TrueHeading = 70, w.LengthFeet = 8000;
      if (i % 4 == 0 && k == 0) w.LowIls.Assign("IXX");
      a.Runways.push_back(w);
    }
    if (i % 4 == 0) {
      IlsRec ils;
      ils.Ident.Assign("IXX");
      ils.Values[0] = 110.1f, ils.Values[1] = 70, ils.Values[2] = 3;
      a.Ils.push_back(ils);
    }
    for (int k = 0; k < 4; ++k) {
      ParkingRec p;
      p.Ident.Assign("GATE");
      p.Lat = a.Lat + 0.001f * k, p.Lon = a.Lon + 0.002f;
      a.Parking.push_back(p);
    }
    LinkIlsToRunways(a);
  }
  for (int i = 0; i < 12000; ++i) {
    VorRec v;
    v.Ident.Assign(Name('V', i));
    PlacePoint(r, v.Lat, v.Lon);
    v.Value = 40, v.TypeCode = static_cast<int16_t>(1 + i % 4), v.Frequency = 112.3f;
    db.Navaids.Vors.push_back(v);
  }
  for (int i = 0; i < 10000; ++i) {
    NdbRec n;
    n.Ident.Assign(Name('N', i));
    PlacePoint(r, n.Lat, n.Lon);
    db.Navaids.Ndbs.push_back(n);
  }
  auto& n = db.Navaids;
  n.Intersections.assign(kIntersectionSlots, EmptyIntersectionSlot());
  // Intersections come in chains of ten a few NM apart, so that airway
  // segments between neighbouring indexes are short, as real ones are.
  float chainLat = 0, chainLon = 0;
  for (int i = 0; i < 40000; ++i) {
    IntersectionRec x;
    x.Index = i;
    x.Ident.Assign(Name('I', i));
    if (i % 10 == 0) PlacePoint(r, chainLat, chainLon);
    chainLat += r.Uniform(-0.3f, 0.3f), chainLon += r.Uniform(-0.3f, 0.3f);
    x.Lat = chainLat, x.Lon = chainLon;
    PlaceIntersection(n, x, {}, {});
  }
  for (int i = 0; i < 100000; ++i) {
    AirwayRec a;
    a.Name.Assign(i % 2 ? "V12" : "J34");
    a.FromIndex = static_cast<int32_t>(r.Next() % 40000);
    // Neighbours in the same region: a nearby index of the same placement.
    a.ToIndex = a.FromIndex % 10 == 9 ? a.FromIndex - 1 : a.FromIndex + 1;
    (i % 2 ? n.VictorAirways : n.JetAirways).push_back(a);
  }
  for (int i = 0; i < 60000; ++i) {
    FixRec f;
    f.Ident.Assign(Name('F', i));
    PlacePoint(r, f.Lat, f.Lon);
    n.Fixes.push_back(f);
  }
  AirspaceTables& t = db.Shapes;
  std::vector<ShapePoint> pts;
  for (int i = 0; i < 15000; ++i) {
    float lat, lon;
    PlacePoint(r, lat, lon);
    pts.clear();
    const float radius = 0.1f + 0.5f * static_cast<float>(r.Next() % 100) / 100;
    for (int k = 0; k < 133; ++k)
      pts.push_back({lat + radius * std::cos(k * 0.0477f), lon + radius * std::sin(k * 0.0477f)});
    AirspaceRec a;
    a.Class.Assign(i % 3 == 0 ? "CTR" : i % 3 == 1 ? "CTA" : "FIR");
    a.Ident.Assign("A");
    AddAirspace(t, a, pts);
  }
  for (int i = 0; i < 500; ++i) {
    float lat, lon;
    PlacePoint(r, lat, lon);
    WorldShapeRec s;
    s.Kind = 1;
    s.First = static_cast<uint32_t>(t.WorldPolygonPoints.size());
    s.Count = 2000;
    s.PointCount = 1999;
    const float radius = 1.5f;
    for (int k = 0; k < 2000; ++k)
      t.WorldPolygonPoints.push_back({lat + radius * std::cos(k * 0.00314f), lon + radius * std::sin(k * 0.00314f)});
    s.North = lat + radius, s.South = lat - radius, s.East = lon + radius, s.West = lon - radius;
    t.WorldPolygons.push_back(s);
  }
  for (int i = 0; i < 3000; ++i) {
    TaxiRec x;
    x.Lat1 = 50.02f + 0.00001f * (i % 100) * 3, x.Lon1 = 8.53f + 0.0008f * (i / 100);
    x.Lat2 = x.Lat1 + 0.0005f, x.Lon2 = x.Lon1 + 0.0005f;
    x.Name.Assign(std::string(1, static_cast<char>('A' + i % 26)));
    t.TaxiSegments.push_back(x);
  }
  for (int i = 0; i < 2000; ++i) {
    GroundPolyRec g;
    const char kind = i % 5 == 0 ? 'B' : 'L';
    g.Kind.Assign(std::string_view(&kind, 1));
    g.Lat = 50.02f + 0.0001f * (i % 50), g.Lon = 8.53f + 0.0002f * (i / 50) + 0.0001f * (i % 5);
    t.GroundPolygons.push_back(g);
  }
}
#endif

struct World {
  World() {
#ifdef ORV_HAVE_WORLD_FIXTURE
    test::BuildWorldDatabase(db);
#else
    BuildStandInWorld(db);
#endif
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

QtFontSet& Fonts() {
  static int argc = 1;
  static char name[] = "RenderBench";
  static char* argv[] = {name, nullptr};
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Kept to the end of the process: tearing the application down among the
  // other statics at exit crashes in Qt's font cache.
  static auto* app = new QGuiApplication(argc, argv);
  static auto* fonts = new QtFontSet;
  (void)app;
  return *fonts;
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
}

void BM_Atlantic2000(benchmark::State& s) { RenderAt(s, 45.0f, -30.0f, 2000); }
void BM_Europe400(benchmark::State& s) { RenderAt(s, 50.0f, 8.0f, 400); }
void BM_Airport30(benchmark::State& s) { RenderAt(s, 50.033f, 8.570f, 30); }
void BM_Taxiways2(benchmark::State& s) { RenderAt(s, 50.033f, 8.570f, 2); }
void BM_FirstPassAtlantic2000(benchmark::State& s) { FirstPassAt(s, 45.0f, -30.0f, 2000); }
void BM_FirstPassEurope400(benchmark::State& s) { FirstPassAt(s, 50.0f, 8.0f, 400); }

BENCHMARK(BM_Atlantic2000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Europe400)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Airport30)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Taxiways2)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassAtlantic2000)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_FirstPassEurope400)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

}  // namespace
}  // namespace orv
