#include "planning/Profile.h"

#include <gtest/gtest.h>

#include "planning/Aircraft.h"
#include "planning/FakeNav.h"
#include "planning/FlightPlan.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

AircraftRec Piston() {
  return {.AircraftName = "Twin", .MaxFuel = 200, .MaxWeight = 1000, .EmptyWeight = 600, .LoadWeight = 300,
          .ClimbRate = 1000, .ClimbSpeed = 120, .DescentRate = 1000, .DescentSpeed = 150, .CruiseSpeed = 120,
          .CruiseLevel = 100, .ApproachSpeed = 90, .MinRunway = 5000, .MaxRange = 600};
}

TEST(ProfileTest, ClimbAndDescentDistances) {
  AircraftRec a = Piston();
  // 130 kts true for 10 minutes is 21.667 NM of slant path, less 1.646 NM of height.
  EXPECT_NEAR(ClimbDistance(a, 0, 10000), 21.604070, 1e-6);
  EXPECT_NEAR(DescentDistance(a, 0, 10000), 27.033282, 1e-6);
  EXPECT_EQ(ClimbMinutes(a, 0, 10000), 10);
  EXPECT_EQ(ClimbMinutes(a, 500, 10000), 10);  // 9.5 rounds half to even
  EXPECT_EQ(DescentMinutes(a, 0, 10500), 10);  // 10.5 as well
  // Missing rates give nothing rather than a division failure.
  a.ClimbRate = 0;
  EXPECT_EQ(ClimbDistance(a, 0, 10000), 0);
  EXPECT_EQ(ClimbMinutes(a, 0, 10000), 0);
}

TEST(ProfileTest, OfferedAltitudeIsLoweredForShortRoutes) {
  AircraftRec a = Piston();
  // Needed at 10000 ft from a 500 ft field: 58.64 NM; at 9000: 53.43; at 6000: 38.28.
  EXPECT_EQ(ComputeCruiseAltitude(a, 500, 0, 60), 10000);
  EXPECT_EQ(ComputeCruiseAltitude(a, 500, 0, 58), 9000);
  EXPECT_EQ(ComputeCruiseAltitude(a, 500, 0, 40), 6000);
  // Nothing fits down to 2000 ft above the field: the cruise level stays.
  EXPECT_EQ(ComputeCruiseAltitude(a, 500, 0, 10), 10000);
  // 3000 ft is still tried from a 1000 ft field (22.79 NM needed).
  EXPECT_EQ(ComputeCruiseAltitude(a, 1000, 0, 23), 3000);
  EXPECT_EQ(ComputeCruiseAltitude(a, 1000, 0, 22), 10000);
}

TEST(ProfileTest, SemicircularRule) {
  FlightPlan plan;
  struct Case {
    double course;
    int32_t altitude;
    int32_t level;
    int16_t westBound;
  } cases[] = {
      {90, 6000, 50, 0},   {90, 7000, 70, 0},    {179.9, 10000, 90, 0}, {180, 10000, 100, -1},
      {270, 7000, 60, -1}, {270, 6000, 60, -1},  {0, 35000, 350, 0},    {359, 35000, 340, -1},
  };
  for (const Case& c : cases) {
    ApplySemicircularRule(plan, c.course, c.altitude);
    EXPECT_EQ(plan.CruiseFL, c.level) << c.course << " " << c.altitude;
    EXPECT_EQ(plan.WestBound, c.westBound) << c.course;
  }
}

TEST(ProfileTest, TripFuelSplitByMiles) {
  AircraftRec a = Piston();
  FlightPlan plan;
  plan.TotalTime = 120;
  plan.TotalDistance = 200;
  plan.CruiseFL = 50;
  FuelResult fuel;
  // Endurance 5 h, 40 kg/h, factor 5, 900 kg for 2 h: 90 - 10 = 80 kg.
  ASSERT_TRUE(ComputeTripFuel(a, plan, 500, 0, fuel));
  EXPECT_FLOAT_EQ(fuel.Trip, 80);
  EXPECT_FLOAT_EQ(fuel.Approach, 4.4f);
  EXPECT_NEAR(fuel.Cruise, 66.648751, 1e-4);
  EXPECT_NEAR(fuel.Climb, 8.056124, 1e-4);
  EXPECT_NEAR(fuel.Descent, 0.895125, 1e-4);

  // Too short to cruise: the cruise share is 0, climb and descent take the
  // remainder computed before that clamp.
  plan.TotalDistance = 20;
  ASSERT_TRUE(ComputeTripFuel(a, plan, 500, 0, fuel));
  EXPECT_FLOAT_EQ(fuel.Cruise, 0);
  EXPECT_FLOAT_EQ(fuel.Approach, 44);
  EXPECT_NEAR(fuel.Climb, 80.561242, 1e-4);
  EXPECT_NEAR(fuel.Descent, 8.951249, 1e-4);

  plan.TotalDistance = 0;
  EXPECT_FALSE(ComputeTripFuel(a, plan, 500, 0, fuel));
  plan.TotalDistance = 200;
  a.CruiseSpeed = 0;
  EXPECT_FALSE(ComputeTripFuel(a, plan, 500, 0, fuel));
}

class AlternateTest : public ::testing::Test {
protected:
  AlternateTest() {
    auto airport = [](std::string icao, std::string name, float lat, float lon, std::vector<int32_t> lengths) {
      test::FakeAirport ap;
      ap.Icao = std::move(icao);
      ap.Name = std::move(name);
      ap.Lat = lat;
      ap.Lon = lon;
      for (int32_t l : lengths) ap.Runways.push_back({"Rwy 01", "Rwy 19", lat, lon, 10, l});
      return ap;
    };
    nav.Airports = {
        airport("DEST", "Destination", 0, 0, {9000}),
        airport("NEAR", "Near Field", 0.3f, 0, {9000}),     // 18 NM: too close
        airport("SHRT", "Short Strip", 0.5f, 0, {3000}),    // 30 NM: runway too short
        airport("FARR", "Far Field", 0.8f, 0, {6000}),      // 48 NM
        airport("MIDD", "Mid Field", 0, 0.6f, {3000, 5000}),  // 36 NM, one runway just long enough
        airport("GONE", "Deleted", 0, 0.4f, {9000}),
        airport("AWAY", "Away Field", 3, 0, {9000}),        // 180 NM
        airport("DEPT", "Departure", 10, 0, {9000}),
    };
    nav.Airports[5].Empty = true;
    nav.Airports[7].Elevation = 500;
  }
  // A plan from DEPT to DEST at FL 50 with the given totals.
  static FlightPlan Plan(int32_t minutes, int32_t miles) {
    FlightPlan plan;
    plan.LastRow = 1;
    plan.DepartureAirport = 7;
    plan.DestinationAirport = 0;
    plan.TotalTime = minutes;
    plan.TotalDistance = miles;
    plan.CruiseFL = 50;
    return plan;
  }
  test::FakeNav nav;
};

TEST_F(AlternateTest, NearestAirportBeyondTwentyMilesWithALongRunway) {
  AlternateResult alt = FindAlternate(nav, 0, 0, 5000);
  ASSERT_TRUE(alt.Found);
  EXPECT_EQ(alt.Airport, 4);
  EXPECT_EQ(alt.Icao, "MIDD");
  EXPECT_EQ(alt.Name, "Mid Field");
  EXPECT_NEAR(alt.Distance, 36, 1e-3);
  EXPECT_NEAR(alt.Course, 90, 1e-3);

  alt = FindAlternate(nav, 0, 0, 5001);
  EXPECT_EQ(alt.Icao, "FARR");

  alt = FindAlternate(nav, 0, 0, 99999);
  EXPECT_FALSE(alt.Found);
  EXPECT_EQ(alt.Name, "none");
  EXPECT_EQ(alt.Distance, 150);
}

TEST_F(AlternateTest, FuelWindow) {
  AircraftRec a = Piston();
  FlightPlan plan;
  test::ScriptedUi ui;
  FuelWindow w;
  EXPECT_FALSE(w.Load(ui, plan, a, nav, 0));
  EXPECT_EQ(ui.Messages().at(0), "The fuel calculation needs a flight plan!");

  plan = Plan(120, 200);
  ASSERT_TRUE(w.Load(ui, plan, a, nav, 0));
  EXPECT_EQ(w.Caption, "Fuel Calculation for FL 50");
  // 8.06, 66.65, 0.90 and 4.40 kg are 3, 22, 0 and 1 gallons: a trip of 26.
  EXPECT_EQ(w.TripGal, 26);
  EXPECT_EQ(w.ClimbFuelBox, "3.00");
  EXPECT_EQ(w.CruiseFuelBox, "22.00");
  EXPECT_EQ(w.DescentFuelBox, ".00");
  EXPECT_EQ(w.ApproachFuelBox, "1.00");
  EXPECT_EQ(w.ContingencyBox, "2.60");
  EXPECT_EQ(w.HoldBox, "6.50");           // 26 * 30 / 120
  EXPECT_EQ(w.AlternateFuelBox, "4.68");  // 36 NM of 200 at 26 gallons
  EXPECT_EQ(w.TotalIfrBox, "39.78");
  EXPECT_EQ(w.TotalVfrBox, "26.00");
  EXPECT_EQ(w.TripFuelLabel, "Trip: 26.00 Gal");
  EXPECT_EQ(w.AltAirLabel, "Mid Field (MIDD)");
  EXPECT_EQ(w.AltDistLabel, "Distance: 36NM");
  EXPECT_EQ(w.AltCourseLabel, "Course: 090\xB0");
  EXPECT_TRUE(w.AlternateLinesVisible);
  EXPECT_EQ(w.VFRStop, "0 fuel stop(s)");
  EXPECT_EQ(w.IFRStop, "0 fuel stop(s)");

  w.SetFuelType(2);
  EXPECT_EQ(w.ClimbFuelBox, "9.08");
  EXPECT_EQ(w.TripFuelLabel, "Trip: 78.73 kg");
  w.SetFuelType(1);
  EXPECT_EQ(w.TripFuelLabel, "Trip: 173.16 lbs");
  w.SetFuelType(3);
  EXPECT_EQ(w.TripFuelLabel, "Trip: 98.41 lit");
  EXPECT_EQ(w.UnitLabel, " lit");
}

TEST_F(AlternateTest, FuelWindowWithoutAlternateStillCountsItsDistance) {
  AircraftRec a = Piston();
  a.MinRunway = 20000;
  FlightPlan plan = Plan(120, 200);
  test::ScriptedUi ui;
  FuelWindow w;
  ASSERT_TRUE(w.Load(ui, plan, a, nav, 0));
  EXPECT_EQ(w.AltAirLabel, "no alternate airport available within 150 nm");
  EXPECT_FALSE(w.AlternateLinesVisible);
  EXPECT_EQ(w.AltDistLabel, "");
  EXPECT_EQ(w.AlternateFuelBox, "");
  // The search's starting 150 NM: 150 * 26 / 200 = 19.5 gallons.
  EXPECT_DOUBLE_EQ(w.AlternateGal, 19.5);
  EXPECT_EQ(w.TotalIfrBox, "54.60");
}

TEST_F(AlternateTest, FuelStops) {
  AircraftRec a = Piston();
  a.MaxFuel = 40;
  FlightPlan plan = Plan(600, 1200);
  test::ScriptedUi ui;
  FuelWindow w;
  ASSERT_TRUE(w.Load(ui, plan, a, nav, 2));
  EXPECT_EQ(w.TripGal, 47);
  EXPECT_EQ(w.VFRStop, "3 fuel stop(s)");  // 142.3 kg in a 40 kg tank
  EXPECT_EQ(w.IFRStop, "4 fuel stop(s)");
  EXPECT_EQ(w.FuelType, 2);
}

}  // namespace
}  // namespace orv
