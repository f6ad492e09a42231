// The bridge's frame reader and request handling on hostile bytes: frames of
// any count, blocks with lying record sizes, streams cut anywhere.
#include <cstdint>
#include <cstring>
#include <vector>

#include "simlink/Bridge.h"
#include "simlink/ImagePartner.h"

namespace {

struct BufferSource : orv::FrameSource {
  const std::uint8_t* data;
  std::size_t size;
  std::size_t pos = 0;
  BufferSource(const std::uint8_t* d, std::size_t n) : data(d), size(n) {}
  orv::NetIo ReadExact(void* out, std::size_t n) override {
    if (size - pos < n) return orv::NetIo::Failed;
    std::memcpy(out, data + pos, n);
    pos += n;
    return orv::NetIo::Ok;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static orv::OffsetImage image;
  static orv::ImagePartner partner(image);
  static orv::FsuipcChannel channel(partner);
  static bool opened = [] {
    std::int32_t code = 0;
    channel.IpcClearHandles();
    return channel.IpcOpen(0, code);
  }();
  if (!opened) __builtin_trap();
  static orv::BridgeServer server(channel, [](const std::string&) {});

  BufferSource source(data, size);
  std::vector<std::uint8_t> frame;
  std::uint32_t count = 0;
  for (int frames = 0; frames < 8; ++frames) {
    if (orv::ReadFrame(source, orv::kIpcBlockSize, frame, count) != orv::FrameStatus::Ok) break;
    if (frame.size() != count || count > orv::kIpcBlockSize) __builtin_trap();
    const bool whole = count >= 4 && orv::BlockLength(frame.data(), count) == count;
    const std::vector<std::uint8_t> answer = server.Answer(frame.data(), count);
    // A whole block is answered at its own length; anything else with nothing.
    if (answer.size() != (whole ? count : 0)) __builtin_trap();
  }
  return 0;
}
