#include "simlink/Bridge.h"

#include <chrono>
#include <cstring>
#include <thread>

#include "simlink/OffsetImage.h"

namespace orv {

namespace {

std::uint32_t Get32(const std::uint8_t* p) { return OffsetImage::LoadLE<std::uint32_t>(p); }

// How long the server waits for the rest of a frame once its count came, and
// for a client between frames before it looks at its stop condition again.
constexpr std::uint32_t kFrameBodyMs = 2000;
constexpr std::uint32_t kIdlePollMs = 250;

}  // namespace

std::size_t BlockLength(const std::uint8_t* block, std::size_t size) {
  std::uint64_t pos = 0;
  for (;;) {
    if (pos + 4 > size) return 0;
    const std::uint32_t type = Get32(block + pos);
    if (type == 0) return static_cast<std::size_t>(pos + 4);
    if (type != 1 && type != 2) return 0;
    const std::uint64_t header = type == 1 ? kIpcReadHeader : kIpcWriteHeader;
    if (pos + header > size) return 0;
    const std::uint64_t count = Get32(block + pos + 8);
    if (count > size - pos - header) return 0;
    pos += header + count;
  }
}

FrameStatus ReadFrame(FrameSource& source, std::uint32_t limit, std::vector<std::uint8_t>& out,
                      std::uint32_t& count) {
  count = 0;
  std::uint8_t head[4];
  switch (source.ReadExact(head, 4)) {
    case NetIo::Ok: break;
    case NetIo::Closed: return FrameStatus::Closed;
    case NetIo::TimedOut: return FrameStatus::TimedOut;
    case NetIo::Failed: return FrameStatus::Failed;
  }
  count = Get32(head);
  if (count > limit) return FrameStatus::TooLong;
  out.assign(count, 0);
  if (count == 0) return FrameStatus::Ok;
  switch (source.ReadExact(out.data(), count)) {
    case NetIo::Ok: return FrameStatus::Ok;
    case NetIo::TimedOut: return FrameStatus::TimedOut;
    default: return FrameStatus::Failed;
  }
}

std::vector<std::uint8_t> EncodeFrame(const std::uint8_t* data, std::uint32_t count) {
  std::vector<std::uint8_t> frame(4 + static_cast<std::size_t>(count));
  OffsetImage::StoreLE<std::uint32_t>(frame.data(), count);
  if (count) std::memcpy(frame.data() + 4, data, count);
  return frame;
}

// --- The serving side -----------------------------------------------------------

BridgeServer::BridgeServer(FsuipcChannel& channel, std::function<void(const std::string&)> log)
    : channel_(channel), log_(std::move(log)) {}

bool BridgeServer::Listen(const std::string& address, std::uint16_t port, std::string& error) {
  listener_ = TcpListen(address, port, error);
  return listener_.Valid();
}

std::uint16_t BridgeServer::LocalPortOf() const { return LocalPort(listener_); }

std::vector<std::uint8_t> BridgeServer::Answer(const std::uint8_t* block, std::uint32_t count) {
  // Only whole blocks go to the module: records that end exactly at the count
  // with their terminator, inside the block's room.
  if (count > kIpcBlockSize || count < 4 || BlockLength(block, count) != count) return {};
  if (!channel_.IsOpen() && !Reopen()) return {};
  std::memcpy(channel_.ViewBase, block, count);
  std::uint32_t result = 0;
  const auto start = NetClock::now();
  const bool sent = channel_.Platform().SendIpcMessage(channel_.PartnerWindow, channel_.IpcMessageId,
                                                       channel_.IpcAtom, 0, kIpcSendFlags, kIpcSendTimeoutMs, result);
  sendTime_ += NetClock::now() - start;
  if (!sent) {
    // The simulator went away (or is restarting): the channel is opened again
    // at a later frame, so that the bridge outlives the simulator.
    log_("the simulator does not answer; the channel is closed");
    channel_.IpcClose();
    return {};
  }
  if (result != 1) return {};
  return std::vector<std::uint8_t>(channel_.ViewBase, channel_.ViewBase + count);
}

bool BridgeServer::Reopen() {
  const auto now = NetClock::now();
  if (now < nextReopen_) return false;
  nextReopen_ = now + std::chrono::milliseconds(kReopenEveryMs);
  channel_.IpcClearHandles();
  std::int32_t code = 0;
  if (!channel_.IpcOpen(0, code)) return false;
  log_("the channel is open again");
  return true;
}

void BridgeServer::Serve(NetDeadline until, const std::function<bool()>& stop) {
  while (NetClock::now() < until && !(stop && stop())) {
    NetSocket client = TcpAccept(listener_, std::min(until, DeadlineIn(kIdlePollMs)));
    if (!client.Valid()) continue;
    log_("client connected");
    const std::uint64_t before = frames_;
    const auto start = NetClock::now();
    sendTime_ = {};
    ServeClient(client, until, stop);
    // The time from the connection to the last answer, for the round trip
    // figure of the Wine test.
    const auto us = std::chrono::duration_cast<std::chrono::microseconds>(lastAnswer_ - start).count();
    const std::uint64_t n = frames_ - before;
    log_("client done after " + std::to_string(n) + " frames in " + std::to_string(n ? us / 1000 : 0) + " ms, " +
         std::to_string(n ? us / static_cast<long long>(n) : 0) + " us each, of which " +
         std::to_string(n ? std::chrono::duration_cast<std::chrono::microseconds>(sendTime_).count() /
                                static_cast<long long>(n)
                          : 0) +
         " us in the message to the simulator");
  }
}

void BridgeServer::ServeClient(NetSocket& client, NetDeadline until, const std::function<bool()>& stop) {
  std::vector<std::uint8_t> request;
  while (NetClock::now() < until && !(stop && stop())) {
    // The count is awaited briefly, so that the stop condition is seen; the
    // rest of a frame whose count came must follow within the frame time.
    std::uint8_t head[4];
    const NetIo io = RecvAll(client, head, 1, std::min(until, DeadlineIn(kIdlePollMs)));
    if (io == NetIo::TimedOut) continue;
    if (io != NetIo::Ok) {
      log_("client left");
      return;
    }
    struct Rest : FrameSource {
      NetSocket& s;
      std::uint8_t first;
      bool given = false;
      NetDeadline deadline;
      Rest(NetSocket& socket, std::uint8_t b, NetDeadline d) : s(socket), first(b), deadline(d) {}
      NetIo ReadExact(void* data, std::size_t size) override {
        auto* p = static_cast<std::uint8_t*>(data);
        if (!given && size > 0) {
          given = true;
          p[0] = first;
          ++p;
          --size;
        }
        return size ? RecvAll(s, p, size, deadline) : NetIo::Ok;
      }
    } source(client, head[0], DeadlineIn(kFrameBodyMs));
    std::uint32_t count = 0;
    const FrameStatus status = ReadFrame(source, kIpcBlockSize, request, count);
    if (status == FrameStatus::TooLong) {
      log_("client refused: a frame of " + std::to_string(count) + " bytes is longer than the block of " +
           std::to_string(kIpcBlockSize));
      return;
    }
    if (status != FrameStatus::Ok) {
      log_(status == FrameStatus::TimedOut ? "client refused: a frame stopped short" : "client left");
      return;
    }
    const std::vector<std::uint8_t> answer = Answer(request.data(), count);
    const std::vector<std::uint8_t> frame = EncodeFrame(answer.data(), static_cast<std::uint32_t>(answer.size()));
    if (SendAll(client, frame.data(), frame.size(), DeadlineIn(kFrameBodyMs)) != NetIo::Ok) {
      log_("client left");
      return;
    }
    ++frames_;
    lastAnswer_ = NetClock::now();
  }
}

// --- The client side --------------------------------------------------------------

BridgeClient::BridgeClient(std::string host, std::uint16_t port) : host_(std::move(host)), port_(port) {}

bool BridgeClient::Fail(std::uint32_t error, std::string words) {
  lastError_ = error;
  lastFailure_ = std::move(words);
  return false;
}

bool BridgeClient::Connect(NetDeadline deadline) {
  if (socket_.Valid()) return true;
  int error = 0;
  socket_ = TcpConnect(host_, port_, deadline, error);
  if (!socket_.Valid()) {
    Fail(static_cast<std::uint32_t>(error), "no bridge at " + host_ + ":" + std::to_string(port_) + " (" +
                                                NetErrorText(error) + ")");
    return false;
  }
  return true;
}

IpcPlatform::Handle BridgeClient::FindWindowOfClass(std::string_view className) {
  // The bridge stands for the module's main window; there is no second class.
  if (className != kIpcWindowClass) return 0;
  return Connect(DeadlineIn(kIpcSendTimeoutMs)) ? kWindow : 0;
}

std::uint32_t BridgeClient::RegisterMessage(std::string_view name) { return name == kIpcMessageName ? kMessageId : 0; }

std::uint16_t BridgeClient::AddGlobalAtom(std::string_view) {
  atom_ = 0xC001;
  return atom_;
}

void BridgeClient::DeleteGlobalAtom(std::uint16_t atom) {
  if (atom == atom_) atom_ = 0;
}

IpcPlatform::Handle BridgeClient::CreateBlockMapping(std::string_view, std::uint32_t size) {
  lastError_ = 0;
  block_.assign(size, 0);
  return kMapping;
}

std::uint8_t* BridgeClient::MapBlockView(Handle mapping) {
  if (mapping != kMapping || block_.empty()) return nullptr;
  mapped_ = true;
  return block_.data();
}

void BridgeClient::UnmapBlockView(std::uint8_t*) { mapped_ = false; }

void BridgeClient::CloseMapping(Handle mapping) {
  if (mapping == kMapping) {
    block_.clear();
    socket_.Close();
  }
}

bool BridgeClient::SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t, std::intptr_t, std::uint32_t,
                                  std::uint32_t timeoutMs, std::uint32_t& result) {
  result = 0;
  if (window != kWindow || message != kMessageId || !mapped_) return Fail(1400, "channel not open");
  const NetDeadline deadline = DeadlineIn(timeoutMs);
  if (!Connect(deadline)) return false;
  const std::size_t length = BlockLength(block_.data(), block_.size());
  if (length == 0) return Fail(kBadFrame, "the block has no terminator");

  const std::vector<std::uint8_t> frame = EncodeFrame(block_.data(), static_cast<std::uint32_t>(length));
  NetIo io = SendAll(socket_, frame.data(), frame.size(), deadline);
  std::vector<std::uint8_t> answer;
  std::uint32_t count = 0;
  FrameStatus status = FrameStatus::Failed;
  if (io == NetIo::Ok) {
    SocketFrameSource source(socket_, deadline);
    status = ReadFrame(source, kIpcBlockSize, answer, count);
  } else if (io == NetIo::TimedOut) {
    status = FrameStatus::TimedOut;
  }
  switch (status) {
    case FrameStatus::Ok: break;
    case FrameStatus::TimedOut:
      // A late answer would be taken for the next one: the stream goes.
      socket_.Close();
      return Fail(0, "the bridge did not answer within " + std::to_string(timeoutMs) + " ms");
    case FrameStatus::TooLong:
      socket_.Close();
      return Fail(kBadFrame, "the bridge answered a frame of " + std::to_string(count) + " bytes, longer than the block");
    case FrameStatus::Closed:
    case FrameStatus::Failed:
      socket_.Close();
      return Fail(10054, "the bridge closed the connection");
  }
  if (count == 0) return Fail(kRemoteSendFailed, "the bridge could not reach the simulator");
  // The answer replaces the block's first bytes; an answer shorter than the
  // request leaves the rest as it was sent, and the channel's walk stays
  // inside the block whatever came.
  std::memcpy(block_.data(), answer.data(), count);
  lastError_ = 0;
  result = 1;
  return true;
}

void BridgeClient::SleepMs(std::uint32_t ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

}  // namespace orv
