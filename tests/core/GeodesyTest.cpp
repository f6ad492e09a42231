// Expected figures were computed independently, outside this code base, by a
// double-precision script that rounds to single precision where the routines
// do (coordinates on entry, the central angle, the great-circle course) and
// checked against the textbook haversine and Mercator formulas. The
// tolerances are tight enough that keeping the central angle in double, or
// using a more exact pi, moves the results outside them.
#include <gtest/gtest.h>

#include <cmath>

#include "core/Geodesy.h"

namespace orv {
namespace {

constexpr double kTight = 1e-9;

TEST(GeodesyConstants, AreTheStoredValues) {
  EXPECT_EQ(kPi, 3.14159265);
  EXPECT_EQ(kTwoPi, 6.2831853);
  EXPECT_EQ(kThreePiOverTwo, 9.424777950000001);
  EXPECT_EQ(kDegFactor, 0.017453f);
  EXPECT_DOUBLE_EQ(DegToRad(180), 3.14159265);
  EXPECT_NEAR(RadToDeg(1), 57.29577957855229, 1e-12);  // the exact pi gives 57.29577951308232
  EXPECT_DOUBLE_EQ(RadToDeg(DegToRad(123.456)), 123.456);
}

TEST(ACos, ClampsAndUsesTheArcTangentForm) {
  EXPECT_EQ(ACos(0), 1.570796325);  // half the stored pi, not the exact one
  EXPECT_EQ(ACos(1), ACos(0.99999));
  EXPECT_EQ(ACos(7), ACos(0.99999));
  EXPECT_NEAR(ACos(1), 0.004472139681776843, 1e-15);
  EXPECT_EQ(ACos(-1), ACos(-0.99999));
  EXPECT_NEAR(ACos(-1), 3.137120513908016, 1e-15);
  EXPECT_NEAR(ACos(0.5), 1.0471975511965976, 1e-15);
}

TEST(Atan2, CoversEveryQuadrantInZeroToTwoPi) {
  EXPECT_NEAR(Atan2(1, 1), 0.7853981633974483, 1e-15);
  EXPECT_NEAR(Atan2(1, -1), 2.356194486602552, 1e-15);
  EXPECT_NEAR(Atan2(-1, -1), 3.9269908133974485, 1e-15);
  EXPECT_NEAR(Atan2(-1, 1), 5.497787136602552, 1e-15);
  EXPECT_EQ(Atan2(1, 0), 1.570796325);
  EXPECT_NEAR(Atan2(-1, 0), 4.712388975, 1e-15);
  EXPECT_EQ(Atan2(0, -1), 3.14159265);
  EXPECT_EQ(Atan2(0, 0), 0);
}

TEST(FloatMod, GivesARemainderFromZeroToTheDivisor) {
  EXPECT_NEAR(FloatMod(-1, kTwoPi), 5.2831853, 1e-15);
  EXPECT_NEAR(FloatMod(7, kTwoPi), 0.7168147, 1e-15);
  EXPECT_EQ(FloatMod(-0.5, 360), 359.5);
  EXPECT_EQ(FloatMod(5, 2), 1);
  EXPECT_EQ(FloatMod(0, kTwoPi), 0);
}

TEST(Wrap360, RepairsOneTurnOnly) {
  EXPECT_EQ(Wrap360(0), 0);
  EXPECT_EQ(Wrap360(-10), 350);
  EXPECT_EQ(Wrap360(370), 10);
  EXPECT_EQ(Wrap360(360), 360);
  EXPECT_EQ(Wrap360(180), 180);
  EXPECT_EQ(Wrap360(-400), -40);
  EXPECT_EQ(Wrap360(800), 440);
}

TEST(AngleDiff, FoldsToAtMost180) {
  EXPECT_EQ(AngleDiff(10, 350), 20);
  EXPECT_EQ(AngleDiff(350, 10), 20);
  EXPECT_EQ(AngleDiff(30, 40), 10);
  EXPECT_EQ(AngleDiff(0, 180), 180);
  EXPECT_EQ(AngleDiff(90, 270), 180);
  EXPECT_EQ(AngleDiff(0, 181), 179);
}

struct RoutePair {
  const char* name;
  double lat1, lon1, lat2, lon2;
  double gcDistance, gcCourse, rhumbCourse, rhumbDistance;
};

// Airport pairs across hemispheres, the date line and the Atlantic.
constexpr RoutePair kPairs[] = {
    {"EGLL-KJFK", 51.4775, -0.461389, 40.639722, -73.778889,  //
     2989.047810262083, 287.93165181012654, 257.9191835941873, 3106.9958012180396},
    {"KJFK-EGLL", 40.639722, -73.778889, 51.4775, -0.461389,  //
     2989.047810262083, 51.343720502570186, 77.91918359418729, 3106.9958012180396},
    {"YSSY-KLAX", -33.946111, 151.177222, 33.9425, -118.408056,  //
     6508.088247890413, 60.99998241497964, 51.372435282619286, 6525.079200682306},
    {"EDDF-LSZH", 50.033333, 8.570556, 47.464722, 8.549167,  //
     154.11898408015892, 180.32225354004575, 180.3144859245278, 154.1189902735507},
    {"SBGR-FACT", -23.435556, -46.473056, -33.969444, 18.597222,  //
     3426.88492976933, 116.41838887536034, 100.48013346828226, 3474.722839308106},
    {"RJAA-PANC", 35.764722, 140.386389, 61.174444, -149.998056,  //
     2975.1463945303635, 36.41265033719969, 60.426136134262926, 3089.044986216648},
};

TEST(Navigation, KnownAirportPairs) {
  for (const RoutePair& p : kPairs) {
    SCOPED_TRACE(p.name);
    EXPECT_NEAR(GcDistance(p.lat1, p.lon1, p.lat2, p.lon2), p.gcDistance, kTight);
    EXPECT_NEAR(GcCourse(p.lat1, p.lon1, p.lat2, p.lon2), p.gcCourse, kTight);
    EXPECT_NEAR(RhumbCourse(p.lat1, p.lon1, p.lat2, p.lon2), p.rhumbCourse, kTight);
    EXPECT_NEAR(RhumbDistance(p.lat1, p.lon1, p.lat2, p.lon2), p.rhumbDistance, kTight);
  }
}

TEST(Navigation, InputsAreSinglePrecision) {
  // A difference below single precision does not exist for the routines.
  EXPECT_EQ(GcDistance(51.4775, -0.461389, 40.639722, -73.778889),
            GcDistance(51.4775000001, -0.4613890001, 40.639722, -73.778889));
  EXPECT_EQ(RhumbCourse(51.4775, -0.461389, 40.639722, -73.778889),
            RhumbCourse(51.4775000001, -0.461389, 40.6397220001, -73.778889));
}

TEST(Navigation, ZeroLengthRaisesArePartOfTheResult) {
  // The raised second point lies closer than the ACos clamp allows, so the
  // distance is that of the clamp: about 15.4 NM, not 0.
  EXPECT_NEAR(GcDistance(50, 8.5, 50, 8.5), 15.37408402612826, kTight);
  EXPECT_NEAR(GcDistance(0, 0, 0, 0), 15.37408402612826, kTight);
  // Any pair closer than the clamp gives the same figure (here 3 NM apart).
  EXPECT_NEAR(GcDistance(50, 8, 50.05, 8), 15.37408402612826, kTight);
  EXPECT_NEAR(GcCourse(50, 8.5, 50, 8.5), 89.84475923749555, kTight);
  EXPECT_NEAR(GcCourse(0, 0, 0, 0), 89.99776230526784, kTight);

  // RhumbDistance raises by 1e-5 degree: a point to itself is a few feet.
  EXPECT_NEAR(RhumbDistance(50, 8.5, 50, 8.5), 0.0007789501210952034, 1e-15);
  EXPECT_NEAR(RhumbDistance(0, 0, 0, 0), 0.000848528115843001, 1e-15);
  // RhumbCourse raises by 1e-9, which single precision loses at 50 degrees
  // but keeps at 0 degrees.
  EXPECT_EQ(RhumbCourse(50, 8.5, 50, 8.5), 0);
  EXPECT_NEAR(RhumbCourse(0, 0, 0, 0), 44.999868617371405, kTight);
}

TEST(Navigation, MeridiansAndParallels) {
  // On a meridian the course argument reaches the clamp: north reads 0.26
  // degree and south 179.74, as the program always showed.
  EXPECT_NEAR(GcCourse(10, 20, 40, 20), 0.25623473376880435, kTight);
  EXPECT_NEAR(GcCourse(40, 20, 10, 20), 179.74376383744132, kTight);
  EXPECT_NEAR(GcDistance(10, 20, 40, 20), 1800.0000521463633, kTight);
  EXPECT_NEAR(RhumbCourse(10, 20, 40, 20), 0, kTight);
  EXPECT_NEAR(RhumbCourse(40, 20, 10, 20), 180, kTight);
  EXPECT_NEAR(RhumbDistance(10, 20, 40, 20), 1800.0000000000719, kTight);

  EXPECT_NEAR(RhumbCourse(50, 10, 50, 20), 90, kTight);
  EXPECT_NEAR(RhumbCourse(50, 20, 50, 10), 270, kTight);
  EXPECT_NEAR(RhumbDistance(50, 10, 50, 20), 385.672520757289, kTight);
  EXPECT_NEAR(GcCourse(50, 10, 50, 20), 86.16565734629668, kTight);
  EXPECT_NEAR(GcCourse(50, 20, 50, 10), 273.83433259240843, kTight);
  EXPECT_NEAR(GcDistance(50, 10, 50, 20), 385.3849549237652, kTight);
  EXPECT_NEAR(GcDistance(0, 0, 0, 10), 599.9999832311752, kTight);
  EXPECT_NEAR(RhumbCourse(0, 0, 0, 10), 90.00000009711039, kTight);
}

TEST(OffsetLatLon, IsSinglePrecisionWithTheStoredDegreeFactor) {
  // The rounded factor makes an eastward offset drift north a little.
  LatLon p = OffsetLatLon(50, 8, 90, 100);
  EXPECT_EQ(p.Lat, 50.00004196166992f);
  EXPECT_EQ(p.Lon, 10.592828750610352f);
  p = OffsetLatLon(47.5, 8.5, 270, 60);
  EXPECT_EQ(p.Lat, 47.49991989135742f);
  EXPECT_EQ(p.Lon, 7.01983642578125f);
  p = OffsetLatLon(-33.9f, 151.2f, 135, 5);
  EXPECT_EQ(p.Lat, -33.95892333984375f);
  EXPECT_EQ(p.Lon, 151.27101135253906f);
  p = OffsetLatLon(60, -10, 45, 120);
  EXPECT_EQ(p.Lat, 61.41423034667969f);
  EXPECT_EQ(p.Lon, -7.109697341918945f);
  // No wrap at the date line: the longitude simply passes 180.
  p = OffsetLatLon(0, 179.9f, 90, 30);
  EXPECT_EQ(p.Lat, 1.3150770428183023e-05f);
  EXPECT_EQ(p.Lon, 180.39999389648438f);
  p = OffsetLatLon(10, 20, 0, 0);
  EXPECT_EQ(p.Lat, 10.0f);
  EXPECT_EQ(p.Lon, 20.0f);
}

}  // namespace
}  // namespace orv
