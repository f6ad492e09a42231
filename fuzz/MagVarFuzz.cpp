// Arbitrary bytes as a magnetic variation grid: every lookup stays inside the buffer.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "database/MagVar.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  orv::MagVarGrid grid;
  grid.Assign(std::vector<uint8_t>(data, data + size));
  double sum = 0;
  for (int lat = -90; lat <= 90; lat += 7)
    for (int lon = -180; lon < 360; lon += 11) sum += grid.At(lat, lon);
  return sum > 1e300 ? 1 : 0;
}
