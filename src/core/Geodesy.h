// Navigation on a sphere measured in nautical miles by minutes of arc: one
// degree of arc is exactly 60 NM and no earth radius enters. Every interface
// takes and gives degrees; radians live only inside the routines.
//
// Precision is part of the results. The navigation routines take their
// coordinates as 32-bit floats (so that positions compare as the database
// records hold them), keep the central angle of the great-circle routines in a
// 32-bit float, and use the program's own rounded constants below. Do not
// replace any of them with more exact values: other modules compare against
// the figures these give.
#pragma once

namespace orv {

// The stored constants. The third one carries the name it always had; its value
// is three times pi, and the arc tangent below halves it where it needs the
// straight-down angle.
inline constexpr double kPi = 3.14159265;
inline constexpr double kTwoPi = 6.2831853;
inline constexpr double kThreePiOverTwo = 9.424777950000001;
// Radians per degree with the stored pi: every drawn angle of the chart.
inline constexpr double kDegToRad = kPi / 180.0;
// Pi to the double's full precision, for the figures that were always worked
// out with it (the route search's distance bounds, the arcs of the picture
// target, the database manager's sources); they differ from the stored pi's
// from the ninth digit on.
inline constexpr double kPiExact = 3.14159265358979323846;
// Degree factor of the fast offset routine, a single-precision value.
inline constexpr float kDegFactor = 0.017453f;

// A position as the single-precision records hold it.
struct LatLon {
  float Lat = 0;
  float Lon = 0;
};

// degrees * 3.14159265 / 180
double DegToRad(double degrees);
// radians * 180 / 3.14159265
double RadToDeg(double radians);

// Arc cosine through the arc tangent. Arguments beyond +-0.99999 are held at
// +-0.99999, which keeps the square root away from zero: the smallest angle it
// gives is about 0.00447 rad (15.4 NM on the sphere). Exactly 0 gives pi / 2.
double ACos(double x);

// Angle of the vector (x, y) in 0 .. 2 pi, built on the one-argument arc
// tangent and the stored constants. (0, 0) gives 0.
double Atan2(double y, double x);

// Floating remainder a - b * floor(a / b): in 0 .. b for a positive b.
double FloatMod(double a, double b);

// Great-circle distance in NM and initial course in degrees (0 .. 360). When a
// coordinate of the two points is equal, the second point's one is first raised
// by 1e-5 degree (in single precision), so a point to itself is not 0 NM.
double GcDistance(float lat1, float lon1, float lat2, float lon2);
double GcCourse(float lat1, float lon1, float lat2, float lon2);

// Rhumb-line course (degrees) and distance (NM), the shorter way round in
// longitude. RhumbCourse raises equal coordinates by 1e-9, RhumbDistance by 1e-5.
double RhumbCourse(float lat1, float lon1, float lat2, float lon2);
double RhumbDistance(float lat1, float lon1, float lat2, float lon2);

// One-step repair of a heading: above 360 loses 360, below 0 gains 360, once.
// 0 and 360 both stay as they are.
double Wrap360(double degrees);

// Absolute difference of two bearings, folded to at most 180.
double AngleDiff(double a, double b);

// The position distance NM from (lat, lon) along course, by the fast flat
// approximation used for short offsets. Every step is single precision.
LatLon OffsetLatLon(float lat, float lon, float course, float distance);

}  // namespace orv
