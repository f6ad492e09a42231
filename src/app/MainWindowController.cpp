#include "app/MainWindowController.h"

#include <array>

#include "core/Settings.h"
#include "map/MainMenu.h"

namespace orv {

namespace {

// Entries that open a side window, by the window's name.
struct WindowEntry {
  std::string_view Menu;
  std::string_view Window;
};
constexpr std::array<WindowEntry, 7> kWindowEntries = {{
    {"MenuFindObject", "frmFind"},
    {"MenuSelectAP", "OVRLL"},
    {"MenuEditUser", "frmUser"},
    {"MenuFuel", "Fuel"},
    {"MenuAircraft", "Aircraft"},
    {"MenuHelp", "frmHelp"},
    {"MenuAbout", "frmAbout"},
}};

struct PlanEntry {
  std::string_view Menu;
  PlanKind Kind;
};
constexpr std::array<PlanEntry, 3> kPlanEntries = {{
    {"MenuCreateHiAlt", PlanKind::HighAltitude},
    {"MenuCreateLoAlt", PlanKind::LowAltitude},
    {"MenuCreateNavaid", PlanKind::Navaid},
}};

}  // namespace

MainWindowController::MainWindowController(ProgramState& s, MainWindowView& view, Ui& ui, Timers& timers)
    : s_(s), view_(view), ui_(ui), timers_(timers), geo_(s.Db.MagVar) {}

void MainWindowController::Load(float lat, float lon) {
  MainWindowState toggles = s_.Toggles();
  LoadWindowToggles(s_.Core.Config, toggles);
  LoadView(s_.View, lat, lon, s_.Core.Config.Scale, view_);
  view_.SyncChecks();
  view_.SetMapStatus(kStatusRange, RangeText(CurrentLabel(s_.View)));
  timers_.SetEnabled(TimerId::Clock, true);
  s_.View.MapReady = true;
}

void MainWindowController::Unload() {
  SaveWindowToggles(s_.Toggles(), s_.Core.Config);
  if (!SaveIni(s_.Core.Folder, s_.Core.Config))
    ui_.MsgBox("The settings could not be written to orv.ini.", MsgStyle::Exclamation, kAppTitle);
  for (int i = 0; i < kTimerCount; ++i) timers_.SetEnabled(static_cast<TimerId>(i), false);
  s_.View.MapReady = false;
}

bool MainWindowController::MenuAvailable(std::string_view name) {
  const MenuEntry* e = FindMenuEntry(name);
  if (!e) return false;
  if (e->kind == MenuKind::Heading) return true;
  if (e->kind == MenuKind::Toggle && IsWindowToggle(name)) return true;
  if (ZoomIndexOfMenu(name) >= 0 || name == "MenuExit") return true;
  for (const WindowEntry& w : kWindowEntries)
    if (w.Menu == name) return true;
  for (const PlanEntry& p : kPlanEntries)
    if (p.Menu == name) return true;
  return false;
}

bool MainWindowController::Menu(std::string_view name) {
  MainWindowState toggles = s_.Toggles();
  if (MenuToggleClicked(toggles, name, view_)) {
    view_.SyncChecks();
    return true;
  }
  if (ZoomMenuClicked(s_.View, name, view_, ui_)) {
    view_.SyncChecks();  // the zoom entries clear Autozoom
    return true;
  }
  for (const PlanEntry& p : kPlanEntries)
    if (p.Menu == name) {
      BuildPlan(p.Kind);
      return true;
    }
  for (const WindowEntry& w : kWindowEntries) {
    if (w.Menu == name) {
      view_.OpenWindow(w.Window);
      return true;
    }
  }
  if (name == "MenuExit") {
    view_.CloseProgram();
    return true;
  }
  return false;
}

bool MainWindowController::Button(std::string_view name, bool value) {
  MainWindowState toggles = s_.Toggles();
  const bool known = ButtonClicked(toggles, name, value, view_);
  view_.SyncChecks();
  return known;
}

bool MainWindowController::Key(int keyCode) { return MapKeyDown(s_.View, keyCode, view_, ui_); }

void MainWindowController::Wheel(int delta) { MapWheel(s_.View, s_.Core.Config.MZoom != 0, delta, view_, ui_); }

void MainWindowController::Band(double x1, double y1, double x2, double y2) {
  // A drag (not a plain click) is a manual zoom: autozoom goes off.
  if (x1 != x2 || y1 != y2) {
    s_.View.Autozoom = false;
    view_.SyncChecks();
  }
  ReleaseBand(s_.View, x1, y1, x2, y2, view_, geo_);
}

void MainWindowController::SetReduced(bool on) {
  s_.Window.ReducedWindow = on;
  view_.ShowReduced(on);
}

ResizeOutcome MainWindowController::Resize(const WindowGeometry& g, int barHeight, int statusHeight) {
  ResizeOutcome r = ResizeWindow(g, s_.Window.ReducedWindow, s_.Window.MenuShowPlan, barHeight, statusHeight, ui_);
  if (!r.Ignore && r.HidePlan) Menu("MenuShowPlan");
  return r;
}

void MainWindowController::CentreOn(float lat, float lon) {
  s_.View.CntrLat = ClampCenterLat(s_.View, lat);
  s_.View.CntrLon = lon;
  s_.View.CurrentLat = lat;
  s_.View.CurrentLon = lon;
  view_.DrawMap();
}

bool MainWindowController::BuildPlan(PlanKind kind) {
  if (s_.Plan.DepartureAirport < 0 || s_.Plan.DestinationAirport < 0) {
    ui_.Beep();  // nothing to build between; the window stays as it is
    return false;
  }
  const bool built = CreatePlan(s_, kind, ui_);
  view_.RefreshPlanTable();
  if (!s_.Window.MenuShowPlan) Menu("MenuShowPlan");
  view_.DrawMap();
  return built;
}

void MainWindowController::OnTimer(TimerId id) {
  if (id == TimerId::Clock) ClockTick();
}

void MainWindowController::ClockTick() {
  // The multi-file download counts its files in the caption; the ordinary
  // caption returns after the last one.
  std::string caption(kAppTitle);
  if (s_.Online.Downloading && s_.Online.FilesTotal > 0)
    caption += " - DLC: " + std::to_string(s_.Online.FilesDone) + " / " + std::to_string(s_.Online.FilesTotal);
  if (caption != caption_) {
    caption_ = caption;
    ui_.SetCaption("OVRMap", caption_);
  }
}

}  // namespace orv
