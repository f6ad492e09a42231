// The channel's platform on Windows: the real Win32 calls that find the
// FSUIPC module's window, register the message, publish the block's name as a
// global atom, create and map the pagefile-backed block and wake the module.
// Built only when the target is Windows (mingw-w64 here, run under Wine in the
// tests).
#pragma once

#ifdef _WIN32

#include "simlink/IpcPlatform.h"

namespace orv {

class Win32Platform : public IpcPlatform {
 public:
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
  std::uint32_t LastError() override;
  std::uint32_t ProcessId() override;
  void SleepMs(std::uint32_t ms) override;
};

}  // namespace orv

#endif  // _WIN32
