// The magnetic variation grid ("\magvar09.swf" / "\magvar10.swf"): an 8-byte
// header, then 16-bit values in 1/182.04 degree, 181 latitudes (-90..90) for
// each whole longitude 0..359. The file is read once at start and kept; a
// lookup reads the 2 bytes at the same place a seek into the file would.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orv {

class MagVarGrid {
public:
  // Reads the whole file; false when it cannot be opened.
  bool Open(const std::filesystem::path& path);
  // Takes the file's bytes as they are (tests and writers).
  void Assign(std::vector<uint8_t> bytes) { data_ = std::move(bytes); }
  bool IsOpen() const { return !data_.empty(); }
  const std::vector<uint8_t>& Bytes() const { return data_; }

  // Variation in degrees, east positive, at whole degrees lat and lon (floors
  // of a position). A place beyond the file's end gives 0.
  double At(int lat, int lon) const;

  // The 1-based byte position the value of (lat, lon) is read from.
  static int64_t FilePosition(int lat, int lon);

private:
  std::vector<uint8_t> data_;
};

// MagVarAt for a position in degrees: the grid value at the floors of lat and lon.
double MagVarAt(const MagVarGrid& grid, double lat, double lon);

// The stored divisor of the grid's units.
inline constexpr double kMagVarDivisor = 182.04;

// Builds a grid file: header of 8 bytes, then value(lat, lon) for every cell
// (for writers and tests).
template <typename F>
std::vector<uint8_t> BuildMagVarFile(F valueDegrees) {
  std::vector<uint8_t> out(8, 0);
  out.reserve(8 + 360 * 181 * 2);
  for (int lon = 0; lon < 360; ++lon)
    for (int lat = -90; lat <= 90; ++lat) {
      double v = valueDegrees(lat, lon) * kMagVarDivisor;
      long r = v < 0 ? static_cast<long>(v - 0.5) : static_cast<long>(v + 0.5);
      if (r > 32767) r = 32767;
      if (r < -32768) r = -32768;
      auto u = static_cast<uint16_t>(static_cast<int16_t>(r));
      out.push_back(static_cast<uint8_t>(u & 0xFF));
      out.push_back(static_cast<uint8_t>(u >> 8));
    }
  return out;
}

}  // namespace orv
