// The operating-system side of the FSUIPC channel: the handful of calls the
// channel makes to find its partner, publish the shared block and wake the
// partner. On Windows these are the Win32 calls named beside each operation;
// elsewhere a partner in this process (ImagePartner) or a bridge to a Windows
// machine stands in. The channel never knows which one answers.
#pragma once

#include <cstdint>
#include <string_view>

namespace orv {

class IpcPlatform {
 public:
  // Window, mapping and other handles as the platform hands them out; 0 is
  // "none" everywhere.
  using Handle = std::uintptr_t;

  // The value GetLastError gives after creating a mapping whose name exists.
  static constexpr std::uint32_t kErrorAlreadyExists = 183;

  virtual ~IpcPlatform() = default;

  // FindWindowExA(0, 0, className, 0): a top-level window of the class, or 0.
  virtual Handle FindWindowOfClass(std::string_view className) = 0;
  // RegisterWindowMessageA: a system-wide message id for the name, or 0.
  virtual std::uint32_t RegisterMessage(std::string_view name) = 0;
  // GlobalAddAtomA / GlobalDeleteAtom: publish and withdraw the block's name.
  virtual std::uint16_t AddGlobalAtom(std::string_view name) = 0;
  virtual void DeleteGlobalAtom(std::uint16_t atom) = 0;
  // CreateFileMappingA(INVALID_HANDLE_VALUE, 0, PAGE_READWRITE, 0, size, name):
  // pagefile-backed memory of size bytes. When the name exists already the
  // existing mapping comes back and LastError() gives kErrorAlreadyExists.
  virtual Handle CreateBlockMapping(std::string_view name, std::uint32_t size) = 0;
  // MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0): the whole mapping, or null.
  virtual std::uint8_t* MapBlockView(Handle mapping) = 0;
  virtual void UnmapBlockView(std::uint8_t* view) = 0;
  // CloseHandle on a mapping.
  virtual void CloseMapping(Handle mapping) = 0;
  // SendMessageTimeoutA(window, message, wParam, lParam, flags, timeoutMs,
  // &result): false when the call failed or timed out; result is the
  // partner's answer (1 for a processed block).
  virtual bool SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam,
                              std::intptr_t lParam, std::uint32_t flags, std::uint32_t timeoutMs,
                              std::uint32_t& result) = 0;
  // GetLastError, GetCurrentProcessId, Sleep.
  virtual std::uint32_t LastError() = 0;
  virtual std::uint32_t ProcessId() = 0;
  virtual void SleepMs(std::uint32_t ms) = 0;
};

}  // namespace orv
