// The whole start-up on the world-sized folder: settings, every database file
// read from disk and decoded by its reader, the ILS links and the log, as the
// program runs it behind the splash. Target: at most five times a plain read
// of the same files (ReadRatio), and the memory the loaded database takes
// under 1.5 times the size of its files.
//
// ORV_BENCH_SCALE sets the world's scale (default 1).
#include <benchmark/benchmark.h>

#include <chrono>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>
#include <algorithm>

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
  std::vector<fs::path> files;
  WorldFolder() {
    if (!test::WriteWorldFolder(dir.Path(), {1, BenchScale()})) std::abort();
    for (const fs::directory_entry& e : fs::recursive_directory_iterator(dir.Path()))
      if (e.is_regular_file()) {
        fileBytes += static_cast<double>(e.file_size());
        files.push_back(e.path());
      }
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

// The floor of a load: every file of the folder read into one buffer and
// nothing done with it, as "cat" would; the fastest of a few rounds, in ms.
double PlainReadMs() {
  std::vector<char> buffer(1 << 20);
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    const auto start = std::chrono::steady_clock::now();
    for (const fs::path& p : Folder().files) {
      std::FILE* f = std::fopen(p.c_str(), "rb");
      if (!f) continue;
      while (std::fread(buffer.data(), 1, buffer.size(), f) > 0) {}
      std::fclose(f);
    }
    best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
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
  // ReadRatio: the CPU time of a load over the time of the plain read.
  static const double readMs = PlainReadMs();
  state.counters["FilesMB"] = filesMb;
  state.counters["PlainReadMs"] = readMs;
  state.counters["ReadRatio"] = benchmark::Counter(readMs / 1000.0,
                                                   benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
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
