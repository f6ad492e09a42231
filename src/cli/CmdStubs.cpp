#include <ostream>

#include "cli/Cli.h"

namespace orv::cli {

int CmdDistance(const Context&, const Args&, std::ostream&, std::ostream& err) {
  err << "distance: not built yet\n";
  return 1;
}

}  // namespace orv::cli
