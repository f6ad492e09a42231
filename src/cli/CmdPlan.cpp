// orvanta-cli plan DEP DEST: loads the database of an application folder as
// the program does at start, builds a high altitude, low altitude or navaid
// plan between the two airports and prints the plan table and its totals.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "core/Runtime.h"

namespace orv::cli {

namespace {

constexpr const char* kPlanUsage =
    "usage: orvanta-cli --appdir DIR plan DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]";

int Refuse(std::ostream& err, const std::string& why) {
  err << "plan: " << why << "\n" << kPlanUsage << "\n";
  return 2;
}

}  // namespace

int CmdPlan(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs planArgs;
  Args rest;
  std::string why;
  if (!ParsePlanArgs(args, planArgs, rest, why)) return Refuse(err, why);
  if (!rest.empty()) return Refuse(err, "unknown option '" + rest[0] + "'");
  if (planArgs.Airports.size() != 2) return Refuse(err, "expected the departure and the destination airport");

  auto s = std::make_unique<ProgramState>(ctx.appDir);
  if (int code = BuildPlan(planArgs, "plan", out, err, *s)) return code;
  PrintPlan(*s, out, err);
  return 0;
}

}  // namespace orv::cli
