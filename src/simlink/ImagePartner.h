// A partner in this process: it plays the FSUIPC module for the channel and
// answers each block from an OffsetImage. Reads are filled from the image,
// writes are applied to it, the version words at 0x3304 and 0x3308 are the
// module's own, and the traffic tables at 0xD040-0xFFFF are whatever the
// image holds. Every simulator source that is not FSUIPC is such a partner
// over an image kept fresh by its adapter.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "simlink/IpcPlatform.h"
#include "simlink/OffsetImage.h"

namespace orv {

class Clock;

// The module's answers to the channel's handshake: FSUIPC 3.99 on FS X.
inline constexpr std::uint32_t kPartnerFsuipcVersion = 0x39990000;
inline constexpr std::uint32_t kPartnerSimWord = 0xFADE0008;

class ImagePartner : public IpcPlatform {
 public:
  // The image must outlive the partner. When an adapter writes the image from
  // another thread it passes the lock it writes under; the partner holds it
  // while it answers a block. The channel's pauses go to the clock when one
  // is given (simulated time), else they are slept.
  explicit ImagePartner(OffsetImage& image, std::mutex* imageLock = nullptr, Clock* clock = nullptr);

  Handle FindWindowOfClass(std::string_view className) override;
  std::uint32_t RegisterMessage(std::string_view name) override;
  std::uint16_t AddGlobalAtom(std::string_view name) override;
  void DeleteGlobalAtom(std::uint16_t atom) override;
  Handle CreateBlockMapping(std::string_view name, std::uint32_t size) override;
  std::uint8_t* MapBlockView(Handle mapping) override;
  void UnmapBlockView(std::uint8_t* view) override;
  void CloseMapping(Handle mapping) override;
  bool SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                      std::uint32_t flags, std::uint32_t timeoutMs, std::uint32_t& result) override;
  std::uint32_t LastError() override { return lastError_; }
  std::uint32_t ProcessId() override;
  void SleepMs(std::uint32_t ms) override;

  OffsetImage& Image() { return image_; }
  // The library version the client wrote to 0x330A at open; -1 before.
  std::int32_t LibraryVersion() const { return libraryVersion_; }

  // Answers one block as the module does, in place: fills reads, applies
  // writes, stops at the terminator. False for a block it cannot walk (an
  // unknown record type or a record leaving the block). Public so that a
  // bridge server can answer a block it received.
  bool AnswerBlock(std::uint8_t* block, std::size_t size);

 protected:
  static constexpr Handle kWindow = 0x5150;
  static constexpr std::uint32_t kMessageId = 0xC0DE;
  static constexpr Handle kMappingHandle = 0x4D41;

  OffsetImage& image_;
  std::mutex* imageLock_;
  Clock* clock_;
  std::uint32_t lastError_ = 0;
  std::int32_t libraryVersion_ = -1;
  std::string atomName_;
  std::uint16_t atom_ = 0;
  std::string mappingName_;
  bool mappingOpen_ = false;
  int views_ = 0;
  alignas(8) std::uint8_t block_[0x8000] = {};
};

// Sets the module's version words into an image (done by the partner's
// constructor; exposed for adapters that clear their image).
void PutModuleVersions(OffsetImage& image);

}  // namespace orv
