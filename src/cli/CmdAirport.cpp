// orvanta-cli airport ICAO: the information lines of an airport, as the map's
// hover box shows them.
#include <ostream>

#include "cli/Cli.h"
#include "app/ProgramState.h"
#include "core/AppState.h"
#include "core/Runtime.h"
#include "database/NavDatabase.h"
#include "database/OvrLL.h"
#include "map/HoverText.h"

namespace orv::cli {

int CmdAirport(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.size() != 1) {
    err << "airport: expected one ICAO code\nusage: orvanta-cli airport ICAO\n";
    return 2;
  }
  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  [[maybe_unused]] AppState& state = s.Core;
  NavDatabase& db = s.Db;
  // The first airport of the array with this code, as the selection window's
  // search finds it.
  const std::string code = UCase(Trim(Utf8ToLatin1(args[0])));
  for (const AirportRec& airport : db.Airports.Airports) {
    if (code.empty() || !IsAirportSlotUsed(airport) || UCase(airport.Icao.Trimmed()) != code) continue;
    for (const std::string& line : AirportInfoLines(airport, state)) out << Latin1ToUtf8(line) << '\n';
    return 0;
  }
  err << kNoIcaoMatchText << '\n';
  return 1;
}

}  // namespace orv::cli
