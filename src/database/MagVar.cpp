#include "database/MagVar.h"

#include <cmath>
#include <cstring>

#include "core/FileIo.h"

namespace orv {

bool MagVarGrid::Open(const std::filesystem::path& path) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) return false;
  data_ = std::move(*bytes);
  return true;
}

int64_t MagVarGrid::FilePosition(int lat, int lon) {
  if (lon < 0) lon += 360;
  return 2 * ((static_cast<int64_t>(lat) + 90) + 181 * static_cast<int64_t>(lon)) + 9;
}

double MagVarGrid::At(int lat, int lon) const {
  int64_t offset = FilePosition(lat, lon) - 1;
  if (offset < 0 || offset + 2 > static_cast<int64_t>(data_.size())) return 0.0;
  int16_t raw;
  std::memcpy(&raw, data_.data() + offset, 2);
  return raw / kMagVarDivisor;
}

double MagVarAt(const MagVarGrid& grid, double lat, double lon) {
  // Positions beyond the globe (or not numbers) have no grid cell; the range
  // check also keeps the integer conversion below defined.
  if (!(lat >= -90.0 && lat <= 90.0 && lon >= -360.0 && lon <= 360.0)) return 0.0;
  return grid.At(static_cast<int>(std::floor(lat)), static_cast<int>(std::floor(lon)));
}

}  // namespace orv
