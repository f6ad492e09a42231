// orvanta-cli: the headless core for scripts and checks. Each command is a
// function that writes to the given streams and returns the exit code.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace orv {
class IpcPlatform;
class StartupLoader;
struct AppState;
struct NavDatabase;
struct ProgramState;
}

namespace orv::cli {

using Args = std::vector<std::string>;

int Run(const Args& args, std::ostream& out, std::ostream& err);

// The commands. Args hold what follows the command name; options that apply
// to all commands (such as --appdir) have been taken out into the context.
struct Context {
  std::string appDir = ".";
};

int CmdDistance(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdLoad(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// plan DEP DEST [--high|--low|--navaid] [--aircraft N] [--level FL]: builds a
// plan on the loaded database and prints its table and totals. 1 when the
// database does not load or no route exists.
int CmdPlan(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// fly DEP DEST [plan options] [--autopilot] [--time-scale N]: builds the plan
// and flies it with the built-in simulator; prints takeoff, each passed
// waypoint with its ATA cells, and the landing. 1 when it did not land at the
// destination.
int CmdFly(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// zones DEP DEST [plan options]: builds the plan, runs the control zone check
// and prints each marked row (row, code, the marked name cell, the zone) and
// the number of marks.
int CmdZones(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdFind(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdAirport(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdMagvar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// "render": the map of the loaded database into a PNG or SVG picture.
int CmdRender(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// "hover": the hover box's lines for the pointer resting on a position of a view.
int CmdHover(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// "sidstar": the departure or arrival route worded for a runway of a plan.
int CmdSidstar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// "print": the papers of a plan into a PDF file.
int CmdPrint(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);

// "simlink [--sim SOURCE] status | set WHAT VALUE...": connects to the source
// (builtin by default), prints every value read or runs one writer. 1 when the
// connection is refused ("Unable to connect to Flight Simulator" and the
// channel's " Msg #N") or a write fails.
int CmdSimlink(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// The same over a given platform; args start with status or set.
int RunSimlink(const Args& args, IpcPlatform& platform, std::ostream& out, std::ostream& err);

// The network data: "download weather|ivao|vatsim [--url URL] [--yes]" runs
// the download sequence; "online [--ivao|--vatsim] [--file F]" prints the
// parsed pilots and stations; "metar [--file F] [ICAO...]" the weather
// lines of the hover box; "tracks nat|pacific [--file F]" one line a track.
int CmdDownload(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdOnline(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdMetar(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
int CmdTracks(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);

// "logbook [--csv]": the headings, one line a flight and the total line of
// frmLogbook, or the book as CSV. 1 when the book cannot be read completely.
int CmdLogbook(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);
// "replay FILE.rcd [--gpx OUT]": the description, the sample count and one
// line a sample with the labels of the stepping view; the track as GPX.
// 1 when the recording is refused.
int CmdReplay(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err);

// "load" with the given readers: the start-up's progress texts on out, its
// messages on err, then "<Name> <count>" for each array. 1 when the start-up
// ends the program. CmdLoad runs it with the database's own readers.
int RunLoad(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err, StartupLoader& loader);

// Runs the program's start-up on s (made on the context's folder) without its
// progress texts; messages, and what ends the program, are shown on err.
// False when the start-up ended the program.
bool OpenProgram(const Context& ctx, ProgramState& s, std::ostream& err);

// A whole argument as a finite decimal number ("+" allowed); anything else is
// refused rather than read as 0, so that a typing slip is not taken for 0.
std::optional<double> ParseNumber(const std::string& text);

}  // namespace orv::cli
