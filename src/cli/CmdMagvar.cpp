// orvanta-cli magvar LAT LON: the magnetic variation the program uses at a
// position, the grid value of the whole degrees below it.
#include <cmath>
#include <ostream>

#include "cli/Cli.h"
#include "app/ProgramState.h"
#include "core/AppState.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "database/NavDatabase.h"

namespace orv::cli {

namespace {

constexpr const char* kMagvarUsage = "usage: orvanta-cli magvar LAT LON";

int Refuse(std::ostream& err, const std::string& why) {
  err << "magvar: " << why << "\n" << kMagvarUsage << "\n";
  return 2;
}

}  // namespace

int CmdMagvar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.size() != 2) return Refuse(err, "expected two numbers");
  std::optional<double> lat = ParseNumber(args[0]);
  if (!lat) return Refuse(err, "not a number: '" + args[0] + "'");
  std::optional<double> lon = ParseNumber(args[1]);
  if (!lon) return Refuse(err, "not a number: '" + args[1] + "'");
  if (std::fabs(*lat) > 90) return Refuse(err, "latitude beyond 90 degrees");
  if (std::fabs(*lon) > 360) return Refuse(err, "longitude beyond 360 degrees");

  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  [[maybe_unused]] AppState& state = s.Core;
  NavDatabase& db = s.Db;
  double variation = MagVarAt(db.MagVar, *lat, *lon);
  out << Format(variation, "0.00") << ' ' << Latin1ToUtf8(VarToText(variation)) << '\n';
  return 0;
}

}  // namespace orv::cli
