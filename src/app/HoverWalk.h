// The walk behind the hover box: every active layer tested against the
// pointer in a fixed order, each object under it adding its lines. Objects
// are tested by their projected position: X and Y each less than the
// layer's radius from the pointer. The walk projects every record of every
// active layer, which is why the window runs it once per rest of the pointer
// and not on each tick (MapMouse).
//
// The order of the box, and each row's condition and radius:
//    1 airports            menuAirport                               100
//    2 IVAO controllers    the IVAO controllers shown                100 (CTR and FSS at their sector's centre)
//    3 VATSIM controllers  the VATSIM controllers shown              100
//    4 VORs                MenuVOR                                   100
//    5 NDBs                MenuNDB                                   100
//    6 intersections       MenuIntersection, MenuVictor or MenuJet   100
//    7 GPS fixes           MenuGPSFix                                100
//    8 user waypoints      MenuUserWP                                100
//    9 plan rows           a plan present                            100
//   10 oceanic tracks      the track routes shown                    100 (any waypoint of the track)
//   11 weather stations    menuShowWx                                100
//   12 airspaces          a name, the class shown at this range      the pointer inside the outline
//   13 parking positions   menuAirport and the range below 10 NM,     75
//                          where the map draws them
//   14 AI traffic          MenuAi                                    150
//   15 online aircraft     the network's aircraft shown              150 across, 250 up and down
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "app/ProgramState.h"
#include "simlink/SimData.h"

namespace orv {

inline constexpr double kHoverRadius = 100;
inline constexpr double kParkingHoverRadius = 75;

// The simulator's traffic tables as the live tick last read them, slot by
// slot; empty while no tick has read them.
struct HoverTraffic {
  std::span<const TrafficEntry> Air;
  std::span<const TrafficExtEntry> AirExt;
  std::span<const TrafficEntry> Ground;
  std::span<const TrafficExtEntry> GroundExt;
};

// What one walk found. Lines keeps its room from one walk to the next.
struct HoverFind {
  std::vector<std::string> Lines;
  std::vector<int32_t> Zones;  // airspaces under the pointer, to outline
  int32_t Sector = -1;         // the online sector of a hit centre or FSS, -1 none
};

// One walk for the pointer at (x, y) in surface units over the view of the
// last pass. An airport, VOR, NDB, intersection or fix under the pointer
// becomes the highlight (HiliteKind, HiliteIndex); with several the last
// one in the box's order wins. Nothing else changes the highlight.
void HoverWalk(const ProgramState& s, const HoverTraffic& traffic, double x, double y, HoverFind& out,
               MapHighlight& highlight);

}  // namespace orv
