// orvanta-fsbridge.exe: opens the FSUIPC channel beside the simulator, as the
// program does, and serves it over TCP to Orvanta on another machine or on
// the Linux side of a Wine or Proton setup.
//
//   orvanta-fsbridge.exe --probe
//   orvanta-fsbridge.exe [--listen ADDR] [--port N] [--for SECONDS]
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/Runtime.h"
#include "simlink/Bridge.h"
#include "simlink/Fsuipc.h"
#include "simlink/SimData.h"
#include "simlink/Win32Platform.h"

namespace {

constexpr const char* kUsage =
    "usage: orvanta-fsbridge.exe --probe\n"
    "       orvanta-fsbridge.exe [--listen ADDR] [--port N] [--for SECONDS]\n"
    "Serves the FSUIPC channel of this machine over TCP (default 127.0.0.1, port 9020).\n"
    "Frames, both ways: a 32-bit little-endian byte count, then the block.\n";

void Say(const std::string& line) {
  std::fprintf(stdout, "%s\n", line.c_str());
  std::fflush(stdout);
}

bool Open(orv::FsuipcChannel& ch) {
  ch.IpcClearHandles();
  std::int32_t code = 0;
  if (ch.IpcOpen(0, code)) return true;
  std::fprintf(stderr, "Unable to connect to Flight Simulator%s\n", ch.LastIpcMessage().c_str());
  return false;
}

int Probe() {
  orv::Win32Platform platform;
  orv::FsuipcChannel ch(platform);
  if (!Open(ch)) return 1;
  char version[32];
  std::snprintf(version, sizeof version, "%08X", static_cast<unsigned>(ch.FsuipcVersion));
  Say(std::string("FsuipcVersion ") + version);
  Say("SimVersion " + std::to_string(ch.SimVersion));
  const orv::PositionBlock p = orv::ReadPositionBlock(ch);
  Say("Latitude " + orv::NumText(p.Latitude));
  Say("Longitude " + orv::NumText(p.Longitude));
  Say("Altitude " + std::to_string(p.Altitude));
  Say("TrueHeading " + orv::NumText(p.TrueHeading));
  ch.IpcClose();
  return 0;
}

int Serve(const std::string& address, std::uint16_t port, long seconds) {
  orv::Win32Platform platform;
  orv::FsuipcChannel ch(platform);
  if (!Open(ch)) return 1;
  orv::BridgeServer server(ch, [](const std::string& line) { Say("orvanta-fsbridge: " + line); });
  std::string error;
  if (!server.Listen(address, port, error)) {
    std::fprintf(stderr, "orvanta-fsbridge: %s\n", error.c_str());
    ch.IpcClose();
    return 1;
  }
  Say("orvanta-fsbridge: serving FSUIPC " + std::to_string(ch.SimVersion) + " on " + address + ":" +
      std::to_string(server.Port()));
  // Without --for the bridge serves for a year: it is ended by the user.
  const long limit = seconds > 0 ? seconds : 365L * 24 * 3600;
  server.Serve(orv::NetClock::now() + std::chrono::seconds(limit));
  ch.IpcClose();
  Say("orvanta-fsbridge: stopped after " + std::to_string(server.FramesServed()) + " frames");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string address = orv::kBridgeDefaultAddress;
  std::uint16_t port = orv::kBridgeDefaultPort;
  long seconds = 0;
  bool probe = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--probe") {
      probe = true;
    } else if (arg == "--listen" && hasValue) {
      address = argv[++i];
    } else if (arg == "--port" && hasValue) {
      port = orv::ParsePort(argv[++i]);
      if (port == 0) {
        std::fprintf(stderr, "orvanta-fsbridge: bad port '%s'\n%s", argv[i], kUsage);
        return 2;
      }
    } else if (arg == "--for" && hasValue) {
      seconds = std::strtol(argv[++i], nullptr, 10);
    } else {
      std::fprintf(stderr, "%s", kUsage);
      return arg == "--help" || arg == "-h" ? 0 : 2;
    }
  }
  return probe ? Probe() : Serve(address, port, seconds);
}
