// "hover": the lines of the main window's hover box for the pointer resting
// on a position of a view, one a line in the box's order; nothing when the
// pointer rests on nothing.
//
//   hover --center LAT,LON|ICAO --range NM [--size WxH] [--layers ...] --at LAT,LON|ICAO
//
// The view is the render command's: the same options, the same surface of
// --size pixels.
#include <ostream>

#include "app/HoverWalk.h"
#include "app/ProgramState.h"
#include "cli/Cli.h"
#include "cli/CliView.h"
#include "core/Runtime.h"
#include "map/RecordingTarget.h"
#include "mapqt/MapPicture.h"

namespace orv::cli {

int CmdHover(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  ViewOptions o;
  std::string at;
  const int parsed = ParseViewArgs("hover", args, o, err, [&](const std::string& a, std::size_t& i) {
    if (a != "--at") return -1;
    if (i + 1 >= args.size()) {
      err << "hover: --at needs a value\n";
      return 2;
    }
    at = args[++i];
    return 0;
  });
  if (parsed) return parsed;
  if (o.center.empty() || at.empty()) {
    err << "hover: --center and --at are required\n";
    return 2;
  }
  ProgramState s(ctx.appDir);
  if (int code = OpenView("hover", ctx, o, s, out, err)) return code;
  double lat = 0, lon = 0;
  if (int code = ResolvePosition("hover", "--at", at, s, lat, lon, err)) return code;

  // The surface of the window the view fills, as the pass leaves it.
  RecordingTarget surface(o.width, o.height);
  PrepareMapPicture(surface, s.View, static_cast<int16_t>(ZoomIndexOfLabel(o.range)));
  BeginRenderPass(s.View, surface);
  // Where the pointer rests: the surface point of the position, rounded as
  // the mouse's move event rounds it.
  const double x = CLng(MapXFromLon(s.View, lon, lat));
  const double y = CLng(MapYFromLat(s.View, lat));
  HoverFind find;
  HoverWalk(s, HoverTraffic{}, x, y, find, s.Highlight);
  for (const std::string& line : find.Lines) out << Latin1ToUtf8(line) << '\n';
  return 0;
}

}  // namespace orv::cli
