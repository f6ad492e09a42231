#include "simlink/BuiltinSim.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/Runtime.h"
#include "database/AirportFile.h"
#include "database/MagVar.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "simlink/OffsetImage.h"
#include "simlink/SimData.h"
#include "simlink/SimImage.h"

namespace orv {

namespace {

constexpr double kRad = 3.14159265358979323846 / 180.0;
constexpr double kStandardRate = 3.0;    // degrees a second
constexpr double kMaxSubstep = 0.25;     // seconds
constexpr double kKgPerGallon = 3.028;
// How far out the simulator takes over the approach from the heading bug, NM.
constexpr double kFinalCapture = 10.0;
// The final approach fix, NM before the threshold.
constexpr double kFinalFix = 6.0;

double Norm360(double a) {
  a = std::fmod(a, 360.0);
  return a < 0 ? a + 360.0 : a;
}

// Signed smallest turn from a to b, -180..180.
double TurnTo(double a, double b) {
  double d = Norm360(b - a);
  return d > 180 ? d - 360 : d;
}

double WrapLon(double lon) {
  while (lon > 180) lon -= 360;
  while (lon < -180) lon += 360;
  return lon;
}

// Great-circle course and distance (NM) in double precision: the simulator's
// own navigation, independent of the program's single-precision routines.
double Course(double lat1, double lon1, double lat2, double lon2) {
  const double p1 = lat1 * kRad, p2 = lat2 * kRad, dl = (lon2 - lon1) * kRad;
  const double y = std::sin(dl) * std::cos(p2);
  const double x = std::cos(p1) * std::sin(p2) - std::sin(p1) * std::cos(p2) * std::cos(dl);
  return Norm360(std::atan2(y, x) / kRad);
}

double Distance(double lat1, double lon1, double lat2, double lon2) {
  const double p1 = lat1 * kRad, p2 = lat2 * kRad;
  const double a = std::pow(std::sin((p2 - p1) / 2), 2) +
                   std::cos(p1) * std::cos(p2) * std::pow(std::sin((lon2 - lon1) * kRad / 2), 2);
  return 2 * std::asin(std::min(1.0, std::sqrt(a))) / kRad * 60.0;
}

void Move(double& lat, double& lon, double course, double nm) {
  const double d = nm / 60.0 * kRad, c = course * kRad, p1 = lat * kRad;
  const double p2 = std::asin(std::sin(p1) * std::cos(d) + std::cos(p1) * std::sin(d) * std::cos(c));
  const double l = std::atan2(std::sin(c) * std::sin(d) * std::cos(p1), std::cos(d) - std::sin(p1) * std::sin(p2));
  lat = p2 / kRad;
  lon = WrapLon(lon + l / kRad);
}

int16_t HeadingWord(double degrees, double unit) {
  double d = Norm360(degrees);
  if (d >= 180) d -= 360;
  return static_cast<int16_t>(std::lround(d / unit));
}

}  // namespace

SimPerformance PerformanceOf(const AircraftRec& a) {
  SimPerformance p;
  if (a.ClimbRate > 0) p.ClimbRate = a.ClimbRate;
  if (a.ClimbSpeed > 0) p.ClimbSpeed = a.ClimbSpeed;
  if (a.CruiseSpeed > 0) p.CruiseSpeed = a.CruiseSpeed;
  if (a.DescentRate > 0) p.DescentRate = a.DescentRate;
  if (a.DescentSpeed > 0) p.DescentSpeed = a.DescentSpeed;
  if (a.ApproachSpeed > 0) p.ApproachSpeed = a.ApproachSpeed;
  if (a.MaxFuel > 0) {
    p.FuelOnBoard = a.MaxFuel / kKgPerGallon;
    if (a.MaxRange > 0 && a.CruiseSpeed > 0) {
      const double endurance = static_cast<double>(a.MaxRange) / a.CruiseSpeed;
      p.BurnPerHour = a.MaxFuel / endurance / kKgPerGallon;
    }
  }
  return p;
}

SimRunwayEnd RunwayEndFor(const AirportRec& airport, double course) {
  SimRunwayEnd best{airport.Lat, airport.Lon, Norm360(course), static_cast<double>(airport.Elevation)};
  double bestDiff = 1e9;
  for (const RunwayRec& r : airport.Runways) {
    for (int end = 0; end < 2; ++end) {
      const double heading = Norm360(r.TrueHeading + (end ? 180.0 : 0.0));
      const double diff = std::fabs(TurnTo(heading, course));
      if (diff >= bestDiff) continue;
      bestDiff = diff;
      // The threshold lies half the runway behind the centre.
      double lat = r.Lat, lon = r.Lon;
      Move(lat, lon, heading + 180.0, std::max<int>(r.LengthFeet, 0) / 2.0 / 6076.115);
      best = {lat, lon, heading, static_cast<double>(airport.Elevation)};
    }
  }
  return best;
}

SimRoute RouteFromPlan(const FlightPlan& plan, const std::vector<AirportRec>& airports) {
  SimRoute route;
  const int last = std::min<int>(plan.LastRow, kMaxPlanRow);
  if (last < 1) return route;
  const auto& rows = plan.Waypoints;
  auto airport = [&](int32_t index) -> const AirportRec* {
    return index >= 0 && static_cast<size_t>(index) < airports.size() ? &airports[static_cast<size_t>(index)]
                                                                        : nullptr;
  };
  const double firstCourse = Course(rows[0].Lat, rows[0].Lon, rows[1].Lat, rows[1].Lon);
  const AirportRec* dep = airport(plan.DepartureAirport);
  if (plan.DepartType == "Rwy" && (plan.DepartLat != 0 || plan.DepartLon != 0)) {
    route.Departure = {plan.DepartLat, plan.DepartLon, plan.DepartHeading,
                       dep ? static_cast<double>(dep->Elevation) : 0.0};
  } else if (dep) {
    route.Departure = RunwayEndFor(*dep, firstCourse);
  } else {
    route.Departure = {rows[0].Lat, rows[0].Lon, firstCourse, 0};
  }
  const WaypointRec& before = rows[static_cast<size_t>(last) - 1];
  const WaypointRec& dest = rows[static_cast<size_t>(last)];
  const double lastCourse = Course(before.Lat, before.Lon, dest.Lat, dest.Lon);
  const AirportRec* arr = airport(plan.DestinationAirport);
  route.Destination = arr ? RunwayEndFor(*arr, lastCourse) : SimRunwayEnd{dest.Lat, dest.Lon, lastCourse, 0};
  for (int i = 1; i <= last; ++i) route.Points.push_back({rows[static_cast<size_t>(i)].Lat, rows[static_cast<size_t>(i)].Lon});
  route.CruiseAltitude = plan.CruiseFL > 0 ? plan.CruiseFL * 100.0 : 10000.0;
  if (dep) route.DepartureIcao = std::string(dep->Icao.Trimmed());
  if (arr) route.DestinationIcao = std::string(arr->Icao.Trimmed());
  return route;
}

BuiltinSim::BuiltinSim(OffsetImage& image, const MagVarGrid* grid) : image_(image), grid_(grid) {
  SetPerformance(perf_);
  // The radios the simulator starts with.
  PutCom1(image_, 121.50f);
  image_.Put<uint16_t>(fsoff::Nav1, RadioBcdWord(110.00f));
  Park({50.0, 8.5, 270.0, 364.0});
}

void BuiltinSim::SetPerformance(const SimPerformance& performance) {
  perf_ = performance;
  tanks_ = {perf_.FuelOnBoard / 2, perf_.FuelOnBoard / 2};
}

void BuiltinSim::SetUtcSeconds(double seconds) {
  utc_ = std::fmod(std::max(0.0, seconds), 86400.0);
  Publish();
}

double BuiltinSim::Fuel() const { return tanks_[0] + tanks_[1]; }

bool BuiltinSim::HeadingHold() const { return apMaster_ && apHeadingHold_; }

double BuiltinSim::MagVar() const { return grid_ ? MagVarAt(*grid_, lat_, lon_) : 0.0; }

void BuiltinSim::Park(const SimRunwayEnd& at) {
  phase_ = SimPhase::Parked;
  haveRoute_ = false;
  lat_ = at.Lat;
  lon_ = WrapLon(at.Lon);
  heading_ = track_ = Norm360(at.Heading);
  alt_ = ground_ = at.Elevation;
  tas_ = gs_ = vs_ = pitch_ = bank_ = 0;
  onGround_ = true;
  points_.clear();
  target_ = 0;
  finalFix_ = -1;
  route_ = SimRoute{};
  route_.Departure = at;
  route_.Destination = at;
  ResetTraffic();
  Publish();
}

void BuiltinSim::Fly(const SimRoute& route) {
  if (phase_ != SimPhase::Parked && phase_ != SimPhase::Stopped) return;
  route_ = route;
  haveRoute_ = !route.Points.empty();
  // The route ends at the destination's threshold, reached through a final
  // approach fix on the extended centre line.
  points_ = route.Points;
  if (!points_.empty()) points_.pop_back();
  double fixLat = route.Destination.Lat, fixLon = route.Destination.Lon;
  Move(fixLat, fixLon, route.Destination.Heading + 180.0, kFinalFix);
  points_.push_back({static_cast<float>(fixLat), static_cast<float>(fixLon)});
  finalFix_ = static_cast<int>(points_.size()) - 1;
  points_.push_back({static_cast<float>(route.Destination.Lat), static_cast<float>(route.Destination.Lon)});
  target_ = 0;
  phase_ = SimPhase::TakeoffRoll;
  ResetTraffic();
  Publish();
}

void BuiltinSim::Step(double seconds) {
  if (!(seconds > 0)) return;
  while (seconds > 1e-9) {
    const double dt = std::min(seconds, kMaxSubstep);
    Substep(dt);
    seconds -= dt;
  }
  Publish();
}

double BuiltinSim::RemainingDistance() const {
  if (points_.empty()) return 0;
  const size_t from = static_cast<size_t>(std::clamp(target_, 0, static_cast<int>(points_.size()) - 1));
  double d = Distance(lat_, lon_, points_[from].Lat, points_[from].Lon);
  for (size_t i = from + 1; i < points_.size(); ++i)
    d += Distance(points_[i - 1].Lat, points_[i - 1].Lon, points_[i].Lat, points_[i].Lon);
  return d;
}

void BuiltinSim::ReadWrites() {
  apMaster_ = image_.Get<uint32_t>(fsoff::ApMaster) != 0;
  apHeadingHold_ = image_.Get<uint32_t>(fsoff::ApHeadingHold) != 0;
  headingBug_ = Norm360(image_.Get<int16_t>(fsoff::ApHeading) / kHeadingBugFactor);
  // A position the program wrote (the map's Alt + right click) moves the
  // aircraft there, at its present altitude.
  const int32_t latWord = image_.Get<int32_t>(fsoff::LatitudeHigh);
  const int32_t lonWord = image_.Get<int32_t>(fsoff::LongitudeHigh);
  if (latWord != publishedLatWord_ || lonWord != publishedLonWord_) {
    lat_ = latWord / kLatitudeUnits;
    lon_ = WrapLon(lonWord / kLongitudeUnits);
    publishedLatWord_ = latWord;
    publishedLonWord_ = lonWord;
  }
}

void BuiltinSim::Steer(double dt, double desired, bool isHeading) {
  double want = desired;
  if (!isHeading && tas_ > 1) {
    // Heading that makes good the desired track in the wind.
    const double x = weather_.WindSpeed * std::sin((weather_.WindDir - desired) * kRad) / tas_;
    want = desired + std::asin(std::clamp(x, -1.0, 1.0)) / kRad;
  }
  const double turn = TurnTo(heading_, want);
  const double maxTurn = kStandardRate * dt;
  heading_ = Norm360(heading_ + std::clamp(turn, -maxTurn, maxTurn));
  bank_ = std::fabs(turn) > 0.5 ? (turn > 0 ? 25.0 : -25.0) : 0.0;
}

void BuiltinSim::Advance(double dt) {
  if (onGround_) {
    gs_ = tas_;
    track_ = heading_;
  } else {
    const double windTo = (weather_.WindDir + 180.0) * kRad;
    const double n = tas_ * std::cos(heading_ * kRad) + weather_.WindSpeed * std::cos(windTo);
    const double e = tas_ * std::sin(heading_ * kRad) + weather_.WindSpeed * std::sin(windTo);
    gs_ = std::hypot(n, e);
    track_ = Norm360(std::atan2(e, n) / kRad);
  }
  if (gs_ > 0) Move(lat_, lon_, track_, gs_ * dt / 3600.0);
  alt_ += vs_ * dt / 60.0;
  pitch_ = tas_ > 1 ? std::atan(vs_ / (tas_ * 101.27)) / kRad : 0.0;
}

// Lateral: the heading bug while the autopilot holds it, else the legs; the
// approach is always the simulator's own.
void BuiltinSim::NavigateLateral(double dt) {
  const SimRunwayEnd& dest = route_.Destination;
  const double toThreshold = Distance(lat_, lon_, dest.Lat, dest.Lon);
  const bool final = phase_ == SimPhase::Descent && toThreshold <= kFinalCapture;
  if (final && target_ < finalFix_) target_ = finalFix_;
  if (final && target_ == finalFix_) {
    const LatLon& fix = points_[static_cast<size_t>(finalFix_)];
    const double off = std::fabs(TurnTo(Course(lat_, lon_, fix.Lat, fix.Lon), dest.Heading));
    if (off > 60 || Distance(lat_, lon_, fix.Lat, fix.Lon) < 1.0 ||
        std::fabs(TurnTo(Course(lat_, lon_, dest.Lat, dest.Lon), dest.Heading)) < 30)
      target_ = finalFix_ + 1;
  }
  const int lastPoint = static_cast<int>(points_.size()) - 1;
  if (HeadingHold() && !final) {
    // The program steers; the simulator only keeps track of where on
    // the route it is, for its descent. A point counts as behind once
    // the aircraft is nearer the following point than the point is.
    while (target_ < lastPoint - 1) {
      const LatLon& p = points_[static_cast<size_t>(target_)];
      const LatLon& q = points_[static_cast<size_t>(target_) + 1];
      if (Distance(lat_, lon_, q.Lat, q.Lon) > Distance(p.Lat, p.Lon, q.Lat, q.Lon)) break;
      ++target_;
    }
  }
  if (target_ <= lastPoint && target_ >= 0) {
    const LatLon& p = points_[static_cast<size_t>(target_)];
    const double dist = Distance(lat_, lon_, p.Lat, p.Lon);
    const double course = Course(lat_, lon_, p.Lat, p.Lon);
    if (target_ < lastPoint) {
      // Turn anticipation for the next leg at standard rate (30 turns
      // an hour); a turn of more than a right angle is flown over the
      // point, so that the aircraft really reaches it.
      const LatLon& q = points_[static_cast<size_t>(target_) + 1];
      const double change = std::fabs(TurnTo(Course(p.Lat, p.Lon, q.Lat, q.Lon), course));
      const double radius = gs_ / (kStandardRate * 3600.0 / 360.0) / (2 * 3.14159265358979);
      const double lead = change <= 90 ? std::max(0.3, radius * std::tan(change / 2 * kRad)) : 0.3;
      if (dist <= lead || (HeadingHold() && !final && dist <= 2.0)) ++target_;
    }
    if (HeadingHold() && !final) Steer(dt, headingBug_ + MagVar(), true);
    else Steer(dt, course, false);
  }
}

void BuiltinSim::Substep(double dt) {
  ReadWrites();
  utc_ = std::fmod(utc_ + dt, 86400.0);
  auto toward = [&](double value, double target, double rate) {
    return value < target ? std::min(target, value + rate * dt) : std::max(target, value - rate * dt);
  };
  const SimRunwayEnd& dest = route_.Destination;
  double burn = 0;
  switch (phase_) {
    case SimPhase::Parked:
      burn = 0.1;
      tas_ = gs_ = vs_ = 0;
      break;
    case SimPhase::TakeoffRoll: {
      burn = 1.2;
      tas_ += 4.0 * dt;
      heading_ = route_.Departure.Heading;
      vs_ = 0;
      const double rotate = std::max(80.0, perf_.ApproachSpeed * 1.05);
      if (tas_ >= rotate) {
        onGround_ = false;
        phase_ = SimPhase::Climb;
      }
      break;
    }
    case SimPhase::Climb:
    case SimPhase::Cruise:
    case SimPhase::Descent: {
      const double remaining = RemainingDistance();
      const double height = alt_ - dest.Elevation;
      if (phase_ != SimPhase::Descent) {
        // Start down when the rest of the route just holds the descent at
        // the aircraft's rate, with a few miles to settle on the approach.
        const double needed = height / perf_.DescentRate * std::max(gs_, 60.0) / 60.0 + 3.0;
        if (remaining <= needed && alt_ - ground_ > 1000) phase_ = SimPhase::Descent;
      }
      if (phase_ == SimPhase::Climb) {
        burn = 1.3;
        tas_ = toward(tas_, perf_.ClimbSpeed, 2.0);
        vs_ = toward(vs_, perf_.ClimbRate, 500.0);
        if (alt_ >= route_.CruiseAltitude) {
          alt_ = route_.CruiseAltitude;
          vs_ = 0;
          phase_ = SimPhase::Cruise;
        }
      } else if (phase_ == SimPhase::Cruise) {
        burn = 1.0;
        tas_ = toward(tas_, perf_.CruiseSpeed, 2.0);
        vs_ = toward(vs_, 0, 500.0);
      } else {
        burn = 0.6;
        const bool approach = height < 3000 && remaining < 12;
        tas_ = toward(tas_, approach ? perf_.ApproachSpeed : perf_.DescentSpeed, 2.0);
        // The rate that puts the aircraft on the threshold's elevation at the
        // threshold, at the present ground speed.
        const double minutes = remaining / std::max(gs_, 60.0) * 60.0;
        const double wanted = minutes > 0.05 ? -height / minutes : -perf_.DescentRate;
        vs_ = std::clamp(wanted, -perf_.DescentRate * 1.6, 0.0);
        if (alt_ + vs_ * dt / 60.0 <= dest.Elevation || remaining < 0.05) {
          alt_ = dest.Elevation;
          ground_ = dest.Elevation;
          vs_ = 0;
          onGround_ = true;
          phase_ = SimPhase::Rollout;
        }
      }
      if (!onGround_) NavigateLateral(dt);
      break;
    }
    case SimPhase::Rollout:
      burn = 0.3;
      bank_ = 0;
      tas_ = std::max(0.0, tas_ - 3.0 * dt);
      heading_ = Norm360(heading_ + std::clamp(TurnTo(heading_, dest.Heading), -kStandardRate * dt,
                                               kStandardRate * dt));
      if (tas_ <= 0) phase_ = SimPhase::Stopped;
      break;
    case SimPhase::Stopped:
      tas_ = gs_ = vs_ = 0;
      break;
  }
  if (phase_ != SimPhase::Parked && phase_ != SimPhase::Stopped) Advance(dt);
  if (onGround_) {
    alt_ = ground_;
    pitch_ = 0;
  } else {
    // The ground under the aircraft: the nearer field's elevation.
    const SimRunwayEnd& dep = route_.Departure;
    ground_ = Distance(lat_, lon_, dep.Lat, dep.Lon) < Distance(lat_, lon_, dest.Lat, dest.Lon) ? dep.Elevation
                                                                                                : dest.Elevation;
  }
  const double used = perf_.BurnPerHour * burn * dt / 3600.0;
  for (double& t : tanks_) t = std::max(0.0, t - used / 2);
  MoveTraffic(dt);
}

// ------------------------------------------------------------ traffic

void BuiltinSim::SetTrafficCount(int count) {
  trafficCount_ = std::clamp(count, 0, static_cast<int>(kTrafficMaxCount));
  converging_ = trafficCount_ > 0;
}

void BuiltinSim::ResetTraffic() {
  traffic_.clear();
  const SimRunwayEnd& dep = route_.Departure;
  const SimRunwayEnd& dest = route_.Destination;
  const std::string from = route_.DepartureIcao, to = route_.DestinationIcao;
  if (trafficCount_ >= 0) {
    // All but the converging one: every fourth waits beside the departure
    // runway, the others circle one of the fields 4000 ft and more above
    // the cruise altitude, where they never come into the user's way.
    static constexpr const char* kCallsigns[] = {"DLH4AB", "BAW92K", "AFR1123", "UAL930", "EWG7TK",
                                                 "KLM1602", "SWR48C", "AUA2PK", "RYR8WN", "EZY71QA"};
    for (int i = 0; i + 1 < trafficCount_; ++i) {
      Traffic t;
      t.Ground = i % 4 == 3;
      const SimRunwayEnd& around = t.Ground || i % 2 == 0 ? dep : dest;
      t.Id = (t.Ground ? 2001 : 1001) + i;
      t.Lat = around.Lat;
      t.Lon = around.Lon;
      std::string callsign = kCallsigns[i % 10];
      if (i >= 10) callsign += std::to_string(i / 10);
      t.Callsign = callsign;
      t.From = from;
      t.To = to;
      if (t.Ground) {
        Move(t.Lat, t.Lon, dep.Heading + 90.0, 0.15 + 0.02 * i);
        t.Alt = dep.Elevation;
        t.Heading = dep.Heading;
        t.Com1 = 121.9f;
      } else {
        const double bearing = i * 47.0;
        Move(t.Lat, t.Lon, bearing, 8.0 + i % 3 * 4.0);
        t.Alt = std::max(route_.CruiseAltitude, around.Elevation) + 4000 + 1000 * (i % 8);
        t.Heading = Norm360(bearing + 90.0);
        t.Speed = 220 + 10 * (i % 5);
        t.Com1 = 124.2f;
      }
      traffic_.push_back(t);
    }
    return;
  }
  // Two aircraft waiting beside the departure runway.
  for (int i = 0; i < 2; ++i) {
    Traffic t;
    t.Id = 2001 + i;
    t.Lat = dep.Lat;
    t.Lon = dep.Lon;
    Move(t.Lat, t.Lon, dep.Heading + 90.0, 0.15 + 0.1 * i);
    t.Alt = dep.Elevation;
    t.Heading = dep.Heading;
    t.Ground = true;
    t.Callsign = i == 0 ? "DLH4AB" : "EWG7TK";
    t.From = from;
    t.To = i == 0 ? to : from;
    t.Com1 = 121.9f;
    traffic_.push_back(t);
  }
  // Three in the air: circling each field, and one crossing the route.
  const struct {
    const SimRunwayEnd* Around;
    double Bearing, Alt, Speed;
    const char* Callsign;
  } air[] = {{&dep, 0, 4000, 210, "BAW92K"}, {&dest, 180, 5000, 220, "AFR1123"}, {&dep, 90, 21000, 420, "UAL930"}};
  for (int i = 0; i < 3; ++i) {
    Traffic t;
    t.Id = 1001 + i;
    t.Lat = air[i].Around->Lat;
    t.Lon = air[i].Around->Lon;
    Move(t.Lat, t.Lon, air[i].Bearing, i == 2 ? 30.0 : 8.0);
    t.Alt = air[i].Around->Elevation + air[i].Alt;
    t.Heading = Norm360(air[i].Bearing + 90.0);
    t.Speed = air[i].Speed;
    t.Callsign = air[i].Callsign;
    t.From = i == 1 ? from : to;
    t.To = i == 1 ? to : from;
    t.Com1 = 124.2f;
    traffic_.push_back(t);
  }
}

void BuiltinSim::MoveTraffic(double dt) {
  bool haveConverging = false;
  for (Traffic& t : traffic_) {
    if (t.Ground) continue;
    if (t.Id == 1999) {
      haveConverging = true;
      // Straight at the user's aircraft, at its level, until it is by.
      if (!t.Passed) {
        t.Heading = Course(t.Lat, t.Lon, lat_, lon_);
        t.Alt = alt_;
        t.Passed = Distance(t.Lat, t.Lon, lat_, lon_) < 0.5;
      }
    } else if (t.Id != 1003) {
      t.Heading = Norm360(t.Heading + 1.5 * dt);  // a wide circle
    }
    Move(t.Lat, t.Lon, t.Heading, t.Speed * dt / 3600.0);
  }
  if (converging_ && !haveConverging && !onGround_ && alt_ - ground_ >= 2000) {
    Traffic t;
    t.Id = 1999;
    t.Lat = lat_;
    t.Lon = lon_;
    Move(t.Lat, t.Lon, track_, 20.0);
    t.Alt = alt_;
    t.Heading = Norm360(track_ + 180.0);
    t.Speed = 300;
    t.Callsign = "CONV1";
    t.Com1 = 121.5f;
    traffic_.push_back(t);
  } else if (!converging_ && haveConverging) {
    std::erase_if(traffic_, [](const Traffic& t) { return t.Id == 1999; });
  }
}

// ------------------------------------------------------------ the image

void BuiltinSim::PublishTraffic() {
  for (int airborne = 0; airborne < 2; ++airborne) {
    trafficEntries_.clear();
    trafficExt_.clear();
    for (const Traffic& t : traffic_) {
      if (t.Ground == (airborne != 0)) continue;
      TrafficEntry e;
      e.Id = static_cast<uint32_t>(t.Id);
      e.Latitude = static_cast<float>(t.Lat);
      e.Longitude = static_cast<float>(t.Lon);
      e.Altitude = static_cast<float>(t.Alt);
      e.Heading = HeadingWord(t.Heading, kTrafficHeadingFactor);
      e.GroundSpeed = static_cast<uint16_t>(std::lround(t.Speed));
      std::copy_n(t.Callsign.begin(), std::min<size_t>(15, t.Callsign.size()), e.AtcId.begin());
      e.Com1 = RadioBcdWord(t.Com1);
      TrafficExtEntry x;
      std::copy_n(t.From.begin(), std::min<size_t>(4, t.From.size()), x.Departure.begin());
      std::copy_n(t.To.begin(), std::min<size_t>(4, t.To.size()), x.Destination.begin());
      trafficEntries_.push_back(e);
      trafficExt_.push_back(x);
    }
    PutTrafficTable(image_, airborne != 0, trafficEntries_, trafficExt_);
  }
}

void BuiltinSim::Publish() {
  // Local time follows the longitude's time zone.
  const int whole = static_cast<int>(utc_);
  const int zone = static_cast<int>(std::lround(lon_ / 15.0));
  const int local = ((whole / 3600 + zone) % 24 + 24) % 24;
  PutTime(image_, local, whole / 60 % 60, whole % 60, whole / 3600, whole / 60 % 60);
  image_.Put<uint16_t>(fsoff::Paused, 0);
  image_.Put<uint8_t>(fsoff::InMenu, 0);
  PutGroundAltitude(image_, ground_);
  PutMagVar(image_, MagVar());
  PutSpeeds(image_, gs_, tas_, tas_ / (1.0 + alt_ / 1000.0 * 0.02), vs_);
  PutPosition(image_, lat_, lon_, alt_, heading_, pitch_, bank_, onGround_);
  publishedLatWord_ = image_.Get<int32_t>(fsoff::LatitudeHigh);
  publishedLonWord_ = image_.Get<int32_t>(fsoff::LongitudeHigh);

  // The autopilot's altitude: the cruise altitude while the route is flown.
  image_.Put<uint32_t>(fsoff::ApAltitudeLock, haveRoute_ && !onGround_ ? 1u : 0u);
  image_.Put<int32_t>(fsoff::ApAltitude,
                      static_cast<int32_t>(std::lround(route_.CruiseAltitude / kFeetPerMetre * 65536.0)));

  // Fuel in the two main tanks (left main and right main of the seven).
  const double capacity = std::ceil(perf_.FuelOnBoard / 2.0) + 1;
  PutFuelTank(image_, 1, tanks_[0] / capacity, capacity);
  PutFuelTank(image_, 4, tanks_[1] / capacity, capacity);

  // Weather.
  PutWind(image_, weather_.WindSpeed, weather_.WindDir);
  const auto celsius = [](double c) { return static_cast<int16_t>(std::lround(c * 256.0)); };
  image_.Put<int16_t>(fsoff::DewPoint, celsius(weather_.DewPoint));
  image_.Put<uint8_t>(fsoff::PrecipitationRate, static_cast<uint8_t>(weather_.PrecipitationRate));
  image_.Put<uint8_t>(fsoff::PrecipitationType, static_cast<uint8_t>(weather_.PrecipitationType));
  image_.Put<uint16_t>(fsoff::SurfaceWindSpeed, static_cast<uint16_t>(weather_.WindSpeed));
  image_.Put<int16_t>(fsoff::SurfaceWindDir, HeadingWord(weather_.WindDir, kSurfaceWindDirFactor));
  image_.Put<int16_t>(fsoff::Visibility, static_cast<int16_t>(std::lround(weather_.Visibility * 100.0)));
  image_.Put<int16_t>(fsoff::AmbientTemperature, celsius(weather_.Temperature));
  image_.Put<int16_t>(fsoff::SurfaceTemperature, celsius(weather_.Temperature));
  const uint32_t layers[3] = {fsoff::Cloud1Altitude, fsoff::Cloud2Altitude, fsoff::Cloud3Altitude};
  for (int i = 0; i < 3; ++i) {
    image_.Put<int16_t>(layers[i], static_cast<int16_t>(std::lround((weather_.CloudBase + 4000 * i) / kFeetPerMetre)));
    image_.Put<uint16_t>(layers[i] + 2, static_cast<uint16_t>(i == 0 ? weather_.CloudCover : 0));
  }
  image_.Put<uint16_t>(fsoff::Qnh, static_cast<uint16_t>(std::lround(weather_.Qnh * 16.0)));
  image_.Put<uint16_t>(fsoff::Storm, weather_.Thunderstorm ? 10 : 0);

  // ATC strings: flight number, tail number, airline, type, each 0-ended.
  uint8_t atc[72] = {};
  const std::string* texts[4] = {&atc_.FlightNumber, &atc_.TailNumber, &atc_.Airline, &atc_.AircraftType};
  const size_t at[4] = {0, 12, 24, 48}, width[4] = {12, 12, 24, 24};
  for (int i = 0; i < 4; ++i)
    std::copy_n(texts[i]->begin(), std::min(width[i] - 1, texts[i]->size()), atc + at[i]);
  image_.WriteBytes(fsoff::AtcStrings, atc, sizeof atc);

  PublishTraffic();
}

}  // namespace orv
