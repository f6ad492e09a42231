// Arbitrary bytes as a logbook: the reader never leaves the buffer, accepts a
// book only when it has read all of it, and an accepted book is written back
// byte for byte.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "simlink/Logbook.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const orv::LogbookRead r = orv::ReadLogbook(bytes);
  if (r.ok != r.error.empty()) std::abort();
  if (!r.ok) return 0;
  (void)orv::LogbookGridRows(r.entries);
  (void)orv::LogbookTotalLine(r.entries);
  const orv::LogbookRead again = orv::ReadLogbook(orv::WriteLogbook(r.entries));
  if (!again.ok || again.entries.size() != r.entries.size()) std::abort();
  return 0;
}
