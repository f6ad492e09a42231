// A partner that writes arbitrary bytes back into the shared block: the
// channel's walk of the answer never reads or writes outside the block or
// outside a caller's buffer, and a refused walk leaves the queue empty.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"

namespace {

class HostilePartner : public orv::ImagePartner {
 public:
  HostilePartner(orv::OffsetImage& image, const uint8_t* data, size_t size)
      : ImagePartner(image), data_(data), size_(size) {}
  bool hostile = false;

  bool SendIpcMessage(Handle window, uint32_t message, uintptr_t wParam, intptr_t lParam, uint32_t flags,
                      uint32_t timeoutMs, uint32_t& result) override {
    bool ok = ImagePartner::SendIpcMessage(window, message, wParam, lParam, flags, timeoutMs, result);
    if (hostile) {
      // The fuzz bytes overwrite the answer from its start; beyond them the
      // module's own answer shows through.
      std::memcpy(block_, data_, size_ < sizeof block_ ? size_ : sizeof block_);
      result = 1;
    }
    return ok;
  }
  void SleepMs(uint32_t) override {}

 private:
  const uint8_t* data_;
  size_t size_;
};

struct Guarded {
  uint8_t before[16];
  uint8_t value[40];
  uint8_t after[16];
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::OffsetImage image;
  HostilePartner partner(image, data, size);
  orv::FsuipcChannel ch(partner);
  int32_t code = 0;
  ch.IpcClearHandles();
  if (!ch.IpcOpen(0, code)) std::abort();
  partner.hostile = true;

  Guarded g[3];
  std::memset(g, 0xA5, sizeof g);
  ch.IpcQueueRead(0x0560, 36, g[0].value, code);
  ch.IpcQueueWrite(0x07CC, 2, "\x01\x02", code);
  ch.IpcQueueRead(0x3304, 4, g[1].value, code);
  ch.IpcQueueRead(0xFFF0, 40, g[2].value, code);
  ch.IpcQueueRead(0x0000, 0, nullptr, code);
  ch.IpcProcess(code);
  for (const Guarded& one : g)
    for (int i = 0; i < 16; ++i)
      if (one.before[i] != 0xA5 || one.after[i] != 0xA5) std::abort();
  if (ch.WritePos != ch.ViewBase) std::abort();
  // The channel stays usable for the next batch.
  uint32_t word = 0;
  if (!ch.IpcQueueRead(0x3304, 4, &word, code)) std::abort();
  ch.IpcProcess(code);
  return 0;
}
