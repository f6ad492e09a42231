// Reading a world-sized set of navaid and airway files: 40,000 intersections
// with 150,000 links, 100,000 airway segments, 60,000 fixes, 12,000 VORs and
// 10,000 NDBs, built with the files' own writers.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "database/NavaidFiles.h"

namespace orv {
namespace {

struct WorldFiles {
  MagVarGrid grid;
  std::vector<uint8_t> dijinter, vicways, jetways, fixes, vor, ndb;
};

// A short identifier: the prefix letter and a number.
std::string Ident(char prefix, int number) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%c%d", prefix, number);
  return buf;
}

float LatOf(int i, int n) { return -80.0f + 160.0f * static_cast<float>(i) / static_cast<float>(n); }
float LonOf(int i) { return -179.5f + static_cast<float>((i * 37) % 359); }

const WorldFiles& World() {
  static const WorldFiles files = [] {
    WorldFiles w;
    w.grid.Assign(BuildMagVarFile([](int lat, int lon) { return lat * 0.1 + lon * 0.01; }));

    NavaidTables t;
    std::vector<AirwayLinkRec> low, high;
    for (int i = 0; i < 40000; ++i) {
      IntersectionRec rec;
      rec.Index = i;
      rec.Ident = FixedStr<8>(Ident('I', i % 10000));
      rec.Name = FixedStr<25>("INTERSECTION");
      rec.Lat = LatOf(i, 40000);
      rec.Lon = LonOf(i);
      low.assign(static_cast<std::size_t>(i % 2 == 0 ? 2 : 1), {(i + 1) % 40000, FixedStr<8>("V1"), 12.5f,
                                                               FixedStr<5>("05000"), FixedStr<5>("FL180")});
      high.assign(static_cast<std::size_t>(i % 4 == 0 ? 2 : 1), {(i + 7) % 40000, FixedStr<8>("J1"), 40.0f,
                                                                FixedStr<5>("FL240"), FixedStr<5>("FL450")});
      PlaceIntersection(t, rec, low, high);
    }
    w.dijinter = BuildDijinterFile(t);

    std::vector<AirwayRec> airways(50000);
    for (int i = 0; i < 50000; ++i)
      airways[static_cast<std::size_t>(i)] = {FixedStr<8>(Ident('V', i % 500)), i % 40000,
                                              (i + 1) % 40000, 1.0f, FixedStr<5>("05000"), FixedStr<5>("n/a")};
    w.vicways = BuildAirwayFile(airways);
    w.jetways = BuildAirwayFile(airways);

    std::vector<FixRec> fixes(60000);
    for (int i = 0; i < 60000; ++i) {
      FixRec& f = fixes[static_cast<std::size_t>(i)];
      f.Country = FixedStr<2>("K");
      f.Ident = FixedStr<5>(Ident('F', i % 9999));
      f.Name = FixedStr<25>("FIX");
      f.Lat = LatOf(i, 60000);
      f.Lon = LonOf(i);
    }
    w.fixes = BuildFixesFile(fixes);

    std::vector<VorRec> vors(12000);
    for (int i = 0; i < 12000; ++i) {
      VorRec& v = vors[static_cast<std::size_t>(i)];
      v.Ident = FixedStr<20>(Ident('V', i));
      v.Name = FixedStr<70>("VOR STATION");
      v.Lat = LatOf(i, 12000);
      v.Lon = LonOf(i);
      v.TypeCode = static_cast<int16_t>(i % 10);
    }
    w.vor = BuildVorFile(vors);

    std::vector<NdbRec> ndbs(10000);
    for (int i = 0; i < 10000; ++i) {
      NdbRec& n = ndbs[static_cast<std::size_t>(i)];
      n.Ident = FixedStr<20>(Ident('N', i));
      n.Name = FixedStr<70>("NDB STATION");
      n.Lat = LatOf(i, 10000);
      n.Lon = LonOf(i);
      n.TypeText = FixedStr<3>(i % 3 == 0 ? "7" : "5");
    }
    w.ndb = BuildNdbFile(ndbs);
    return w;
  }();
  return files;
}

void BM_ReadAllNavaidFiles(benchmark::State& state) {
  const WorldFiles& w = World();
  for (auto _ : state) {
    NavaidTables t;
    bool ok = !ParseDijinterFile(w.dijinter.data(), w.dijinter.size(), w.grid, t) &&
              !ParseVicwaysFile(w.vicways.data(), w.vicways.size(), t) &&
              !ParseJetwaysFile(w.jetways.data(), w.jetways.size(), t) &&
              !ParseFixesFile(w.fixes.data(), w.fixes.size(), w.grid, t) &&
              !ParseVorFile(w.vor.data(), w.vor.size(), w.grid, t) &&
              !ParseNdbFile(w.ndb.data(), w.ndb.size(), w.grid, t);
    if (!ok) state.SkipWithError("a file did not read");
    benchmark::DoNotOptimize(t);
  }
}
BENCHMARK(BM_ReadAllNavaidFiles)->Unit(benchmark::kMillisecond);

void BM_ReadDijinter(benchmark::State& state) {
  const WorldFiles& w = World();
  for (auto _ : state) {
    NavaidTables t;
    benchmark::DoNotOptimize(ParseDijinterFile(w.dijinter.data(), w.dijinter.size(), w.grid, t));
  }
}
BENCHMARK(BM_ReadDijinter)->Unit(benchmark::kMillisecond);

void BM_ReadAirways(benchmark::State& state) {
  const WorldFiles& w = World();
  for (auto _ : state) {
    NavaidTables t;
    benchmark::DoNotOptimize(ParseVicwaysFile(w.vicways.data(), w.vicways.size(), t));
    benchmark::DoNotOptimize(ParseJetwaysFile(w.jetways.data(), w.jetways.size(), t));
  }
}
BENCHMARK(BM_ReadAirways)->Unit(benchmark::kMillisecond);

void BM_ReadFixesVorsNdbs(benchmark::State& state) {
  const WorldFiles& w = World();
  for (auto _ : state) {
    NavaidTables t;
    benchmark::DoNotOptimize(ParseFixesFile(w.fixes.data(), w.fixes.size(), w.grid, t));
    benchmark::DoNotOptimize(ParseVorFile(w.vor.data(), w.vor.size(), w.grid, t));
    benchmark::DoNotOptimize(ParseNdbFile(w.ndb.data(), w.ndb.size(), w.grid, t));
  }
}
BENCHMARK(BM_ReadFixesVorsNdbs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
