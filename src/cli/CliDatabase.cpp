// The database behind the commands that look things up: the program's own
// start-up with the database readers, run without its progress texts.
#include <ostream>

#include "app/ProgramLoad.h"
#include "cli/Cli.h"
#include "cli/CliUi.h"
#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Startup.h"
#include "database/DatabaseLoader.h"

namespace orv::cli {

bool OpenProgram(const Context& ctx, ProgramState& s, std::ostream& err) {
  // A stream without a buffer swallows the progress texts.
  std::ostream quiet(nullptr);
  StreamUi ui(quiet, err);
  SystemClock clock;
  return !LoadProgram(s, ui, clock).ProgramEnds();
}


}  // namespace orv::cli
