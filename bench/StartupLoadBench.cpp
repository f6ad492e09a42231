// The whole start-up on the world-sized folder: settings, every database file
// read from disk and decoded by its reader, the ILS links and the log, as the
// program runs it behind the splash. Target: under 0.3 s, and the memory the
// loaded database takes under twice the size of its files.
//
// ORV_BENCH_SCALE sets the world's scale (default 1).
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "core/Startup.h"
#include "database/DatabaseLoader.h"
#include "support/TempDir.h"
#include "support/WorldFixture.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

double BenchScale() {
  const char* text = std::getenv("ORV_BENCH_SCALE");
  return text && *text ? std::atof(text) : 1.0;
}

struct WorldFolder {
  test::TempDir dir;
  double fileBytes = 0;
  WorldFolder() {
    if (!test::WriteWorldFolder(dir.Path(), {1, BenchScale()})) std::abort();
    for (const fs::directory_entry& e : fs::recursive_directory_iterator(dir.Path()))
      if (e.is_regular_file()) fileBytes += static_cast<double>(e.file_size());
    // What building the world took goes back to the system before anything
    // is measured.
    malloc_trim(0);
  }
};

const WorldFolder& Folder() {
  static const WorldFolder folder;
  return folder;
}

// A "VmRSS:" or "VmHWM:" line of /proc/self/status, in MB.
double StatusMb(const char* key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.rfind(key, 0) == 0) return std::atof(line.c_str() + std::strlen(key)) / 1024.0;
  return 0;
}

StartupResult LoadOnce(NavDatabase& db) {
  AppState state{AppFolder(Folder().dir.Path())};
  SilentUi ui;
  SystemClock clock;
  DatabaseLoader loader(db);
  return RunStartup(state, ui, clock, loader);
}

struct Memory {
  double before = 0, after = 0, peak = 0;
};

// The resident memory before and after one load, with the peak in between
// (the peak is reset first where the kernel allows it).
const Memory& MeasureMemory() {
  static const Memory memory = [] {
    Memory m;
    Folder();
    m.before = StatusMb("VmRSS:");
    if (std::FILE* f = std::fopen("/proc/self/clear_refs", "w")) {
      std::fputs("5", f);  // resets VmHWM to the current resident size
      std::fclose(f);
    }
    NavDatabase db;
    if (LoadOnce(db).ProgramEnds()) std::abort();
    m.after = StatusMb("VmRSS:");
    m.peak = StatusMb("VmHWM:");
    return m;
  }();
  return memory;
}

void BM_StartupLoadWorld(benchmark::State& state) {
  const WorldFolder& folder = Folder();
  const Memory& memory = MeasureMemory();
  for (auto _ : state) {
    NavDatabase db;
    StartupResult result = LoadOnce(db);
    if (result.ProgramEnds()) state.SkipWithError(result.Messages.empty() ? "ended" : result.Messages[0].c_str());
    benchmark::DoNotOptimize(db.Airports.Airports.data());
    state.PauseTiming();  // the program never frees its database before it ends
    db = NavDatabase();
    state.ResumeTiming();
  }
  const double filesMb = folder.fileBytes / (1024.0 * 1024.0);
  state.counters["FilesMB"] = filesMb;
  state.counters["RssBeforeMB"] = memory.before;
  state.counters["RssAfterMB"] = memory.after;
  state.counters["PeakMB"] = memory.peak;
  state.counters["LoadedMB"] = memory.after - memory.before;
  state.counters["LoadedPerFile"] = (memory.after - memory.before) / filesMb;
  state.counters["PeakPerFile"] = (memory.peak - memory.before) / filesMb;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * folder.fileBytes));
}
BENCHMARK(BM_StartupLoadWorld)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv
