// The start-up of the program over its state: the settings, every database
// file into the state's database, and the aircraft list, in the start-up's
// fixed order.
#pragma once

#include "app/ProgramState.h"
#include "core/Clock.h"
#include "core/Startup.h"
#include "core/Ui.h"

namespace orv {

// Runs the whole start-up on s. Progress texts and messages go through ui;
// the result says which window opens first, or that the program ends.
StartupResult LoadProgram(ProgramState& s, Ui& ui, const Clock& clock);

}  // namespace orv
