// The plan file side of "orvanta-cli plan": --open FILE reads a plan of any
// supported format instead of building one, --save FILE writes the program's
// own ".pln", --export FORMAT[,FORMAT...] --out DIR writes the exports. Kept
// apart from the plan building so that both can move on their own.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/Cli.h"

namespace orv {
class Ui;
class PlanEditor;
class NavLookup;
struct FlightPlan;
struct PlanFileState;
struct AircraftRec;
}  // namespace orv

namespace orv::cli {

struct PlanFileOptions {
  std::string Open;                  // --open FILE
  std::string Save;                  // --save FILE
  std::vector<std::string> Formats;  // --export, lower case
  std::string OutDir;                // --out DIR
};

// The export names --export takes, in the order they are listed.
extern const std::vector<std::string> kPlanExportFormats;

// Takes the plan file options out of args (the rest stays for the plan's own
// options). Returns the reason when they do not fit together, else empty.
std::string TakePlanFileOptions(Args& args, PlanFileOptions& options);

// --open: the file into the plan of editor. False when refused (the message
// went through ui).
bool OpenPlanForCli(Ui& ui, PlanEditor& editor, PlanFileState& state, const std::string& path);

// --save and --export for the plan in memory; each file written is named on
// out. 0, or 1 when a file could not be written.
int WritePlanFileOutputs(const PlanFileOptions& options, const FlightPlan& plan, const NavLookup& nav,
                         const AircraftRec& aircraft, const PlanFileState& state, std::ostream& out,
                         std::ostream& err);

}  // namespace orv::cli
