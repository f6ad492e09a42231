// The plan commands of the main window, shared with orvanta-cli: choosing
// the two airports and building a high altitude, low altitude or navaid plan
// between them.
#pragma once

#include <string_view>

#include "app/ProgramState.h"
#include "core/Ui.h"

namespace orv {

enum class PlanKind : uint8_t {
  HighAltitude,  // MenuCreateHiAlt: the jet airway net
  LowAltitude,   // MenuCreateLoAlt: the victor airway net
  Navaid,        // MenuCreateNavaid: from navaid to navaid
};

// The airport slot whose ICAO code is icao (trimmed, any case); -1 when none.
int32_t FindAirportIndex(const NavDatabase& db, std::string_view icao);

// Makes the plan a direct one from airport dep to airport dest (slots of the
// airport table), as the airport selection leaves it.
void SetPlanEnds(ProgramState& s, int32_t dep, int32_t dest);

// The plan entries: builds the route of the given kind into the plan between
// its departure and destination (a direct plan between the chosen airports
// when the plan is empty). The navaid plan takes the VOR, NDB and
// intersection buttons as the kinds of navaid it may use. False, with a beep,
// when no airports are chosen; false when no route was found (the builder
// has said why through ui).
bool CreatePlan(ProgramState& s, PlanKind kind, Ui& ui);

// menuCheckControlzone set on or off: on, the plan's legs through control
// zones are marked in the table (CheckPlanZones); off, the marks go again.
void CheckControlZones(ProgramState& s, bool on);

}  // namespace orv
