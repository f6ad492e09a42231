// "render": draws the map of an application folder's database into a PNG or
// SVG file with the window's own render pass, for checks and documentation
// without the program's windows.
//
//   render --center LAT,LON|ICAO --range NM --size WxH
//          --layers NAME=on|off,... --round-world --out FILE.png|FILE.svg|FILE.pdf
//          --passes N
//
// With --passes the view is drawn N times into the same picture and the
// first and the median pass are printed in milliseconds; the picture is
// written only when --out is given, after the timing, so that the figures
// hold the pass alone and anyone can time a view on their own database.
//
// A PDF is the printed map: the view a window of that size shows, on one
// landscape page, as vectors.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>
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
  int passes = 0;  // timed passes; 0 draws once for the file
  const int parsed = ParseViewArgs("render", args, o, err, [&](const std::string& a, std::size_t& i) {
    if (a != "--out" && a != "--passes") return -1;
    if (i + 1 >= args.size()) {
      err << "render: " << a << " needs a value\n";
      return 2;
    }
    const std::string& value = args[++i];
    if (a == "--out") {
      outFile = value;
      return 0;
    }
    const char* end = value.data() + value.size();
    auto r = std::from_chars(value.data(), end, passes);
    if (value.empty() || r.ec != std::errc() || r.ptr != end || passes < 1 || passes > 100000) {
      err << "render: --passes must be a whole number from 1 to 100000\n";
      return 2;
    }
    return 0;
  });
  if (parsed) return parsed;
  if (o.center.empty() || (outFile.empty() && passes == 0)) {
    err << "render: --center and --out are required\n";
    return 2;
  }
  const bool svg = EndsWithNoCase(outFile, ".svg");
  const bool pdf = EndsWithNoCase(outFile, ".pdf");
  if (!outFile.empty() && !svg && !pdf && !EndsWithNoCase(outFile, ".png")) {
    err << "render: --out must name a .png, .svg or .pdf file\n";
    return 2;
  }
  if (passes > 0 && (svg || pdf)) {
    err << "render: --passes times the picture of the window; --out must then name a .png file\n";
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
  if (passes > 0) {
    QPainterTarget target(fonts, o.width, o.height);
    PrepareMapPicture(target, view, zoom);
    MapScene scene{view, s.Core.Config, layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry};
    std::vector<double> ms;
    ms.reserve(static_cast<std::size_t>(passes));
    for (int i = 0; i < passes; ++i) {
      const auto start = std::chrono::steady_clock::now();
      renderer.DrawMap(scene, target);
      ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    const double first = ms.front();
    std::sort(ms.begin(), ms.end());
    const std::size_t n = ms.size();
    const double median = n % 2 ? ms[n / 2] : (ms[n / 2 - 1] + ms[n / 2]) / 2;
    char line[160];
    std::snprintf(line, sizeof line, "passes %d: first %.2f ms, median %.2f ms\n", passes, first, median);
    out << line;
    if (outFile.empty()) return 0;
    ok = target.SavePng(outFile);
    if (!ok) why = "cannot write the file";
  } else if (pdf) {
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
