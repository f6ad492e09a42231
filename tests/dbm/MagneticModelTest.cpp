// The World Magnetic Model against its published WMM2025 test values, and the
// variation grid built from it.
#include <gtest/gtest.h>

#include <filesystem>

#include "database/MagVar.h"
#include "dbm/MagneticModel.h"

namespace orv::dbm {
namespace {

namespace fs = std::filesystem;

MagneticModel Wmm2025() {
  MagneticModel m;
  std::string error;
  fs::path file = FindWmmFile();
  EXPECT_FALSE(file.empty()) << "data/wmm/WMM2025.COF not found above the test program";
  EXPECT_TRUE(m.Load(file, error)) << error;
  return m;
}

struct TestValue {
  double Year, HeightKm, Lat, Lon, Declination;
};

// The model's test values: date, height above the ellipsoid (km), latitude,
// longitude, declination (degrees).
constexpr TestValue kTestValues[] = {
    {2025, 28, 89, -121, -99.77},
    {2025, 48, 80, -96, -29.91},
    {2025, 54, 82, 87, 54.89},
    {2025, 65, 43, 93, 0.50},
    {2025, 51, -33, 109, -5.49},
    {2025, 39, -59, -8, -15.75},
    {2025, 3, -50, -103, 27.96},
    {2025, 94, -29, -110, 15.74},
    {2025, 66, 14, 143, -0.19},
    {2025, 18, 0, 21, 1.29},
    {2025.5, 6, -36, -137, 20.28},
    {2025.5, 63, 26, 81, 0.51},
    {2025.5, 69, 38, -144, 12.93},
    {2025.5, 50, -70, -133, 57.21},
    {2025.5, 8, -52, -75, 14.91},
    {2025.5, 8, -66, 17, -33.14},
    {2025.5, 22, -37, 140, 9.28},
    {2025.5, 40, -12, -129, 10.76},
    {2025.5, 44, 33, -118, 11.10},
    {2025.5, 50, -81, -67, 28.13},
    {2027, 37, -66, -5, -17.22},
    {2027, 67, 72, -115, 13.73},
    {2027, 44, 22, 174, 6.46},
    {2027, 54, 54, 178, 0.63},
    {2027, 57, -43, 50, -48.27},
    {2027, 44, -43, -111, 24.31},
    {2027, 12, -63, 178, 57.87},
    {2027, 38, 27, -169, 8.48},
    {2027, 61, 59, -77, -16.48},
    {2027, 67, -47, -32, -13.52},
    {2027.5, 8, 62, 53, 19.39},
    {2027.5, 77, -68, -7, -16.19},
    {2027.5, 98, -5, 159, 7.79},
    {2027.5, 34, -29, -107, 15.64},
    {2027.5, 60, 27, 65, 1.85},
    {2027.5, 73, -72, 95, -102.64},
    {2027.5, 96, -46, -85, 17.93},
    {2027.5, 0, -13, -59, -17.49},
    {2027.5, 16, 66, -178, 0.37},
    {2027.5, 72, -87, 38, -65.44},
};

TEST(MagneticModel, PublishedTestValues) {
  MagneticModel m = Wmm2025();
  EXPECT_EQ(m.Name(), "WMM-2025");
  EXPECT_DOUBLE_EQ(m.Epoch(), 2025.0);
  for (const TestValue& v : kTestValues)
    EXPECT_NEAR(m.Declination(v.Lat, v.Lon, v.HeightKm, v.Year), v.Declination, 0.006)
        << v.Year << " " << v.HeightKm << " km " << v.Lat << " " << v.Lon;
  // The field components of the first value, in nT.
  double x = 0, y = 0, z = 0;
  m.Field(89, -121, 28, 2025.0, x, y, z);
  EXPECT_NEAR(x, -255.388723, 0.05);
  EXPECT_NEAR(y, -1482.460628, 0.05);
  EXPECT_NEAR(z, 56194.288771, 0.05);
  m.Field(-66, -5, 37, 2027.0, x, y, z);
  EXPECT_NEAR(x, 16390.771268, 0.05);
  EXPECT_NEAR(z, -28608.243575, 0.05);
}

TEST(MagneticModel, ValidityAndBadCoefficientFiles) {
  MagneticModel m = Wmm2025();
  EXPECT_TRUE(m.Covers(2025.0));
  EXPECT_TRUE(m.Covers(2029.9));
  EXPECT_FALSE(m.Covers(2030.5));
  MagneticModel bad;
  std::string error;
  EXPECT_FALSE(bad.Parse("    2025.0  WMM-2025  11/13/2024\n  1   0  -29351.8  0.0  12.0\n999999\n", error));
  EXPECT_EQ(error, "line 2: a coefficient line wants n m g h gdot hdot with 0 <= m <= n <= 12");
  EXPECT_FALSE(bad.Parse("    2025.0  WMM-2025  11/13/2024\n 13   0  1 0 0 0\n999999\n", error));
  EXPECT_FALSE(bad.Parse("    2025.0  WMM-2025  11/13/2024\n  1   0  -29351.8  0.0  12.0  0.0\n", error));
  EXPECT_EQ(error, "the coefficient list is missing or not ended by its line of nines");
}

TEST(MagneticModel, GridHoldsTheDeclinationOfEveryWholeDegree) {
  MagneticModel m = Wmm2025();
  MagVarGrid grid;
  grid.Assign(BuildVariationGrid(m, 2025.5));
  ASSERT_EQ(grid.Bytes().size(), 8u + 360u * 181u * 2u);
  // The grid keeps 1/182.04 degree; a west longitude is read from 360 - lon.
  EXPECT_NEAR(grid.At(-36, -137), m.Declination(-36, -137, 0, 2025.5), 0.003);
  EXPECT_NEAR(grid.At(-36, -137), 20.28, 0.05);  // the published value is at 6 km height
  EXPECT_NEAR(grid.At(26, 81), m.Declination(26, 81, 0, 2025.5), 0.003);
  EXPECT_NEAR(MagVarAt(grid, 50.03, 8.57), m.Declination(50, 8, 0, 2025.5), 0.003);
  // The poles are taken just inside, where the declination is defined.
  EXPECT_NEAR(grid.At(90, 0), m.Declination(89.99, 0, 0, 2025.5), 0.003);
}

}  // namespace
}  // namespace orv::dbm
