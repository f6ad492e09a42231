// The network bridge to the FSUIPC channel of a Windows machine.
//
// orvanta-fsbridge.exe opens the channel beside the simulator and serves it
// over TCP; BridgeClient is the channel's platform on the other side, whose
// "send the message" is one framed round trip. Framing, both ways: a 32-bit
// little-endian byte count, then that many bytes of a block in the channel's
// wire format (records, then the 32-bit zero). A request that the bridge could
// not send is answered with a count of 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "simlink/Fsuipc.h"
#include "simlink/NetSocket.h"

namespace orv {

inline constexpr std::uint16_t kBridgeDefaultPort = 9020;
inline constexpr const char* kBridgeDefaultAddress = "127.0.0.1";

// The bytes of a block up to and including its terminator: its records walked
// as the module walks them. 0 when the records leave the size given or an
// unknown type comes before the terminator.
std::size_t BlockLength(const std::uint8_t* block, std::size_t size);

// Where a frame's bytes come from: a socket with a deadline, or a buffer in
// the fuzzer. Gives Ok when all size bytes came.
class FrameSource {
 public:
  virtual ~FrameSource() = default;
  virtual NetIo ReadExact(void* data, std::size_t size) = 0;
};

enum class FrameStatus {
  Ok,        // a frame of count bytes is in the buffer
  Closed,    // the peer went away before a count
  TimedOut,
  Failed,    // a socket error or the peer left in the middle of a frame
  TooLong,   // a count above the limit: the stream cannot be trusted further
};

// Reads one frame into out (resized to the count). Nothing beyond limit bytes
// is ever read into out; a count above it is refused before any byte of it.
FrameStatus ReadFrame(FrameSource& source, std::uint32_t limit, std::vector<std::uint8_t>& out,
                      std::uint32_t& count);

// A frame's bytes: the count, then the data.
std::vector<std::uint8_t> EncodeFrame(const std::uint8_t* data, std::uint32_t count);

// Reads a frame from a socket before a deadline.
class SocketFrameSource : public FrameSource {
 public:
  SocketFrameSource(NetSocket& socket, NetDeadline deadline) : socket_(socket), deadline_(deadline) {}
  NetIo ReadExact(void* data, std::size_t size) override { return RecvAll(socket_, data, size, deadline_); }

 private:
  NetSocket& socket_;
  NetDeadline deadline_;
};

// The serving side, over an open channel: each request block goes into the
// channel's view, the channel's partner is woken with the channel's message
// and atom, and the view is answered. One client at a time; a client that
// leaves or misbehaves is dropped and the next one is awaited.
class BridgeServer {
 public:
  // The channel must be open and outlive the server. log gets one line per
  // client and per refusal.
  BridgeServer(FsuipcChannel& channel, std::function<void(const std::string&)> log);

  // Listens; false with the reason in error (a port already in use, ...).
  bool Listen(const std::string& address, std::uint16_t port, std::string& error);
  std::uint16_t Port() const { return LocalPortOf(); }

  // Serves clients until the deadline (bounded so that a test's bridge stops
  // by itself) or until stop() gives true; checked between frames.
  void Serve(NetDeadline until, const std::function<bool()>& stop = {});

  // Handles one request block in place: the answer to send back, empty for a
  // failed send (answered with a count of 0). Exposed for tests and fuzzing.
  std::vector<std::uint8_t> Answer(const std::uint8_t* block, std::uint32_t count);

  std::uint64_t FramesServed() const { return frames_; }

 private:
  std::uint16_t LocalPortOf() const;
  bool Reopen();
  static constexpr std::uint32_t kReopenEveryMs = 2000;
  void ServeClient(NetSocket& client, NetDeadline until, const std::function<bool()>& stop);

  FsuipcChannel& channel_;
  std::function<void(const std::string&)> log_;
  NetSocket listener_;
  std::uint64_t frames_ = 0;
  NetClock::time_point lastAnswer_{};
  NetClock::duration sendTime_{};
  NetClock::time_point nextReopen_{};
};

// The channel's platform over the bridge. The partner's window "exists" when
// the bridge takes the connection (a refused connection is " Msg #2"); the
// block is a buffer here, sent and answered as one frame each round trip
// within the channel's time-out (a time-out gives code 11). The connection is
// made again at the next round trip after it was lost.
class BridgeClient : public IpcPlatform {
 public:
  BridgeClient(std::string host, std::uint16_t port);

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
  std::uint32_t ProcessId() override { return 1; }
  void SleepMs(std::uint32_t ms) override;

  // LastError after the bridge answered a count of 0 (its send failed).
  static constexpr std::uint32_t kRemoteSendFailed = 0xB00C;
  // LastError after the bridge broke the framing (a count above the block).
  static constexpr std::uint32_t kBadFrame = 13;  // ERROR_INVALID_DATA
  // Words on the last failure, for logs and the CLI.
  const std::string& LastFailure() const { return lastFailure_; }

 private:
  static constexpr Handle kWindow = 0xB1D6;
  static constexpr std::uint32_t kMessageId = 0xC0DE;
  static constexpr Handle kMapping = 0xB10C;

  bool Connect(NetDeadline deadline);
  bool Fail(std::uint32_t error, std::string words);

  std::string host_;
  std::uint16_t port_;
  NetSocket socket_;
  std::uint32_t lastError_ = 0;
  std::string lastFailure_;
  std::uint16_t atom_ = 0;
  bool mapped_ = false;
  std::vector<std::uint8_t> block_;
};

}  // namespace orv
