// Temporary stand-in for core/Geodesy.h while that module is written in
// parallel. Once core/Geodesy.h exists it is used instead and this file can go.
// The fallback follows the same sphere of 60 NM per degree, single-precision
// inputs and zero-length raises, so that figures match the real routines.
#pragma once

#if __has_include("core/Geodesy.h")
#include "core/Geodesy.h"
#else

#include <cmath>
#include <cstdint>
#include <string>

#include "core/Runtime.h"

namespace orv {

namespace geoshim {
inline constexpr double kPi = 3.14159265;
inline constexpr double kTwoPi = 6.2831853;
inline double Rad(double deg) { return deg * kPi / 180.0; }
inline double ACos(double x) {
  if (x > 0.99999) x = 0.99999;
  if (x < -0.99999) x = -0.99999;
  if (x == 0) return kPi / 2;
  return std::atan(-x / std::sqrt(1 - x * x)) + 2 * std::atan(1.0);
}
inline double FloatMod(double a, double b) { return a - b * std::floor(a / b); }
inline double Stretch(double lat) { return std::log((std::sin(lat) + 1) / std::cos(lat)); }
}  // namespace geoshim

inline double Wrap360(double degrees) {
  if (degrees > 360) degrees -= 360;
  if (degrees < 0) degrees += 360;
  return degrees;
}

inline double AngleDiff(double a, double b) {
  double d = std::fabs(a - b);
  return d >= 180 ? 360 - d : d;
}

inline double GcDistance(double lat1, double lon1, double lat2, double lon2) {
  float la1 = CSng(lat1), lo1 = CSng(lon1), la2 = CSng(lat2), lo2 = CSng(lon2);
  if (lo1 == lo2) lo2 = CSng(lo2 + 1e-5);
  if (la1 == la2) la2 = CSng(la2 + 1e-5);
  double a1 = geoshim::Rad(la1), b1 = geoshim::Rad(lo1), a2 = geoshim::Rad(la2), b2 = geoshim::Rad(lo2);
  double c = std::sin(a1) * std::sin(a2) + std::cos(a1) * std::cos(a2) * std::cos(b1 - b2);
  return geoshim::ACos(c) * 180.0 / geoshim::kPi * 60.0;
}

inline double GcCourse(double lat1, double lon1, double lat2, double lon2) {
  float la1 = CSng(lat1), lo1 = CSng(lon1), la2 = CSng(lat2), lo2 = CSng(lon2);
  if (lo1 == lo2) lo2 = CSng(lo2 + 1e-5);
  if (la1 == la2) la2 = CSng(la2 + 1e-5);
  double a1 = geoshim::Rad(la1), b1 = geoshim::Rad(lo1), a2 = geoshim::Rad(la2), b2 = geoshim::Rad(lo2);
  float d = CSng(geoshim::ACos(std::sin(a1) * std::sin(a2) + std::cos(a1) * std::cos(a2) * std::cos(b1 - b2)));
  if (d == 0) d = 1e-6f;
  double x = (std::sin(a2) - std::cos(d) * std::sin(a1)) / (std::sin(d) * std::cos(a1));
  double c = std::sin(b2 - b1) <= 0 ? geoshim::kTwoPi - geoshim::ACos(x) : geoshim::ACos(x);
  return Wrap360(CSng(c) * 180.0 / geoshim::kPi);
}

inline double RhumbCourse(double lat1, double lon1, double lat2, double lon2) {
  float la1 = CSng(lat1), lo1 = CSng(lon1), la2 = CSng(lat2), lo2 = CSng(lon2);
  if (lo1 == lo2) lo2 = CSng(lo2 + 1e-9);
  if (la1 == la2) la2 = CSng(la2 + 1e-9);
  double a1 = geoshim::Rad(la1), b1 = geoshim::Rad(lo1), a2 = geoshim::Rad(la2), b2 = geoshim::Rad(lo2);
  double west = geoshim::FloatMod(b2 - b1, geoshim::kTwoPi);
  double east = geoshim::FloatMod(b1 - b2, geoshim::kTwoPi);
  double dphi = geoshim::Stretch(a2) - geoshim::Stretch(a1);
  double c = east >= west ? geoshim::FloatMod(std::atan2(west, dphi), geoshim::kTwoPi)
                          : geoshim::FloatMod(std::atan2(-east, dphi), geoshim::kTwoPi);
  return Wrap360(c * 180.0 / geoshim::kPi);
}

inline double RhumbDistance(double lat1, double lon1, double lat2, double lon2) {
  float la1 = CSng(lat1), lo1 = CSng(lon1), la2 = CSng(lat2), lo2 = CSng(lon2);
  if (lo1 == lo2) lo2 = CSng(lo2 + 1e-5);
  if (la1 == la2) la2 = CSng(la2 + 1e-5);
  double a1 = geoshim::Rad(la1), b1 = geoshim::Rad(lo1), a2 = geoshim::Rad(la2), b2 = geoshim::Rad(lo2);
  double west = geoshim::FloatMod(b2 - b1, geoshim::kTwoPi);
  double east = geoshim::FloatMod(b1 - b2, geoshim::kTwoPi);
  double dlon = west < east ? west : east;
  double dlat = a2 - a1;
  double dphi = geoshim::Stretch(a2) - geoshim::Stretch(a1);
  double q = std::fabs(dlat) < std::sqrt(1e-15) ? std::cos(a1) : dlat / dphi;
  return std::sqrt(dlat * dlat + q * q * dlon * dlon) * 180.0 / geoshim::kPi * 60.0;
}

// Minutes as "hh:mm".
inline std::string MinutesToHours(int32_t minutes) {
  return Format(minutes / 60, "00") + ":" + Format(minutes % 60, "00");
}

inline std::string LatToText(double lat, bool decimalSeconds) {
  std::string out = lat < 0 ? "S" : "N";
  double a = std::fabs(lat);
  double deg = std::trunc(a);
  double minutes = (a - deg) * 60;
  out += Format(deg, "00") + "\xB0";
  if (decimalSeconds) return out + Format(minutes, "00.00") + "'";
  double whole = std::trunc(minutes);
  return out + Format(whole, "00") + "'" + Format((minutes - whole) * 60, "00.00") + "\"";
}

inline std::string LonToText(double lon, bool decimalSeconds) {
  std::string out = lon < 0 ? "W" : "E";
  double a = std::fabs(lon);
  double deg = std::trunc(a);
  double minutes = (a - deg) * 60;
  out += Format(deg, "000") + "\xB0";
  if (decimalSeconds) return out + Format(minutes, "00.00") + "'";
  double whole = std::trunc(minutes);
  return out + Format(whole, "00") + "'" + Format((minutes - whole) * 60, "00.00") + "\"";
}

}  // namespace orv

#endif
