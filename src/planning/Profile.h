// Vertical profile and fuel: climb and descent distances of the selected
// aircraft, the cruise level offered for the route, the trip fuel split into
// its phases, the alternate airport, and the Fuel window's texts.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orv {

class Ui;
class NavLookup;
struct AircraftRec;
struct FlightPlan;

// Ground distance in NM to climb from elevation to altitude (feet): the slant
// path at the climb speed, corrected for height, minus the height itself.
double ClimbDistance(const AircraftRec& a, double elevation, double altitude);
double DescentDistance(const AircraftRec& a, double elevation, double altitude);
// Minutes of the climb or descent alone.
int16_t ClimbMinutes(const AircraftRec& a, double elevation, double altitude);
int16_t DescentMinutes(const AircraftRec& a, double elevation, double altitude);

// The highest altitude (feet) from the aircraft's cruise level down, in steps
// of 1000, whose climb, descent and 11 NM approach fit into totalDistance. The
// cruise level itself when none down to 2000 ft above the departure fits.
int32_t ComputeCruiseAltitude(const AircraftRec& a, double departureElevation, double destinationElevation,
                              int32_t totalDistance);
// The level for the direction of flight: odd thousands eastbound, even
// westbound. Sets CruiseFL and WestBound.
void ApplySemicircularRule(FlightPlan& plan, double course, int32_t altitude);

// Trip fuel by phase, kilograms.
struct FuelResult {
  float Climb = 0;
  float Cruise = 0;
  float Descent = 0;
  float Approach = 0;
  float Trip = 0;
};
// False when the plan has no distance or the aircraft lacks the values the
// figures divide by.
bool ComputeTripFuel(const AircraftRec& a, const FlightPlan& plan, double departureElevation,
                     double destinationElevation, FuelResult& out);

struct AlternateResult {
  bool Found = false;
  int Airport = -1;
  std::string Name = "none";
  std::string Icao;
  float Lat = 0;
  float Lon = 0;
  double Distance = 150;  // stays 150 when none is found
  double Course = 0;      // rhumb-line course from the destination
};
// The nearest airport beyond 20 NM and within 150 NM of the destination with a
// runway of at least minRunway feet.
AlternateResult FindAlternate(const NavLookup& nav, float destLat, float destLon, int32_t minRunway);

// optFuelType: the display unit of the Fuel window.
inline constexpr std::array<double, 4> kFuelUnitFactors = {1.0, 6.66, 3.028, 3.785};
inline constexpr std::array<std::string_view, 4> kFuelUnitTexts = {" Gal", " lbs", " kg", " lit"};

// The Fuel window without its widgets.
class FuelWindow {
public:
  // Computes everything for the current plan and aircraft. False, with a
  // message, when there is no plan or the aircraft cannot be computed.
  bool Load(Ui& ui, const FlightPlan& plan, const AircraftRec& a, const NavLookup& nav, int fuelType);
  // A click on optFuelType: the boxes in the new unit.
  void SetFuelType(int index);

  std::string Caption;
  // Phases, reserves and totals, in the display unit, format "###.00".
  std::string ClimbFuelBox, CruiseFuelBox, DescentFuelBox, ApproachFuelBox;
  std::string ContingencyBox, HoldBox, AlternateFuelBox, TotalIfrBox, TotalVfrBox;
  std::string UnitLabel;
  std::string TripFuelLabel;
  std::string AltAirLabel, AltDistLabel, AltCourseLabel;
  bool AlternateLinesVisible = false;
  std::string VFRStop, IFRStop;
  int FuelType = 2;

  // The figures in gallons, each phase rounded to whole gallons.
  double ClimbGal = 0, CruiseGal = 0, DescentGal = 0, ApproachGal = 0;
  double TripGal = 0, ContingencyGal = 0, HoldGal = 0, AlternateGal = 0, TotalIfrGal = 0;
  AlternateResult Alternate;

private:
  void ShowValues();
};

}  // namespace orv
