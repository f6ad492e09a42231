#include "simlink/Autopilot.h"

#include <algorithm>
#include <cmath>

#include "core/Runtime.h"
#include "simlink/Fsuipc.h"
#include "simlink/LiveTracking.h"
#include "simlink/SimData.h"

namespace orv {

namespace {

constexpr Colour kOff = 255;
constexpr Colour kOn = 65280;

}  // namespace

void AutopilotCoupling::Engage() {
  FsuipcChannel& ch = live_.Channel();
  WriteApMaster(ch, 1);
  WriteApHeadingHold(ch, 1);
  WriteApHeadingBug(ch, CInt(live_.Snap.MagHeading));
}

void AutopilotCoupling::CmdAutoHdgClick() {
  LiveHost& host = live_.Host();
  LinkState& s = live_.State();
  host.FocusSimulator();
  if (AutoHdgColour == kOff) {
    AutoHdgColour = kOn;
    if (!live_.PlanActive()) return;
    Engage();
    DirToColour = kOff;
    s.DirectActive = false;
    s.DirectLat = -500;
    s.GpsPage = kGpsPagePlan;
    live_.WindowTimers().SetEnabled(TimerId::AutoPilot, true);
  } else {
    AutoHdgColour = kOff;
    live_.WindowTimers().SetEnabled(TimerId::AutoPilot, false);
    if (!live_.PlanActive()) s.GpsPage = kGpsPagePosition;
  }
}

void AutopilotCoupling::CmdDirToClick(float lat, float lon, std::string_view ident) {
  live_.Host().FocusSimulator();
  if (DirToColour == kOff) {
    if (lat == -500) return;
    DirToColour = kOn;
    AutoHdgColour = kOff;
    live_.SetDirectTo(lat, lon, ident);
    Engage();
    live_.State().GpsPage = kGpsPagePlan;
    live_.WindowTimers().SetEnabled(TimerId::AutoPilot, true);
  } else {
    DirToColour = kOff;
    live_.SetDirectTo(-500, 0, "");
    live_.WindowTimers().SetEnabled(TimerId::AutoPilot, false);
    if (!live_.PlanActive()) live_.State().GpsPage = kGpsPagePosition;
  }
}

void AutopilotCoupling::TmAutoPilotTick() {
  if (CouplingSkip) {
    CouplingSkip = false;
    return;
  }
  if (ProcedureIndex == 0) ProcedureIndex = 1;
  const SimSnapshot& snap = live_.Snap;
  const LinkState& s = live_.State();
  const float lat = snap.Latitude, lon = snap.Longitude;
  double d = 0, h = 0;
  if (live_.PlanActive()) {
    const int row = std::clamp<int>(s.ActiveRow, 0, live_.Plan().LastRow);
    const WaypointRec& w = live_.Plan().Waypoints[static_cast<size_t>(row)];
    d = RhumbDistance(lat, lon, w.Lat, w.Lon);
    const double bearing = d > 60 ? GcCourse(lat, lon, w.Lat, w.Lon) : RhumbCourse(lat, lon, w.Lat, w.Lon);
    if (d > 60) d = GcDistance(lat, lon, w.Lat, w.Lon);
    h = Normalise360(static_cast<float>(bearing) - snap.SimMagVar);
    if (s.ProcedureOffRunning) {
      // Flying the procedure's shape until the hold's count runs out.
      const LatLon& p = ProcedurePoints[ProcedureIndex];
      h = Normalise360(static_cast<float>(RhumbCourse(lat, lon, p.Lat, p.Lon)) - snap.SimMagVar);
      if (RhumbDistance(lat, lon, p.Lat, p.Lon) <= 0.5 && ++ProcedureIndex > 14) ProcedureIndex = 1;
    }
  }
  if (s.DirectActive && s.DirectLat != -500) {
    d = RhumbDistance(lat, lon, s.DirectLat, s.DirectLon);
    const double bearing = d > 60 ? GcCourse(lat, lon, s.DirectLat, s.DirectLon)
                                  : RhumbCourse(lat, lon, s.DirectLat, s.DirectLon);
    h = Normalise360(static_cast<float>(bearing) - snap.SimMagVar);
  }
  h += snap.Wca;
  // Inside a mile the bug stays: the turn onto the next leg comes from the
  // sequencing.
  if (static_cast<float>(h) != LastBug && d > 1.0) {
    WriteApHeadingBug(live_.Channel(), CInt(h));
    LastBug = static_cast<float>(h);
  }
}

}  // namespace orv
