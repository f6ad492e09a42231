#include "planning/DepartureArrival.h"

#include <cmath>

#include "core/Runtime.h"
#include "core/Ui.h"
#include "database/NavDatabase.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"

namespace orv {

namespace {

// The turn radius is that of a standard-rate turn (3 degrees a second) at the
// approach speed, which serves departures as well.
float TurnRadius(int32_t approachSpeed) { return CSng(approachSpeed * 3.0 / 60.0 / kPi); }

// The sentences give whole degrees and miles by dropping the fraction.
std::string Whole(double value) { return std::to_string(static_cast<long long>(std::floor(value))); }

// Both turns share the construction; they differ in the first course and in
// which centre counts as a right turn.
TurnArc Turn(float pLat, float pLon, float heading, float tLat, float tLon, int32_t approachSpeed, bool departure,
             int16_t& turnRight) {
  TurnArc arc;
  const double c = departure ? RhumbCourse(pLat, pLon, tLat, tLon) : RhumbCourse(tLat, tLon, pLat, pLon);
  if (AngleDiff(c, heading) <= 20) {
    arc.CentreLat = arc.ExitLat = pLat;
    arc.CentreLon = arc.ExitLon = pLon;
    turnRight = 0;
    return arc;
  }
  const float r = TurnRadius(approachSpeed);
  const LatLon c1 = OffsetLatLon(pLat, pLon, CSng(Wrap360(heading + 90.0)), r);
  const LatLon c2 = OffsetLatLon(pLat, pLon, CSng(Wrap360(heading - 90.0)), r);
  const double d1 = RhumbDistance(tLat, tLon, c1.Lat, c1.Lon);
  const double d2 = RhumbDistance(tLat, tLon, c2.Lat, c2.Lon);
  LatLon centre;
  if (d1 >= d2) {
    centre = c2;
    turnRight = departure ? 0 : -1;
    arc.StartAngle = CSng(Wrap360(heading + 90.0));
  } else {
    centre = c1;
    turnRight = departure ? -1 : 0;
    arc.StartAngle = CSng(Wrap360(heading - 90.0));
  }
  const double d = RhumbDistance(tLat, tLon, centre.Lat, centre.Lon);
  const double radicand = d * d - static_cast<double>(r) * r;
  const double q = radicand >= 0 ? std::sqrt(radicand) : 0;
  const double a = std::atan(r / q) * 180 / kPi;
  const double b = RhumbCourse(tLat, tLon, centre.Lat, centre.Lon);
  const double toExit = turnRight == 0 ? Wrap360(b - a) : Wrap360(b + a);
  const LatLon exit = OffsetLatLon(tLat, tLon, CSng(toExit), CSng(q));
  arc.CentreLat = centre.Lat;
  arc.CentreLon = centre.Lon;
  arc.ExitLat = exit.Lat;
  arc.ExitLon = exit.Lon;
  arc.EndAngle = CSng(RhumbCourse(centre.Lat, centre.Lon, exit.Lat, exit.Lon));
  arc.Radius = r;
  return arc;
}

}  // namespace

TurnArc DepartureTurn(float pLat, float pLon, float heading, float targetLat, float targetLon,
                      int32_t approachSpeed, int16_t& turnRight) {
  return Turn(pLat, pLon, heading, targetLat, targetLon, approachSpeed, true, turnRight);
}

TurnArc ArrivalTurn(float pLat, float pLon, float heading, float rowLat, float rowLon, int32_t approachSpeed,
                    int16_t& turnRight) {
  return Turn(pLat, pLon, heading, rowLat, rowLon, approachSpeed, false, turnRight);
}

std::string TurnSide(float lat1, float lon1, float lat2, float lon2, float heading, bool departure) {
  const double c = RhumbCourse(lat1, lon1, lat2, lon2);
  const double x = departure ? c - heading : heading - c;
  if (x >= 0) return x < 180 ? "right" : "left";
  return x > -180 ? "left" : "right";
}

VorReference NearestVor(const NavaidTables& navaids, float lat, float lon) {
  VorReference ref;
  double best = 0;
  for (std::size_t i = 0; i < navaids.Vors.size(); ++i) {
    const VorRec& v = navaids.Vors[i];
    if (v.Ident.IsEmptySlot()) continue;
    const double d = GcDistance(lat, lon, v.Lat, v.Lon);
    if (ref.Found && d >= best) continue;
    best = d;
    ref.Found = true;
    ref.Index = static_cast<int>(i);
    ref.RefLat = v.Lat;
    ref.RefLon = v.Lon;
    ref.RefCode = Trim(Left(v.Ident.View(), 10));
    ref.RefName = v.Name.Str();
    ref.RefDistance = RhumbDistance(lat, lon, v.Lat, v.Lon);
    ref.RefRadial = RhumbCourse(v.Lat, v.Lon, lat, lon);
  }
  return ref;
}

// ---------------------------------------------------------------- the window

const AirportRec* FrmSID::ViewAirport() const {
  const int index = ShowDeparture ? plan_.DepartureAirport : plan_.DestinationAirport;
  const auto& airports = db_.Airports.Airports;
  if (index < 0 || index >= static_cast<int>(airports.size())) return nullptr;
  return &airports[static_cast<std::size_t>(index)];
}

bool FrmSID::RunwayOfLine(int line, float& lat, float& lon, float& heading, std::string& name) const {
  const AirportRec* ap = ViewAirport();
  if (!ap || line < 0) return false;
  const int runway = line % 2 == 0 ? line / 2 : (line - 1) / 2;
  if (runway >= ap->RunwayCount()) return false;
  const RunwayRec& r = ap->Runways[static_cast<std::size_t>(runway)];
  lat = r.Lat;
  lon = r.Lon;
  heading = r.TrueHeading;
  name = line % 2 == 0 ? r.LowEnd.Str() : r.HighEnd.Str();
  if (line % 2 == 1) {
    heading += 180;
    if (heading > 360) heading -= 360;
  }
  return true;
}

bool FrmSID::Load() {
  const auto& airports = db_.Airports.Airports;
  auto valid = [&](int i) { return i >= 0 && i < static_cast<int>(airports.size()); };
  if (plan_.LastRow < 1 || !valid(plan_.DepartureAirport) || !valid(plan_.DestinationAirport)) return false;
  const AirportRec& dep = airports[static_cast<std::size_t>(plan_.DepartureAirport)];
  const AirportRec& dest = airports[static_cast<std::size_t>(plan_.DestinationAirport)];
  // The airport records hold the variation at the floors of their position.
  DepLat = dep.Lat, DepLon = dep.Lon, DepMagVar = dep.MagVar;
  DestLat = dest.Lat, DestLon = dest.Lon, DestMagVar = dest.MagVar;
  ShowDeparture = -1;
  DepRwyIndex = DestRwyIndex = 0;
  MapUnits = 10000;
  cmdSIDSTARCaption = "Arrival";
  Visible = true;
  ShowView();
  return true;
}

bool FrmSID::Load(Ui& ui) {
  if (Load()) return true;
  ui.MsgBox("You have to file a flight plan first!!");
  return false;
}

void FrmSID::FillRunwayList() {
  lstRwy.clear();
  const AirportRec* ap = ViewAirport();
  if (!ap) return;
  lstRwy.reserve(ap->Runways.size() * 2);
  for (const RunwayRec& r : ap->Runways) {
    const std::string tail = "  " + Format(r.LengthFeet, "00000") + "  (" + "ft)";
    lstRwy.push_back(r.LowEnd.Str() + tail);
    lstRwy.push_back(r.HighEnd.Str() + tail);
  }
}

void FrmSID::ShowView() {
  FillRunwayList();
  const AirportRec* ap = ViewAirport();
  lstRwyIndex = ShowDeparture ? DepRwyIndex : DestRwyIndex;
  if (lstRwyIndex >= static_cast<int>(lstRwy.size())) lstRwyIndex = lstRwy.empty() ? -1 : 0;
  Sketch = RouteSketch();
  if (!ap || lstRwyIndex < 0 || !RunwayOfLine(lstRwyIndex, RwyLat, RwyLon, RwyHeading, RwyName)) {
    // An airport without runways has nothing to word.
    SIDFrame = (ShowDeparture ? "Departure for " : "Arrival for ") + (ap ? ap->Name.Str() : std::string());
    Message.clear();
    lblMessage.clear();
    return;
  }
  SIDFrame = (ShowDeparture ? "Departure for " : "Arrival for ") + ap->Name.Str() + " Rwy " + RwyName;
  if (ShowDeparture) WordDeparture(RwyLat, RwyLon, RwyHeading, true);
  else WordArrival(lstRwyIndex, RwyName, RwyLat, RwyLon, RwyHeading, true);
  lblMessage = Message;
}

void FrmSID::cmdSIDSTAR() {
  if (cmdSIDSTARCaption != "Departure") {
    cmdSIDSTARCaption = "Departure";
    ShowDeparture = 0;
  } else {
    cmdSIDSTARCaption = "Arrival";
    ShowDeparture = -1;
  }
  ShowView();
}

void FrmSID::lstRwyClick(int index) {
  if (index < 0 || index >= static_cast<int>(lstRwy.size())) return;
  if (ShowDeparture) DepRwyIndex = static_cast<int16_t>(index);
  else DestRwyIndex = static_cast<int16_t>(index);
  ShowView();
}

void FrmSID::WordDeparture(float lat, float lon, float heading, bool draw) {
  Message.clear();
  if (plan_.LastRow < 1) return;
  const WaypointRec& target = plan_.Waypoints[1];
  const std::string k = target.Kind.Str();
  const std::string c = target.Code.Str();
  const LatLon p5 = OffsetLatLon(lat, lon, heading, 5);
  const double d = RhumbDistance(p5.Lat, p5.Lon, target.Lat, target.Lon);

  RouteSketch sketch;
  sketch.Valid = true;
  sketch.Departure = true;
  sketch.RwyLat = lat, sketch.RwyLon = lon, sketch.RwyHeading = heading;
  sketch.OutLat = p5.Lat, sketch.OutLon = p5.Lon;
  sketch.TargetLat = target.Lat, sketch.TargetLon = target.Lon;
  sketch.TargetCode = c;

  if (d <= 5) {
    // The row lies ahead: the code stands twice and the course is true, as
    // pilots have always read this line.
    Message = "On track " + Whole(RhumbCourse(lat, lon, target.Lat, target.Lon)) + "\xB0 " + c + " to " + c + " " + k;
  } else {
    int16_t turnRight = 0;
    const TurnArc arc = DepartureTurn(p5.Lat, p5.Lon, heading, target.Lat, target.Lon, aircraft_.ApproachSpeed, turnRight);
    const double b = Wrap360(RhumbCourse(target.Lat, target.Lon, arc.ExitLat, arc.ExitLon) - DepMagVar);
    std::string tail;
    if (k == "VOR") tail = ", intercept " + c + " R-" + Whole(b) + " inbound towards " + c + " " + k;
    // From a beacon the bearing stays as it is, unlike the fixes below.
    else if (k == "NDB") tail = ", " + Whole(b) + "\xB0 track to " + c + " " + k;
    else if (k == "Fix") tail = ", " + Whole(Wrap360(b + 180)) + "\xB0 toward " + c + " Fix";
    else if (k == "Int") tail = ", " + Whole(Wrap360(b + 180)) + "\xB0 toward " + c + " Intersection";
    const std::string side = TurnSide(p5.Lat, p5.Lon, target.Lat, target.Lon, heading, true);
    Ref = NearestVor(db_.Navaids, p5.Lat, p5.Lon);
    Message = "Climb straight ahead until crossing " + Ref.RefCode + " R-" + Whole(Ref.RefRadial) + " (" + Ref.RefCode +
              " " + Format(Ref.RefDistance, "##0.0") + "DME), " + "turn " + side + tail;
    sketch.HasArc = arc.Radius > 0;
    sketch.TurnRight = turnRight;
    sketch.Arc = arc;
  }
  if (draw) Sketch = sketch;
}

void FrmSID::WordArrival(int runwayLine, std::string_view name, float lat, float lon, float heading, bool draw) {
  Message.clear();
  if (plan_.LastRow < 1) return;
  const WaypointRec& row = plan_.Waypoints[static_cast<std::size_t>(plan_.LastRow) - 1];
  const WaypointRec& dest = plan_.Waypoints[static_cast<std::size_t>(plan_.LastRow)];
  const std::string k = row.Kind.Str();
  const std::string c = row.Code.Str();

  float ils = 0;
  const auto& airports = db_.Airports.Airports;
  if (plan_.DestinationAirport >= 0 && plan_.DestinationAirport < static_cast<int>(airports.size()) && runwayLine >= 0) {
    const AirportRec& ap = airports[static_cast<std::size_t>(plan_.DestinationAirport)];
    const std::size_t runway = static_cast<std::size_t>(runwayLine / 2);
    if (runway < ap.Runways.size()) {
      const int32_t link = runwayLine % 2 == 0 ? ap.Runways[runway].LowIlsIndex : ap.Runways[runway].HighIlsIndex;
      if (link >= 0 && link < ap.IlsCount()) ils = ap.Ils[static_cast<std::size_t>(link)].Values[0];
    }
  }
  const std::string suffix = ils > 100 ? " until intercepting localizer" : " to final fix ";

  const LatLon p10 = OffsetLatLon(lat, lon, CSng(Wrap360(heading - 180.0)), 10);
  const double d = RhumbDistance(p10.Lat, p10.Lon, row.Lat, row.Lon);

  RouteSketch sketch;
  sketch.Valid = true;
  sketch.Departure = false;
  sketch.RwyLat = lat, sketch.RwyLon = lon, sketch.RwyHeading = heading;
  sketch.OutLat = p10.Lat, sketch.OutLon = p10.Lon;
  sketch.TargetLat = row.Lat, sketch.TargetLon = row.Lon;
  sketch.TargetCode = c;

  if (d <= 10) {
    Message = "Fly straight in Rwy " + std::string(name);
  } else {
    const float f = CSng(RhumbCourse(p10.Lat, p10.Lon, dest.Lat, dest.Lon));
    int16_t turnRight = 0;
    const TurnArc arc = ArrivalTurn(p10.Lat, p10.Lon, f, row.Lat, row.Lon, aircraft_.ApproachSpeed, turnRight);
    const double h = Wrap360(RhumbCourse(row.Lat, row.Lon, arc.ExitLat, arc.ExitLon) - DestMagVar);
    const double l = RhumbDistance(row.Lat, row.Lon, arc.ExitLat, arc.ExitLon);
    const std::string side = TurnSide(row.Lat, row.Lon, p10.Lat, p10.Lon, heading, false);
    Message = "leave " + k + " " + c + " heading " + Whole(h) + "\xB0;" + " after " + Whole(l) + "nm  turn " + side + suffix;
    sketch.HasArc = arc.Radius > 0;
    sketch.TurnRight = turnRight;
    sketch.Arc = arc;
  }
  if (draw) Sketch = sketch;
}

}  // namespace orv
