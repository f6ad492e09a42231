#include "app/MainWindowController.h"

#include "app/DownloadLink.h"
#include "app/ProcedureEditor.h"

#include <algorithm>
#include <cmath>
#include <array>

#include "core/Runtime.h"
#include "core/Settings.h"
#include "map/MainMenu.h"
#include "simlink/ImagePartner.h"
#include "simlink/LiveDraw.h"
#include "simlink/Logbook.h"
#include "simlink/SimulatorChoice.h"
#include "planning/NavLookupDb.h"
#include "planning/StoredProcedures.h"

namespace orv {

namespace {

// Entries that open a side window, by the window's name.
struct WindowEntry {
  std::string_view Menu;
  std::string_view Window;
};
constexpr std::array<WindowEntry, 12> kWindowEntries = {{
    {"MenuFindObject", "frmFind"},
    {"MenuSelectAP", "OVRLL"},
    {"MenuEditUser", "frmUser"},
    {"MenuFuel", "Fuel"},
    {"MenuAircraft", "Aircraft"},
    {"MenuHelp", "frmHelp"},
    {"MenuAbout", "frmAbout"},
    {"MenuAPPrev", "APPrev"},
    {"MenuSelParking", "frmSelParking"},
    {"MenuPref", "OVRPrefnew"},
    {"menuShowLogbook", "frmLogbook"},
    {"MenuProc", "EdProc"},
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

// The live tick's window: the main window's view, seen through the link's
// interface.
class MainWindowController::LinkHost : public LiveHost {
public:
  LinkHost(ProgramState& s, MainWindowView& v, Ui& ui, const Clock& clock, FlightAnalysis& analysis)
      : s_(s), v_(v), ui_(ui), clock_(clock), analysis_(analysis) {}
  void FocusMap() override { v_.FocusMap(); }
  void DrawMap() override { v_.DrawMap(); }
  void SetMapStatus(int field, std::string_view text) override {
    // The field of the fuel is also the recording state's: the samples
    // taken so far follow the fuel.
    if (field == kStatusRecording && !s_.Trace.Trace().Samples.empty())
      v_.SetMapStatus(field, std::string(text) + "   Rec " + std::to_string(s_.Trace.TraceLast() + 1));
    else
      v_.SetMapStatus(field, text);
  }
  void EndReplay() override { analysis_.EndReplay(); }
  void RepositionMeasure() override { v_.RepositionMeasure(); }
  void RestoreMapPicture() override { v_.RestoreMapPicture(); }
  void DrawHoverAndMeasure() override {
    if (mouse) mouse->RedrawOverlays();
  }
  MapMouse* mouse = nullptr;
  void ShowGpsWindow(bool show) override { v_.ShowGpsWindow(show); }
  void GpsLine(int y, std::string_view text, Colour colour) override { v_.GpsLine(y, text, colour); }
  void DrawAircraft(float lat, float lon, float trueHeading) override { v_.DrawAircraft(lat, lon, trueHeading); }
  void DrawWind(int16_t windDir, int16_t windSpeed) override { v_.DrawWind(windDir, windSpeed); }
  void DrawTraffic(const AiTraffic& traffic) override { v_.DrawTraffic(traffic.Symbols()); }
  void ShowTcas(bool visible, std::string_view caption) override { v_.ShowTcas(visible, caption); }
  void ShowExtendedTable() override {
    MainWindowState toggles = s_.Toggles();
    SetExtendedTable(toggles, true);
    v_.ShowExtendedTable();
    v_.SyncChecks();
  }
  void TimesChanged() override { v_.TimesChanged(); }
  bool Minimised() const override { return v_.Minimised(); }
  double PlanPanelWidth() const override { return v_.PlanPanelWidth(); }
  double MapWidth() const override { return v_.MapWidth(); }
  double MapHeight() const override { return v_.MapHeight(); }
  void OnPassed(int) override { v_.RefreshPlanTable(); }
  // The landed flight into the logbook (menuAutolog); a damaged book is
  // left whole and the flight goes to a file beside it.
  void WriteLogEntry() override {
    LiveTracking& live = *s_.Sim.Live;
    const FlightPlan& plan = s_.Plan;
    const LogbookEntry entry =
        AutologEntry(plan.Waypoints[0].Code.Trimmed(), plan.Waypoints[static_cast<std::size_t>(plan.LastRow)].Code.Trimmed(),
                     ReadAtcStrings(live.Channel()), DateToDays(clock_.NowUtc()), live.State(), live.Snap);
    AddLogbookEntry(s_.Core.Folder.Resolve(kLogbookFile), entry, &ui_);
  }

private:
  ProgramState& s_;
  MainWindowView& v_;
  Ui& ui_;
  const Clock& clock_;
  FlightAnalysis& analysis_;
};

namespace {

// The built-in simulator answers at once, so the channel's pauses between
// retries need no wall-clock time.
class BuiltinPartner : public ImagePartner {
public:
  using ImagePartner::ImagePartner;
  void SleepMs(std::uint32_t) override {}
};

// A longer gap (a stopped debugger, a suspended laptop) is not flown all at
// once: the simulated aircraft moves on by this much at most per tick.
constexpr int64_t kMaxStepMs = 2000;

}  // namespace

MainWindowController::MainWindowController(ProgramState& s, MainWindowView& view, Ui& ui, Timers& timers,
                                           const Clock& clock)
    : s_(s), view_(view), ui_(ui), timers_(timers), clock_(clock), geo_(s.Db.MagVar),
      linkHost_(std::make_unique<LinkHost>(s, view, ui, clock, analysis_)), downloadLink_(std::make_unique<DownloadLink>(*this)) {
  linkHost_->mouse = &mouse_;
}

MainWindowController::~MainWindowController() {
  // The link and the download manager refer to the window: they go first.
  s_.Sim.Autopilot.reset();
  s_.Sim.Live.reset();
  s_.Online.Downloads.reset();
}

void MainWindowController::Load(float lat, float lon) {
  MainWindowState toggles = s_.Toggles();
  LoadWindowToggles(s_.Core.Config, toggles);
  LoadView(s_.View, lat, lon, s_.Core.Config.Scale, view_);
  view_.SyncChecks();
  view_.SetMapStatus(kStatusRange, RangeText(CurrentLabel(s_.View)));
  timers_.SetEnabled(TimerId::Clock, true);
  timers_.SetEnabled(TimerId::MousePos, true);
  s_.View.MapReady = true;
  ReopenLastPlan();
}

void MainWindowController::Unload() {
  SaveWindowToggles(s_.Toggles(), s_.Core.Config);
  // A plan built but never saved has no file to come back to.
  s_.Core.Config.LastPlan = s_.Plan.LastRow >= 1 ? s_.Files.CurrentPath : std::string();
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
  if (ZoomIndexOfMenu(name) >= 0 || name == "MenuExit" || name == "MenuLocal" ||
      name == "MenuGPSWindow" || name == "MenuSimSource" || name == "menuAutolog" || name == "MenuReplay" ||
      name == "MenuTraceReset")
    return true;
  for (const WindowEntry& w : kWindowEntries)
    if (w.Menu == name) return true;
  for (const PlanEntry& p : kPlanEntries)
    if (p.Menu == name) return true;
  return IsOnlineMenu(name) || IsPlanFileMenu(name) || IsPlanEditMenu(name);
}

bool MainWindowController::Menu(std::string_view name) {
  MainWindowState toggles = s_.Toggles();
  if (name == "menuCheckControlzone") {
    // The check runs between the flip and the redraw.
    view_.FocusMap();
    CheckControlZones(s_, !s_.Window.menuCheckControlzone);
    view_.RefreshPlanTable();
    view_.SyncChecks();
    if (s_.View.MapReady) view_.DrawMap();
    return true;
  }
  if (MenuToggleClicked(toggles, name, view_)) {
    if (name == "menuShowCoords") {
      // The Name column is rewritten with positions or names; the live
      // tick shows the aircraft's position in the status line meanwhile.
      NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
      PlanEditor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav).RefreshRows(0);
      if (s_.Sim.Live) s_.Sim.Live->Menus.menuShowCoords = s_.Window.menuShowCoords;
      view_.RefreshPlanTable();
    }
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
  if (OnlineMenu(name)) return true;
  if (PlanFileMenu(name)) return true;
  if (PlanEditMenu(name)) return true;
  if (name == "MenuLocal") {
    ConnectClick();
    return true;
  }
  if (name == "menuAutolog") {
    s_.Sim.Autolog = !s_.Sim.Autolog;
    if (s_.Sim.Live) s_.Sim.Live->Menus.menuAutolog = s_.Sim.Autolog;
    view_.SetMenuChecked(name, s_.Sim.Autolog);
    return true;
  }
  if (name == "MenuReplay") {
    analysis_.MenuReplayClick();
    return true;
  }
  if (name == "MenuTraceReset") {
    analysis_.MenuTraceResetClick();
    return true;
  }
  if (name == "MenuSimSource") {
    // The source is asked as text: builtin, fsuipc, bridge:HOST:PORT,
    // flightgear[:UDP[:HTTP[:HOST]]] or xplane[:HOST[:PORT]].
    std::string source = s_.Core.Config.SimSource.empty() ? std::string(kBuiltinSource) : s_.Core.Config.SimSource;
    if (ui_.AskText("Simulator (builtin, fsuipc, bridge:HOST:PORT, flightgear, xplane:HOST):", "Simulator", source) &&
        !Trim(source).empty()) {
      s_.Core.Config.SimSource = Trim(source);
      if (!s_.Sim.Connected()) {
        // The next Connect to FS opens the new source.
        s_.Sim.Autopilot.reset();
        s_.Sim.Live.reset();
        s_.Sim.Geo.reset();
        s_.Sim.Channel.reset();
        s_.Sim.Platform.reset();
        s_.Sim.Builtin.reset();
        s_.Sim.Image.reset();
      }
    }
    return true;
  }
  if (name == "MenuGPSWindow") {
    // The GPS window lives with the link: without one there is nothing to show.
    if (s_.Sim.Connected()) {
      bool& shown = s_.Sim.Live->Menus.MenuGPSWindow;
      shown = !shown;
      view_.ShowGpsWindow(shown);
    } else {
      ui_.Beep();
    }
    return true;
  }
  return false;
}

bool MainWindowController::OpenLink() {
  SimSession& sim = s_.Sim;
  if (sim.Live) return true;
  if (!s_.Core.Config.SimSource.empty()) sim.Source = s_.Core.Config.SimSource;
  if (sim.Source == kBuiltinSource) {
    sim.Image = std::make_unique<OffsetImage>();
    sim.Builtin = std::make_unique<BuiltinSim>(*sim.Image, &s_.Db.MagVar);
    sim.Builtin->SetPerformance(PerformanceOf(s_.Aircraft.Current));
    if (sim.TrafficCount >= 0) sim.Builtin->SetTrafficCount(sim.TrafficCount);
    const DateTime utc = clock_.NowUtc();
    sim.Builtin->SetUtcSeconds(utc.hour * 3600.0 + utc.minute * 60.0 + utc.second);
    if (s_.Plan.LastRow >= 1) {
      sim.Builtin->Park(RouteFromPlan(s_.Plan, s_.Db.Airports.Airports).Departure);
    } else {
      SimRunwayEnd here;
      here.Lat = s_.View.CntrLat;
      here.Lon = s_.View.CntrLon;
      sim.Builtin->Park(here);
    }
    sim.Platform = std::make_unique<BuiltinPartner>(*sim.Image);
  } else {
    std::string error;
    sim.Platform = OpenSimulator(sim.Source, error);
    if (!sim.Platform) {
      ui_.MsgBox(std::string(kUnableToConnect) + ": " + error);
      return false;
    }
  }
  sim.Channel = std::make_unique<FsuipcChannel>(*sim.Platform);
  sim.Geo = std::make_unique<MapGeodesy>(s_.Db.MagVar);
  const int fuel = s_.Core.Config.Fuel < 4 ? s_.Core.Config.Fuel : 2;
  sim.Live = std::make_unique<LiveTracking>(*sim.Channel, timers_, ui_, *linkHost_, s_.Plan, s_.Panel, s_.View,
                                            *sim.Geo, fuel);
  sim.Autopilot = std::make_unique<AutopilotCoupling>(*sim.Live);
  sim.Live->Menus.menuAutolog = sim.Autolog;
  return true;
}

void MainWindowController::ConnectClick() {
  SimSession& sim = s_.Sim;
  const bool wasConnected = sim.Connected();
  if (!OpenLink()) return;
  // A connect during Flight Analysis ends it (the link's host is told).
  sim.Live->Menus.MenuReplay = s_.Trace.MenuReplay;
  SyncTraffic();
  sim.Live->MenuLocalClick();
  if (!wasConnected && sim.Connected() && sim.Builtin && s_.Plan.LastRow >= 1)
    sim.Builtin->Fly(RouteFromPlan(s_.Plan, s_.Db.Airports.Airports));
  s_.Overlays.Sim = LiveMapState(*sim.Live);
  sim.LastStepMs = clock_.TickMs();
  view_.SyncChecks();
}

void MainWindowController::StepBuiltin() {
  SimSession& sim = s_.Sim;
  if (!sim.Builtin) return;
  const int64_t now = clock_.TickMs();
  if (sim.LastStepMs >= 0) {
    const int64_t ms = std::min(now - sim.LastStepMs, kMaxStepMs);
    if (ms > 0) sim.Builtin->Step(ms / 1000.0 * sim.TimeScale);
  }
  sim.LastStepMs = now;
}

bool MainWindowController::Button(std::string_view name, bool value) {
  if (name == "rbnMeasure") {
    mouse_.SetMeasure(value);
    return true;
  }
  MainWindowState toggles = s_.Toggles();
  const bool known = ButtonClicked(toggles, name, value, view_);
  view_.SyncChecks();
  return known;
}

bool MainWindowController::Key(int keyCode) {
  if (keyCode == 27) mouse_.Escape();
  if (s_.Trace.ReplayActive) {
    // During Flight Analysis the cursor keys step through the samples; every
    // key is followed by the display of the row and the focus on the map.
    bool handled = true;
    if (keyCode == 38 || keyCode == 40)
      analysis_.Step(keyCode == 38);
    else
      handled = MapKeyDown(s_.View, keyCode, view_, ui_);
    analysis_.ShowRow();
    view_.FocusMap();
    return handled;
  }
  switch (keyCode) {
    case 13:  // Enter: the line of the pick list the user is on
      if (!s_.Edit.PickListShown) return false;
      return PickWaypoint(s_.Edit.PickIndex);
    case 46: {  // Delete: the selected row, or the marked range
      NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
      PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
      editor.DeleteKey(ui_, s_.Edit.RangeStart, [&] { menuDeleteSid(editor); }, [&] { menuDeleteStar(editor); });
      s_.Edit.RangeStart = -1;
      AfterPlanEdit();
      return true;
    }
    case 73:  // I: the weather under the pointer is looked up at once
      s_.Online.ImmediateWx = true;
      return true;
    case 27:  // Esc also drops the pick list, the manual field and the selection
      ResetPlanSelection(s_);
      view_.ShowPlanEdit();
      break;
    default: break;
  }
  const bool handled = MapKeyDown(s_.View, keyCode, view_, ui_);
  if (handled) mouse_.SurfaceRedrawn();
  return handled;
}

bool MainWindowController::BarButton(std::string_view name) {
  if (name == "cmdLayout") {
    view_.OpenWindow("OVRLay");
    return true;
  }
  for (const BarButtonEntry& b : BottomBarButtons())
    if (b.name == name) return BarButtonEnabled(name) && Menu(b.menu);
  return false;
}

void MainWindowController::Wheel(int delta) {
  const int16_t zoom = s_.View.ZoomIndex;
  MapWheel(s_.View, s_.Core.Config.MZoom != 0, delta, view_, ui_);
  if (s_.View.ZoomIndex != zoom) mouse_.SurfaceRedrawn();
}

void MainWindowController::Band(double x1, double y1, double x2, double y2) {
  // A drag (not a plain click) is a manual zoom: autozoom goes off.
  if (x1 != x2 || y1 != y2) {
    s_.View.Autozoom = false;
    view_.SyncChecks();
  }
  ReleaseBand(s_.View, x1, y1, x2, y2, view_, geo_);
}

bool MainWindowController::MouseDown(int button, bool shift, bool control, double x, double y) {
  if (button == 2) {
    if (FrmUser* form = view_.OpenUserForm()) {
      // The user waypoint window takes the clicked position into its fields.
      const float lat = MapLatFromY(s_.View, y);
      form->ShowPosition(lat, MapLonFromX(s_.View, x, lat));
      view_.MarkPoint(x, y);
      return true;
    }
  }
  if (!s_.Sim.Connected()) return PlanMouseDown(button, x, y);
  FsuipcChannel& ch = *s_.Sim.Channel;
  const ViewState& v = s_.View;
  auto near = [&](float lat, float lon) {
    return std::fabs(MapXFromLon(v, lon, lat) - x) < 100 && std::fabs(MapYFromLat(v, lat) - y) < 100;
  };
  if (button == 1 && shift) {
    const NavaidTables& n = s_.Db.Navaids;
    bool tuned = false;
    if (s_.Layers.btnVor)
      for (const VorRec& r : n.Vors)
        if (!tuned && r.Frequency > 0 && near(r.Lat, r.Lon)) tuned = WriteNav1(ch, r.Frequency);
    if (s_.Layers.btnIls && !tuned)
      for (const AirportRec& a : s_.Db.Airports.Airports)
        for (const IlsRec& ils : a.Ils)
          if (!tuned && IlsFrequency(ils) > 0 && near(ils.Values[2], ils.Values[3])) tuned = WriteNav1(ch, IlsFrequency(ils));
    if (s_.Layers.btnNdb && !tuned)
      for (const NdbRec& r : n.Ndbs)
        if (!tuned && r.Frequency > 0 && near(r.Lat, r.Lon)) tuned = WriteAdf(ch, r.Frequency);
    view_.FocusMap();
    return true;
  }
  if (button == 2 && control) {
    WriteAircraftPosition(ch, MapLatFromY(v, y), MapLonFromX(v, x, MapLatFromY(v, y)));
    view_.FocusMap();
    return true;
  }
  if (button == 2) {
    // The map point: the target of the GPS window's Go To, marked on the map.
    s_.Overlays.MapPointLat = MapLatFromY(v, y);
    s_.Overlays.MapPointLon = MapLonFromX(v, x, s_.Overlays.MapPointLat);
    view_.DrawMap();
    view_.FocusMap();
    return true;
  }
  return false;
}

void MainWindowController::MapPress(int button, bool shift, bool control, double x, double y) {
  if (MouseDown(button, shift, control, x, y)) return;
  mouse_.Press(button, x, y);
}

void MainWindowController::MapMove(double x, double y) { mouse_.Move(x, y); }

void MainWindowController::MapRelease(int button, bool shift, double x, double y) {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  if (mouse_.Release(button, x, y, x1, y1, x2, y2) && !shift) Band(x1, y1, x2, y2);
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
  SimSession& sim = s_.Sim;
  switch (id) {
    case TimerId::Clock: ClockTick(); break;
    case TimerId::Gps:
      if (!sim.Live) break;
      StepBuiltin();
      SyncProcedure();
      SyncTraffic();
      sim.Live->TmGpsTick();
      if (s_.Window.MenuDisplayProc && s_.Procedure.Set && !sim.Live->Menus.MenuDisplayProc) {
        // The hold at the procedure's fix is over: the tick switched the
        // display off, and the menu follows.
        s_.Window.MenuDisplayProc = false;
        view_.SyncChecks();
        view_.DrawMap();
      }
      s_.Overlays.Sim = LiveMapState(*sim.Live);
      analysis_.LiveSample();
      gps_.Update();
      break;
    case TimerId::AutoPilot:
      SyncProcedure();
      if (sim.Autopilot) sim.Autopilot->TmAutoPilotTick();
      break;
    case TimerId::MousePos: mouse_.Tick(); break;
  }
}

void MainWindowController::SyncProcedure() {
  // The link keeps its own copy of the display procedure: the flag, the
  // plan row of its fix and the points the autopilot flies in a hold.
  SimSession& sim = s_.Sim;
  if (!sim.Live) return;
  sim.Live->Menus.MenuDisplayProc = s_.Window.MenuDisplayProc && s_.Procedure.Set;
  sim.Live->State().ProcedureRow = ProcedureRowOf(s_.Plan, s_.Procedure);
  if (sim.Autopilot && s_.Procedure.Set) sim.Autopilot->ProcedurePoints = s_.Procedure.Points;
}

void MainWindowController::SyncTraffic() {
  LiveTracking& live = *s_.Sim.Live;
  const WindowToggles& w = s_.Window;
  const Settings& cfg = s_.Core.Config;
  live.Menus.btnAI = w.btnAI;
  live.Traffic.Menus = {w.menuAIATCID, w.menuAISpeedAlt, w.menuAIAirports, w.menuATCIDGround, w.menuAIDestination,
                        w.menuTCASSound};
  live.Traffic.Colours = {cfg.Ai, cfg.AiFreq, cfg.Tcas1, cfg.Tcas2};
}

void MainWindowController::ClockTick() {
  // The recording state; while linked the tick writes it with the fuel.
  if (!s_.Sim.Connected()) view_.SetMapStatus(kStatusRecording, RecordingStatusText(s_.Trace));
  // The timed download of the network data, while one of the network layers
  // is shown and the aircraft is tracked.
  if (s_.Online.Downloads) {
    const bool gate = (s_.Online.ShowControllers || s_.Online.ShowPilots) && s_.Sim.Live &&
                      s_.Sim.Live->State().TrackingActive;
    s_.Online.Downloads->ClockTick(s_.Core.Config.AutoDownload, gate);
  }
}

}  // namespace orv
