#include "simlink/ImagePartner.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <thread>

#include "core/Clock.h"
#include "simlink/Fsuipc.h"

namespace orv {

namespace {

// 0x3304..0x330B are the module's own: its version, the simulator's version
// and the 0xFADE mark. A client's write to 0x330A tells the module its
// library version and leaves the mark in place.
constexpr std::uint32_t kVersionWordsStart = 0x3304;
constexpr std::uint32_t kVersionWordsEnd = 0x330C;
constexpr std::uint32_t kLibVersionOffset = 0x330A;
constexpr std::uint32_t kProcessId = 0x0A11;

std::uint32_t Get32(const std::uint8_t* p) { return OffsetImage::LoadLE<std::uint32_t>(p); }

}  // namespace

void PutModuleVersions(OffsetImage& image) {
  image.Put<std::uint32_t>(0x3304, kPartnerFsuipcVersion);
  image.Put<std::uint32_t>(0x3308, kPartnerSimWord);
}

ImagePartner::ImagePartner(OffsetImage& image, std::mutex* imageLock, Clock* clock)
    : image_(image), imageLock_(imageLock), clock_(clock) {
  if (imageLock_) {
    std::lock_guard<std::mutex> lock(*imageLock_);
    PutModuleVersions(image_);
  } else {
    PutModuleVersions(image_);
  }
}

IpcPlatform::Handle ImagePartner::FindWindowOfClass(std::string_view className) {
  return className == kIpcWindowClass ? kWindow : 0;
}

std::uint32_t ImagePartner::RegisterMessage(std::string_view name) {
  return name == kIpcMessageName ? kMessageId : 0;
}

std::uint16_t ImagePartner::AddGlobalAtom(std::string_view name) {
  // One client, one atom; adding the same name again gives the same atom.
  if (atom_ && name != atomName_) return 0;
  atomName_ = name;
  atom_ = 0xC001;
  return atom_;
}

void ImagePartner::DeleteGlobalAtom(std::uint16_t atom) {
  if (atom == atom_) {
    atom_ = 0;
    atomName_.clear();
  }
}

IpcPlatform::Handle ImagePartner::CreateBlockMapping(std::string_view name, std::uint32_t size) {
  if (size > sizeof block_) {
    lastError_ = 8;  // not enough memory
    return 0;
  }
  if (mappingOpen_ && name == mappingName_) {
    lastError_ = kErrorAlreadyExists;
    return kMappingHandle;
  }
  if (mappingOpen_) {
    lastError_ = 8;
    return 0;
  }
  lastError_ = 0;
  mappingOpen_ = true;
  mappingName_ = name;
  std::memset(block_, 0, sizeof block_);
  return kMappingHandle;
}

std::uint8_t* ImagePartner::MapBlockView(Handle mapping) {
  if (mapping != kMappingHandle || !mappingOpen_) {
    lastError_ = 6;  // invalid handle
    return nullptr;
  }
  ++views_;
  return block_;
}

void ImagePartner::UnmapBlockView(std::uint8_t* view) {
  if (view == block_ && views_ > 0) --views_;
}

void ImagePartner::CloseMapping(Handle mapping) {
  if (mapping == kMappingHandle) {
    mappingOpen_ = false;
    mappingName_.clear();
  }
}

bool ImagePartner::SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t,
                                  std::uint32_t, std::uint32_t, std::uint32_t& result) {
  if (window != kWindow || message != kMessageId) {
    lastError_ = 1400;  // invalid window handle
    return false;
  }
  lastError_ = 0;
  // The module looks the block up by the atom's name; an unknown atom or a
  // block nobody maps is a message it does not understand.
  if (!atom_ || wParam != atom_ || !mappingOpen_ || atomName_ != mappingName_ || views_ == 0) {
    result = 0;
    return true;
  }
  bool ok;
  if (imageLock_) {
    std::lock_guard<std::mutex> lock(*imageLock_);
    ok = AnswerBlock(block_, sizeof block_);
  } else {
    ok = AnswerBlock(block_, sizeof block_);
  }
  result = ok ? 1 : 0;
  return true;
}

std::uint32_t ImagePartner::ProcessId() { return kProcessId; }

void ImagePartner::SleepMs(std::uint32_t ms) {
  if (clock_)
    clock_->Sleep(static_cast<int>(ms));
  else
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

bool ImagePartner::AnswerBlock(std::uint8_t* block, std::size_t size) {
  std::uint64_t pos = 0;
  for (;;) {
    if (pos + 4 > size) return false;
    const std::uint32_t type = Get32(block + pos);
    if (type == 0) return true;
    if (type != 1 && type != 2) return false;
    const std::uint64_t header = type == 1 ? kIpcReadHeader : kIpcWriteHeader;
    if (pos + header > size) return false;
    const std::uint32_t offset = Get32(block + pos + 4);
    const std::uint64_t count = Get32(block + pos + 8);
    if (count > size - pos - header) return false;
    std::uint8_t* data = block + pos + header;
    // The part of the request that lies in the address space; what lies
    // beyond it reads as zero and is not written.
    const std::uint64_t inside =
        offset >= OffsetImage::kSize ? 0 : std::min<std::uint64_t>(count, OffsetImage::kSize - offset);
    if (type == 1) {
      image_.ReadBytes(offset, data, static_cast<std::size_t>(inside));
      if (count > inside) std::memset(data + inside, 0, static_cast<std::size_t>(count - inside));
    } else {
      if (offset <= kLibVersionOffset && offset + count >= kLibVersionOffset + 2)
        libraryVersion_ = OffsetImage::LoadLE<std::uint16_t>(data + (kLibVersionOffset - offset));
      for (std::uint64_t i = 0; i < inside; ++i) {
        const std::uint64_t at = offset + i;
        if (at >= kVersionWordsStart && at < kVersionWordsEnd) continue;  // read-only
        image_.Data()[at] = data[i];
      }
    }
    pos += header + count;
  }
}

}  // namespace orv
