// OVRMap without its widgets: the menu, button, key, wheel and mouse
// dispatch of the main window, its load and unload, its resize rules and the
// ticks of its timers, over the program state. The Qt window only forwards
// its events here and shows what the view interface is told; tests drive the
// same controller with a recording view.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "app/FlightAnalysis.h"
#include "app/GpsWindow.h"
#include "app/MapMouse.h"
#include "app/PlanCommands.h"
#include "app/ProgramLayers.h"
#include "app/ProgramState.h"
#include "core/Clock.h"
#include "core/Timers.h"
#include "core/Ui.h"
#include "database/FrmUser.h"
#include "map/MainWindowLogic.h"
#include "map/MapGeodesy.h"

namespace orv {

// What the controller asks of the window around it, beyond the map's host.
class MainWindowView : public MainWindowHost {
public:
  // The menu's check marks and the toggle buttons, read again from the state.
  virtual void SyncChecks() = 0;
  // Opens a side window by its name: "frmFind", "OVRLL", "frmUser", ...
  virtual void OpenWindow(std::string_view name) = 0;
  // Closes the main window, which ends the program through its unload.
  virtual void CloseProgram() = 0;
  // The plan table and its totals were changed by a command.
  virtual void RefreshPlanTable() = 0;
  // Reduced mode on or off: the top menus of ReducedModeHiddenMenus, the
  // button bar and the status line hide or show.
  virtual void ShowReduced(bool on) = 0;

  // What the simulator link draws and shows (see LiveHost).
  virtual void RestoreMapPicture() {}
  virtual void DrawAircraft(float lat, float lon, float trueHeading) {}
  virtual void DrawWind(int16_t windDir, int16_t windSpeed) {}
  // The AI traffic over the map, and lblTCAS shown or hidden with its caption.
  virtual void DrawTraffic(const std::vector<TrafficSymbol>& symbols) {}
  virtual void ShowTcas(bool visible, std::string_view caption) {}
  virtual void ShowGpsWindow(bool show) {}
  virtual void GpsLine(int y, std::string_view text, Colour colour) {}
  virtual void ShowExtendedTable() {}
  virtual void TimesChanged() {}
  virtual bool Minimised() const { return false; }
  virtual double PlanPanelWidth() const { return 0; }
  virtual double MapWidth() const { return 10000; }
  virtual double MapHeight() const { return 7000; }

  // What the download manager shows and does (see DownloadHost).
  virtual void ShowDownload(bool visible) {}
  virtual void SetDownloadLabel(std::string_view text) {}
  virtual void SetBar(int percent) {}
  virtual void OpenUrl(const std::string& url) {}
  // Where a finished transfer is handed back to the interface thread; none:
  // downloads are refused.
  virtual UiThread* InterfaceThread() { return nullptr; }
  // A menu entry's check mark set by the core (the online switches).
  virtual void SetMenuChecked(std::string_view name, bool on) {}
  virtual void SetMenuCaption(std::string_view name, std::string_view caption) {}
  virtual void SetMenuEnabled(std::string_view name, bool on) {}

  // Flight Analysis: pctVert and the stepping labels shown or hidden, and
  // the labels of the row shown (the profile is drawn again with them).
  virtual void ShowReplay(bool on) {}
  virtual void ShowReplayRow(const ReplayLabels& labels) {}
  // What the map mouse draws and shows (MapMouse).
  // Draws straight on the map surface, not into its back buffer, and shows it.
  virtual void DrawOnMap(const std::function<void(DrawTarget&)>& draw) {}
  virtual void SetMapStatusColour(int field, Colour colour) {}
  // pnlToggleButtons popped up or away.
  virtual void ShowTogglePanel(bool visible) {}
  // lnMeasure and MeasureLabel, over the map in surface units.
  virtual void SetMeasureLine(bool visible, double x1, double y1, double x2, double y2) {}
  virtual void SetMeasureLabel(bool visible, double x, double y, std::string_view text) {}
  // rbnMeasure's state set by the core (Esc).
  virtual void SetMeasureButton(bool on) {}
  // The surface takes the keyboard focus, so that the wheel reaches it.
  virtual void FocusSurface() {}
  // The plan panel's pick list lstWP, manual field txtManWP and departure
  // list lstDep changed (PlanEditState and PlanPanel hold them).
  virtual void ShowPlanEdit() {}
  // The user waypoint window while it is open, so that a right click on the
  // map can give it a position; nullptr while it is closed.
  virtual FrmUser* OpenUserForm() { return nullptr; }
  // A circle of radius 50 in the hilite colour at a clicked point.
  virtual void MarkPoint(double x, double y) {}
  // Whether this program has a window that no menu entry opens ("frmSID").
  virtual bool HasWindow(std::string_view name) const { return false; }
};

class MainWindowController {
public:
  MainWindowController(ProgramState& s, MainWindowView& view, Ui& ui, Timers& timers, const Clock& clock);
  ~MainWindowController();

  // The window's load, deep in its order: the toggles from the settings, the
  // view on the given centre at the saved zoom step, the zoom label, the
  // Clock timer, and MapReady at the very end.
  void Load(float lat, float lon);
  // The unload: the toggles go back to the settings, the settings file is
  // written (a failure is shown), MapReady is cleared.
  void Unload();

  // A click on a menu entry by control name. False when the entry does
  // nothing yet (MenuAvailable says so beforehand).
  bool Menu(std::string_view name);
  // Whether an entry does something today; the window disables the others
  // rather than leave them silently dead.
  static bool MenuAvailable(std::string_view name);
  // A toolbar button whose value is now value.
  bool Button(std::string_view name, bool value);
  // A button of the bottom bar pnlButton: the command of its menu twin.
  bool BarButton(std::string_view name);
  // The form's key handler (Windows key codes); true when handled.
  bool Key(int keyCode);
  void Wheel(int delta);
  // A released rubber band in surface units; a click is a band of no size.
  void Band(double x1, double y1, double x2, double y2);
  // A press on the map (button 1 left, 2 right) in surface units, before
  // the rubber band: with the simulator connected, shift and the left button
  // tune NAV1 or the ADF to the VOR, ILS or NDB under the pointer, control
  // and the right button move the aircraft there, the right button alone sets
  // the map point that Go To flies to. True when taken.
  bool MouseDown(int button, bool shift, bool control, double x, double y);
  // The map's mouse events as the window forwards them: a press runs the
  // rules of MouseDown, then the rubber band or the measure; a release of
  // the band re-centres and zooms (Band) unless shift is held.
  void MapPress(int button, bool shift, bool control, double x, double y);
  void MapMove(double x, double y);
  void MapRelease(int button, bool shift, double x, double y);
  // A click on MapStatus(field).
  void StatusClick(int field) { mouse_.StatusClick(field); }
  MapMouse& Mouse() { return mouse_; }
  // btnReducedWindow.
  void SetReduced(bool on);
  // The resize event: limits, the reduced window's maximise, the plan that
  // goes when the window gets too narrow. The window applies the outcome.
  ResizeOutcome Resize(const WindowGeometry& g, int barHeight, int statusHeight);

  // Re-centres the map on a position chosen in a side window.
  void CentreOn(float lat, float lon);
  // Builds a plan between the chosen airports and shows it.
  bool BuildPlan(PlanKind kind);

  // "Connect to FS": opens the link to the chosen simulator source, or closes
  // it when connected. With the built-in simulator and a plan in memory the
  // simulated aircraft takes off from the departure runway and flies it.
  void ConnectClick();

  // The plan file menus: open, save, save as (the SaveRoute window), the
  // stored SID and STAR rows, printing (the print windows). False for an
  // entry that is not one of them.
  bool PlanFileMenu(std::string_view name);
  static bool IsPlanFileMenu(std::string_view name);
  // The plan file of the last run (LASTPLAN), opened again at load; a file
  // gone since is passed over in silence, a damaged one says so.
  void ReopenLastPlan();
  // The Save As window's save button.
  bool SaveRouteClick();
  // The folder plans are opened from and saved to: FPPATH10 or FPPATH09 by
  // the simulator, else the program's FSplan folder.
  std::string PlanFolder() const;

  // The online menus: downloads, the networks, weather and tracks. False
  // for an entry that is not one of them.
  bool OnlineMenu(std::string_view name);
  static bool IsOnlineMenu(std::string_view name);

  // The plan editing menus: New, Delete Enroute Waypoints, Add Airway
  // Waypoints. False for an entry that is not one of them.
  bool PlanEditMenu(std::string_view name);
  static bool IsPlanEditMenu(std::string_view name);
  // The plan panel: Enter in txtManWP, a line of lstWP or of lstDep chosen,
  // a row of WPTable selected (rangeStart: the other end of a marked range,
  // or -1).
  bool ManualWaypointEnter(std::string_view typed);
  bool PickWaypoint(int index);
  bool ChooseDeparture(int index);
  void SelectRow(int row, int rangeStart);
  // Whether a button of the bottom bar does something now: its menu entry
  // is available (the route buttons also need both airports).
  bool BarButtonEnabled(std::string_view name) const;

  // frmGPSMM's buttons.
  GpsWindowLogic& Gps() { return gps_; }
  // The Blackbox menu, its two file windows and the stepping view.
  FlightAnalysis& Analysis() { return analysis_; }

  // A tick of one of the window's timers.
  void OnTimer(TimerId id);

private:
  class LinkHost;
  class DownloadLink;
  DownloadManager* Downloads();
  bool ShowNetwork(OnlineNetwork net, bool controllers, bool on);
  void ClockTick();
  // Map mouse rules of the plan: the user waypoint window's position, the
  // row insertion and the airport choice of a new plan.
  bool PlanMouseDown(int button, double x, double y);
  void AfterPlanEdit();
  void SyncProcedure();
  bool OpenLink();
  void StepBuiltin();
  // The AI menus and colours into the link before its tick.
  void SyncTraffic();

  ProgramState& s_;
  MainWindowView& view_;
  Ui& ui_;
  Timers& timers_;
  const Clock& clock_;
  MapGeodesy geo_;
  std::unique_ptr<LinkHost> linkHost_;
  std::unique_ptr<DownloadLink> downloadLink_;
  ProgramLayers layers_{s_, clock_};
  GpsWindowLogic gps_{s_, view_};
  FlightAnalysis analysis_{s_, view_, ui_, timers_};
  MapMouse mouse_{s_, view_, geo_};
};

}  // namespace orv
