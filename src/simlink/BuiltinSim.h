// The built-in simulator: a kinematic aircraft for users without a flight
// simulator, and the partner the end-to-end flights are tested with. It keeps
// its state in an offset image, in the simulator's own units and layouts, so
// that the channel and the accessors read it exactly as they read a real
// simulator; what the program writes into the image (autopilot, heading bug,
// radios, a new position) is picked up at the next step.
//
// The aircraft starts parked on a runway end. Asked to fly a route it rolls,
// lifts off, climbs to the cruise altitude, either holds the autopilot's
// heading bug (a standard-rate turn toward it, the wind acting on the track)
// or flies the route's legs by itself, plans its descent so as to reach the
// destination runway's elevation at its threshold, lands and stops on the
// runway. It burns fuel at the selected aircraft's rate, keeps UTC running,
// and carries a wind, surface weather, ATC strings and a few AI aircraft.
//
// Time only moves by Step: the same steps from the same start give the same
// flight, whatever the wall clock does.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Geodesy.h"
#include "simlink/SimData.h"

namespace orv {

class OffsetImage;
class MagVarGrid;
struct AircraftRec;
struct AirportRec;
struct FlightPlan;

// The aircraft's figures as the simulator flies them.
struct SimPerformance {
  double ClimbRate = 1800;     // ft/min
  double ClimbSpeed = 280;     // kt
  double CruiseSpeed = 450;    // kt
  double DescentRate = 2000;   // ft/min
  double DescentSpeed = 300;   // kt
  double ApproachSpeed = 140;  // kt
  double BurnPerHour = 800;    // US gallons per hour at cruise
  double FuelOnBoard = 5000;   // US gallons at the start
};

// The figures of an aircraft of the aircraft file: the speeds and rates as
// they stand, the burn per hour from the maximum fuel over the endurance
// (maximum range at cruise speed), full tanks; kilograms become gallons at
// 3.028 kg a gallon. Missing values keep the defaults above.
SimPerformance PerformanceOf(const AircraftRec& aircraft);

// A runway end: the threshold, the heading of the runway from it, the field
// elevation.
struct SimRunwayEnd {
  double Lat = 0;
  double Lon = 0;
  double Heading = 0;    // true
  double Elevation = 0;  // feet
};

// What the simulator flies: the positions after the departure runway in order
// (the plan's rows, the destination airport last), the runway ends, and the
// cruise altitude.
struct SimRoute {
  SimRunwayEnd Departure;
  SimRunwayEnd Destination;
  std::vector<LatLon> Points;
  double CruiseAltitude = 10000;  // feet
  std::string DepartureIcao, DestinationIcao;  // for the traffic's tables
};

// The runway end of an airport best aligned with a course: the threshold
// whose landing (or take-off) heading is nearest to it. The airport's
// reference point, on the course, when it has no runway.
SimRunwayEnd RunwayEndFor(const AirportRec& airport, double course);

// The route of a plan: departure on the runway end the plan chose (or the
// one along the first leg), destination on the end best aligned with the
// last leg, rows 1 to LastRow as points, the plan's cruise level.
SimRoute RouteFromPlan(const FlightPlan& plan, const std::vector<AirportRec>& airports);

// Surface and ambient weather as the simulator reports it.
struct SimWeather {
  int WindDir = 270;        // degrees true, from
  int WindSpeed = 25;       // knots
  double Visibility = 10;   // statute miles
  double Temperature = 15;  // Celsius, ambient and surface
  double DewPoint = 8;      // Celsius
  double Qnh = 1013;        // hPa
  int CloudBase = 3000;     // feet, layer 1; layers 2 and 3 above it
  int CloudCover = 4;       // octas
  int PrecipitationRate = 0;
  int PrecipitationType = 0;  // 1 rain, 2 snow
  bool Thunderstorm = false;
};

struct SimAtc {
  std::string FlightNumber = "ORV123";
  std::string TailNumber = "D-AORV";
  std::string Airline = "Orvanta Air";
  std::string AircraftType = "B738";
};

enum class SimPhase : uint8_t {
  Parked,       // on the runway end, engines running, brakes set
  TakeoffRoll,
  Climb,
  Cruise,
  Descent,
  Rollout,      // on the ground after touchdown
  Stopped,      // at rest on the runway after landing
};

class BuiltinSim {
public:
  // image: where the simulator keeps its state; grid, when given, supplies
  // the magnetic variation at the aircraft.
  explicit BuiltinSim(OffsetImage& image, const MagVarGrid* grid = nullptr);

  void SetPerformance(const SimPerformance& performance);
  void SetWeather(const SimWeather& weather) { weather_ = weather; Publish(); }
  void SetAtc(const SimAtc& atc) { atc_ = atc; Publish(); }
  // UTC time of day in seconds; local time follows the longitude in whole hours.
  void SetUtcSeconds(double seconds);
  // A traffic aircraft that converges on the user's aircraft at its level:
  // it appears 20 NM ahead once the aircraft is 2000 ft above the ground,
  // flies at it and, having passed it, goes on straight.
  void SetConvergingTraffic(bool on) { converging_ = on; }
  // count AI aircraft in place of the usual five, one of them the
  // converging one; the others stand beside the departure runway or circle
  // the two fields well above the cruise altitude. Takes effect at the next
  // Park or Fly.
  void SetTrafficCount(int count);

  // Parks the aircraft on a runway end, or on a position and heading at an
  // elevation; any flight under way ends.
  void Park(const SimRunwayEnd& at);
  // Takes off from where the aircraft is parked and flies the route.
  void Fly(const SimRoute& route);
  // Moves the simulator on by seconds of simulated time.
  void Step(double seconds);

  // State, in natural units.
  SimPhase Phase() const { return phase_; }
  double Lat() const { return lat_; }
  double Lon() const { return lon_; }
  double Altitude() const { return alt_; }  // feet
  double GroundElevation() const { return ground_; }
  double Heading() const { return heading_; }  // true
  double Tas() const { return tas_; }
  double GroundSpeed() const { return gs_; }
  double VerticalSpeed() const { return vs_; }
  double Fuel() const;  // gallons
  double UtcSeconds() const { return utc_; }
  bool OnGround() const { return onGround_; }
  bool HeadingHold() const;
  double MagVar() const;
  // The route point the simulator's own navigation flies to.
  int TargetIndex() const { return target_; }

  // Traffic in the tables, for tests and the bench.
  struct Traffic {
    int32_t Id = 0;
    double Lat = 0, Lon = 0, Alt = 0, Heading = 0, Speed = 0;
    bool Ground = false;
    std::string Callsign, From, To;
    float Com1 = 0;
    bool Passed = false;  // the converging one, once it has passed the user
  };
  const std::vector<Traffic>& TrafficList() const { return traffic_; }

private:
  void Substep(double dt);
  void NavigateLateral(double dt);
  void ReadWrites();
  void Publish();
  void PublishTraffic();
  void MoveTraffic(double dt);
  void Steer(double dt, double desiredTrack, bool isHeading);
  double RemainingDistance() const;
  void Advance(double dt);
  void ResetTraffic();

  OffsetImage& image_;
  const MagVarGrid* grid_;
  SimPerformance perf_;
  SimWeather weather_;
  SimAtc atc_;
  SimRoute route_;
  bool haveRoute_ = false;
  SimPhase phase_ = SimPhase::Parked;
  double lat_ = 0, lon_ = 0, alt_ = 0, ground_ = 0;
  double heading_ = 0, tas_ = 0, gs_ = 0, vs_ = 0, track_ = 0;
  double pitch_ = 0, bank_ = 0;
  std::array<double, 2> tanks_{};  // gallons, left and right main
  double utc_ = 12 * 3600;
  bool onGround_ = true;
  int target_ = 0;         // index into the points the simulator flies
  std::vector<LatLon> points_;  // the route, then the final approach fix and threshold
  int finalFix_ = -1;      // index of the final approach fix in points_
  bool converging_ = false;
  int trafficCount_ = -1;  // -1: the usual five
  std::vector<Traffic> traffic_;
  std::vector<TrafficEntry> trafficEntries_;  // scratch of PublishTraffic
  std::vector<TrafficExtEntry> trafficExt_;
  // The autopilot as the program left it in the image.
  bool apMaster_ = false, apHeadingHold_ = false;
  double headingBug_ = 0;  // magnetic
  // The position words last published, to tell a position the program wrote.
  int32_t publishedLatWord_ = 0, publishedLonWord_ = 0;
};

}  // namespace orv
