// FlightGear as an offset image. The values come as lines of FlightGear's
// generic protocol over UDP (data/flightgear/orvanta.xml, one line of
// comma-separated values per update); the writes (heading bug, autopilot
// heading mode, COM1, NAV1, ADF, position) and the AI and multiplayer
// aircraft under /ai/models go through FlightGear's HTTP property server
// (--httpd), on the helper thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simlink/NetSocket.h"
#include "simlink/SimAdapter.h"

namespace orv {

inline constexpr std::uint16_t kFlightGearUdpPort = 5500;
inline constexpr std::uint16_t kFlightGearHttpPort = 5400;

// The property nodes of the protocol file, in the order of a line's values.
const std::vector<std::string>& FlightGearNodes();
// One line of the generic protocol into the state; false (state untouched) for
// a line with another count of values or a value that is not a number where
// one is wanted. The elapsed-time value goes to elapsedSec when given.
bool ParseFlightGearLine(std::string_view line, AircraftState& state, double* elapsedSec = nullptr);

// The aircraft under /ai/models in the property server's JSON
// (GET /json/ai/models?d=4): "aircraft" and "multiplayer" children with a
// position; at most kTrafficMaxCount. False for text that is not such JSON.
bool ParseAiModels(std::string_view json, std::vector<TrafficEntry>& out);

// A small HTTP/1.0 exchange on HOST:PORT within the time-out: the status
// (0 when there was no answer) and the body.
int HttpExchange(std::string_view host, std::uint16_t port, std::string_view method, std::string_view path,
                 std::string_view body, std::uint32_t timeoutMs, std::string& answer);

class FlightGearAdapter : public SimAdapter {
 public:
  FlightGearAdapter(std::string host, std::uint16_t udpPort, std::uint16_t httpPort);
  ~FlightGearAdapter() override;

  std::uint16_t LocalUdpPort() const { return LocalPort(socket_); }
  const std::string& Host() const { return host_; }
  std::uint16_t HttpPort() const { return httpPort_; }
  // FlightGear's frame clock (steady-clock-sec) in the last line taken, for the lag measure.
  double LastElapsed() const { return lastElapsed_; }

 protected:
  bool Open(std::string& error) override;
  void Receive(std::uint32_t waitMs) override;
  void Forward(const std::vector<SimCommand>& commands) override;

 private:
  void SetProperty(const std::string& path, const std::string& jsonValue);
  void PollTraffic();

  std::string host_;
  std::uint16_t udpPort_, httpPort_;
  NetSocket socket_;
  std::atomic<double> lastElapsed_{0};
  std::chrono::steady_clock::time_point nextTraffic_{};
};

}  // namespace orv
