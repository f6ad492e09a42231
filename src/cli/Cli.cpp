#include "cli/Cli.h"

#include <functional>
#include <ostream>
#include <string_view>

namespace orv::cli {

namespace {

struct Command {
  std::string_view name;
  std::string_view usage;
  int (*run)(const Context&, const Args&, std::ostream&, std::ostream&);
};

constexpr Command kCommands[] = {
    {"load", "--appdir DIR load", CmdLoad},
    {"distance", "distance LAT1 LON1 LAT2 LON2", CmdDistance},
    {"plan",
     "--appdir DIR plan DEP DEST|--open FILE [--high|--low|--navaid] [--aircraft N] [--level FL] [--save FILE] "
     "[--export FORMAT[,FORMAT...] --out DIR]",
     CmdPlan},
    {"fly",
     "--appdir DIR fly DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL] [--autopilot] "
     "[--time-scale N] [--record FILE.rcd] [--log] [--traffic N]",
     CmdFly},
    {"zones", "--appdir DIR zones DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]", CmdZones},
    {"find", "find KIND TEXT", CmdFind},
    {"airport", "airport ICAO [--layout OUT.png [--size WxH]]", CmdAirport},
    {"magvar", "magvar LAT LON", CmdMagvar},
    {"render",
     "--appdir DIR render --center LAT,LON|ICAO --range NM [--size WxH] [--layers NAME=on|off,...] "
     "[--round-world] [--online ivao|vatsim] [--weather] [--tracks nat|pacific|both] [--passes N] --out FILE.png|FILE.svg|FILE.pdf",
     CmdRender},
    {"hover",
     "--appdir DIR hover --center LAT,LON|ICAO --range NM [--size WxH] [--layers NAME=on|off,...] "
     "[--online ivao|vatsim] [--weather] [--tracks nat|pacific|both] --at LAT,LON|ICAO",
     CmdHover},
    {"simlink",
     "simlink [--sim SOURCE] status | set com1|nav1|adf|heading-bug|ap-master|ap-heading-hold|position VALUE...",
     CmdSimlink},
    {"sidstar",
     "--appdir DIR sidstar DEP DEST --runway RWY [--arrival] [--high|--low|--navaid] [--aircraft N] [--level FL] "
     "[--pdf OUT.pdf]",
     CmdSidstar},
    {"print",
     "--appdir DIR print DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL] [--parts gfi,wplist,ctrz] "
     "--pdf OUT.pdf",
     CmdPrint},
    {"download", "--appdir DIR download weather|ivao|vatsim [--url URL] [--yes]", CmdDownload},
    {"online", "--appdir DIR online [--ivao|--vatsim] [--file F]", CmdOnline},
    {"metar", "--appdir DIR metar [--file F] [ICAO...]", CmdMetar},
    {"tracks", "--appdir DIR tracks nat|pacific [--file F]", CmdTracks},
    {"logbook", "--appdir DIR logbook [--csv] [--pdf OUT.pdf]", CmdLogbook},
    {"replay", "replay FILE.rcd [--gpx OUT.gpx]", CmdReplay},
};

void Usage(std::ostream& err) {
  err << "usage: orvanta-cli [--appdir DIR] COMMAND [ARGS]\ncommands:\n";
  for (const Command& c : kCommands) err << "  " << c.usage << "\n";
}

}  // namespace

int Run(const Args& args, std::ostream& out, std::ostream& err) {
  Context ctx;
  Args rest;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--appdir" && i + 1 < args.size()) {
      ctx.appDir = args[++i];
    } else if (args[i].rfind("--appdir=", 0) == 0) {
      ctx.appDir = args[i].substr(9);
    } else {
      rest.push_back(args[i]);
    }
  }
  if (rest.empty()) {
    Usage(err);
    return 2;
  }
  for (const Command& c : kCommands) {
    if (rest[0] == c.name) return c.run(ctx, Args(rest.begin() + 1, rest.end()), out, err);
  }
  err << "orvanta-cli: unknown command '" << rest[0] << "'\n";
  Usage(err);
  return 2;
}

}  // namespace orv::cli
