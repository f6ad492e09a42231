// The FSUIPC channel: the shared block, its wire format, the request queue,
// the round trip and the result codes. It knows nothing of what an offset
// means (SimData does) and nothing of who answers (IpcPlatform does).
//
// One channel object per link; it holds the state of the link and a reference
// to the platform, which must outlive it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simlink/IpcPlatform.h"

namespace orv {

// Result codes of the channel's operations.
enum IpcResult : std::int32_t {
  kIpcOk = 0,
  kIpcAlreadyOpen = 1,
  kIpcNoPartner = 2,
  kIpcNoMessage = 3,
  kIpcNoAtom = 4,
  kIpcMappingExists = 5,
  kIpcNoView = 6,
  kIpcVersionRefused = 7,
  kIpcWrongSimulator = 8,
  kIpcNotOpen = 9,
  kIpcNothingQueued = 10,
  kIpcTimedOut = 11,
  kIpcSendFailed = 12,
  kIpcBadAnswer = 13,
  kIpcVersionRefusedFallback = 14,
  kIpcTooLarge = 15,
};

// A few words on a result code, for messages of the CLI and the logs.
std::string_view IpcResultMeaning(std::int32_t code);

// Sizes and names of the block.
inline constexpr std::uint32_t kIpcBlockSize = 0x8000;     // the mapping
inline constexpr std::uint32_t kIpcRequestLimit = 0x7F00;  // requests and terminator
inline constexpr std::uint32_t kIpcReadHeader = 16;
inline constexpr std::uint32_t kIpcWriteHeader = 12;
inline constexpr std::string_view kIpcMessageName = "FSASMLIB:IPC";
inline constexpr std::string_view kIpcWindowClass = "UIPCMAIN";
inline constexpr std::string_view kIpcFallbackWindowClass = "FS98MAIN";
inline constexpr std::uint32_t kIpcSendTimeoutMs = 2000;
inline constexpr std::uint32_t kIpcSendFlags = 1;  // SMTO_BLOCK
inline constexpr std::int32_t kMinFsuipcVersion = 0x19980005;

// The name of the block for a process: "FSASMLIB:IPC:" + process id in
// upper-case hexadecimal + ":1".
std::string IpcBlockName(std::uint32_t processId);

class FsuipcChannel {
 public:
  explicit FsuipcChannel(IpcPlatform& platform);
  ~FsuipcChannel();
  FsuipcChannel(const FsuipcChannel&) = delete;
  FsuipcChannel& operator=(const FsuipcChannel&) = delete;

  // Forgets every handle without releasing anything; called before an open.
  void IpcClearHandles();
  // Finds the partner, publishes the block and checks the versions. On a
  // refusal LastIpcMessage() holds the " Msg #N" suffix of the connect message.
  bool IpcOpen(std::int32_t wantedVersion, std::int32_t& code);
  // Releases atom, view and mapping; harmless when closed.
  void IpcClose();
  // Queues a read of size bytes at offset; the bytes land in dest (which must
  // hold size bytes and stay valid until IpcProcess) only after a good
  // IpcProcess. A null dest queues a read that is answered but not copied.
  bool IpcQueueRead(std::uint32_t offset, std::uint32_t size, void* dest, std::int32_t& code);
  // Queues a write; the bytes are taken now, not at process time.
  bool IpcQueueWrite(std::uint32_t offset, std::uint32_t size, const void* src, std::int32_t& code);
  // Sends the queued batch and copies the answers to their destinations.
  bool IpcProcess(std::int32_t& code);

  bool IsOpen() const { return ViewBase != nullptr; }
  const std::string& LastIpcMessage() const { return lastIpcMessage_; }

  // State of the link, readable for status lines and tests.
  std::int32_t FsuipcVersion = 0;
  std::uint32_t SimVersion = 0;
  std::uint16_t LibVersion = 0;  // never assigned: 0 goes out at open
  IpcPlatform::Handle PartnerWindow = 0;
  std::uint32_t IpcMessageId = 0;
  std::uint16_t IpcAtom = 0;
  IpcPlatform::Handle MappingHandle = 0;
  std::uint8_t* ViewBase = nullptr;  // alone tells open from closed
  std::uint8_t* WritePos = nullptr;
  bool UsedFallbackWindow = false;

  IpcPlatform& Platform() { return platform_; }

 private:
  // The wire format carries a 32-bit destination that the partner hands back
  // untouched. A 64-bit address does not fit, so the field holds a token: the
  // index + 1 of the destination kept here for the current batch, with the
  // size the caller asked for. A partner that rewrites tokens or sizes can
  // never make the walk write outside a caller's buffer.
  struct Destination {
    void* address;
    std::uint32_t capacity;
  };

  bool Fail(std::string_view message);
  bool Send(std::uint32_t& result);
  bool WalkAnswer();

  IpcPlatform& platform_;
  std::string lastIpcMessage_;
  std::vector<Destination> destinations_;
};

}  // namespace orv
