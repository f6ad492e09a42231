// Arbitrary bytes as the simulator's traffic tables (head, extended entries
// and entries of both tables, 0xD040-0xFFFF): the reader checks every count
// and entry size, never keeps more slots than the tables' room, and whatever
// it keeps decodes to bounded texts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/SimData.h"

namespace {

class QuietPartner : public orv::ImagePartner {
 public:
  using ImagePartner::ImagePartner;
  void SleepMs(uint32_t) override {}
};

void Check(const orv::TrafficTable& table) {
  if (table.Entries.size() > orv::kTrafficMaxCount || table.Ext.size() != table.Entries.size()) std::abort();
  for (std::size_t i = 0; i < table.Entries.size(); ++i) {
    if (orv::TrafficAtcId(table.Entries[i]).size() > 16) std::abort();
    if (orv::TrafficRoute(table.Ext[i]).size() > 9) std::abort();
    orv::DecodeCom1Word(table.Entries[i].Com1);
    orv::TrafficHeadingDegrees(table.Entries[i]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::OffsetImage image;
  QuietPartner partner(image);
  orv::FsuipcChannel ch(partner);
  int32_t code = 0;
  ch.IpcClearHandles();
  if (!ch.IpcOpen(0, code)) std::abort();

  // The first bytes are the two heads (so that short inputs reach the
  // tables), the rest fills the tables from 0xD040.
  const size_t head = size < 18 ? size : 18;
  const size_t rest = size - head;
  const size_t room = 0x10000 - orv::fsoff::GroundTrafficExt;
  image.WriteBytes(orv::fsoff::GroundTrafficExt, data + head, rest < room ? rest : room);
  image.WriteBytes(orv::fsoff::AirTrafficHead, data, head < 9 ? head : 9);
  if (head > 9) image.WriteBytes(orv::fsoff::GroundTrafficHead, data + 9, head - 9);

  orv::TrafficTable table;
  orv::ReadAirTraffic(ch, table);
  Check(table);
  orv::ReadGroundTraffic(ch, table);
  Check(table);
  return 0;
}
