// orvanta-cli distance LAT1 LON1 LAT2 LON2: the great-circle and rhumb-line
// legs between two points, as the planner computes them.
#include <charconv>
#include <cmath>
#include <optional>
#include <ostream>
#include <string>

#include "cli/Cli.h"
#include "core/Geodesy.h"
#include "core/Runtime.h"

namespace orv::cli {

namespace {

constexpr const char* kDistanceUsage = "usage: orvanta-cli distance LAT1 LON1 LAT2 LON2";

int Refuse(std::ostream& err, const std::string& why) {
  err << "distance: " << why << "\n" << kDistanceUsage << "\n";
  return 2;
}

}  // namespace

std::optional<double> ParseNumber(const std::string& text) {
  const char* first = text.data();
  const char* last = text.data() + text.size();
  if (first != last && *first == '+') ++first;
  double value = 0;
  auto [end, ec] = std::from_chars(first, last, value, std::chars_format::general);
  if (first == last || ec != std::errc() || end != last || !std::isfinite(value)) return std::nullopt;
  return value;
}

int CmdDistance(const Context&, const Args& args, std::ostream& out, std::ostream& err) {
  if (args.size() != 4) return Refuse(err, "expected four numbers");
  double v[4];
  for (int i = 0; i < 4; ++i) {
    std::optional<double> n = ParseNumber(args[static_cast<size_t>(i)]);
    if (!n) return Refuse(err, "not a number: '" + args[static_cast<size_t>(i)] + "'");
    v[i] = *n;
  }
  if (std::fabs(v[0]) > 90 || std::fabs(v[2]) > 90) return Refuse(err, "latitude beyond 90 degrees");

  float lat1 = CSng(v[0]), lon1 = CSng(v[1]), lat2 = CSng(v[2]), lon2 = CSng(v[3]);
  out << "great-circle: " << Format(GcDistance(lat1, lon1, lat2, lon2), "0.00") << " nm, course "
      << Format(GcCourse(lat1, lon1, lat2, lon2), "0.00") << "\n";
  out << "rhumb-line: " << Format(RhumbDistance(lat1, lon1, lat2, lon2), "0.00") << " nm, course "
      << Format(RhumbCourse(lat1, lon1, lat2, lon2), "0.00") << "\n";
  return 0;
}

}  // namespace orv::cli
