#include "cli/CliView.h"

#include <charconv>
#include <memory>
#include <ostream>

#include "app/PlanCommands.h"
#include "app/ProgramState.h"
#include "cli/CliPlan.h"
#include "cli/CliUi.h"
#include "core/Runtime.h"
#include "mapqt/MapPicture.h"

namespace orv::cli {

namespace {

bool ParseDecimal(std::string_view text, double& value) {
  text = TrimView(text);
  if (text.empty()) return false;
  const char* end = text.data() + text.size();
  auto r = std::from_chars(text.data(), end, value);
  return r.ec == std::errc() && r.ptr == end;
}

bool ParseInt(std::string_view text, int& value) {
  const char* end = text.data() + text.size();
  auto r = std::from_chars(text.data(), end, value);
  return !text.empty() && r.ec == std::errc() && r.ptr == end;
}

}  // namespace

bool ApplyLayers(std::string_view command, std::string_view list, MapLayers& layers, bool& roundWorld,
                 std::ostream& err) {
  while (!list.empty()) {
    std::size_t comma = list.find(',');
    std::string_view item = list.substr(0, comma);
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
    if (TrimView(item).empty()) continue;
    std::size_t eq = item.find('=');
    if (eq == std::string_view::npos) {
      err << command << ": layer '" << item << "' needs =on or =off\n";
      return false;
    }
    const std::string name = Trim(item.substr(0, eq));
    const std::string value = UCase(Trim(item.substr(eq + 1)));
    bool on;
    if (value == "ON" || value == "1" || value == "TRUE") {
      on = true;
    } else if (value == "OFF" || value == "0" || value == "FALSE") {
      on = false;
    } else {
      err << command << ": layer '" << name << "': value must be on or off\n";
      return false;
    }
    if (UCase(name) == "ROUND WORLD" || UCase(name) == "MENUROUNDWORLD") {
      roundWorld = on;
      continue;
    }
    bool* sw = FindLayerSwitch(layers, name);
    if (!sw) {
      err << command << ": unknown layer '" << name << "'; known layers:\n";
      for (const std::string& n : LayerSwitchNames()) err << "  " << n << "\n";
      err << "  Round World, menuRoundWorld\n";
      return false;
    }
    *sw = on;
  }
  return true;
}

int ParseViewArgs(std::string_view command, const Args& args, ViewOptions& o, std::ostream& err,
                  const ExtraOption& extra) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&](std::string& target) {
      if (i + 1 >= args.size()) {
        err << command << ": " << a << " needs a value\n";
        return false;
      }
      target = args[++i];
      return true;
    };
    std::string v;
    if (a == "--center") {
      if (!value(o.center)) return 2;
    } else if (a == "--range") {
      if (!value(v)) return 2;
      if (!ParseInt(v, o.range) || ZoomIndexOfLabel(o.range) < 0) {
        err << command
            << ": --range must be a zoom step label: 1 2 3 5 10 20 30 50 75 100 150 200 300 400 500 "
               "600 700 800 900 2000 4000\n";
        return 2;
      }
    } else if (a == "--size") {
      if (!value(v)) return 2;
      std::size_t x = v.find_first_of("xX");
      if (x == std::string::npos || !ParseInt(std::string_view(v).substr(0, x), o.width) ||
          !ParseInt(std::string_view(v).substr(x + 1), o.height) || o.width < 16 || o.height < 16 ||
          o.width > 10000 || o.height > 10000) {
        err << command << ": --size must be WIDTHxHEIGHT in pixels, 16 to 10000 each\n";
        return 2;
      }
    } else if (a == "--layers") {
      if (!value(o.layers)) return 2;
    } else if (a == "--round-world") {
      o.roundWorld = true;
    } else if (a == "--online") {
      if (!value(o.online)) return 2;
      if (o.online != "ivao" && o.online != "vatsim") {
        err << command << ": --online takes ivao or vatsim\n";
        return 2;
      }
    } else if (a == "--weather") {
      o.weather = true;
    } else if (a == "--tracks") {
      if (!value(o.tracks)) return 2;
      if (o.tracks != "nat" && o.tracks != "pacific" && o.tracks != "both") {
        err << command << ": --tracks takes nat, pacific or both\n";
        return 2;
      }
    } else {
      const int code = extra ? extra(a, i) : -1;
      if (code > 0) return code;
      if (code < 0) {
        err << command << ": unknown option '" << a << "'\n";
        return 2;
      }
    }
  }
  return 0;
}

int ResolvePosition(std::string_view command, std::string_view option, const std::string& text,
                    const ProgramState& s, double& lat, double& lon, std::ostream& err) {
  const std::size_t comma = text.find(',');
  if (comma != std::string::npos && ParseDecimal(std::string_view(text).substr(0, comma), lat) &&
      ParseDecimal(std::string_view(text).substr(comma + 1), lon)) {
    if (lat < -90 || lat > 90 || lon < -180 || lon > 180) {
      err << command << ": " << option << " out of range\n";
      return 2;
    }
    return 0;
  }
  const int32_t airport = FindAirportIndex(s.Db, text);
  if (airport < 0) {
    err << command << ": no airport '" << text << "' in the database\n";
    return 1;
  }
  lat = s.Db.Airports.Airports[static_cast<std::size_t>(airport)].Lat;
  lon = s.Db.Airports.Airports[static_cast<std::size_t>(airport)].Lon;
  return 0;
}

int OpenView(std::string_view command, const Context& ctx, const ViewOptions& o, ProgramState& s,
             std::ostream& out, std::ostream& err) {
  MapLayers layers;
  bool roundWorld = o.roundWorld;
  if (!ApplyLayers(command, o.layers, layers, roundWorld, err)) return 2;
  // The database, loaded as the program starts, without its progress texts.
  if (!OpenProgram(ctx, s, err)) return 1;
  s.Layers = layers;
  ViewState& view = s.View;
  view.RoundWorld = roundWorld;
  double lat = 0, lon = 0;
  if (int code = ResolvePosition(command, "--center", o.center, s, lat, lon, err)) return code;
  view.CntrLat = view.CurrentLat = static_cast<float>(lat);
  view.CntrLon = view.CurrentLon = static_cast<float>(lon);

  // The online, weather and track layers, read from the folder's files as
  // their menu entries read them.
  MessageUi msg(out, err);
  OnlineSession& on = s.Online;
  if (!o.online.empty()) {
    const OnlineNetwork net = o.online == "ivao" ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim;
    on.Finder = std::make_unique<AirportFinder>(&s.Db.Airports);
    std::string caption;
    if (!ParseOnlineFile(s.Core.Folder, net, *on.Finder, on.SectorsOf(net), on.Data, msg, caption)) return 1;
    on.ShowControllers = on.ShowPilots = true;
  }
  if (o.weather && !(on.ShowWeather = LoadMetar(s.Core.Folder, msg, on.Metar))) return 1;
  if ((o.tracks == "nat" || o.tracks == "both") &&
      !(on.ShowNat = ParseNatTracks(s.Core.Folder, &s.Db, msg, on.NatTracks)))
    return 1;
  if ((o.tracks == "pacific" || o.tracks == "both") &&
      !(on.ShowPacific = ParsePacificTracks(s.Core.Folder, &s.Db, msg, on.PacificTracks)))
    return 1;
  return 0;
}

}  // namespace orv::cli
