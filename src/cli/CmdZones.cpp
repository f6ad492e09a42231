// orvanta-cli zones DEP DEST: builds the plan as "plan" does and runs the
// control zone check of "Check Control Zone" on it, printing the rows it
// marks.
#include <memory>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "cli/CliPlan.h"
#include "core/Runtime.h"

namespace orv::cli {

int CmdZones(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  PlanArgs planArgs;
  Args rest;
  std::string why;
  if (!ParsePlanArgs(args, planArgs, rest, why) || !rest.empty() || planArgs.Airports.size() != 2) {
    err << "zones: " << (why.empty() ? "expected the departure and the destination airport" : why)
        << "\nusage: orvanta-cli --appdir DIR zones DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]\n";
    return 2;
  }
  auto s = std::make_unique<ProgramState>(ctx.appDir);
  if (int code = BuildPlan(planArgs, "zones", out, err, *s)) return code;
  CheckControlZones(*s, true);
  const ZoneCheck& check = s->ZoneMarks;
  const WPTable& table = s->Panel.Table;
  for (std::size_t i = 0; i < check.Rows.size(); ++i) {
    const int row = check.Rows[i];
    const AirspaceRec& zone = s->Db.Shapes.Airspaces[static_cast<std::size_t>(check.Zones[i])];
    const std::string line = std::to_string(row) + '\t' + table.Text(row + 1, WPTable::kCode) + '\t' +
                             table.Text(row + 1, WPTable::kName) + '\t' + std::string(zone.Name.Trimmed());
    out << Latin1ToUtf8(line) << '\n';
  }
  out << "ViolationCount " << check.ViolationCount << '\n';
  return 0;
}

}  // namespace orv::cli
