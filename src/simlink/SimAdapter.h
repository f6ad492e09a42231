// The common shape of the adapters that turn a simulator other than FSUIPC
// (FlightGear, X-Plane) into an offset image: a helper thread receives the
// simulator's packets and writes the image under a lock; the channel's round
// trips are answered from the image at once (the tick never waits on the
// network); the channel's writes of the values a simulator takes (heading bug,
// autopilot, radios, position) are handed to the helper thread, which sends
// them on.
//
// A simulator that has not sent for kSilenceMs is taken as gone: round trips
// then fail as a time-out (code 11), so that the tick's liveness read fails
// and the link ends. Before its first packet the simulator's "window" is not
// there (" Msg #2" at connect).
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "simlink/ImagePartner.h"
#include "simlink/OffsetImage.h"
#include "simlink/SimData.h"

namespace orv {

// The aircraft's values in natural units, as an adapter gathers them.
struct AircraftState {
  double Latitude = 0, Longitude = 0;  // degrees
  double AltitudeFt = 0;               // above sea level
  double GroundElevationFt = 0;
  double TrueHeading = 0, Pitch = 0, Bank = 0;  // degrees
  double GroundSpeedKt = 0, TasKt = 0, IasKt = 0, VerticalSpeedFpm = 0;
  bool OnGround = false;
  bool Paused = false;
  double UtcSeconds = 0;    // seconds since midnight
  double LocalSeconds = 0;
  double FuelGallons = 0;
  double WindSpeedKt = 0, WindDirDeg = 0;
  double MagVarDeg = 0;     // east positive
  double TemperatureC = 15, DewPointC = 10, QnhHpa = 1013.25, VisibilityMiles = 20;
  float Com1Mhz = 0, Nav1Mhz = 0, AdfKhz = 0;
  double HeadingBugDeg = 0;
  bool ApMaster = false, ApHeadingHold = false, ApAltitudeHold = false;
  double ApAltitudeFt = 0;
};

// Writes every value of the state into the image (the inverse of the readers).
void PutAircraftState(OffsetImage& image, const AircraftState& s);

// A write the channel made to one of the values a simulator takes, decoded
// from the image's words.
struct SimCommand {
  enum Kind { HeadingBug, ApMaster, ApHeadingHold, Com1, Nav1, Adf, Position } kind;
  double a = 0;  // degrees, 0/1, MHz, kHz, latitude
  double b = 0;  // longitude
};

// The decoders of the radio words (inverse of the radio writers).
float DecodeBcdRadio(std::uint16_t word);            // COM1 and NAV1, MHz
float DecodeAdfWords(std::uint16_t main, std::uint16_t extended);  // kHz

// The image and its lock live in a base built before the partner refers to them.
struct AdapterImage {
  OffsetImage adapterImage;
  std::mutex adapterLock;
};

class SimAdapter : private AdapterImage, public ImagePartner {
 public:
  static constexpr std::uint32_t kSilenceMs = 3000;
  static constexpr std::uint32_t kFirstPacketMs = 3000;

  ~SimAdapter() override;

  Handle FindWindowOfClass(std::string_view className) override;
  bool SendIpcMessage(Handle window, std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam,
                      std::uint32_t flags, std::uint32_t timeoutMs, std::uint32_t& result) override;

  // Opens the sockets and starts the helper thread; false with the reason.
  bool Start(std::string& error);
  // Stops the helper thread; derived destructors call it first.
  void Stop();

  // Milliseconds since the last good packet (large before the first).
  std::int64_t SilenceMs() const;
  // Packets taken and refused (truncated, hostile), for logs and tests.
  std::uint64_t PacketsTaken() const { return taken_; }
  std::uint64_t PacketsRefused() const { return refused_; }

 protected:
  SimAdapter();

  // Opens the adapter's sockets (on the caller's thread).
  virtual bool Open(std::string& error) = 0;
  // Waits up to waitMs for packets and takes what came (helper thread).
  virtual void Receive(std::uint32_t waitMs) = 0;
  // Sends the commands on to the simulator (helper thread).
  virtual void Forward(const std::vector<SimCommand>& commands) = 0;

  // For Receive: a packet was taken or refused.
  void Took() {
    ++taken_;
    lastPacket_ = std::chrono::steady_clock::now().time_since_epoch().count();
  }
  void Refused() { ++refused_; }
  // The image under its lock, for Receive.
  std::mutex& ImageLock() { return adapterLock; }
  OffsetImage& AdapterImageRef() { return adapterImage; }

 private:
  void Loop();
  void CollectCommands(const std::uint8_t* block);

  std::atomic<bool> stop_{false};
  std::thread thread_;
  std::atomic<std::int64_t> lastPacket_{0};
  std::atomic<std::uint64_t> taken_{0}, refused_{0};
  std::mutex commandLock_;
  std::vector<SimCommand> commands_;
};

}  // namespace orv
