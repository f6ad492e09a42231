// Arbitrary bytes as a user waypoint file: the parser stays inside the buffer,
// and what it accepts writes back to a file that parses to the same records.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "database/UserWaypoints.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<orv::UserWaypointRec> first;
  orv::UserWaypointParse parse = orv::ParseUserWaypoints(data, size, first);
  if (!parse.headerOk) return 0;
  orv::Bytes rebuilt = orv::BuildUserWaypointFile(first);
  std::vector<orv::UserWaypointRec> second;
  orv::UserWaypointParse again = orv::ParseUserWaypoints(rebuilt, second);
  // Compare field bytes rather than floats, which may hold NaNs.
  bool same = again.headerOk && !again.truncated && rebuilt == orv::BuildUserWaypointFile(second) &&
              second.size() == first.size();
  if (!same) std::abort();
  return 0;
}
