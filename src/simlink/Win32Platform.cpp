#ifdef _WIN32

#include "simlink/Win32Platform.h"

#include <windows.h>

#include <string>

namespace orv {

namespace {

// The Win32 calls want NUL-terminated names.
std::string Z(std::string_view s) { return std::string(s); }

}  // namespace

IpcPlatform::Handle Win32Platform::FindWindowOfClass(std::string_view className) {
  return reinterpret_cast<Handle>(FindWindowExA(nullptr, nullptr, Z(className).c_str(), nullptr));
}

std::uint32_t Win32Platform::RegisterMessage(std::string_view name) {
  return RegisterWindowMessageA(Z(name).c_str());
}

std::uint16_t Win32Platform::AddGlobalAtom(std::string_view name) { return GlobalAddAtomA(Z(name).c_str()); }

void Win32Platform::DeleteGlobalAtom(std::uint16_t atom) { GlobalDeleteAtom(atom); }

IpcPlatform::Handle Win32Platform::CreateBlockMapping(std::string_view name, std::uint32_t size) {
  HANDLE h = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, Z(name).c_str());
  return reinterpret_cast<Handle>(h);
}

std::uint8_t* Win32Platform::MapBlockView(Handle mapping) {
  return static_cast<std::uint8_t*>(MapViewOfFile(reinterpret_cast<HANDLE>(mapping), FILE_MAP_WRITE, 0, 0, 0));
}

void Win32Platform::UnmapBlockView(std::uint8_t* view) { UnmapViewOfFile(view); }

void Win32Platform::CloseMapping(Handle mapping) { CloseHandle(reinterpret_cast<HANDLE>(mapping)); }

bool Win32Platform::SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                                   std::uint32_t flags, std::uint32_t timeoutMs, std::uint32_t& result) {
  DWORD_PTR answer = 0;
  const LRESULT sent = SendMessageTimeoutA(reinterpret_cast<HWND>(window), message, static_cast<WPARAM>(wParam),
                                           static_cast<LPARAM>(lParam), flags, timeoutMs, &answer);
  result = static_cast<std::uint32_t>(answer);
  return sent != 0;
}

std::uint32_t Win32Platform::LastError() { return GetLastError(); }

std::uint32_t Win32Platform::ProcessId() { return GetCurrentProcessId(); }

void Win32Platform::SleepMs(std::uint32_t ms) { Sleep(ms); }

}  // namespace orv

#endif  // _WIN32
