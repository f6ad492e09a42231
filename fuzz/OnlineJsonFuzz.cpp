// Arbitrary bytes as a VATSIM v3 or IVAO v2 JSON feed or a VATSIM status
// document: wrong types and missing members never fault.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "online/OnlineData.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  orv::AirportFinder finder(nullptr);
  orv::OnlineData d;
  std::string error;
  if (orv::ParseVatsimJson(text, finder, d, error) && d.Pilots.empty()) std::abort();
  if (orv::ParseIvaoJson(text, finder, d, error) && d.Pilots.empty()) std::abort();
  orv::VatsimJsonDataUrl(text);
  return 0;
}
