#include "core/Geodesy.h"

#include <cmath>

#include "core/Runtime.h"

namespace orv {

double DegToRad(double degrees) { return degrees * kPi / 180; }

double RadToDeg(double radians) { return radians * 180 / kPi; }

double ACos(double x) {
  if (x > 0.99999) x = 0.99999;
  if (x < -0.99999) x = -0.99999;
  if (x == 0) return kPi / 2;
  return std::atan(-x / std::sqrt(1 - x * x)) + 2 * std::atan(1.0);
}

double Atan2(double y, double x) {
  if (x > 0) {
    double a = std::atan(y / x);
    return y < 0 ? a + kTwoPi : a;  // fourth quadrant: keep the result positive
  }
  if (x < 0) return std::atan(y / x) + kPi;
  if (y > 0) return kPi / 2;
  if (y < 0) return kThreePiOverTwo / 2;
  return 0;
}

double FloatMod(double a, double b) { return a - b * std::floor(a / b); }

namespace {

// The zero-length guard shared by the routines: an equal coordinate of the
// second point is raised before anything is computed, in single precision as
// the point is held. The raise keeps later divisions defined.
void RaiseEqual(float lat1, float lon1, float& lat2, float& lon2, double raise) {
  if (lon1 == lon2) lon2 = CSng(lon2 + raise);
  if (lat1 == lat2) lat2 = CSng(lat2 + raise);
}

// The central angle between two points in radians, kept in single precision.
float CentralAngle(double lat1, double lon1, double lat2, double lon2) {
  double cosAngle = std::sin(lat1) * std::sin(lat2) + std::cos(lat1) * std::cos(lat2) * std::cos(lon1 - lon2);
  return CSng(ACos(cosAngle));
}

// The latitude stretch of the Mercator projection between two latitudes.
double LatitudeStretch(double lat1, double lat2) {
  return std::log((std::sin(lat2) + 1) / std::cos(lat2)) - std::log((std::sin(lat1) + 1) / std::cos(lat1));
}

}  // namespace

double GcDistance(float lat1, float lon1, float lat2, float lon2) {
  RaiseEqual(lat1, lon1, lat2, lon2, 1e-5);
  float d = CentralAngle(DegToRad(lat1), DegToRad(lon1), DegToRad(lat2), DegToRad(lon2));
  return RadToDeg(d) * 60;
}

double GcCourse(float lat1, float lon1, float lat2, float lon2) {
  RaiseEqual(lat1, lon1, lat2, lon2, 1e-5);
  double la1 = DegToRad(lat1), lo1 = DegToRad(lon1), la2 = DegToRad(lat2), lo2 = DegToRad(lon2);
  float d = CentralAngle(la1, lo1, la2, lo2);
  if (d == 0) d = CSng(1e-6);
  // The trigonometry itself runs in double precision on the single-precision angle.
  double angle = d;
  double x = (std::sin(la2) - std::cos(angle) * std::sin(la1)) / (std::sin(angle) * std::cos(la1));
  float course = std::sin(lo2 - lo1) <= 0 ? CSng(kTwoPi - ACos(x)) : CSng(ACos(x));
  return Wrap360(RadToDeg(course));
}

double RhumbCourse(float lat1, float lon1, float lat2, float lon2) {
  RaiseEqual(lat1, lon1, lat2, lon2, 1e-9);
  double la1 = DegToRad(lat1), lo1 = DegToRad(lon1), la2 = DegToRad(lat2), lo2 = DegToRad(lon2);
  double dlonWest = FloatMod(lo2 - lo1, kTwoPi);
  double dlonEast = FloatMod(lo1 - lo2, kTwoPi);
  double dphi = LatitudeStretch(la1, la2);
  double course = dlonEast >= dlonWest ? FloatMod(Atan2(dlonWest, dphi), kTwoPi)
                                       : FloatMod(Atan2(-dlonEast, dphi), kTwoPi);
  return Wrap360(RadToDeg(course));
}

double RhumbDistance(float lat1, float lon1, float lat2, float lon2) {
  RaiseEqual(lat1, lon1, lat2, lon2, 1e-5);
  double la1 = DegToRad(lat1), lo1 = DegToRad(lon1), la2 = DegToRad(lat2), lo2 = DegToRad(lon2);
  double dlonWest = FloatMod(lo2 - lo1, kTwoPi);
  double dlonEast = FloatMod(lo1 - lo2, kTwoPi);
  double dlon = dlonEast < dlonWest ? dlonEast : dlonWest;
  double dphi = LatitudeStretch(la1, la2);
  double dlat = la2 - la1;
  // On a nearly constant latitude the stretch vanishes; the scale is then the
  // cosine of the latitude instead of the ratio.
  double scale = std::fabs(dlat) < std::sqrt(1e-15) ? std::cos(la1) : dlat / dphi;
  double length = std::sqrt(scale * scale * dlon * dlon + dlat * dlat);
  return RadToDeg(length) * 60;
}

double Wrap360(double degrees) {
  if (degrees > 360) degrees -= 360;
  if (degrees < 0) degrees += 360;
  return degrees;
}

double AngleDiff(double a, double b) {
  double d = std::fabs(a - b);
  if (d >= 180) d = 360 - d;
  return d;
}

LatLon OffsetLatLon(float lat, float lon, float course, float distance) {
  float angle = course * kDegFactor;
  float northing = CSng(std::cos(static_cast<double>(angle))) * distance / 60.0f;
  float newLat = lat + northing;
  float easting = CSng(std::sin(static_cast<double>(angle))) * distance / 60.0f;
  float midLat = (lat + newLat) / 2.0f * kDegFactor;
  float newLon = lon + easting / CSng(std::cos(static_cast<double>(midLat)));
  return {newLat, newLon};
}

}  // namespace orv
