// Coupling the simulator's autopilot to the flight plan or to a direct-to
// target: while coupled, tmAutoPilot steers by writing the heading bug toward
// the active row (or the procedure's shape during a hold), corrected for the
// wind so that the aircraft flies the track. Only the heading channel is used.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/Geodesy.h"
#include "map/DrawTarget.h"

namespace orv {

class LiveTracking;

class AutopilotCoupling {
public:
  explicit AutopilotCoupling(LiveTracking& live) : live_(live) {}

  // cmdAutoHdg: couples the autopilot to the plan, or uncouples it.
  void CmdAutoHdgClick();
  // cmdDirTo: couples it to a direct-to target (lat -500: the marked point is
  // missing and nothing is written), or uncouples it.
  void CmdDirToClick(float lat, float lon, std::string_view ident);
  // The tmAutoPilot timer.
  void TmAutoPilotTick();
  // Marks the next tick to be passed over.
  void SkipNextTick() { CouplingSkip = true; }

  bool Coupled() const { return AutoHdgColour == 65280 || DirToColour == 65280; }

  bool CouplingSkip = false;
  std::array<LatLon, 15> ProcedurePoints{};
  uint8_t ProcedureIndex = 0;
  float LastBug = 0;
  // The buttons' fore colours: 255 off, 65280 on.
  Colour AutoHdgColour = 255;
  Colour DirToColour = 255;

private:
  void Engage();
  LiveTracking& live_;
};

}  // namespace orv
