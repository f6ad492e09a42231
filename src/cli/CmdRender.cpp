// "render": draws the map of an application folder's database into a PNG or
// SVG file with the window's own render pass, for checks and documentation
// without the program's windows.
//
//   render --center LAT,LON|ICAO --range NM --size WxH
//          --layers NAME=on|off,... --round-world --out FILE.png|FILE.svg|FILE.pdf
//
// A PDF is the printed map: the view a window of that size shows, on one
// landscape page, as vectors.
#include <cctype>
#include <charconv>
#include <memory>
#include <ostream>
#include <sstream>

#include "cli/Cli.h"
#include "cli/CliGui.h"
#include "cli/CliUi.h"
#include "app/PlanCommands.h"
#include "app/ProgramLayers.h"
#include "cli/CliPlan.h"
#include "core/Clock.h"
#include "app/ProgramState.h"
#include "core/Runtime.h"
#include "map/RecordingTarget.h"
#include "map/RenderPass.h"
#include "mapqt/MapPicture.h"
#include "mapqt/PaperPdf.h"
#include "mapqt/QPainterTarget.h"
#include "planning/FlightPlan.h"

namespace orv::cli {

namespace {

struct RenderOptions {
  std::string center;
  int32_t range = 30;
  int width = 1600;
  int height = 1000;
  std::string layers;
  bool roundWorld = false;
  std::string out;
  std::string online;    // ivao or vatsim: the folder's network file
  bool weather = false;  // the folder's METAR reports
  std::string tracks;    // nat, pacific or both: the folder's track pages
};

bool ParseNumber(std::string_view text, double& value) {
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

bool EndsWithNoCase(std::string_view text, std::string_view tail) {
  if (text.size() < tail.size()) return false;
  return UCase(text.substr(text.size() - tail.size())) == UCase(tail);
}

// NAME=on|off pairs, comma separated, into layers.
bool ApplyLayers(std::string_view list, MapLayers& layers, bool& roundWorld, std::ostream& err) {
  while (!list.empty()) {
    std::size_t comma = list.find(',');
    std::string_view item = list.substr(0, comma);
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
    if (TrimView(item).empty()) continue;
    std::size_t eq = item.find('=');
    if (eq == std::string_view::npos) {
      err << "render: layer '" << item << "' needs =on or =off\n";
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
      err << "render: layer '" << name << "': value must be on or off\n";
      return false;
    }
    if (UCase(name) == "ROUND WORLD" || UCase(name) == "MENUROUNDWORLD") {
      roundWorld = on;
      continue;
    }
    bool* sw = FindLayerSwitch(layers, name);
    if (!sw) {
      err << "render: unknown layer '" << name << "'; known layers:\n";
      for (const std::string& n : LayerSwitchNames()) err << "  " << n << "\n";
      err << "  Round World, menuRoundWorld\n";
      return false;
    }
    *sw = on;
  }
  return true;
}

// The options into o; 0, or the exit code after the message on err.
int ParseRenderArgs(const Args& args, RenderOptions& o, std::ostream& err) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&](std::string& target) {
      if (i + 1 >= args.size()) {
        err << "render: " << a << " needs a value\n";
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
        err << "render: --range must be a zoom step label: 1 2 3 5 10 20 30 50 75 100 150 200 300 400 500 "
               "600 700 800 900 2000 4000\n";
        return 2;
      }
    } else if (a == "--size") {
      if (!value(v)) return 2;
      std::size_t x = v.find_first_of("xX");
      if (x == std::string::npos || !ParseInt(std::string_view(v).substr(0, x), o.width) ||
          !ParseInt(std::string_view(v).substr(x + 1), o.height) || o.width < 16 || o.height < 16 ||
          o.width > 10000 || o.height > 10000) {
        err << "render: --size must be WIDTHxHEIGHT in pixels, 16 to 10000 each\n";
        return 2;
      }
    } else if (a == "--layers") {
      if (!value(o.layers)) return 2;
    } else if (a == "--round-world") {
      o.roundWorld = true;
    } else if (a == "--online") {
      if (!value(o.online)) return 2;
      if (o.online != "ivao" && o.online != "vatsim") {
        err << "render: --online takes ivao or vatsim\n";
        return 2;
      }
    } else if (a == "--weather") {
      o.weather = true;
    } else if (a == "--tracks") {
      if (!value(o.tracks)) return 2;
      if (o.tracks != "nat" && o.tracks != "pacific" && o.tracks != "both") {
        err << "render: --tracks takes nat, pacific or both\n";
        return 2;
      }
    } else if (a == "--out") {
      if (!value(o.out)) return 2;
    } else {
      err << "render: unknown option '" << a << "'\n";
      return 2;
    }
  }
  return 0;
}

// The online, weather and track layers, read from the folder's files as
// their menu entries read them; false when a file cannot be read (the
// message says why).
bool LoadRenderLayers(const RenderOptions& o, ProgramState& s, std::ostream& out, std::ostream& err) {
  MessageUi msg(out, err);
  OnlineSession& on = s.Online;
  if (!o.online.empty()) {
    const OnlineNetwork net = o.online == "ivao" ? OnlineNetwork::Ivao : OnlineNetwork::Vatsim;
    on.Finder = std::make_unique<AirportFinder>(&s.Db.Airports);
    std::string caption;
    if (!ParseOnlineFile(s.Core.Folder, net, *on.Finder, on.SectorsOf(net), on.Data, msg, caption)) return false;
    on.ShowControllers = on.ShowPilots = true;
  }
  if (o.weather && !(on.ShowWeather = LoadMetar(s.Core.Folder, msg, on.Metar))) return false;
  if ((o.tracks == "nat" || o.tracks == "both") &&
      !(on.ShowNat = ParseNatTracks(s.Core.Folder, &s.Db, msg, on.NatTracks)))
    return false;
  if ((o.tracks == "pacific" || o.tracks == "both") &&
      !(on.ShowPacific = ParsePacificTracks(s.Core.Folder, &s.Db, msg, on.PacificTracks)))
    return false;
  return true;
}

}  // namespace

int CmdRender(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  RenderOptions o;
  if (int code = ParseRenderArgs(args, o, err)) return code;
  if (o.center.empty() || o.out.empty()) {
    err << "render: --center and --out are required\n";
    return 2;
  }
  const bool svg = EndsWithNoCase(o.out, ".svg");
  const bool pdf = EndsWithNoCase(o.out, ".pdf");
  if (!svg && !pdf && !EndsWithNoCase(o.out, ".png")) {
    err << "render: --out must name a .png, .svg or .pdf file\n";
    return 2;
  }
  MapLayers layers;
  if (!ApplyLayers(o.layers, layers, o.roundWorld, err)) return 2;

  // The database, loaded as the program starts, without its progress texts.
  ProgramState s(ctx.appDir);
  if (!OpenProgram(ctx, s, err)) return 1;

  ViewState& view = s.View;
  view.RoundWorld = o.roundWorld;
  const std::size_t comma = o.center.find(',');
  double lat = 0, lon = 0;
  if (comma != std::string::npos && ParseNumber(std::string_view(o.center).substr(0, comma), lat) &&
      ParseNumber(std::string_view(o.center).substr(comma + 1), lon)) {
    if (lat < -90 || lat > 90 || lon < -180 || lon > 180) {
      err << "render: --center out of range\n";
      return 2;
    }
  } else {
    const int32_t airport = FindAirportIndex(s.Db, o.center);
    if (airport >= 0) {
      lat = s.Db.Airports.Airports[static_cast<std::size_t>(airport)].Lat;
      lon = s.Db.Airports.Airports[static_cast<std::size_t>(airport)].Lon;
    } else {
      err << "render: no airport '" << o.center << "' in the database\n";
      return 1;
    }
  }
  view.CntrLat = view.CurrentLat = static_cast<float>(lat);
  view.CntrLon = view.CurrentLon = static_cast<float>(lon);

  // The online, weather and track layers, from the folder's files.
  SystemClock clock;
  ProgramLayers programLayers(s, clock);
  if (!LoadRenderLayers(o, s, out, err)) return 1;

  std::unique_ptr<QGuiApplication> app = EnsureGuiApplication();
  QtFontSet fonts;
  MapRenderer renderer;
  const int16_t zoom = static_cast<int16_t>(ZoomIndexOfLabel(o.range));
  bool ok;
  std::string why;
  if (pdf) {
    // The view of a window of --size pixels, printed.
    RecordingTarget window(o.width, o.height);
    PrepareMapPicture(window, view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    ok = WriteMapPdf(o.out, fonts, scene, renderer, &why) > 0;
  } else if (svg) {
    SvgPicture picture(fonts, o.width, o.height, QStringLiteral("Orvanta map"));
    PrepareMapPicture(picture.Target(), view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    renderer.DrawMap(scene, picture.Target());
    ok = picture.Save(o.out, &why);
  } else {
    QPainterTarget target(fonts, o.width, o.height);
    PrepareMapPicture(target, view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    renderer.DrawMap(scene, target);
    ok = target.SavePng(o.out);
    if (!ok) why = "cannot write the file";
  }
  if (!ok) {
    err << "render: " << o.out << ": " << why << "\n";
    return 1;
  }
  out << "rendered " << o.out << " (" << o.width << "x" << o.height << ", " << o.range << " NM, "
      << Latin1ToUtf8(renderer.PositionStatus()) << ", " << Latin1ToUtf8(renderer.MagVarStatus()) << ")\n";
  return 0;
}

}  // namespace orv::cli
