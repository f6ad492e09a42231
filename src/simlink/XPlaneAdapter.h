// X-Plane 11 and 12 as an offset image, over X-Plane's UDP interface: the
// values come as RREF subscriptions (X-Plane answers to the port the request
// came from), the heading bug, autopilot modes and radios go out as DREF
// writes, and the TCAS target datarefs fill the airborne traffic table.
// X-Plane listens on UDP port 49000 by default.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simlink/NetSocket.h"
#include "simlink/SimAdapter.h"

namespace orv {

inline constexpr std::uint16_t kXPlaneDefaultPort = 49000;
inline constexpr std::size_t kRrefRequestSize = 413;  // "RREF\0", freq, index, 400-byte path
inline constexpr std::size_t kDrefSize = 509;         // "DREF\0", value, 500-byte path
inline constexpr int kXPlaneTrafficTargets = 19;      // TCAS targets 1..19 (0 is the user)

std::vector<std::uint8_t> EncodeRrefRequest(std::int32_t frequency, std::int32_t index, std::string_view dataref);
std::vector<std::uint8_t> EncodeDref(float value, std::string_view dataref);
// The (index, value) pairs of an RREF answer; false (and nothing taken) for a
// datagram that is not one or is cut inside a pair.
bool DecodeRrefAnswer(const std::uint8_t* data, std::size_t size, std::vector<std::pair<std::int32_t, float>>& out);

// The datarefs subscribed, in index order.
const std::vector<std::string>& XPlaneDatarefs();
// The state from the subscribed values (indexed as XPlaneDatarefs), and the
// traffic table from the TCAS targets.
AircraftState XPlaneState(const std::vector<float>& values);
std::vector<TrafficEntry> XPlaneTraffic(const std::vector<float>& values);

class XPlaneAdapter : public SimAdapter {
 public:
  XPlaneAdapter(std::string host, std::uint16_t port, std::uint32_t frequencyHz = 20);
  ~XPlaneAdapter() override;

  std::uint16_t LocalUdpPort() const { return LocalPort(socket_); }

 protected:
  bool Open(std::string& error) override;
  void Receive(std::uint32_t waitMs) override;
  void Forward(const std::vector<SimCommand>& commands) override;

 private:
  void Subscribe(std::int32_t frequency);

  std::string host_;
  std::uint16_t port_;
  std::uint32_t frequency_;
  NetSocket socket_;
  std::vector<float> values_;
  std::chrono::steady_clock::time_point lastSubscribe_{};
  std::vector<std::pair<std::int32_t, float>> pairs_;
};

}  // namespace orv
