#include <ostream>

#include "cli/Cli.h"

namespace orv::cli {

int CmdLoad(const Context&, const Args&, std::ostream&, std::ostream& err) {
  err << "load: not built yet\n";
  return 1;
}

}  // namespace orv::cli
