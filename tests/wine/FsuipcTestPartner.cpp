// A stand-in for the FSUIPC module, for the tests under Wine: a top-level
// window of class "UIPCMAIN" that answers the registered message
// "FSASMLIB:IPC" as the module does. The message's wParam is the atom of the
// block's name; the partner looks the name up, opens the client's mapping,
// walks the records and answers them from its own offset image (an aircraft
// parked at London Heathrow), then returns 1.
//
//   fsuipc-test-partner.exe [--for SECONDS]
#ifdef _WIN32

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "simlink/Fsuipc.h"
#include "simlink/ImagePartner.h"
#include "simlink/OffsetImage.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"

namespace {

struct Partner {
  orv::OffsetImage image;
  orv::ImagePartner walker{image};  // its block walk answers the mapped view
  UINT message = 0;
  unsigned long answered = 0;
};

Partner* g_partner = nullptr;  // the window procedure's only way to its state

LRESULT CALLBACK WindowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (g_partner && msg == g_partner->message && msg != 0) {
    char name[64] = {};
    if (GlobalGetAtomNameA(static_cast<ATOM>(wParam), name, sizeof name) == 0) return 0;
    HANDLE mapping = OpenFileMappingA(FILE_MAP_WRITE, FALSE, name);
    if (!mapping) return 0;
    auto* view = static_cast<std::uint8_t*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    LRESULT result = 0;
    if (view) {
      result = g_partner->walker.AnswerBlock(view, orv::kIpcBlockSize) ? 1 : 0;
      UnmapViewOfFile(view);
    }
    CloseHandle(mapping);
    ++g_partner->answered;
    return result;
  }
  return DefWindowProcA(window, msg, wParam, lParam);
}

void FillImage(orv::OffsetImage& image) {
  orv::PutPosition(image, 51.4775, -0.4614, 83, 270, 0, 0, true);
  orv::PutGroundAltitude(image, 83);
  orv::PutSpeeds(image, 0, 0, 0, 0);
  orv::PutTime(image, 13, 14, 15, 12, 14);
  orv::PutFuelTank(image, 1, 0.5, 40);
  orv::PutFuelTank(image, 2, 0.5, 40);
  orv::PutCom1(image, 121.90f);
  image.Fill(orv::fsoff::AtcStrings, 0, 72);
  image.WriteBytes(orv::fsoff::AtcStrings + 12, "G-WINE", 6);
  orv::PutModuleVersions(image);
}

}  // namespace

int main(int argc, char** argv) {
  long seconds = 60;
  for (int i = 1; i + 1 < argc; ++i)
    if (std::string(argv[i]) == "--for") seconds = std::strtol(argv[++i], nullptr, 10);

  Partner partner;
  FillImage(partner.image);
  partner.message = RegisterWindowMessageA("FSASMLIB:IPC");
  g_partner = &partner;

  WNDCLASSA cls = {};
  cls.lpfnWndProc = WindowProc;
  cls.hInstance = GetModuleHandleA(nullptr);
  cls.lpszClassName = "UIPCMAIN";
  if (!RegisterClassA(&cls)) {
    std::fprintf(stderr, "partner: cannot register the window class (error %lu)\n", GetLastError());
    return 1;
  }
  // A top-level window (never shown): FindWindowExA with no parent finds it.
  HWND window = CreateWindowExA(0, "UIPCMAIN", "FSUIPC test partner", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                                cls.hInstance, nullptr);
  if (!window) {
    std::fprintf(stderr, "partner: cannot create the window (error %lu)\n", GetLastError());
    return 1;
  }
  std::printf("partner: ready, message %u\n", partner.message);
  std::fflush(stdout);

  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1000;
  MSG msg;
  for (;;) {
    const ULONGLONG now = GetTickCount64();
    if (now >= end) break;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageA(&msg);
    }
  }
  DestroyWindow(window);
  std::printf("partner: stopped after %lu blocks\n", partner.answered);
  return 0;
}

#endif  // _WIN32
