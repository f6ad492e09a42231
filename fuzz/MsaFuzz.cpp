// Arbitrary bytes as msa.orv: refused with a message, or read into cells
// that are written back as the same records less the empty ones.
#include <cstddef>
#include <cstdint>

#include "database/AirspaceFiles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::AirspaceTables t;
  if (orv::ParseMsaFile(data, size, t)) return 0;
  if (size % orv::kMsaRecordSize != 0 || t.MsaCells.size() > size / orv::kMsaRecordSize) __builtin_trap();
  auto again = orv::BuildMsaFile(t);
  orv::AirspaceTables back;
  if (orv::ParseMsaFile(again.data(), again.size(), back) || back.MsaCells.size() != t.MsaCells.size())
    __builtin_trap();
  return 0;
}
