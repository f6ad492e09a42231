// Opening the logbook window with 10,000 flights: reading the book and filling
// the grid's lines and the total, from memory and as frmLogbook's load does it
// from the file; and loading recordings: the largest file the 16-bit index
// allows (32,768 samples) and 100,000 samples read as such files in turn. Each
// should take under 20 ms.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "app/LogbookWindow.h"
#include "core/FileIo.h"
#include "simlink/Logbook.h"
#include "support/TempDir.h"
#include "simlink/Recording.h"

namespace {

std::string Book(int flights) {
  std::vector<orv::LogbookEntry> book(flights);
  for (int i = 0; i < flights; ++i) {
    auto& e = book[i];
    e.Departure = "EDDF";
    e.Destination = "EDDM";
    e.FlightDate = 46000 + i;
    e.TakeoffMinutes = 600 + i % 60;
    e.LandingMinutes = 660 + i % 60;
    e.AircraftType = "Cessna Skyhawk";
    for (int w = 0; w < 6; ++w) e.Waypoints.push_back({'V', "FFM", 610 + w});
  }
  return orv::WriteLogbook(book);
}

void BM_LogbookReadAndGrid(benchmark::State& state) {
  const std::string bytes = Book(10000);
  for (auto _ : state) {
    orv::LogbookRead r = orv::ReadLogbook(bytes);
    auto rows = orv::LogbookGridRows(r.entries);
    std::string total = orv::LogbookTotalLine(r.entries);
    benchmark::DoNotOptimize(rows.data());
    benchmark::DoNotOptimize(total.data());
  }
}
BENCHMARK(BM_LogbookReadAndGrid)->Unit(benchmark::kMillisecond);

void BM_LogbookWindowLoad(benchmark::State& state) {
  orv::test::TempDir dir;
  const auto book = dir.Path() / "user" / "Logbook.orv";
  std::filesystem::create_directories(book.parent_path());
  orv::WriteFileAtomic(book, Book(10000));
  orv::ProgramState s(dir.Path().string());
  orv::SilentUi ui;
  orv::LogbookWindow window(s, ui);
  for (auto _ : state) {
    window.Load();
    benchmark::DoNotOptimize(window.Rows.data());
  }
  if (window.Rows.size() != 10000) state.SkipWithError("the grid does not hold the 10,000 flights");
}
BENCHMARK(BM_LogbookWindowLoad)->Unit(benchmark::kMillisecond);

std::string FullRecording() {
  orv::Recording rec;
  rec.RecDescription = "bench";
  rec.Samples.resize(orv::kMaxTraceSamples);
  rec.TraceTimes.assign(orv::kMaxTraceSamples, "12:00:00");
  for (std::size_t i = 0; i < rec.Samples.size(); ++i) rec.Samples[i].Altitude = static_cast<int32_t>(i);
  return orv::WriteRecording(rec);
}

void BM_RecordingLoad32768(benchmark::State& state) {
  const std::string bytes = FullRecording();
  for (auto _ : state) {
    orv::RecordingRead r = orv::ReadRecording(bytes);
    benchmark::DoNotOptimize(r.rec.Samples.data());
  }
}
BENCHMARK(BM_RecordingLoad32768)->Unit(benchmark::kMillisecond);

void BM_RecordingLoad100000(benchmark::State& state) {
  const std::string bytes = FullRecording();
  for (auto _ : state) {
    std::size_t samples = 0;
    for (int part = 0; samples < 100000; ++part) {
      orv::RecordingRead r = orv::ReadRecording(bytes);
      samples += r.rec.Samples.size();
      benchmark::DoNotOptimize(r.rec.Samples.data());
    }
  }
}
BENCHMARK(BM_RecordingLoad100000)->Unit(benchmark::kMillisecond);

}  // namespace
