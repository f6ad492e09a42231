// The program's choice of simulator: every source by name, with the host and
// port where one is needed. Names:
//   builtin                 the built-in source (no simulator needed)
//   fsuipc                  FSUIPC in this process's Windows session (Windows builds only)
//   bridge:HOST:PORT        orvanta-fsbridge.exe beside FS2004/FS X on HOST (port 9020 by default)
//   flightgear[:UDPPORT[:HTTPPORT[:HOST]]]  FlightGear sending data/flightgear/orvanta.xml to UDPPORT
//                           (5500), its HTTP property server on HTTPPORT (5400)
//   xplane[:HOST[:PORT]]    X-Plane 11 or 12 over its UDP interface (127.0.0.1, port 49000 by default)
// The sources of the channel's own file (OpenSimSource) are offered as they are.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simlink/IpcPlatform.h"

namespace orv {

// One line of the choice for a menu or a combo box: the name to pass to
// OpenSimulator, a caption, and whether a host and port go with it.
struct SimulatorKind {
  std::string Name;
  std::string Caption;
  bool NeedsHost = false;
  bool NeedsPort = false;
  std::string DefaultHost;
  std::uint16_t DefaultPort = 0;
};
std::vector<SimulatorKind> SimulatorKinds();

// Builds the source name from a kind and the host and port the user gave
// ("bridge:10.0.0.5:9020"); the defaults fill what is empty.
std::string SimulatorSourceName(const SimulatorKind& kind, std::string_view host, std::string_view port);

// Opens a source by name; null with the reason in error.
std::unique_ptr<IpcPlatform> OpenSimulator(std::string_view source, std::string& error);

}  // namespace orv
