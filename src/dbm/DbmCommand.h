// The command line of orvanta-dbm:
//   orvanta-dbm --xplane DIR --out APPDIR [--coast FILE] [--rivers FILE]
//               [--openair FILE] [--cifp DIR] [--date YYYY.Y] [--sim fs9|fsx|both]
// It prints a progress line per source and, at the end, the records written
// to every file.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace orv::dbm {

// Runs the whole build; returns the process exit code (0 success, 1 failure,
// 2 a wrong command line).
int RunDbm(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace orv::dbm
