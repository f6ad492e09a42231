// The moving map: connecting to the simulator and the half-second tick that
// follows. Each tick reads the simulator's values, writes the status lines and
// the GPS window, keeps the map on the aircraft, sequences the flight plan
// row by row (filling the ATA columns of the table), and notices takeoff and
// landing. The window's part (drawing, status panes, the GPS window, the
// table's layout) is behind LiveHost, so that the program's main window, the
// command line's simulated flights and the tests drive the same logic.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/Timers.h"
#include "core/Ui.h"
#include "map/DrawTarget.h"
#include "map/Viewport.h"
#include "planning/FlightPlan.h"
#include "planning/WPTable.h"
#include "simlink/SimData.h"
#include "simlink/Tcas.h"

namespace orv {

class FsuipcChannel;

// Texts and colours of the link.
inline constexpr std::string_view kMapWindow = "OVRMap";
inline constexpr std::string_view kConnectedCaption = "Connected to Flight Simulator";
inline constexpr std::string_view kDisconnectedCaption = "Disconnected from Flight Simulator";
inline constexpr std::string_view kUnableToConnect = "Unable to connect to Flight Simulator";
inline constexpr std::string_view kConnectionTerminated = "Connection to Flight Simulator terminated!";
inline constexpr Colour kGpsGreen = 65280;
inline constexpr Colour kGpsRed = 255;
inline constexpr Colour kAtaColour = 255;
// The status pane of the fuel on board.
inline constexpr int kStatusFuel = 6;
// The GPS window's pages the tick writes.
inline constexpr int kGpsPagePosition = 0;
inline constexpr int kGpsPagePlan = 1;
inline constexpr int kGpsPageAirport = 2;

// What the main window does for the link. The view part (redraw, status
// panes, focus) comes from ViewHost.
class LiveHost : public ViewHost {
public:
  // Copies the clean background picture VMap(0) back onto the map.
  virtual void RestoreMapPicture() = 0;
  // Tick steps 2 and 3: the hover box's marks and text while it is open, the
  // measuring line's distance while one is active.
  virtual void DrawHoverAndMeasure() {}
  // Hands the keyboard focus back to the simulator's window.
  virtual void FocusSimulator() {}
  // frmGPSMM shown modeless (true) or unloaded (false); MenuGPSWindow follows.
  virtual void ShowGpsWindow(bool show) {}
  // One text line of the GPS window at a vertical position, from the left.
  virtual void GpsLine(int y, std::string_view text, Colour colour) {}
  // The course needle of the plan page: the course error and the
  // cross-track distance (NM, right of the track positive).
  virtual void GpsNeedle(float courseError, float crossTrack) {}
  // The aircraft symbol over the map (DrawLiveAircraft), heading true.
  virtual void DrawAircraft(float lat, float lon, float trueHeading) {}
  // The wind arrow over the map (DrawWindArrow).
  virtual void DrawWind(int16_t windDir, int16_t windSpeed) {}
  // The table's extended columns shown: lstDep, lstWP and txtManWP hidden,
  // the labels shown, the table 9100 wide, menuExtTable enabled and checked.
  virtual void ShowExtendedTable() {}
  // Leaving a replay on connect: MenuReplay unchecked, pctVert hidden, the
  // folder back to the program's.
  virtual void EndReplay() {}
  // The logbook entry of a finished flight.
  virtual void WriteLogEntry() {}
  // The AI traffic of the tick over the map (btnAI pressed).
  virtual void DrawTraffic(const AiTraffic& traffic) {}
  // lblTCAS shown or hidden, with its caption.
  virtual void ShowTcas(bool visible, std::string_view caption) {}
  // An advisory that began in this tick.
  virtual void OnAdvisory(const AdvisoryEvent& advisory) {}
  // The takeoff and arrival labels have new texts.
  virtual void TimesChanged() {}
  // Window geometry for keeping the aircraft on the map.
  virtual bool Minimised() const { return false; }
  // Width of pnlFlightplan while visible, else 0.
  virtual double PlanPanelWidth() const { return 0; }
  // Map.Width and Map.Height in the map's units.
  virtual double MapWidth() const { return 10000; }
  virtual double MapHeight() const { return 7000; }

  // Events of the flight, for the command line's report and the logbook.
  virtual void OnTakeoff() {}
  virtual void OnPassed(int row) {}
  virtual void OnLanded() {}
};

// The menu entries and switches the link reads and sets.
struct LinkMenus {
  bool MenuLocal = false;            // "&Connect to FS", checked while connected
  bool MenuGPSWindow = false;        // enabled while connected
  bool MenuSelParking = false;       // enabled on the ground while connected
  bool MenuTraceActive = false;
  bool menuShowAlt = false;
  bool menuExtTable = false;         // checked
  bool menuExtTableEnabled = false;
  bool menuAutolog = false;
  bool MenuDisplayProc = false;      // the display procedure is shown
  bool menuShowCoords = false;
  bool MenuReplay = false;
  bool btnAI = false;
};

// The link's flags and the flight's values.
struct LinkState {
  bool LinkActive = false;
  bool TrackingActive = false;
  int16_t ActiveRow = 1;
  float DistToActive = 0;
  float TakeoffTime = 0;      // UtcMinutes at takeoff; 0 = no flight
  float EtaRunning = 0;
  bool EtaColumnDone = false;
  bool FlightArmed = false;
  int32_t FuelAtTakeoff = 0;
  int32_t MaxAltitude = 0;
  float DistanceFlown = 0;
  float LastPassDistance = 0;
  struct LogEntry {
    char Kind = ' ';
    std::string Ident;  // 8 characters
    int32_t Time = 0;   // whole minutes of the day
  };
  std::vector<LogEntry> LogEntries;
  int32_t LogEntryCount() const { return static_cast<int32_t>(LogEntries.size()); }

  // The sequencing routine's own values, kept from tick to tick.
  int16_t TickCounter = 0;
  float LegStart = 0;
  float LegStartLat = 0, LegStartLon = 0;
  float ArrivalMinutes = 0;
  float DistRefLat = 0, DistRefLon = 0;
  int32_t ProcedureOffCount = 0;
  int32_t ProcedureOffLimit = 0;
  bool ProcedureOffRunning = false;
  // The plan row of the display procedure, -1 when none.
  int32_t ProcedureRow = -1;

  // Figures of the last sequencing tick.
  float DistFromPrevious = 0;  // NM from the row before the active one
  float Ete = 0;            // minutes to the active row
  float BearingShown = 0;   // magnetic
  float Bearing = 0;        // true
  float CourseError = 0;
  float CrossTrack = 0;
  float DesiredTrack = 0;
  float PassDistance = 0.5f;

  // Direct-to.
  bool DirectActive = false;
  float DirectLat = -500, DirectLon = 0;
  float DirectFromLat = 0, DirectFromLon = 0;
  std::string DirectIdent;

  // The GPS window's page.
  int16_t GpsPage = kGpsPagePosition;
  // Magnetic variation of the map: the grid's at connect, the simulator's after.
  float MapMagVar = 0;

  // lblTKTime and lblArrivalTime.
  std::string LblTKTime;
  std::string LblArrivalTime;
};

// The wind correction angle: minus the arc sine of sin(heading - wind) *
// wind / TAS, from a TAS of 51 knots and a wind of 1 knot on, else 0.
float WindCorrectionAngle(int32_t tas, int16_t windSpeed, float trueHeading, int16_t windDir);
// How far from a waypoint it counts as passed: the turn radius at 18 degrees
// of bank for the ground speed, against half the supplement of the track
// change; never below 0.5 NM.
float PassingDistance(int32_t groundSpeed, double trackChange);
// Status pane 6: "gal", "lbs", "kg" or "lit", a blank, the fuel in that unit,
// whole.
std::string FuelStatusText(int fuelUnit, int32_t gallons);

class LiveTracking {
public:
  // The plan and its panel are the main window's; fuelUnit is the FUEL
  // setting (0 gal, 1 lbs, 2 kg, 3 lit); seed feeds the random length of a
  // procedure hold.
  LiveTracking(FsuipcChannel& channel, Timers& timers, Ui& ui, LiveHost& host, FlightPlan& plan, PlanPanel& panel,
               ViewState& view, const ViewGeodesy& geo, int fuelUnit = 2, uint32_t seed = 1);

  // A click on MenuLocal: connects, or disconnects when connected.
  void MenuLocalClick();
  // The tmGPS timer: one live tick.
  void TmGpsTick();

  // The parts of the tick, callable on their own.
  // Reads the simulator; false when the liveness read failed and the link
  // was closed.
  bool LiveUpdate();
  void MapFollow();
  void SequenceTick();
  void DirectToTick();

  // Sets a direct-to target from the current position; -500 clears it.
  void SetDirectTo(float lat, float lon, std::string_view ident);
  // The ATA cells of a table line from the current values.
  void WriteAtaFields(int line);

  bool PlanActive() const { return plan_.LastRow >= 1; }
  bool Connected() const { return state_.LinkActive; }

  SimSnapshot Snap;
  // AI traffic and its TCAS, read and tested while Menus.btnAI is set.
  AiTraffic Traffic;
  LinkState& State() { return state_; }
  const LinkState& State() const { return state_; }
  LinkMenus Menus;
  FlightPlan& Plan() { return plan_; }
  PlanPanel& Panel() { return panel_; }
  FsuipcChannel& Channel() { return channel_; }
  Timers& WindowTimers() { return timers_; }
  LiveHost& Host() { return host_; }

private:
  void Connect();
  void Disconnect();
  void LinkLost(float keptLat, float keptLon);
  void ClearTraffic();
  void TakeoffWork();
  void PassWaypoint();
  void GpsPositionPage();
  void GpsPlanPage();
  bool OnPicture(int row) const;

  FsuipcChannel& channel_;
  Timers& timers_;
  Ui& ui_;
  LiveHost& host_;
  FlightPlan& plan_;
  PlanPanel& panel_;
  ViewState& view_;
  const ViewGeodesy& geo_;
  int fuelUnit_;
  LinkState state_;
  std::mt19937 random_;
};

}  // namespace orv
