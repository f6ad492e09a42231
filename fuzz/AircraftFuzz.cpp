// Arbitrary bytes as an aircraft file: the reader never leaves the buffer, never
// keeps more than the list's bound, and whatever it keeps is written back and
// read again unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "planning/Aircraft.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::AircraftFile file = orv::ParseAircraftFile(text, "aircraft.orv");
  if (file.Aircraft.size() > orv::kMaxAircraft) std::abort();
  orv::AircraftFile again = orv::ParseAircraftFile(orv::FormatAircraftFile(file.Aircraft), "aircraft.orv");
  if (!again.Error.empty() || again.Aircraft != file.Aircraft) std::abort();
  return 0;
}
