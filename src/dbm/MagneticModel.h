// The World Magnetic Model: a spherical harmonic model of the earth's main
// field to degree 12, read from the model's COF coefficient file, and the
// whole-degree variation grid the program reads ("\magvar09.swf").
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/FileIo.h"

namespace orv::dbm {

class MagneticModel {
public:
  static constexpr int kMaxDegree = 12;

  // The COF text: a head line "epoch name date", then lines "n m g h gdot hdot",
  // ended by a line of nines. False with a message for anything else.
  bool Parse(std::string_view text, std::string& error);
  bool Load(const std::filesystem::path& path, std::string& error);

  const std::string& Name() const { return name_; }
  double Epoch() const { return epoch_; }
  // The model is meant for five years from its epoch.
  bool Covers(double year) const { return year >= epoch_ && year <= epoch_ + 5.0; }

  // Declination in degrees, east positive, at a geodetic position (degrees),
  // height above the ellipsoid in km and a decimal year.
  double Declination(double latDeg, double lonDeg, double heightKm, double year) const;
  // North, east and down components in nT (for the tests).
  void Field(double latDeg, double lonDeg, double heightKm, double year, double& x, double& y, double& z) const;

private:
  std::string name_;
  double epoch_ = 0;
  // Indexed [n][m].
  double g_[kMaxDegree + 1][kMaxDegree + 1] = {};
  double h_[kMaxDegree + 1][kMaxDegree + 1] = {};
  double gDot_[kMaxDegree + 1][kMaxDegree + 1] = {};
  double hDot_[kMaxDegree + 1][kMaxDegree + 1] = {};
};

// The variation grid for a date: the declination at sea level for every whole
// degree, latitudes -90..90 (the poles taken a hundredth of a degree inside,
// where the declination is defined) and longitudes 0..359.
Bytes BuildVariationGrid(const MagneticModel& model, double year);

// The coefficient file kept with the program: data/wmm/WMM2025.COF, looked
// for beside the executable and in the folders above it. Empty when absent.
std::filesystem::path FindWmmFile();

}  // namespace orv::dbm
