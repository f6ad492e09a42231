// One live tick's worth of simulator reads against the in-process partner:
// the liveness read, the snapshot (time, position with units, altimeter and
// ground flag, fuel, speeds, vertical speed, wind, magnetic variation, ground
// altitude, COM1) and both traffic tables with ten aircraft each, twenty
// round trips in all. The tick has 500 ms; the reads should take under 0.1 ms.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"
#include "simlink/SimSource.h"

namespace {

void BM_LiveTickReads(benchmark::State& state) {
  orv::OffsetImage image;
  orv::ImagePartner partner(image);
  orv::ParkImage(image, 50.0333, 8.5706, 364, 250);
  std::vector<orv::TrafficEntry> traffic(10);
  std::vector<orv::TrafficExtEntry> ext(10);
  for (int i = 0; i < 10; ++i) {
    traffic[i].Id = 100 + i;
    traffic[i].Latitude = 50.0f + i * 0.01f;
    traffic[i].Longitude = 8.5f;
    traffic[i].Altitude = 3000.0f + 500 * i;
    std::memcpy(traffic[i].AtcId.data(), "DLH100", 6);
    std::memcpy(ext[i].Departure.data(), "EDDF", 4);
    std::memcpy(ext[i].Destination.data(), "EDDM", 4);
  }
  orv::PutTrafficTable(image, true, traffic, ext);
  orv::PutTrafficTable(image, false, traffic, ext);

  orv::FsuipcChannel ch(partner);
  int32_t code = 0;
  ch.IpcClearHandles();
  if (!ch.IpcOpen(0, code)) {
    state.SkipWithError("the partner refused the channel");
    return;
  }
  orv::SimSnapshot snap;
  orv::TrafficTable air, ground;
  for (auto _ : state) {
    benchmark::DoNotOptimize(orv::ReadLiveness(ch));
    orv::ReadSnapshot(ch, snap);
    orv::ReadAirTraffic(ch, air);
    orv::ReadGroundTraffic(ch, ground);
    benchmark::DoNotOptimize(snap.Latitude);
    benchmark::DoNotOptimize(air.Entries.data());
  }
  if (air.Entries.size() != 10 || ground.Entries.size() != 10) state.SkipWithError("traffic not read");
  state.counters["round_trips"] = 20;
}
BENCHMARK(BM_LiveTickReads)->Unit(benchmark::kMicrosecond);

}  // namespace
