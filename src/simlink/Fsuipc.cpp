#include "simlink/Fsuipc.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "simlink/OffsetImage.h"

namespace orv {

namespace {

constexpr std::uint32_t kFsuipcVersionOffset = 0x3304;
constexpr std::uint32_t kSimVersionOffset = 0x3308;
constexpr std::uint32_t kLibVersionOffset = 0x330A;
constexpr int kHandshakePasses = 5;
constexpr int kSendRetries = 10;
constexpr std::uint32_t kPauseMs = 100;

// At most this many records fit in the request limit (an empty read is the
// smallest record that carries a destination).
constexpr std::size_t kMaxDestinations = kIpcRequestLimit / kIpcReadHeader;

void Put32(std::uint8_t* p, std::uint32_t v) { OffsetImage::StoreLE<std::uint32_t>(p, v); }
std::uint32_t Get32(const std::uint8_t* p) { return OffsetImage::LoadLE<std::uint32_t>(p); }

}  // namespace

std::string_view IpcResultMeaning(std::int32_t code) {
  switch (code) {
    case kIpcOk: return "success";
    case kIpcAlreadyOpen: return "already open";
    case kIpcNoPartner: return "no partner window";
    case kIpcNoMessage: return "no registered message";
    case kIpcNoAtom: return "no atom";
    case kIpcMappingExists: return "mapping name already exists";
    case kIpcNoView: return "no view";
    case kIpcVersionRefused: return "versions refused, primary window";
    case kIpcWrongSimulator: return "not the wanted simulator";
    case kIpcNotOpen: return "channel not open";
    case kIpcNothingQueued: return "nothing queued";
    case kIpcTimedOut: return "send timed out";
    case kIpcSendFailed: return "send failed with a system error";
    case kIpcBadAnswer: return "partner answered other than 1";
    case kIpcVersionRefusedFallback: return "versions refused, fallback window";
    case kIpcTooLarge: return "request does not fit";
    default: return "unknown result";
  }
}

std::string IpcBlockName(std::uint32_t processId) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "FSASMLIB:IPC:%X:1", static_cast<unsigned>(processId));
  return buf;
}

FsuipcChannel::FsuipcChannel(IpcPlatform& platform) : platform_(platform) {
  destinations_.reserve(kMaxDestinations);
}

FsuipcChannel::~FsuipcChannel() { IpcClose(); }

void FsuipcChannel::IpcClearHandles() {
  PartnerWindow = 0;
  IpcMessageId = 0;
  IpcAtom = 0;
  MappingHandle = 0;
  ViewBase = nullptr;
  WritePos = nullptr;
  destinations_.clear();
}

bool FsuipcChannel::Fail(std::string_view message) {
  IpcClose();
  lastIpcMessage_ = message;
  return false;
}

bool FsuipcChannel::IpcOpen(std::int32_t wantedVersion, std::int32_t& code) {
  lastIpcMessage_.clear();
  UsedFallbackWindow = false;
  FsuipcVersion = 0;
  SimVersion = 0;

  if (ViewBase) {
    code = kIpcAlreadyOpen;
    lastIpcMessage_ = " Msg #1";
    return false;
  }

  PartnerWindow = platform_.FindWindowOfClass(kIpcWindowClass);
  if (!PartnerWindow) {
    PartnerWindow = platform_.FindWindowOfClass(kIpcFallbackWindowClass);
    if (PartnerWindow) UsedFallbackWindow = true;
  }
  if (!PartnerWindow) {
    code = kIpcNoPartner;
    lastIpcMessage_ = " Msg #2";
    return false;
  }

  IpcMessageId = platform_.RegisterMessage(kIpcMessageName);
  if (!IpcMessageId) {
    code = kIpcNoMessage;
    lastIpcMessage_ = " Msg #3";
    return false;
  }

  const std::string name = IpcBlockName(platform_.ProcessId());
  IpcAtom = platform_.AddGlobalAtom(name);
  if (!IpcAtom) {
    code = kIpcNoAtom;
    return Fail(" Msg #4");
  }

  // A mapping handle of 0 is not refused here: a failed creation shows only
  // when the view cannot be mapped.
  MappingHandle = platform_.CreateBlockMapping(name, kIpcBlockSize);
  if (platform_.LastError() == IpcPlatform::kErrorAlreadyExists) {
    code = kIpcMappingExists;
    return Fail(" Msg #5");
  }

  ViewBase = platform_.MapBlockView(MappingHandle);
  if (!ViewBase) {
    code = kIpcNoView;
    return Fail(" Msg #6");
  }
  WritePos = ViewBase;

  // The module may need a few passes before it has both words ready.
  int passes = 0;
  while (passes < kHandshakePasses && !(FsuipcVersion != 0 && SimVersion != 0)) {
    ++passes;
    if (!IpcQueueRead(kFsuipcVersionOffset, 4, &FsuipcVersion, code)) return Fail(" Msg #7");
    if (!IpcQueueRead(kSimVersionOffset, 4, &SimVersion, code)) return Fail(" Msg #8");
    if (!IpcQueueWrite(kLibVersionOffset, 2, &LibVersion, code) && passes == 1) return Fail(" Msg #9");
    if (!IpcProcess(code)) return Fail(" Msg #10");
    platform_.SleepMs(kPauseMs);
  }

  if (FsuipcVersion < kMinFsuipcVersion || (SimVersion >> 16) != 0xFADE) {
    code = UsedFallbackWindow ? kIpcVersionRefusedFallback : kIpcVersionRefused;
    return Fail(" Msg #11");
  }

  SimVersion &= 0xFFFF;
  if (wantedVersion == 0 || static_cast<std::uint32_t>(wantedVersion) == SimVersion) {
    code = kIpcOk;
    return true;
  }
  code = kIpcWrongSimulator;
  return Fail(" Msg #12");
}

void FsuipcChannel::IpcClose() {
  PartnerWindow = 0;
  IpcMessageId = 0;
  WritePos = nullptr;
  destinations_.clear();
  if (IpcAtom) {
    platform_.DeleteGlobalAtom(IpcAtom);
    IpcAtom = 0;
  }
  if (ViewBase) {
    platform_.UnmapBlockView(ViewBase);
    ViewBase = nullptr;
  }
  if (MappingHandle) {
    platform_.CloseMapping(MappingHandle);
    MappingHandle = 0;
  }
}

bool FsuipcChannel::IpcQueueRead(std::uint32_t offset, std::uint32_t size, void* dest, std::int32_t& code) {
  if (!ViewBase) {
    code = kIpcNotOpen;
    return false;
  }
  const std::uint64_t used = static_cast<std::uint64_t>(WritePos - ViewBase) + 4 + size + kIpcReadHeader;
  if (used > kIpcRequestLimit) {
    code = kIpcTooLarge;
    return false;
  }
  std::uint32_t token = 0;
  if (dest) {
    destinations_.push_back({dest, size});
    token = static_cast<std::uint32_t>(destinations_.size());
  }
  Put32(WritePos, 1);
  Put32(WritePos + 4, offset);
  Put32(WritePos + 8, size);
  Put32(WritePos + 12, token);
  WritePos += kIpcReadHeader;
  if (size) std::memset(WritePos, 0, size);
  WritePos += size;
  code = kIpcOk;
  return true;
}

bool FsuipcChannel::IpcQueueWrite(std::uint32_t offset, std::uint32_t size, const void* src, std::int32_t& code) {
  if (!ViewBase) {
    code = kIpcNotOpen;
    return false;
  }
  const std::uint64_t used = static_cast<std::uint64_t>(WritePos - ViewBase) + 4 + size + kIpcWriteHeader;
  if (used > kIpcRequestLimit) {
    code = kIpcTooLarge;
    return false;
  }
  Put32(WritePos, 2);
  Put32(WritePos + 4, offset);
  Put32(WritePos + 8, size);
  WritePos += kIpcWriteHeader;
  if (size) {
    if (src)
      std::memcpy(WritePos, src, size);
    else
      std::memset(WritePos, 0, size);
  }
  WritePos += size;
  code = kIpcOk;
  return true;
}

bool FsuipcChannel::Send(std::uint32_t& result) {
  return platform_.SendIpcMessage(PartnerWindow, IpcMessageId, IpcAtom, 0, kIpcSendFlags, kIpcSendTimeoutMs,
                                  result);
}

bool FsuipcChannel::IpcProcess(std::int32_t& code) {
  if (!ViewBase) {
    code = kIpcNotOpen;
    return false;
  }
  if (WritePos == ViewBase) {
    code = kIpcNothingQueued;
    return false;
  }
  Put32(WritePos, 0);
  WritePos = ViewBase;

  std::uint32_t result = 0;
  if (!Send(result)) {
    // The test after the loop looks at the count alone: a send that first
    // succeeds on the tenth retry is still a failure.
    int retries = 0;
    while (retries < kSendRetries) {
      ++retries;
      platform_.SleepMs(kPauseMs);
      if (Send(result)) break;
    }
    if (retries >= kSendRetries) {
      code = platform_.LastError() != 0 ? kIpcSendFailed : kIpcTimedOut;
      destinations_.clear();
      return false;
    }
  }
  if (result != 1) {
    code = kIpcBadAnswer;
    destinations_.clear();
    return false;
  }
  const bool walked = WalkAnswer();
  destinations_.clear();
  WritePos = ViewBase;
  if (walked) code = kIpcOk;
  return walked;
}

// Walks the answered block: reads hand their data to their destinations,
// writes are stepped over, the terminator ends the walk. Only the first two
// bytes of a record's type are looked at. Whatever the partner wrote back,
// the walk stays inside the block and inside each destination: a record that
// would leave the block ends the walk as an unknown type does.
bool FsuipcChannel::WalkAnswer() {
  const std::uint8_t* block = ViewBase;
  std::uint64_t pos = 0;
  for (;;) {
    if (pos + 2 > kIpcBlockSize) return false;
    const auto type = OffsetImage::LoadLE<std::int16_t>(block + pos);
    if (type == 0) return true;
    if (type == 1) {
      if (pos + kIpcReadHeader > kIpcBlockSize) return false;
      const std::uint64_t size = Get32(block + pos + 8);
      const std::uint32_t token = Get32(block + pos + 12);
      if (size > kIpcBlockSize - pos - kIpcReadHeader) return false;
      if (token != 0 && size != 0 && token <= destinations_.size()) {
        const Destination& d = destinations_[token - 1];
        const std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(size, d.capacity));
        if (n) std::memcpy(d.address, block + pos + kIpcReadHeader, n);
      }
      pos += kIpcReadHeader + size;
    } else if (type == 2) {
      if (pos + kIpcWriteHeader > kIpcBlockSize) return false;
      const std::uint64_t size = Get32(block + pos + 8);
      if (size > kIpcBlockSize - pos - kIpcWriteHeader) return false;
      pos += kIpcWriteHeader + size;
    } else {
      return false;
    }
  }
}

}  // namespace orv
