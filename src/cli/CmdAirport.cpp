// orvanta-cli airport ICAO: the information lines of an airport, as the map's
// hover box shows them; with --layout OUT.png the Runway Window's drawing of
// the airport into a picture of --size WxH pixels (1000x800 unless given).
#include <ostream>

#include "cli/CliGui.h"
#include "map/AirportLayout.h"
#include "mapqt/QPainterTarget.h"
#include "mapqt/QtFontSet.h"

#include "cli/Cli.h"
#include "app/ProgramState.h"
#include "core/AppState.h"
#include "core/Runtime.h"
#include "database/NavDatabase.h"
#include "database/OvrLL.h"
#include "map/HoverText.h"

namespace orv::cli {

int CmdAirport(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  std::string icao, layout;
  int width = 1000, height = 800;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--layout" && i + 1 < args.size()) {
      layout = args[++i];
    } else if (args[i] == "--size" && i + 1 < args.size()) {
      const std::string& v = args[++i];
      const std::size_t x = v.find('x');
      const std::optional<double> w = x == std::string::npos ? std::nullopt : ParseNumber(v.substr(0, x));
      const std::optional<double> h = x == std::string::npos ? std::nullopt : ParseNumber(v.substr(x + 1));
      if (!w || !h || *w < 50 || *h < 50 || *w > 8000 || *h > 8000) {
        err << "airport: --size must be WxH, each 50 to 8000\n";
        return 2;
      }
      width = static_cast<int>(*w), height = static_cast<int>(*h);
    } else if (icao.empty() && !args[i].starts_with("--")) {
      icao = args[i];
    } else {
      icao.clear();
      break;
    }
  }
  if (icao.empty()) {
    err << "airport: expected one ICAO code\nusage: orvanta-cli airport ICAO [--layout OUT.png [--size WxH]]\n";
    return 2;
  }
  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;
  [[maybe_unused]] AppState& state = s.Core;
  NavDatabase& db = s.Db;
  // The first airport of the array with this code, as the selection window's
  // search finds it.
  const std::string code = UCase(Trim(Utf8ToLatin1(icao)));
  for (const AirportRec& airport : db.Airports.Airports) {
    if (code.empty() || !IsAirportSlotUsed(airport) || UCase(airport.Icao.Trimmed()) != code) continue;
    if (!layout.empty()) {
      std::unique_ptr<QGuiApplication> app = EnsureGuiApplication();
      QtFontSet fonts;
      QPainterTarget target(fonts, width, height);
      DrawAirportLayout(target, db, airport, state);
      if (!target.SavePng(layout)) {
        err << "airport: " << layout << ": cannot write the file\n";
        return 1;
      }
      out << "layout of " << Latin1ToUtf8(std::string(airport.Icao.Trimmed())) << " written to " << layout << " ("
          << width << "x" << height << ")\n";
      return 0;
    }
    for (const std::string& line : AirportInfoLines(airport, state)) out << Latin1ToUtf8(line) << '\n';
    return 0;
  }
  err << kNoIcaoMatchText << '\n';
  return 1;
}

}  // namespace orv::cli
