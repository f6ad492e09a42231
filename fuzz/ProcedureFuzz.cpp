// Arbitrary bytes as sid.orv or star.orv: the reader never leaves the buffer,
// keeps at most the bound of procedures, gives every procedure its points
// plus the two airport ends, and agrees with the probe the menu uses.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "planning/StoredProcedures.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::span<const uint8_t> file(data, size);
  // The first block's airport is the one asked for, so that the fuzzer
  // reaches the points without guessing a code.
  std::string airport = size >= 10 ? std::string(reinterpret_cast<const char*>(data), 10) : std::string("EDDF");
  orv::ProcedureEnds ends{"EDDF", "EDDM", 50.0f, 8.5f, 48.3f, 11.7f};
  orv::ProcedureFileRead read = orv::ReadProcedures(file, airport, ends, "sid.orv");
  if (read.Procedures.size() > orv::kMaxProcedures) std::abort();
  for (const orv::ProcedureRec& p : read.Procedures)
    if (p.Points.size() != static_cast<std::size_t>(p.PointCount) + 2) std::abort();
  if (!read.Procedures.empty() && !orv::HasProcedures(file, airport)) std::abort();
  return 0;
}
