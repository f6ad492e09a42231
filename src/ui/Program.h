// The program: owns the program state, runs the start-up behind the splash
// and opens the first window. Everything it shows comes from the headless
// core; this class only connects the pieces.
#pragma once

#include <memory>
#include <string>

#include "app/ProgramState.h"
#include "core/Clock.h"
#include "database/FrmFind.h"
#include "database/FrmUser.h"
#include "database/OvrLL.h"
#include "mapqt/QtFontSet.h"
#include "ui/QtTimers.h"
#include "ui/QtUi.h"

namespace orv::ui {

class AircraftDialog;
class AirportPreviewWindow;
class LayoutWindow;
class OptionsDialog;
class ProcedureEditorWindow;
class ParkingWindow;
class AirportSelectWindow;
class FuelDialog;
class GpsWindow;
class SaveRouteDialog;
class SegmentDialog;
class SidStarDialog;
class HelpWindow;
class LogbookDialog;
class FindWindow;
class MainWindow;
class MapWindow;
class SplashWindow;
class UserWaypointWindow;

class Program {
public:
  explicit Program(std::string appDir);
  ~Program();

  // Runs the start-up; false when the program ends there (the message was shown).
  bool Start();
  // Shows the first window the start-up chose.
  void ShowFirstWindow();
  ProgramState& ProgState() { return state_; }
  AppState& State() { return state_.Core; }
  NavDatabase& Database() { return state_.Db; }
  MainWindow* Main() { return main_.get(); }
  MapWindow* Map() { return mapWindow_; }
  FlightPlan& Plan() { return state_.Plan; }
  ViewState& View() { return state_.View; }
  QtTimers& Timers() { return timers_; }

  // The side windows, opened from the menu (OVRLL also at start).
  void OpenFind();
  void OpenAirportSelection();
  void OpenUserWaypoints();
  FindWindow* SearchWindow() { return findWindow_.get(); }
  AirportSelectWindow* SelectWindow() { return ovrllWindow_.get(); }
  UserWaypointWindow* UserWindow() { return userWindow_.get(); }

private:
  void OpenWindow(std::string_view name);
  void OpenLayout(int32_t airport);
  // Re-centres the map on a position chosen in a side window.
  void CentreMap(float lat, float lon);

  ProgramState state_;
  SystemClock clock_;
  QtUi ui_;
  QtTimers timers_;
  std::unique_ptr<SplashWindow> splash_;
  std::unique_ptr<MainWindow> main_;
  MapWindow* mapWindow_ = nullptr;  // owned by main_
  std::string firstWindow_;

  FrmFind find_{state_.Db};
  FrmUser user_{state_.Db.UserWaypoints, ui_, state_.Core.Folder};
  std::unique_ptr<OvrLL> ovrll_;
  std::unique_ptr<FindWindow> findWindow_;
  std::unique_ptr<AirportSelectWindow> ovrllWindow_;
  std::unique_ptr<UserWaypointWindow> userWindow_;
  std::unique_ptr<FuelDialog> fuelWindow_;
  std::unique_ptr<AircraftDialog> aircraftWindow_;
  std::unique_ptr<HelpWindow> helpWindow_;
  std::unique_ptr<GpsWindow> gpsWindow_;
  std::unique_ptr<SaveRouteDialog> saveRoute_;
  std::unique_ptr<SidStarDialog> sidStar_;
  std::unique_ptr<SegmentDialog> segments_;
  std::unique_ptr<AirportPreviewWindow> apPrev_;
  std::unique_ptr<LayoutWindow> layout_;
  std::unique_ptr<ParkingWindow> parking_;
  std::unique_ptr<OptionsDialog> options_;
  std::unique_ptr<LogbookDialog> logbook_;
  std::unique_ptr<ProcedureEditorWindow> procEditor_;
  QtFontSet printFonts_;
};

// Where the program's data folder is: --appdir DIR on the command line; else
// the folder of the executable when it holds a database (a portable or
// build-tree layout); else the per-user data folder of the desktop
// (~/.local/share/Orvanta/Orvanta on Linux). Problem says, for a person, why
// there is none and how to build one.
struct AppDirChoice {
  std::string Path;
  std::string Problem;
};
AppDirChoice AppDirFromArgs(int argc, char** argv);

}  // namespace orv::ui
