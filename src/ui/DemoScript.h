// ORV_SCRIPT: a short list of steps the program runs once its window shows,
// for documentation pictures and for driving the real window in checks
// without a person: "plan:EDDF-EDDM;menu:MenuCreateHiAlt;menu:MenuLocal;
// scale:30;wait:20000;shot:docs/flight.png;quit". Steps run one after the
// other on the event loop; a wait lets the timers run in between. replay:FILE
// opens a recording in Flight Analysis (a path, or a name in the user
// folder) and key:38*40 presses a key (by its code) that many times.
#pragma once

#include <string>
#include <vector>

namespace orv {
class MainWindowController;
struct ProgramState;
}

namespace orv::ui {

struct ScriptStep {
  std::string Verb;  // plan, menu, replay, key, scale, wait, shot, quit
  std::string Arg;
};

// The steps of a script text; unknown verbs are kept and refused when run.
std::vector<ScriptStep> ParseScript(const std::string& text);

// Runs the steps on the event loop. shot grabs the whole screen (so that the
// GPS window and other side windows are in the picture).
void RunScript(std::vector<ScriptStep> steps, ProgramState& s, MainWindowController& controller);

}  // namespace orv::ui
