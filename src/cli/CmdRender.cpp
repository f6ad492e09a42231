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
#include "cli/CliView.h"
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

bool EndsWithNoCase(std::string_view text, std::string_view tail) {
  if (text.size() < tail.size()) return false;
  return UCase(text.substr(text.size() - tail.size())) == UCase(tail);
}

}  // namespace

int CmdRender(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  ViewOptions o;
  std::string outFile;
  const int parsed = ParseViewArgs("render", args, o, err, [&](const std::string& a, std::size_t& i) {
    if (a != "--out") return -1;
    if (i + 1 >= args.size()) {
      err << "render: --out needs a value\n";
      return 2;
    }
    outFile = args[++i];
    return 0;
  });
  if (parsed) return parsed;
  if (o.center.empty() || outFile.empty()) {
    err << "render: --center and --out are required\n";
    return 2;
  }
  const bool svg = EndsWithNoCase(outFile, ".svg");
  const bool pdf = EndsWithNoCase(outFile, ".pdf");
  if (!svg && !pdf && !EndsWithNoCase(outFile, ".png")) {
    err << "render: --out must name a .png, .svg or .pdf file\n";
    return 2;
  }

  ProgramState s(ctx.appDir);
  SystemClock clock;
  ProgramLayers programLayers(s, clock);
  if (int code = OpenView("render", ctx, o, s, out, err)) return code;
  ViewState& view = s.View;
  const MapLayers& layers = s.Layers;

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
    ok = WriteMapPdf(outFile, fonts, scene, renderer, &why) > 0;
  } else if (svg) {
    SvgPicture picture(fonts, o.width, o.height, QStringLiteral("Orvanta map"));
    PrepareMapPicture(picture.Target(), view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    renderer.DrawMap(scene, picture.Target());
    ok = picture.Save(outFile, &why);
  } else {
    QPainterTarget target(fonts, o.width, o.height);
    PrepareMapPicture(target, view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    renderer.DrawMap(scene, target);
    ok = target.SavePng(outFile);
    if (!ok) why = "cannot write the file";
  }
  if (!ok) {
    err << "render: " << outFile << ": " << why << "\n";
    return 1;
  }
  out << "rendered " << outFile << " (" << o.width << "x" << o.height << ", " << o.range << " NM, "
      << Latin1ToUtf8(renderer.PositionStatus()) << ", " << Latin1ToUtf8(renderer.MagVarStatus()) << ")\n";
  return 0;
}

}  // namespace orv::cli
