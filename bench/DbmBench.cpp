// The database manager at world size: X-Plane source text generated from the
// world fixture (40,000 airports with their runways, frequencies and parking,
// 22,000 navaids, 60,000 fixes, 100,000 airway segments) is read, mapped to
// the database tables and written as a complete application folder.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/Runtime.h"
#include "dbm/DatabaseBuilder.h"
#include "dbm/FolderWriter.h"
#include "dbm/XPlaneSources.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

struct Sources {
  std::string apt, nav, fix, awy;
  MagVarGrid grid;
};

void Append(std::string& out, const char* fmt, auto... args) {
  char line[256];
  int n = std::snprintf(line, sizeof line, fmt, args...);
  out.append(line, static_cast<std::size_t>(std::min(n, static_cast<int>(sizeof line) - 1)));
}

// The fixture's tables written back as X-Plane rows.
const Sources& World() {
  static const Sources s = [] {
    NavDatabase db;
    test::BuildWorldDatabase(db);
    Sources out;
    out.grid = db.MagVar;
    out.apt = "I\n1000 Version - data cycle 2013.10, bench\n\n";
    for (const AirportRec& a : db.Airports.Airports) {
      if (!IsAirportSlotUsed(a)) continue;
      Append(out.apt, "1 %d 0 0 %s %s\n", a.Elevation, a.Icao.Str().c_str(), a.Name.Str().c_str());
      for (const RunwayRec& r : a.Runways) {
        double half = r.LengthFeet / 2.0 / 6076.12 / 60.0, c = r.TrueHeading * 3.14159265358979 / 180.0;
        double dLon = half * std::sin(c) / std::max(0.01, std::cos(r.Lat * 3.14159265358979 / 180.0));
        Append(out.apt, "100 45.00 1 0 0.25 1 3 1 %s %.8f %.8f 0 0 3 0 1 0 %s %.8f %.8f 0 0 3 0 1 0\n",
               r.LowEnd.Str().c_str(), r.Lat - half * std::cos(c), r.Lon - dLon, r.HighEnd.Str().c_str(),
               r.Lat + half * std::cos(c), r.Lon + dLon);
      }
      for (const FrequencyRec& f : a.Frequencies)
        Append(out.apt, "%d %d %s\n", 50 + (f.Kind % 7), static_cast<int>(f.Frequency * 100 + 0.5), f.Name.Str().c_str());
      for (const ParkingRec& p : a.Parking)
        Append(out.apt, "1300 %.8f %.8f %d gate jets Gate %d\n", p.Lat, p.Lon, p.Value, p.Number);
    }
    out.apt += "99\n";
    out.nav = "I\n810 Version - data cycle 2013.10, bench\n\n";
    for (const VorRec& v : db.Navaids.Vors)
      Append(out.nav, "3 %.8f %.8f 0 %d 130 1.0 %s %s VOR-DME\n", v.Lat, v.Lon, static_cast<int>(v.Frequency * 100 + 0.5),
             v.Ident.Str().c_str(), v.Name.Str().c_str());
    for (const NdbRec& n : db.Navaids.Ndbs)
      Append(out.nav, "2 %.8f %.8f 0 %d 25 0.0 %s %s NDB\n", n.Lat, n.Lon, static_cast<int>(n.Frequency),
             n.Ident.Str().c_str(), n.Name.Str().c_str());
    out.nav += "99\n";
    out.fix = "I\n600 Version - data cycle 2013.10, bench\n\n";
    for (const FixRec& f : db.Navaids.Fixes) Append(out.fix, "%.8f %.8f %s\n", f.Lat, f.Lon, f.Ident.Str().c_str());
    out.fix += "99\n";
    out.awy = "I\n640 Version - data cycle 2013.10, bench\n\n";
    const auto& x = db.Navaids.Intersections;
    auto seg = [&](const AirwayRec& w, int level) {
      const IntersectionRec& a = x[static_cast<std::size_t>(w.FromIndex)];
      const IntersectionRec& b = x[static_cast<std::size_t>(w.ToIndex)];
      Append(out.awy, "%s %.6f %.6f %s %.6f %.6f %d 050 245 %s\n", a.Ident.Str().c_str(), a.Lat, a.Lon,
             b.Ident.Str().c_str(), b.Lat, b.Lon, level, w.Name.Str().c_str());
    };
    for (const AirwayRec& w : db.Navaids.VictorAirways) seg(w, 1);
    for (const AirwayRec& w : db.Navaids.JetAirways) seg(w, 2);
    out.awy += "99\n";
    return out;
  }();
  return s;
}

void ReadAll(const Sources& w, dbm::XPlaneSources& src) {
  dbm::SourceReport r;
  dbm::ReadAptDat(w.apt, src.Airports, r);
  dbm::ReadNavDat(w.nav, src.Navaids, r);
  dbm::ReadFixDat(w.fix, src.Fixes, r);
  dbm::ReadAwyDat(w.awy, src.Airways, r);
}

void BM_ReadSources(benchmark::State& state) {
  const Sources& w = World();
  for (auto _ : state) {
    dbm::XPlaneSources src;
    ReadAll(w, src);
    benchmark::DoNotOptimize(src.Airports.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(w.apt.size() + w.nav.size() + w.fix.size() + w.awy.size()));
}
BENCHMARK(BM_ReadSources)->Unit(benchmark::kMillisecond);

void BM_BuildTables(benchmark::State& state) {
  const Sources& w = World();
  dbm::XPlaneSources src;
  ReadAll(w, src);
  for (auto _ : state) {
    dbm::BuiltDatabase built;
    dbm::BuildDatabase(src, w.grid, {}, built);
    benchmark::DoNotOptimize(built.Db.Airports.Airports.data());
  }
}
BENCHMARK(BM_BuildTables)->Unit(benchmark::kMillisecond);

void BM_WriteFolder(benchmark::State& state) {
  const Sources& w = World();
  dbm::XPlaneSources src;
  ReadAll(w, src);
  dbm::BuiltDatabase built;
  dbm::BuildDatabase(src, w.grid, {}, built);
  std::filesystem::path root = std::filesystem::temp_directory_path() / "orvanta-dbm-bench";
  for (auto _ : state) {
    std::vector<dbm::WrittenFile> written;
    std::string error;
    if (!dbm::WriteAppFolder(root, built, w.grid.Bytes(), {}, written, error)) state.SkipWithError(error.c_str());
  }
  std::filesystem::remove_all(root);
}
BENCHMARK(BM_WriteFolder)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
