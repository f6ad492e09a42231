#include "simlink/LiveTracking.h"

#include <algorithm>
#include <cmath>

#include "core/Geodesy.h"
#include "core/Runtime.h"
#include "core/TextFormats.h"
#include "simlink/Fsuipc.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, 4> kFuelUnitNames = {"gal", "lbs", "kg", "lit"};

// Arc sine through the arc tangent, as the geodesy routines build their
// inverse functions; the argument is held just inside -1..1.
double ArcSine(double x) {
  x = std::clamp(x, -0.99999, 0.99999);
  return std::atan(x / std::sqrt(1 - x * x));
}

// Distance and bearing from the aircraft to a point: rhumb line up to 60 NM,
// great circle beyond.
struct Leg {
  double Distance;
  double Bearing;
};
Leg LegTo(float lat, float lon, float toLat, float toLon) {
  double d = RhumbDistance(lat, lon, toLat, toLon);
  if (d <= 60) return {d, RhumbCourse(lat, lon, toLat, toLon)};
  return {GcDistance(lat, lon, toLat, toLon), GcCourse(lat, lon, toLat, toLon)};
}

double Distance60(float lat, float lon, float toLat, float toLon) {
  double d = RhumbDistance(lat, lon, toLat, toLon);
  return d > 60 ? GcDistance(lat, lon, toLat, toLon) : d;
}

// The clock text of a number of minutes of the day, rounded or, for the ETA
// column, cut to whole minutes; a flight that crosses midnight goes on from
// 00:00.
std::string ClockText(double minutes, bool whole = false) {
  double m = std::fmod(whole ? std::floor(minutes) : static_cast<double>(CLng(minutes)), 1440.0);
  if (m < 0) m += 1440;
  return MinutesToHours(m);
}

std::string Degrees(double value, std::string_view mask) {
  return Format(value, std::string(mask) + kDegreeSign);
}

}  // namespace

float WindCorrectionAngle(int32_t tas, int16_t windSpeed, float trueHeading, int16_t windDir) {
  if (tas < 51 || windSpeed < 1) return 0;
  const double x = std::sin(DegToRad(trueHeading - windDir)) * windSpeed / tas;
  return static_cast<float>(-RadToDeg(ArcSine(x)));
}

float PassingDistance(int32_t groundSpeed, double trackChange) {
  double pass = 0.5;
  const double speed = groundSpeed * 0.514444;
  const double radius = speed * speed / 9.80665 / 0.324919696;
  const double a = (180.0 - trackChange) / 2.0;
  if (a > 4 && a < 86) pass = std::max(0.5, radius / std::tan(DegToRad(a)) / 1852.0);
  return static_cast<float>(pass);
}

std::string FuelStatusText(int fuelUnit, int32_t gallons) {
  const int unit = fuelUnit >= 0 && fuelUnit < 4 ? fuelUnit : 0;
  const double value = FuelToUnit(gallons, unit);
  return std::string(kFuelUnitNames[static_cast<size_t>(unit)]) + " " + NumText(std::trunc(value));
}

LiveTracking::LiveTracking(FsuipcChannel& channel, Timers& timers, Ui& ui, LiveHost& host, FlightPlan& plan,
                           PlanPanel& panel, ViewState& view, const ViewGeodesy& geo, int fuelUnit, uint32_t seed)
    : channel_(channel), timers_(timers), ui_(ui), host_(host), plan_(plan), panel_(panel), view_(view),
      geo_(geo), fuelUnit_(fuelUnit), random_(seed) {}

// ------------------------------------------------------------ connect

void LiveTracking::MenuLocalClick() {
  Menus.MenuLocal = !Menus.MenuLocal;
  if (Menus.MenuLocal) Connect();
  else Disconnect();
  host_.FocusSimulator();
}

void LiveTracking::Connect() {
  channel_.IpcClearHandles();
  int32_t code = 0;
  if (!channel_.IpcOpen(0, code)) {
    ui_.MsgBox(std::string(kUnableToConnect) + channel_.LastIpcMessage(), MsgStyle::Exclamation, kAppTitle);
    Menus.MenuLocal = false;
    state_.LinkActive = false;
    return;
  }
  if (Menus.MenuReplay) {
    Menus.MenuReplay = false;
    host_.EndReplay();
    host_.DrawMap();
  }
  ui_.SetCaption(kMapWindow, kConnectedCaption);
  timers_.SetEnabled(TimerId::Gps, true);
  state_.LinkActive = true;
  state_.MapMagVar = static_cast<float>(geo_.MagVarAt(static_cast<int>(std::floor(view_.CurrentLat)),
                                                      static_cast<int>(std::floor(view_.CurrentLon))));
  state_.TrackingActive = true;
  if (state_.ActiveRow < 1 || state_.ActiveRow > plan_.LastRow) state_.ActiveRow = 1;
  host_.ShowGpsWindow(true);
  Menus.MenuGPSWindow = true;
}

void LiveTracking::ClearTraffic() {
  Traffic.Clear();
  host_.ShowTcas(false, Traffic.LblTcasCaption);
}

void LiveTracking::Disconnect() {
  ClearTraffic();
  channel_.IpcClose();
  host_.ShowGpsWindow(false);
  state_.LinkActive = false;
  state_.TrackingActive = false;
  timers_.SetEnabled(TimerId::Gps, false);
  ui_.SetCaption(kMapWindow, kDisconnectedCaption);
  Menus.MenuSelParking = false;
  Menus.MenuGPSWindow = false;
  host_.RestoreMapPicture();
  host_.DrawMap();
}

void LiveTracking::LinkLost(float keptLat, float keptLon) {
  Menus.MenuLocal = !Menus.MenuLocal;
  Menus.MenuTraceActive = !Menus.MenuTraceActive;
  Menus.menuShowAlt = false;
  ClearTraffic();
  channel_.IpcClose();
  host_.ShowGpsWindow(false);
  state_.LinkActive = false;
  state_.TrackingActive = false;
  timers_.SetEnabled(TimerId::Gps, false);
  ui_.SetCaption(kMapWindow, kDisconnectedCaption);
  ui_.MsgBox(kConnectionTerminated, MsgStyle::Exclamation, kAppTitle);
  Menus.MenuSelParking = false;
  Menus.MenuGPSWindow = false;
  host_.RestoreMapPicture();
  Snap.Latitude = keptLat;
  Snap.Longitude = keptLon;
  host_.DrawMap();
  host_.FocusSimulator();
}

// ------------------------------------------------------------ the tick

void LiveTracking::TmGpsTick() {
  if (!state_.LinkActive) return;
  host_.RestoreMapPicture();
  host_.DrawHoverAndMeasure();
  if (!LiveUpdate()) return;
  MapFollow();
}

bool LiveTracking::LiveUpdate() {
  WPTable& table = panel_.Table;
  if (host_.PlanPanelWidth() > 0 && table.TopRow > plan_.LastRow + 1) table.TopRow = 3;
  const float keptLat = Snap.Latitude, keptLon = Snap.Longitude;
  if (ReadLiveness(channel_) == 99) {
    LinkLost(keptLat, keptLon);
    return false;
  }
  ReadSnapshot(channel_, Snap);
  host_.SetMapStatus(kStatusFuel, FuelStatusText(fuelUnit_, Snap.TotalFuel));
  const bool onGround = Snap.Airborne == 0;
  Menus.MenuSelParking = onGround;
  Snap.Wca = WindCorrectionAngle(Snap.Tas, Snap.WindSpeed, Snap.TrueHeading, Snap.WindDir);
  if (state_.GpsPage == kGpsPagePosition) GpsPositionPage();
  if (Menus.btnAI) {
    // The ground table only at the closest ranges, where the aircraft on
    // the aprons can be told apart.
    const std::vector<AdvisoryEvent> advisories = Traffic.Tick(channel_, Snap, CurrentLabel(view_) < 6, ui_);
    host_.DrawTraffic(Traffic);
    host_.ShowTcas(Traffic.LblTcasVisible, Traffic.LblTcasCaption);
    for (const AdvisoryEvent& a : advisories) host_.OnAdvisory(a);
  } else if (!Traffic.Symbols().empty() || Traffic.LblTcasVisible) {
    ClearTraffic();
  }
  if (!Menus.MenuReplay) host_.DrawWind(Snap.WindDir, Snap.WindSpeed);
  return true;
}

void LiveTracking::GpsPositionPage() {
  const float track = Normalise360(Snap.MagHeading - Snap.Wca);
  const bool fast = Snap.Ias >= 256 && Snap.Altitude < 10000;
  host_.GpsLine(5, "  Alt:      " + Format(Snap.Altitude, "00000") + "     AGL: " + Format(Snap.Agl, "00000"),
                kGpsGreen);
  host_.GpsLine(20, "  TAS:   " + Format(Snap.Tas, "000") + "         GS:   " + Format(Snap.GroundSpeed, "000"),
                fast ? kGpsRed : kGpsGreen);
  host_.GpsLine(35, "  Hdg:   " + Degrees(Snap.MagHeading, "000.0") + "     Trk:   " + Degrees(track, "000.0"),
                kGpsGreen);
  host_.GpsLine(50, "  TT:     " + Degrees(Snap.TrueHeading, "000.0") + "     WCA: " + Degrees(Snap.Wca, "#00.0"),
                kGpsGreen);
  host_.GpsLine(65, "  MgVr:  " + Degrees(Snap.SimMagVar, "00.0"), kGpsGreen);
  host_.GpsLine(90,
                "  " + LatToText(Snap.Latitude, view_.DecimalSeconds) + "        " +
                    LonToText(Snap.Longitude, view_.DecimalSeconds),
                kGpsGreen);
}

void LiveTracking::MapFollow() {
  view_.CurrentLat = Snap.Latitude;
  view_.CurrentLon = Snap.Longitude;
  FollowInput in;
  in.Minimised = host_.Minimised();
  in.TrueTrack = Snap.TrueHeading;
  in.AircraftX = MapXFromLon(view_, Snap.Longitude, Snap.Latitude);
  in.AircraftY = MapYFromLat(view_, Snap.Latitude);
  in.PanelTop = host_.PlanPanelWidth();
  in.MapWidth = host_.MapWidth();
  in.MapHeight = host_.MapHeight();
  // The view's follow shifts the left edge by the panel's width through
  // PanelTop; it also writes the grid's variation, replaced just below by
  // the simulator's.
  FollowAircraft(view_, in, host_, geo_);
  state_.MapMagVar = Snap.SimMagVar;
  host_.SetMapStatus(kStatusMagVar, "MagVar: " + VarToText(Snap.SimMagVar));
  if (Menus.menuShowCoords) host_.SetMapStatus(kStatusPosition, PositionText(view_, Snap.Latitude, Snap.Longitude, geo_));
  if (state_.TrackingActive) host_.DrawAircraft(Snap.Latitude, Snap.Longitude, Snap.TrueHeading);
  if (state_.DirectActive && state_.DirectLat != -500) {
    state_.DirectFromLat = Snap.Latitude;
    state_.DirectFromLon = Snap.Longitude;
    DirectToTick();
    return;
  }
  if (PlanActive()) SequenceTick();
  AutoZoomTick(view_, Snap.Airborne == 0, host_, ui_);
}

// ------------------------------------------------------------ sequencing

void LiveTracking::SequenceTick() {
  LinkState& s = state_;
  if (++s.TickCounter >= 60) s.TickCounter = 0;
  const int last = std::min<int>(plan_.LastRow, kMaxPlanRow);
  s.ActiveRow = static_cast<int16_t>(std::clamp<int>(s.ActiveRow, 1, last));
  const WaypointRec& active = plan_.Waypoints[static_cast<size_t>(s.ActiveRow)];
  const WaypointRec& previous = plan_.Waypoints[static_cast<size_t>(s.ActiveRow) - 1];
  const float lat = Snap.Latitude, lon = Snap.Longitude;
  s.DistFromPrevious = static_cast<float>(Distance60(previous.Lat, previous.Lon, lat, lon));

  s.DesiredTrack = active.Course;
  const Leg toActive = LegTo(lat, lon, active.Lat, active.Lon);
  s.DistToActive = static_cast<float>(toActive.Distance);
  s.Bearing = static_cast<float>(toActive.Bearing);
  const double trackNow = Snap.TrueHeading - Snap.Wca;
  const double errorDiff = Wrap360(s.DesiredTrack - trackNow);
  s.CourseError = static_cast<float>(errorDiff > 180 ? -AngleDiff(s.DesiredTrack, trackNow)
                                                     : AngleDiff(s.DesiredTrack, trackNow));
  const double xtkDiff = Wrap360(s.DesiredTrack - s.Bearing);
  s.CrossTrack = static_cast<float>(s.DistToActive * std::sin(DegToRad(AngleDiff(s.DesiredTrack, s.Bearing))) *
                                    (xtkDiff < 180 ? 1 : -1));
  s.BearingShown = Normalise360(s.Bearing - Snap.SimMagVar);
  // Deliberately TAS, not ground speed.
  if (Snap.Tas > 0) s.Ete = s.DistToActive * 60.0f / static_cast<float>(Snap.Tas);

  if (s.GpsPage == kGpsPagePlan && !s.DirectActive) {
    GpsPlanPage();
    host_.GpsNeedle(s.CourseError, s.CrossTrack);
  }
  if (s.GpsPage == kGpsPageAirport) {
    const WaypointRec& dest = plan_.Waypoints[static_cast<size_t>(last)];
    const double d = Distance60(lat, lon, dest.Lat, dest.Lon);
    std::string text = "Dist: " + Format(d, "#000") + "nm" + "  ETE: ";
    if (Snap.GroundSpeed > 20) text += MinutesToHours(d / (Snap.GroundSpeed / 60.0));
    host_.GpsLine(80, text, kGpsGreen);
  }

  s.MaxAltitude = std::max(s.MaxAltitude, Snap.Altitude);
  if (s.TickCounter == 50) {
    if (s.DistRefLat != 0 || s.DistRefLon != 0)
      s.DistanceFlown += static_cast<float>(RhumbDistance(s.DistRefLat, s.DistRefLon, lat, lon));
    s.DistRefLat = lat;
    s.DistRefLon = lon;
  }

  if (Snap.Airborne == 0) {
    // Landing check. The time since takeoff runs on over midnight.
    double since = Snap.UtcMinutes - s.TakeoffTime;
    if (s.TakeoffTime > 0 && since < 0) since += 1440;
    if (since > 2.0) {
      if (s.FlightArmed) {
        s.FlightArmed = false;
        if (Menus.menuAutolog) host_.WriteLogEntry();
      }
      if (s.TakeoffTime > 0) {
        WriteAtaFields(last + 1);
        s.TakeoffTime = 0;
        host_.OnLanded();
      }
    }
    s.EtaColumnDone = false;
    return;
  }

  // Procedure hold: a random time in the procedure's shape once near its row.
  if (s.ActiveRow == s.ProcedureRow && !s.ProcedureOffRunning && s.DistToActive < 4 && Menus.MenuDisplayProc) {
    s.ProcedureOffRunning = true;
    s.ProcedureOffCount = 0;
    s.ProcedureOffLimit = std::uniform_int_distribution<int32_t>(500, 2000)(random_);
  }
  if (s.ProcedureOffRunning && ++s.ProcedureOffCount > s.ProcedureOffLimit) {
    s.ProcedureOffRunning = false;
    Menus.MenuDisplayProc = false;
  }

  double change = 0;
  if (s.ActiveRow < last) change = AngleDiff(active.Course, plan_.Waypoints[static_cast<size_t>(s.ActiveRow) + 1].Course);
  s.PassDistance = PassingDistance(Snap.GroundSpeed, change);

  if (!s.EtaColumnDone) {
    TakeoffWork();
    s.EtaColumnDone = true;
    host_.FocusSimulator();
  }
  if (!s.FlightArmed && s.TakeoffTime >= 0 && Snap.Agl >= 501) {
    s.FlightArmed = true;
    s.FuelAtTakeoff = Snap.TotalFuel;
  }
  if (s.DistToActive > s.PassDistance || s.ActiveRow >= last) return;
  PassWaypoint();
}

void LiveTracking::TakeoffWork() {
  LinkState& s = state_;
  WPTable& table = panel_.Table;
  const int last = std::min<int>(plan_.LastRow, kMaxPlanRow);
  s.LegStart = Snap.UtcMinutes;
  s.LegStartLat = Snap.Latitude;
  s.LegStartLon = Snap.Longitude;
  if (s.TakeoffTime > 0) s.EtaRunning = 0;
  if (s.EtaRunning == 0) {
    s.EtaRunning = s.TakeoffTime > 0 ? s.TakeoffTime : s.LegStart;
    const int lines = std::min(last + 1, table.Rows() - 1);
    if (s.TakeoffTime == 0)
      for (int row = lines - 1; row >= 0; --row) table.Cell(row + 1, WPTable::kEta).Text = "    ";
    for (int row = 0; row < lines; ++row) {
      s.EtaRunning += plan_.Waypoints[static_cast<size_t>(row)].LegTime;
      table.Cell(row + 1, WPTable::kEta).Text = ClockText(s.EtaRunning, true);
    }
    if (s.TakeoffTime == 0) {
      s.TakeoffTime = s.LegStart;
      s.LblTKTime = "Takeoff Time: " + ClockText(s.LegStart);
      s.ArrivalMinutes = s.EtaRunning;
      s.LblArrivalTime = "Arrival Time:    " + ClockText(s.EtaRunning);
      host_.TimesChanged();
      host_.OnTakeoff();
    }
  }
  if (!table.Extended()) {
    table.SetExtended(true);
    Menus.menuExtTable = Menus.menuExtTableEnabled = true;
    host_.ShowExtendedTable();
  }
}

void LiveTracking::PassWaypoint() {
  LinkState& s = state_;
  WPTable& table = panel_.Table;
  const int last = std::min<int>(plan_.LastRow, kMaxPlanRow);
  const WaypointRec& row = plan_.Waypoints[static_cast<size_t>(s.ActiveRow)];
  ui_.Beep();
  LinkState::LogEntry entry;
  entry.Kind = row.Kind.Trimmed().empty() ? ' ' : row.Kind.Trimmed()[0];
  entry.Ident = FixedText(row.Code.Trimmed(), 8);
  entry.Time = static_cast<int32_t>(Snap.UtcMinutes);
  s.LogEntries.push_back(entry);
  s.LegStart = Snap.UtcMinutes - s.LegStart;
  if (!table.Extended()) {
    table.SetExtended(true);
    Menus.menuExtTable = Menus.menuExtTableEnabled = true;
  }
  host_.ShowExtendedTable();
  WriteAtaFields(s.ActiveRow + 1);
  if (s.ActiveRow > 2) table.TopRow = s.ActiveRow;
  float remaining = 0;
  for (int r = s.ActiveRow + 1; r <= last; ++r) remaining += plan_.Waypoints[static_cast<size_t>(r)].LegTime;
  s.ArrivalMinutes = Snap.UtcMinutes + remaining;
  s.LblArrivalTime = "Arrival Time:    " + ClockText(s.ArrivalMinutes);
  host_.TimesChanged();
  s.EtaColumnDone = false;
  s.LastPassDistance = s.PassDistance;
  host_.OnPassed(s.ActiveRow);
  // The next leg should be on the picture: re-centre on the aircraft when
  // the next or the following row is off it.
  if (!OnPicture(s.ActiveRow + 1) || !OnPicture(std::min(s.ActiveRow + 2, last))) {
    view_.CntrLat = Snap.Latitude;
    view_.CntrLon = Snap.Longitude;
  }
  ++s.ActiveRow;
  host_.DrawMap();
}

bool LiveTracking::OnPicture(int row) const {
  const WaypointRec& w = plan_.Waypoints[static_cast<size_t>(std::clamp(row, 0, kMaxPlanRow))];
  const double x = MapXFromLon(view_, w.Lon, w.Lat), y = MapYFromLat(view_, w.Lat);
  return x >= 0 && x <= view_.ScaleWidth && y >= 0 && y <= view_.ScaleHeight;
}

void LiveTracking::WriteAtaFields(int line) {
  WPTable& table = panel_.Table;
  if (line < 1 || line >= table.Rows()) return;
  auto put = [&](int col, std::string text) {
    GridCell& cell = table.Cell(line, col);
    cell.Text = std::move(text);
    cell.ForeColor = kAtaColour;
  };
  put(WPTable::kEta, "    ");
  put(WPTable::kAta, ClockText(Snap.UtcMinutes));
  put(WPTable::kGs, Format(Snap.GroundSpeed, "000") + " kn");
  put(WPTable::kAltitude, Format(Snap.Altitude, "00000") + " ft");
  // Without a fuel figure at takeoff the percentage cannot be taken: the
  // fuel cell keeps what it has.
  const int32_t atTakeoff = state_.FuelAtTakeoff == 0 ? CLng(0.1) : state_.FuelAtTakeoff;
  if (atTakeoff == 0) return;
  const int32_t burnt = CLng(static_cast<double>(atTakeoff - Snap.TotalFuel) * 100.0 / atTakeoff);
  put(WPTable::kFuel, Format(FuelToUnit(Snap.TotalFuel, fuelUnit_), "00000") + "/" + NumText(static_cast<double>(burnt)) + "%");
}

void LiveTracking::GpsPlanPage() {
  const LinkState& s = state_;
  const WaypointRec& row = plan_.Waypoints[static_cast<size_t>(s.ActiveRow)];
  const std::string kind(row.Kind.Trimmed());
  std::string head = "  " + std::string(row.Code.Trimmed());
  if (!kind.empty() && kind[0] >= '0') head += " (" + kind + ")";
  if (row.Frequency > 100) head += " " + Format(row.Frequency, "000.000");
  const bool fast = Snap.Ias >= 256 && Snap.Altitude < 10000;
  host_.GpsLine(5, head, kGpsGreen);
  host_.GpsLine(20, "  " + Trim(row.Name.Trimmed()), kGpsGreen);
  host_.GpsLine(35, "  Hdg:  " + Format(Snap.MagHeading, "000.0") + kDegreeSign + "      Brg:   " +
                        Format(s.BearingShown, "000.0") + kDegreeSign,
                kGpsGreen);
  host_.GpsLine(50, "  ETE:  " + MinutesToHours(s.Ete) + "       Dst:   " + Format(s.DistToActive, "000.0"), kGpsGreen);
  host_.GpsLine(65, "  Alt:     " + Format(Snap.Altitude, "00000") + "      AGL: " + Format(Snap.Agl, "00000"),
                kGpsGreen);
  host_.GpsLine(80, "  TAS:  " + Format(Snap.Tas, "000") + "          GS:   " + Format(Snap.GroundSpeed, "000"),
                fast ? kGpsRed : kGpsGreen);
}

// ------------------------------------------------------------ direct-to

void LiveTracking::SetDirectTo(float lat, float lon, std::string_view ident) {
  state_.DirectActive = lat != -500;
  state_.DirectLat = lat;
  state_.DirectLon = lon;
  state_.DirectFromLat = Snap.Latitude;
  state_.DirectFromLon = Snap.Longitude;
  state_.DirectIdent = std::string(ident);
}

void LiveTracking::DirectToTick() {
  LinkState& s = state_;
  const Leg to = LegTo(Snap.Latitude, Snap.Longitude, s.DirectLat, s.DirectLon);
  const float bearing = Normalise360(static_cast<float>(to.Bearing) - Snap.SimMagVar);
  const float ete = Snap.Tas > 0 ? static_cast<float>(to.Distance * 60.0 / Snap.Tas) : s.Ete;
  if (s.GpsPage == kGpsPagePlan) {
    const bool fast = Snap.Ias >= 256 && Snap.Altitude < 10000;
    host_.GpsLine(5, "  Target Waypoint:", kGpsGreen);
    host_.GpsLine(20, "  " + LatToText(s.DirectLat, view_.DecimalSeconds) + " " + LonToText(s.DirectLon, view_.DecimalSeconds),
                  kGpsGreen);
    host_.GpsLine(35, "  Hdg: " + Format(Snap.MagHeading, "000.0") + kDegreeSign + "  Brg: " + Format(bearing, "000.0") +
                          kDegreeSign,
                  kGpsGreen);
    host_.GpsLine(50, "  ETE: " + MinutesToHours(ete) + "   Dst: " + Format(to.Distance, "000.0"), kGpsGreen);
    host_.GpsLine(65, "  Alt: " + Format(Snap.Altitude, "00000") + "     AGL: " + Format(Snap.Agl, "00000"), kGpsGreen);
    host_.GpsLine(80, "  TAS: " + Format(Snap.Tas, "000") + "      GS: " + Format(Snap.GroundSpeed, "000"),
                  fast ? kGpsRed : kGpsGreen);
  }
  if (to.Distance < 1) {
    s.DirectActive = false;
    s.DirectLat = -500;
    s.GpsPage = PlanActive() ? kGpsPagePlan : kGpsPagePosition;
  }
}

}  // namespace orv
