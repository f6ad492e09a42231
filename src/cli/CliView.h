// The map view a command asks for: centre, range, picture size, layers and
// the folder's network, weather and track layers. The render and hover
// commands read the same options and set up the same view.
//
//   --center LAT,LON|ICAO --range NM --size WxH --layers NAME=on|off,...
//   --round-world --online ivao|vatsim --weather --tracks nat|pacific|both
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "cli/Cli.h"

namespace orv {
struct MapLayers;
}

namespace orv::cli {

struct ViewOptions {
  std::string center;
  int32_t range = 30;
  int width = 1600;
  int height = 1000;
  std::string layers;
  bool roundWorld = false;
  std::string online;    // ivao or vatsim: the folder's network file
  bool weather = false;  // the folder's METAR reports
  std::string tracks;    // nat, pacific or both: the folder's track pages
};

// An option the view does not know, with the index of the argument that
// names it; the handler may take a value (++i). Returns 0, or an exit code
// after its message; -1 for an option it does not know either.
using ExtraOption = std::function<int(const std::string& option, std::size_t& i)>;

// The view's options into o, messages prefixed "command: "; 0, or the exit
// code after the message.
int ParseViewArgs(std::string_view command, const Args& args, ViewOptions& o, std::ostream& err,
                  const ExtraOption& extra);

// NAME=on|off pairs, comma separated, into layers (Round World into roundWorld).
bool ApplyLayers(std::string_view command, std::string_view list, MapLayers& layers, bool& roundWorld,
                 std::ostream& err);

// LAT,LON or an airport's ICAO code of the loaded database; 0, or the exit
// code after the message.
int ResolvePosition(std::string_view command, std::string_view option, const std::string& text,
                    const ProgramState& s, double& lat, double& lon, std::ostream& err);

// Opens the folder's program state with the view of o: centre, Round World,
// the layers (into s.Layers) and the network, weather and track files as
// their menu entries read them. 0, or the exit code after the message.
int OpenView(std::string_view command, const Context& ctx, const ViewOptions& o, ProgramState& s,
             std::ostream& out, std::ostream& err);

}  // namespace orv::cli
