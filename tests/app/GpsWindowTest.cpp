// The GPS window's radio routing and its surface weather line.
#include <gtest/gtest.h>

#include "app/GpsWindow.h"

namespace orv {
namespace {

TEST(GpsWindow, FrequenciesGoToTheirRadio) {
  EXPECT_EQ(FrequencyTarget(0), RadioTarget::None);
  EXPECT_EQ(FrequencyTarget(117.975f), RadioTarget::Nav1);
  EXPECT_EQ(FrequencyTarget(118.0f), RadioTarget::Com1);
  EXPECT_EQ(FrequencyTarget(136.975f), RadioTarget::Adf);
  EXPECT_EQ(FrequencyTarget(350.0f), RadioTarget::Adf);
}

TEST(GpsWindow, SurfaceWeatherLine) {
  EXPECT_EQ(CloudCoverText(16384), "FEW");
  EXPECT_EQ(CloudCoverText(16385), "SCT");
  EXPECT_EQ(CloudCoverText(57344), "BKN");
  EXPECT_EQ(CloudCoverText(57345), "OVC");
  WeatherValues w;
  w.SurfaceWindDir = 270;
  w.SurfaceWindSpeed = 8;
  w.Visibility = 2;  // statute miles: 3218 m
  w.PrecipitationType = 1;
  w.PrecipitationRate = 4;
  w.CloudCoverage = {40000, 0, 0};
  w.CloudAltitude = {1200, 0, 0};
  w.SurfaceTemperature = -3;
  w.DewPoint = -5;
  w.Qnh = 998;
  EXPECT_EQ(SurfaceWeatherText(w), "27008KT 3218 +RA BKN012 M03/M05 Q0998");
  WeatherValues calm;
  calm.Visibility = 20;
  calm.SurfaceTemperature = 15;
  calm.DewPoint = 8;
  calm.Qnh = 1013;
  EXPECT_EQ(SurfaceWeatherText(calm), "00000KT CAVOK 15/08 Q1013");
}

}  // namespace
}  // namespace orv
