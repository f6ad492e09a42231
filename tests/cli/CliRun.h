// Runs orvanta-cli in process for the command tests: the exit code and what
// the command wrote on each stream.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>

#include "cli/Cli.h"

namespace orv::test {

struct CliRun {
  int code = -1;
  std::string out, err;
};

// The command line args, after "--appdir DIR" when a folder is given.
inline CliRun RunCli(cli::Args args, const std::filesystem::path& appDir = {}) {
  if (!appDir.empty()) args.insert(args.begin(), {"--appdir", appDir.string()});
  std::ostringstream out, err;
  CliRun r;
  r.code = cli::Run(args, out, err);
  r.out = out.str();
  r.err = err.str();
  return r;
}

}  // namespace orv::test
