// The simulator link inside the program: the source the user chose, the
// platform the channel talks through, the channel, the live tick and the
// autopilot coupling, made when "Connect to FS" is clicked. With the built-in
// simulator the session also holds the simulated aircraft, which the program
// moves on by the wall clock before each live tick.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "map/MapGeodesy.h"
#include "simlink/Autopilot.h"
#include "simlink/BuiltinSim.h"
#include "simlink/Fsuipc.h"
#include "simlink/IpcPlatform.h"
#include "simlink/LiveTracking.h"
#include "simlink/OffsetImage.h"

namespace orv {

// The sources a user can choose; others come as "bridge:HOST:PORT" and the
// like, and are opened by name.
inline constexpr std::string_view kBuiltinSource = "builtin";

struct SimSession {
  std::string Source = std::string(kBuiltinSource);
  // Simulated seconds per wall-clock second for the built-in simulator.
  double TimeScale = 1;
  // menuAutolog: a landed flight goes into the logbook.
  bool Autolog = false;
  // The built-in simulator's AI aircraft, one of them converging; -1: its
  // usual five without a converging one.
  int TrafficCount = -1;

  // In the order they depend on each other: each is destroyed before what it
  // holds a reference to.
  std::unique_ptr<OffsetImage> Image;    // the built-in simulator's state
  std::unique_ptr<BuiltinSim> Builtin;
  std::unique_ptr<IpcPlatform> Platform;
  std::unique_ptr<FsuipcChannel> Channel;
  std::unique_ptr<MapGeodesy> Geo;
  std::unique_ptr<LiveTracking> Live;
  std::unique_ptr<AutopilotCoupling> Autopilot;
  int64_t LastStepMs = -1;  // when the built-in simulator last moved

  bool Connected() const { return Live && Live->Connected(); }
};

}  // namespace orv
