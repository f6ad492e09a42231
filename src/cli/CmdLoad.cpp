// "load": runs the program's start-up on an application folder and lists the
// loaded arrays, so that a database can be checked without the windows.
#include <ostream>

#include "cli/Cli.h"
#include "cli/CliUi.h"
#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Runtime.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"

namespace orv::cli {

int RunLoad(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err, StartupLoader& loader) {
  if (!args.empty()) {
    err << "load: no arguments expected\n";
    return 2;
  }
  AppState state{AppFolder(ctx.appDir)};
  StreamUi ui(out, err);
  SystemClock clock;
  StartupResult result = RunStartup(state, ui, clock, loader);
  if (result.ProgramEnds()) return 1;
  for (const ArrayCount& c : loader.Counts()) out << Latin1ToUtf8(c.Name) << ' ' << c.Count << '\n';
  return 0;
}

int CmdLoad(const Context& ctx, const Args& args, std::ostream& out, std::ostream& err) {
  NavDatabase db;
  DatabaseLoader loader(db);
  return RunLoad(ctx, args, out, err, loader);
}

}  // namespace orv::cli
