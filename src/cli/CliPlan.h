// Building a plan between two airports from the command line's arguments, as
// "plan", "fly" and "print" do: the program's start-up over a program state,
// then the plan command of the main window.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "app/PlanCommands.h"
#include "app/ProgramState.h"
#include "cli/Cli.h"
#include "cli/CliUi.h"

namespace orv::cli {

// The arguments the commands share: DEP DEST [--high|--low|--navaid]
// [--aircraft N] [--level FL].
struct PlanArgs {
  std::vector<std::string> Airports;
  PlanKind Kind = PlanKind::HighAltitude;
  int16_t AircraftNumber = 0;
  int32_t Level = -1;
};

// Takes a plan option at args[i] (--high, --low, --navaid, --aircraft N,
// --level FL), moving i past its value: 1 when taken, 0 when args[i] is no
// plan option, -1 (with the reason on err) when its value is wrong.
int TakePlanOption(const Args& args, std::size_t& i, PlanArgs& out, std::ostream& err, const std::string& command);

// Takes the plan options out of args and leaves the rest in `rest`. False
// with the reason in why.
bool ParsePlanArgs(const Args& args, PlanArgs& out, Args& rest, std::string& why);

// The commands' messages: progress is silent, a message box is a line on the
// error stream with plain line ends.
class MessageUi : public StreamUi {
public:
  MessageUi(std::ostream& out, std::ostream& err) : StreamUi(out, err), err_(err) {}
  void MsgBox(std::string_view text, MsgStyle style, std::string_view title) override;
  void ShowProgress(std::string_view) override {}

private:
  std::ostream& err_;
};

// Loads the folder into s with the aircraft the arguments choose (and their
// cruise level); 0, else the exit code with the message on err.
int LoadForPlan(const PlanArgs& args, std::string_view command, std::ostream& out, std::ostream& err,
                ProgramState& s);

// Loads the folder into s and builds the plan; 0 on success, else the exit
// code, with the message on err under the command's name. The command has no
// navaid buttons: a navaid plan may use every kind of navaid.
int BuildPlan(const PlanArgs& args, std::string_view command, std::ostream& out, std::ostream& err,
              ProgramState& s);

// The plan table as "plan" prints it: the table's lines tab-separated, then
// the totals, the offered level and the trip fuel.
void PrintPlan(ProgramState& s, std::ostream& out, std::ostream& err);

}  // namespace orv::cli
