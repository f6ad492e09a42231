// Start-up load of a world-sized airspace and coastline set: 15,000 airspaces
// with 2 million points, and 1 million world polygon points in 15,000 shapes.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "database/AirspaceFiles.h"
#include "database/WorldShapes.h"

namespace {

std::vector<orv::ShapePoint> Ring(int n, float lat, float lon) {
  std::vector<orv::ShapePoint> pts(static_cast<std::size_t>(n));
  for (int i = 0; i < n; ++i) {
    double a = 6.2831853 * i / n;
    pts[static_cast<std::size_t>(i)] = {lat + static_cast<float>(std::sin(a)), lon + static_cast<float>(std::cos(a))};
  }
  return pts;
}

const std::vector<uint8_t>& AirspaceFile() {
  static const std::vector<uint8_t> file = [] {
    orv::AirspaceTables t;
    for (int i = 0; i < 15000; ++i) {
      orv::AirspaceRec a;
      a.Index = static_cast<int16_t>(i);
      a.Ident.Assign("ZZZZ");
      a.UpperAltitude.Assign("0FL245");
      orv::AddAirspace(t, a, Ring(134, static_cast<float>(i % 170 - 85), static_cast<float>(i % 360 - 180)));
    }
    return orv::BuildAirspaceFile(t);
  }();
  return file;
}

const std::vector<uint8_t>& WorldPolygonFile() {
  static const std::vector<uint8_t> file = [] {
    orv::AirspaceTables t;
    for (int i = 0; i < 15000; ++i)
      orv::AddWorldShape(t.WorldPolygons, t.WorldPolygonPoints, i, 2,
                         Ring(67, static_cast<float>(i % 170 - 85), static_cast<float>(i % 360 - 180)));
    return orv::BuildWorldPolygonFile(t);
  }();
  return file;
}

void BM_ParseAirspaceFile(benchmark::State& state) {
  const auto& file = AirspaceFile();
  for (auto _ : state) {
    orv::AirspaceTables t;
    if (orv::ParseAirspaceFile(file.data(), file.size(), t)) state.SkipWithError("refused");
    benchmark::DoNotOptimize(t.AirspacePoints.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(BM_ParseAirspaceFile)->Unit(benchmark::kMillisecond);

void BM_ParseWorldPolygonFile(benchmark::State& state) {
  const auto& file = WorldPolygonFile();
  for (auto _ : state) {
    orv::AirspaceTables t;
    if (orv::ParseWorldPolygonFile(file.data(), file.size(), t)) state.SkipWithError("refused");
    benchmark::DoNotOptimize(t.WorldPolygonPoints.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(BM_ParseWorldPolygonFile)->Unit(benchmark::kMillisecond);

}  // namespace
