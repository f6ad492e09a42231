#include "simlink/SimulatorChoice.h"

#include "simlink/Bridge.h"
#include "simlink/FlightGearAdapter.h"
#include "simlink/NetSocket.h"
#include "simlink/SimSource.h"
#include "simlink/Win32Platform.h"
#include "simlink/XPlaneAdapter.h"

namespace orv {

namespace {

// Splits "HOST:PORT" (either part may be missing).
void SplitHostPort(std::string_view rest, std::string& host, std::string& port) {
  const auto colon = rest.rfind(':');
  if (colon == std::string_view::npos) {
    host = std::string(rest);
    port.clear();
  } else {
    host = std::string(rest.substr(0, colon));
    port = std::string(rest.substr(colon + 1));
  }
}

}  // namespace

std::vector<SimulatorKind> SimulatorKinds() {
  std::vector<SimulatorKind> kinds;
  kinds.push_back({"builtin", "Built-in simulator", false, false, "", 0});
#ifdef _WIN32
  kinds.push_back({"fsuipc", "FS2004 / FS X (FSUIPC)", false, false, "", 0});
#endif
  kinds.push_back({"bridge", "FS2004 / FS X on another machine or under Wine (orvanta-fsbridge)", true, true,
                   kBridgeDefaultAddress, kBridgeDefaultPort});
  kinds.push_back({"flightgear", "FlightGear (generic protocol on UDP 5500, HTTP on 5400)", false, false, "", 0});
  kinds.push_back({"xplane", "X-Plane 11 / 12 (UDP)", true, true, "127.0.0.1", kXPlaneDefaultPort});
  return kinds;
}

std::string SimulatorSourceName(const SimulatorKind& kind, std::string_view host, std::string_view port) {
  std::string name = kind.Name;
  if (kind.NeedsHost) name += ":" + (host.empty() ? kind.DefaultHost : std::string(host));
  if (kind.NeedsPort) name += ":" + (port.empty() ? std::to_string(kind.DefaultPort) : std::string(port));
  return name;
}

std::unique_ptr<IpcPlatform> OpenSimulator(std::string_view source, std::string& error) {
  error.clear();
  if (source == "bridge" || source.rfind("bridge:", 0) == 0) {
    std::string host, portText;
    SplitHostPort(source.size() > 7 ? source.substr(7) : std::string_view(), host, portText);
    if (host.empty()) host = kBridgeDefaultAddress;
    std::uint16_t port = kBridgeDefaultPort;
    if (!portText.empty() && (port = ParsePort(portText)) == 0) {
      error = "bad port '" + portText + "' in '" + std::string(source) + "' (bridge:HOST:PORT)";
      return nullptr;
    }
    return std::make_unique<BridgeClient>(host, port);
  }
  if (source == "flightgear" || source.rfind("flightgear:", 0) == 0) {
    // flightgear[:UDPPORT[:HTTPPORT[:HOST]]]
    std::uint16_t ports[2] = {kFlightGearUdpPort, kFlightGearHttpPort};
    std::string host = "127.0.0.1";
    std::string_view rest = source.size() > 11 ? source.substr(11) : std::string_view();
    for (int i = 0; i < 3 && !rest.empty(); ++i) {
      const auto colon = rest.find(':');
      const std::string part(rest.substr(0, colon));
      rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
      if (i == 2) {
        host = part;
      } else if (!part.empty() && (ports[i] = ParsePort(part)) == 0) {
        error = "bad port '" + part + "' in '" + std::string(source) + "' (flightgear:UDPPORT:HTTPPORT)";
        return nullptr;
      }
    }
    auto adapter = std::make_unique<FlightGearAdapter>(host, ports[0], ports[1]);
    if (!adapter->Start(error)) return nullptr;
    return adapter;
  }
  if (source == "xplane" || source.rfind("xplane:", 0) == 0) {
    std::string host = "127.0.0.1", portText;
    if (source.size() > 7) SplitHostPort(source.substr(7), host, portText);
    if (host.empty()) host = "127.0.0.1";
    std::uint16_t port = kXPlaneDefaultPort;
    if (!portText.empty() && (port = ParsePort(portText)) == 0) {
      error = "bad port '" + portText + "' in '" + std::string(source) + "' (xplane:HOST:PORT)";
      return nullptr;
    }
    auto adapter = std::make_unique<XPlaneAdapter>(host, port);
    if (!adapter->Start(error)) return nullptr;
    return adapter;
  }
#ifdef _WIN32
  if (source == "fsuipc") return std::make_unique<Win32Platform>();
#endif
  auto platform = OpenSimSource(source, error);
  if (!platform) {
    error = "Unknown simulator source '" + std::string(source) + "' (known: builtin";
#ifdef _WIN32
    error += ", fsuipc";
#endif
    error += ", bridge:HOST:PORT, flightgear[:UDPPORT[:HTTPPORT]], xplane[:HOST[:PORT]])";
  }
  return platform;
}

}  // namespace orv
