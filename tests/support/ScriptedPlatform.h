// A partner whose misbehaviour is scripted: missing windows and handles,
// failed and stalled sends, wrong answers and a hook that rewrites the block
// after the module answered (a lying partner). Otherwise it answers from its
// image as ImagePartner does. Sleeps are counted, not slept.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simlink/ImagePartner.h"

namespace orv::test {

class ScriptedPlatform : public ImagePartner {
 public:
  explicit ScriptedPlatform(OffsetImage& image) : ImagePartner(image) {}

  bool primaryWindow = true;
  bool fallbackWindow = false;
  bool noMessage = false;
  bool noAtom = false;
  bool mappingExists = false;
  bool noView = false;
  int failSends = 0;           // the next N sends fail
  std::uint32_t sendError = 0;  // LastError after a failed send (0: a time-out)
  std::optional<std::uint32_t> answer;                 // replaces the module's answer
  std::function<void(std::uint8_t* block)> tamper;    // runs after the module answered

  int sends = 0;
  std::vector<std::uint32_t> sleeps;
  std::vector<std::string> atomNames;
  int atomsDeleted = 0;

  std::uint8_t* Block() { return block_; }

  Handle FindWindowOfClass(std::string_view cls) override {
    if (cls == "UIPCMAIN") return primaryWindow ? kWindow : 0;
    if (cls == "FS98MAIN") return fallbackWindow ? kWindow : 0;
    return 0;
  }
  std::uint32_t RegisterMessage(std::string_view name) override {
    return noMessage ? 0 : ImagePartner::RegisterMessage(name);
  }
  std::uint16_t AddGlobalAtom(std::string_view name) override {
    atomNames.emplace_back(name);
    return noAtom ? 0 : ImagePartner::AddGlobalAtom(name);
  }
  void DeleteGlobalAtom(std::uint16_t atom) override {
    ++atomsDeleted;
    ImagePartner::DeleteGlobalAtom(atom);
  }
  Handle CreateBlockMapping(std::string_view name, std::uint32_t size) override {
    Handle h = ImagePartner::CreateBlockMapping(name, size);
    if (mappingExists) lastError_ = kErrorAlreadyExists;
    return h;
  }
  std::uint8_t* MapBlockView(Handle mapping) override {
    return noView ? nullptr : ImagePartner::MapBlockView(mapping);
  }
  bool SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                      std::uint32_t flags, std::uint32_t timeoutMs, std::uint32_t& result) override {
    ++sends;
    if (failSends > 0) {
      --failSends;
      lastError_ = sendError;
      return false;
    }
    bool ok = ImagePartner::SendIpcMessage(window, message, wParam, lParam, flags, timeoutMs, result);
    if (tamper) tamper(block_);
    if (answer) result = *answer;
    return ok;
  }
  void SleepMs(std::uint32_t ms) override { sleeps.push_back(ms); }
};

}  // namespace orv::test
