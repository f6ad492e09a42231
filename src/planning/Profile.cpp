#include "planning/Profile.h"

#include <cmath>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "core/Geodesy.h"
#include "core/TextFormats.h"
#include "planning/NavLookup.h"

namespace orv {

namespace {

// Feet in a nautical mile.
constexpr double kFeetPerNm = 6076.115;
// The approach segment every profile keeps at its end.
constexpr double kApproachNm = 11;
// Kilograms in a gallon, as the fuel figures convert.
constexpr double kKgPerGallon = 3.028;

double SlantGroundDistance(int32_t speed, int32_t rate, double elevation, double altitude) {
  if (rate <= 0) return 0;
  double trueSpeed = speed * (1 + (altitude + elevation) / 120000);
  double minutes = (altitude - elevation) / rate;
  double slant = trueSpeed * minutes / 60;
  double height = (altitude - elevation) / kFeetPerNm;
  double square = slant * slant - height * height;
  // A rate too steep for its speed would leave nothing to fly level.
  return square > 0 ? std::sqrt(square) : 0;
}

int16_t PhaseMinutes(int32_t rate, double elevation, double altitude) {
  if (rate <= 0) return 0;
  return CInt((altitude - elevation) / rate);
}

}  // namespace

double ClimbDistance(const AircraftRec& a, double elevation, double altitude) {
  return SlantGroundDistance(a.ClimbSpeed, a.ClimbRate, elevation, altitude);
}

double DescentDistance(const AircraftRec& a, double elevation, double altitude) {
  return SlantGroundDistance(a.DescentSpeed, a.DescentRate, elevation, altitude);
}

int16_t ClimbMinutes(const AircraftRec& a, double elevation, double altitude) {
  return PhaseMinutes(a.ClimbRate, elevation, altitude);
}

int16_t DescentMinutes(const AircraftRec& a, double elevation, double altitude) {
  return PhaseMinutes(a.DescentRate, elevation, altitude);
}

int32_t ComputeCruiseAltitude(const AircraftRec& a, double departureElevation, double destinationElevation,
                              int32_t totalDistance) {
  // A level beyond any aircraft's reach (a damaged record) counts as FL999,
  // which keeps the loop short.
  int64_t level = a.CruiseLevel < 0 ? 0 : (a.CruiseLevel > 999 ? 999 : a.CruiseLevel);
  int32_t cruise = static_cast<int32_t>(level * 100);
  // The floor only stops a damaged elevation from running the loop for ever.
  for (int32_t altitude = cruise; altitude >= departureElevation + 2000 && altitude > -100000; altitude -= 1000) {
    double needed = ClimbDistance(a, departureElevation, altitude) + DescentDistance(a, destinationElevation, altitude) +
                    kApproachNm;
    if (needed < totalDistance) return altitude;
  }
  return cruise;
}

void ApplySemicircularRule(FlightPlan& plan, double course, int32_t altitude) {
  bool evenThousands = (altitude / 1000) % 2 == 0;
  int32_t level;
  if (course < 180) {
    level = evenThousands ? (altitude - 1000) / 100 : altitude / 100;
    plan.WestBound = 0;
  } else {
    level = evenThousands ? altitude / 100 : (altitude - 1000) / 100;
    plan.WestBound = -1;
  }
  plan.CruiseFL = level;
}

bool ComputeTripFuel(const AircraftRec& a, const FlightPlan& plan, double departureElevation,
                     double destinationElevation, FuelResult& out) {
  if (plan.TotalDistance == 0 || a.CruiseSpeed <= 0 || a.MaxRange <= 0 || a.MaxWeight == 0) return false;
  double endurance = static_cast<double>(a.MaxRange) / a.CruiseSpeed;
  double burnPerHour = a.MaxFuel / endurance;
  double factor = burnPerHour * 100 / a.MaxWeight + 1;
  double hours = plan.TotalTime / 60.0;
  double weight = static_cast<double>(a.EmptyWeight) + a.LoadWeight;
  double trip = factor * weight * hours / 100 - hours * factor;

  double altitude = static_cast<double>(plan.CruiseFL) * 100;
  double climbNm = ClimbDistance(a, departureElevation, altitude);
  double descentNm = DescentDistance(a, destinationElevation, altitude);
  double cruiseNm = plan.TotalDistance - climbNm - descentNm - kApproachNm;

  double approach = trip * kApproachNm / plan.TotalDistance;
  double cruise = trip * cruiseNm / plan.TotalDistance;
  // The remainder is taken before the cruise share is clamped, so that a route
  // too short to cruise gives climb and descent less than the trip.
  double remainder = trip - cruise - approach;
  out.Trip = CSng(trip);
  out.Approach = CSng(approach);
  out.Cruise = CSng(cruise < 0 ? 0 : cruise);
  out.Climb = CSng(remainder * 0.9);
  out.Descent = CSng(remainder * 0.1);
  return true;
}

AlternateResult FindAlternate(const NavLookup& nav, float destLat, float destLon, int32_t minRunway) {
  AlternateResult best;
  int count = nav.AirportCount();
  for (int i = 0; i < count; ++i) {
    float lat = 0, lon = 0;
    if (!nav.AirportPosition(i, lat, lon)) continue;
    double d = RhumbDistance(destLat, destLon, lat, lon);
    if (d >= best.Distance || d <= 20) continue;
    int runways = nav.RunwayCount(i);
    bool longEnough = false;
    for (int r = 0; r < runways && !longEnough; ++r) longEnough = nav.RunwayLength(i, r) >= minRunway;
    if (!longEnough) continue;
    best.Found = true;
    best.Airport = i;
    best.Lat = lat;
    best.Lon = lon;
    best.Distance = d;
  }
  if (best.Found) {
    best.Name = nav.AirportName(best.Airport);
    best.Icao = nav.AirportIcao(best.Airport);
    best.Course = RhumbCourse(destLat, destLon, best.Lat, best.Lon);
  }
  return best;
}

bool FuelWindow::Load(Ui& ui, const FlightPlan& plan, const AircraftRec& a, const NavLookup& nav, int fuelType) {
  if (plan.LastRow < 1 || plan.TotalDistance == 0 || plan.TotalTime == 0) {
    ui.MsgBox("The fuel calculation needs a flight plan!");
    return false;
  }
  FuelResult fuel;
  double depElev = nav.AirportElevation(plan.DepartureAirport);
  double destElev = nav.AirportElevation(plan.DestinationAirport);
  if (!ComputeTripFuel(a, plan, depElev, destElev, fuel) || a.MaxFuel <= 0) {
    ui.MsgBox("The selected aircraft lacks the values the fuel calculation needs!");
    return false;
  }
  Caption = "Fuel Calculation for FL " + std::to_string(plan.CruiseFL);

  ClimbGal = CLng(fuel.Climb / kKgPerGallon);
  CruiseGal = CLng(fuel.Cruise / kKgPerGallon);
  DescentGal = CLng(fuel.Descent / kKgPerGallon);
  ApproachGal = CLng(fuel.Approach / kKgPerGallon);
  TripGal = ClimbGal + CruiseGal + DescentGal + ApproachGal;
  ContingencyGal = TripGal * 0.1;
  HoldGal = TripGal * 30 / plan.TotalTime;

  Alternate = FindAlternate(nav, plan.DestLat, plan.DestLon, a.MinRunway);
  // Without an alternate the search distance of 150 NM still counts.
  AlternateGal = Alternate.Distance * TripGal / plan.TotalDistance;
  TotalIfrGal = TripGal + ContingencyGal + HoldGal + AlternateGal;

  AlternateLinesVisible = Alternate.Found;
  if (Alternate.Found) {
    AltAirLabel = Alternate.Name + " (" + Alternate.Icao + ")";
    AltDistLabel = "Distance: " + Format(Alternate.Distance, "###") + "NM";
    AltCourseLabel = "Course: " + Format(Alternate.Course, "000") + "\xB0";
  } else {
    AltAirLabel = "no alternate airport available within 150 nm";
    AltDistLabel.clear();
    AltCourseLabel.clear();
  }
  VFRStop = std::to_string(static_cast<int64_t>(std::floor(TripGal * kKgPerGallon / a.MaxFuel))) + " fuel stop(s)";
  IFRStop = std::to_string(static_cast<int64_t>(std::floor(TotalIfrGal * kKgPerGallon / a.MaxFuel))) + " fuel stop(s)";
  SetFuelType(fuelType);
  return true;
}

void FuelWindow::SetFuelType(int index) {
  if (index < 0 || index >= static_cast<int>(kFuelUnitFactors.size())) index = 0;
  FuelType = index;
  ShowValues();
}

void FuelWindow::ShowValues() {
  double f = kFuelUnitFactors[static_cast<std::size_t>(FuelType)];
  auto box = [f](double gallons) { return Format(gallons * f, "###.00"); };
  UnitLabel = std::string(kFuelUnitTexts[static_cast<std::size_t>(FuelType)]);
  ClimbFuelBox = box(ClimbGal);
  CruiseFuelBox = box(CruiseGal);
  DescentFuelBox = box(DescentGal);
  ApproachFuelBox = box(ApproachGal);
  ContingencyBox = box(ContingencyGal);
  HoldBox = box(HoldGal);
  AlternateFuelBox = AlternateLinesVisible ? box(AlternateGal) : std::string();
  TotalIfrBox = box(TotalIfrGal);
  TotalVfrBox = box(TripGal);
  TripFuelLabel = "Trip: " + box(TripGal) + UnitLabel;
}

}  // namespace orv
