// orvanta-cli: the headless core for scripts and checks. Each command is a
// function that writes to the given streams and returns the exit code.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace orv {
class StartupLoader;
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

// "load" with the given readers: the start-up's progress texts on out, its
// messages on err, then "<Name> <count>" for each array. 1 when the start-up
// ends the program. CmdLoad runs it with the database's own readers.
int RunLoad(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err, StartupLoader& loader);

}  // namespace orv::cli
