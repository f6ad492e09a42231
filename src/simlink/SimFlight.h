// A whole flight with the built-in simulator, run on simulated time: the
// simulator, the in-process partner and the channel, the live tick and, when
// asked, the autopilot coupling, all driven by hand-ticked window timers. The
// command line's "fly", the end-to-end tests and the benchmarks use it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "map/Viewport.h"
#include "simlink/BuiltinSim.h"
#include "simlink/LiveTracking.h"
#include "simlink/Logbook.h"
#include "simlink/Recording.h"

namespace orv {

class Clock;
class MagVarGrid;
struct AircraftRec;
struct AirportRec;
struct FlightPlan;
struct PlanPanel;

// A main window without a window: it keeps the status panes, counts the
// redraws and remembers the GPS window's lines.
class HeadlessLiveHost : public LiveHost {
public:
  void FocusMap() override {}
  void DrawMap() override { ++Draws; }
  void SetMapStatus(int field, std::string_view text) override {
    if (field >= 0 && field < static_cast<int>(Status.size())) Status[static_cast<size_t>(field)] = std::string(text);
  }
  void RepositionMeasure() override {}
  void RestoreMapPicture() override {}
  void ShowGpsWindow(bool show) override { GpsShown = show; }
  void GpsLine(int y, std::string_view text, Colour colour) override {
    if (y >= 0 && y / 5 < static_cast<int>(Gps.size())) Gps[static_cast<size_t>(y / 5)] = std::string(text);
  }
  void OnTakeoff() override { if (Takeoff) Takeoff(); }
  void OnPassed(int row) override { if (Passed) Passed(row); }
  void OnLanded() override { if (Landed) Landed(); }
  void WriteLogEntry() override { if (LogEntry) LogEntry(); }
  void ShowTcas(bool visible, std::string_view caption) override {
    TcasShown = visible;
    TcasCaption = std::string(caption);
  }
  void OnAdvisory(const AdvisoryEvent& a) override { if (Advised) Advised(a); }

  int Draws = 0;
  bool GpsShown = false;
  std::array<std::string, 8> Status;
  std::array<std::string, 20> Gps;  // by vertical position / 5
  std::function<void()> Takeoff, Landed;
  std::function<void(int)> Passed;
  std::function<void()> LogEntry;  // menuAutolog's entry at the end of a flight
  bool TcasShown = false;  // lblTCAS
  std::string TcasCaption;
  std::function<void(const AdvisoryEvent&)> Advised;
};

struct FlightEvent {
  enum Kind : uint8_t { Takeoff, Pass, Landing, Tcas };
  Kind What = Takeoff;
  std::string Time;   // UTC "hh:mm:ss" of the tick
  int Row = 0;        // the plan row passed
  std::string Ident;  // its code; the traffic's callsign of a Tcas event
  Advisory Level = Advisory::None;  // a Tcas event's advisory
  std::string Caption;              // and lblTCAS's caption with a resolution advisory
  std::array<std::string, 4> Cells;  // ATA, GS, Altitude, Fuel as the table shows them
};

struct FlyOptions {
  bool Autopilot = false;
  // Simulated seconds per wall-clock second; 0 runs as fast as it can.
  double TimeScale = 0;
  double StartUtcSeconds = 10 * 3600;
  SimWeather Weather;
  bool ConvergingTraffic = false;
  // With 0 or more: that many AI aircraft, one of them converging, with AI
  // Traffic pressed, so that each advisory is a Tcas event.
  int TrafficCount = -1;
  // The flight is given up after this many simulated hours; 0: three times
  // the plan's time and two hours.
  double MaxHours = 0;
  int FuelUnit = 2;

  // Recording and the logbook: every GPS tick samples the trace as the
  // program does (R of 0: a sample every 15 ticks); with Autolog set
  // (menuAutolog) the end of the flight makes its logbook entry.
  bool Record = false;
  bool Autolog = false;
};

struct FlyResult {
  bool Connected = false;
  bool Landed = false;         // the landing work was done
  bool AtDestination = false;  // ... within 5 NM of the destination
  double SimSeconds = 0;
  int GpsTicks = 0;
  int AutopilotTicks = 0;
  std::vector<FlightEvent> Events;
  std::string Error;
  Recording Trace;                       // with FlyOptions::Record
  std::vector<LogbookEntry> LogEntries;  // with FlyOptions::Autolog
};

// The parts of a simulated flight, wired together; exposed so that tests and
// benchmarks can step it themselves.
class SimFlight {
public:
  SimFlight(FlightPlan& plan, PlanPanel& panel, const MagVarGrid& grid, Ui& ui, int fuelUnit = 2);
  ~SimFlight();

  // Connects (the first tick runs at once); false with the reason in error.
  bool Connect(std::string& error);
  // Moves simulated time on by ms milliseconds, firing the timers due.
  void Advance(int64_t ms);

  OffsetImage& Image() { return *image_; }
  BuiltinSim& Sim() { return *sim_; }
  LiveTracking& Live() { return *live_; }
  class AutopilotCoupling& Autopilot() { return *autopilot_; }
  HeadlessLiveHost& Host() { return host_; }
  ManualTimers& WindowTimers() { return timers_; }
  ViewState& View() { return view_; }
  int GpsTicks() const { return gpsTicks_; }
  int AutopilotTicks() const { return apTicks_; }
  // Called after each live tick (recording).
  std::function<void()> AfterGpsTick;

private:
  FlightPlan& plan_;
  std::unique_ptr<OffsetImage> image_;
  std::unique_ptr<class ImagePartner> partner_;
  std::unique_ptr<class FsuipcChannel> channel_;
  std::unique_ptr<BuiltinSim> sim_;
  std::unique_ptr<class MapGeodesy> geo_;
  HeadlessLiveHost host_;
  ManualTimers timers_;
  ViewState view_;
  std::unique_ptr<LiveTracking> live_;
  std::unique_ptr<class AutopilotCoupling> autopilot_;
  int gpsTicks_ = 0, apTicks_ = 0;
};

// Flies the plan from its departure runway to its destination. Events are
// reported as they happen (onEvent may be empty) and collected in the result.
FlyResult FlyPlan(FlightPlan& plan, PlanPanel& panel, const std::vector<AirportRec>& airports,
                  const AircraftRec& aircraft, const MagVarGrid& grid, const FlyOptions& options, Clock& clock,
                  const std::function<void(const FlightEvent&)>& onEvent = {});

}  // namespace orv
