// orvanta-cli plan DEP DEST: loads the database of an application folder as
// the program does at start, builds a high altitude, low altitude or navaid
// plan between the two airports (or opens a plan file) and prints the plan
// table and its totals; --save and --export write the plan's files.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "cli/CmdPlanFiles.h"
#include "core/Runtime.h"
#include "planning/NavLookupDb.h"
#include "planning/PlanFile.h"

namespace orv::cli {

namespace {

constexpr const char* kPlanUsage =
    "usage: orvanta-cli --appdir DIR plan DEP DEST|--open FILE [--high|--low|--navaid] [--aircraft N] [--level FL] "
    "[--save FILE] [--export FORMAT[,FORMAT...] --out DIR]";

int Refuse(std::ostream& err, const std::string& why) {
  err << "plan: " << why << "\n" << kPlanUsage << "\n";
  return 2;
}

}  // namespace

int CmdPlan(const Context& ctx, const Args& allArgs, std::ostream& out, std::ostream& err) {
  Args args = allArgs;
  PlanFileOptions files;
  std::string why = TakePlanFileOptions(args, files);
  if (!why.empty()) return Refuse(err, why);
  const bool opening = !files.Open.empty();
  PlanArgs planArgs;
  Args rest;
  if (!ParsePlanArgs(args, planArgs, rest, why)) return Refuse(err, why);
  if (!rest.empty()) return Refuse(err, "unknown option '" + rest[0] + "'");
  if (opening && !planArgs.Airports.empty()) return Refuse(err, "--open takes no airports");
  if (!opening && planArgs.Airports.size() != 2)
    return Refuse(err, "expected the departure and the destination airport");

  auto s = std::make_unique<ProgramState>(ctx.appDir);
  PlanFileState fileState;
  if (opening) {
    if (int code = LoadForPlan(planArgs, "plan", out, err, *s)) return code;
    NavLookupDb nav(s->Db, s->Core.ParkingNames);
    PlanEditor editor(s->Plan, s->Panel, s->Aircraft.Current, nav);
    MessageUi ui(out, err);
    if (!OpenPlanForCli(ui, editor, fileState, files.Open)) return 1;
  } else if (int code = BuildPlan(planArgs, "plan", out, err, *s)) {
    return code;
  }
  PrintPlan(*s, out, err);
  NavLookupDb nav(s->Db, s->Core.ParkingNames);
  return WritePlanFileOutputs(files, s->Plan, nav, s->Aircraft.Current, fileState, out, err);
}

}  // namespace orv::cli
