// The headless main window over the small world: every menu entry that is
// offered does something, the plan entries build and show a plan, the load
// and unload keep their order, and the window timers tick as the window's.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "core/FileIo.h"
#include "core/Geodesy.h"

#include "app/AirportWindows.h"
#include "database/OvrLL.h"
#include "app/MainWindowController.h"
#include "core/Startup.h"
#include "map/MainMenu.h"
#include "support/FakeClock.h"
#include "support/OnlineSamples.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

struct RecordingView : MainWindowView {
  std::vector<std::string> calls;
  void FocusMap() override { calls.push_back("focus"); }
  void DrawMap() override { calls.push_back("draw"); }
  void SetMapStatus(int field, std::string_view text) override {
    calls.push_back("status" + std::to_string(field) + " " + std::string(text));
  }
  void RepositionMeasure() override {}
  void ClearSelection() override { calls.push_back("clear"); }
  void SetOnTop(bool on) override { calls.push_back(on ? "ontop" : "notontop"); }
  void ShowPlan(bool on) override { calls.push_back(on ? "showplan" : "hideplan"); }
  void SyncChecks() override { calls.push_back("sync"); }
  void OpenWindow(std::string_view name) override { calls.push_back("open " + std::string(name)); }
  void CloseProgram() override { calls.push_back("close"); }
  void RefreshPlanTable() override { calls.push_back("table"); }
  void ShowReduced(bool on) override { calls.push_back(on ? "reduced" : "normal"); }
  void SetMenuChecked(std::string_view name, bool on) override {
    calls.push_back("check " + std::string(name) + (on ? " 1" : " 0"));
  }
  void ShowPlanEdit() override { calls.push_back("planedit"); }
  void MarkPoint(double, double) override { calls.push_back("mark"); }
  FrmUser* OpenUserForm() override { return userForm; }
  FrmUser* userForm = nullptr;
};

struct Fixture {
  test::TempDir dir;
  ProgramState s{dir.Path().string()};
  RecordingView view;
  test::ScriptedUi ui;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindowController c{s, view, ui, timers, clock};

  Fixture() {
    test::BuildSmallWorld(s.Db);
    AircraftRec a;
    a.Id = 1;
    a.AircraftName = "Test Twin";
    a.CruiseSpeed = 180;
    a.CruiseLevel = 90;
    a.ApproachSpeed = 100;
    a.ClimbRate = a.DescentRate = 1000;
    a.ClimbSpeed = 120;
    a.DescentSpeed = 150;
    s.Aircraft.List = {a};
    s.Aircraft.Current = a;
    c.Load(50.0f, 8.0f);
  }
};

TEST(MainWindowController, LoadAndUnloadKeepTheirOrder) {
  Fixture f;
  EXPECT_TRUE(f.s.View.MapReady);
  EXPECT_TRUE(f.timers.Enabled(TimerId::Clock));
  ASSERT_FALSE(f.view.calls.empty());
  EXPECT_EQ(f.view.calls.back(), "status1 30NM");
  f.s.Layers.MenuCompass = false;
  f.c.Unload();
  EXPECT_FALSE(f.s.View.MapReady);
  EXPECT_FALSE(f.timers.Enabled(TimerId::Clock));
  EXPECT_EQ(f.s.Core.Config.CompMenu, 0);
  EXPECT_TRUE(std::filesystem::exists(f.dir.Path() / "orv.ini"));
}

// Every row of the menu table, one line each, with what its click must do:
//   "toggle"         its check mark flips
//   "ui:KIND TEXT"   the Ui saw an event of that kind starting with TEXT
//   "state:NAME"     a named check in NamedState
//   anything else    a call the window was given, starting with that text
// An entry that becomes available needs its line here.
struct EntryEffect {
  std::string_view Entry;
  std::string_view Effect;
};
constexpr EntryEffect kEntryEffects[] = {
    {"MenuOnTop", "ontop"}, {"MenuAoM", "toggle"}, {"MenuFindObject", "open frmFind"},
    {"menuPrintMap", "open PrintMap"}, {"menuAirport", "toggle"}, {"MenuVOR", "toggle"}, {"MenuNDB", "toggle"},
    {"MenuILS", "toggle"}, {"MenuIntersection", "toggle"}, {"MenuGPSFix", "toggle"}, {"MenuUserWP", "toggle"},
    {"MenuJet", "toggle"}, {"MenuVictor", "toggle"}, {"MenuADA", "toggle"}, {"MenuADIZ", "toggle"},
    {"menuARTCC", "toggle"}, {"MenuACC", "toggle"}, {"MenuBZ", "toggle"}, {"MenuCTA", "toggle"},
    {"MenuCtrz", "toggle"}, {"menuFIR", "toggle"}, {"MenuOCA", "toggle"}, {"menuRA", "toggle"},
    {"menuTCA", "toggle"}, {"menuUIR", "toggle"}, {"MenuMSA", "toggle"}, {"MenuCoastlines", "toggle"},
    {"MenuCompass", "toggle"}, {"MenuLatLong", "toggle"}, {"MenuDisplayProc", "toggle"},
    {"menuRoundWorld", "toggle"},
    {"MenuNewFP", "state:newplan"},
    {"MenuDeleteEnrouteWPs", "state:direct"},
    {"MenuShowPlan", "toggle"},
    {"MenuShowRoute", "toggle"},
    {"MenuCreateNavaid", "table"}, {"MenuCreateLoAlt", "table"}, {"MenuCreateHiAlt", "table"},
    {"MenuAddWPs", "ui:msg Please select ONLY the airway type"},
    {"MenuOpenFP", "ui:open Open Flight Plan"}, {"MenuSaveFPAs", "open SaveRoute"}, {"MenuSaveFP", "open SaveRoute"},
    {"menuOpenSegment", "open menuOpenSegment"}, {"menuSaveSegment", "open menuSaveSegment"},
    {"MenuPrintPlan", "open PrintFP"},
    {"menuShowCoords", "state:coords"},
    {"menuExtTable", "state:extended"},
    {"MenuOpenSid", "open MenuOpenSid"}, {"MenuOpenStar", "open MenuOpenStar"},
    {"menuDeleteSid", "table"}, {"menuDeleteStar", "table"},
    {"MenuAircraft", "open Aircraft"}, {"MenuFuel", "open Fuel"}, {"MenuEditUser", "open frmUser"},
    {"MenuSelectAP", "open OVRLL"},
    {"MenuSelParking", "open frmSelParking"}, {"MenuAPPrev", "open APPrev"}, {"MenuPref", "open OVRPrefnew"},
    {"MenuProc", "open EdProc"},
    {"MenuLocal", "state:connected"},
    {"MenuGPSWindow", "ui:beep"},  // no link, nothing to show
    {"MenuAi", "toggle"},
    {"menuAIATCID", "toggle"}, {"menuAISpeedAlt", "toggle"}, {"menuAIAirports", "toggle"},
    {"menuATCIDGround", "toggle"}, {"menuAIDestination", "toggle"}, {"menuTCASSound", "toggle"},
    {"menuCheckControlzone", "state:zones"},
    {"MenuSimSource", "ui:text Simulator"},
    {"menuAutozoom", "toggle"},
    {"Menu3NM", "status1 3NM"}, {"Menu10NM", "status1 10NM"}, {"Menu30NM", "status1 30NM"},
    {"Menu50NM", "status1 50NM"}, {"Menu100NM", "status1 100NM"}, {"Menu200NM", "status1 200NM"},
    {"Menu400NM", "status1 400NM"}, {"Menu800NM", "status1 800NM"}, {"Menu2000NM", "status1 2000NM"},
    {"menuAutolog", "check menuAutolog 1"},
    {"menuShowLogbook", "open frmLogbook"},
    {"MenuReplay", "check MenuReplay 1"}, {"MenuTraceReset", "ui:msg There is no recorded flight to save."},
    {"MenuTraceActive", "toggle"}, {"menuShowAlt", "toggle"}, {"MenuViolation", "toggle"},
    // The online layers without their files: the message, the entry stays off.
    {"menuNatrackRoutes", "ui:msg No NATrack File available!"}, {"menuDownloadNATrack", "ui:beep"},
    {"menuPacotRoutes", "ui:msg No Pacot File available!"}, {"menuDownloadPacot", "ui:beep"},
    {"menuShowWx", "ui:msg No Weather Station File"}, {"menuDownloadWx", "ui:beep"},
    {"menuIvaoAirspace", "ui:msg Error reading in IVAO File!"}, {"menuIvaoAircraft", "ui:msg Error reading in IVAO"},
    {"menuDownloadIVAO", "ui:beep"},
    {"menuVatsimAirspace", "ui:msg Error reading in VATSIM"}, {"menuVatsimAircraft", "ui:msg Error reading in VATSIM"},
    {"menuDownloadVatSim", "ui:beep"},
    {"menuShowAltSpeed", "check menuShowAltSpeed"}, {"menuShowDepDest", "check menuShowDepDest"},
    {"MenuExit", "close"}, {"MenuHelp", "open frmHelp"}, {"MenuAbout", "open frmAbout"},
};

bool StartsWith(std::string_view text, std::string_view head) { return text.substr(0, head.size()) == head; }

// A plan EDXX - FFM - EDYY, shown, with the FFM row put in by a right click.
void PlanWithVor(Fixture& f) {
  SetPlanEnds(f.s, 0, 1);
  f.c.SelectRow(0, -1);
  f.s.Window.MenuShowPlan = true;
  const ViewState& v = f.s.View;
  f.c.MouseDown(2, false, false, MapXFromLon(v, 8.3, 50.05), MapYFromLat(v, 50.05));
}

bool NamedState(Fixture& f, std::string_view name) {
  const ProgramState& s = f.s;
  if (name == "newplan") return s.Plan.LastRow == 0 && s.Edit.Pick == AirportPick::Departure;
  if (name == "direct") return s.Plan.LastRow == 1 && s.Plan.Waypoints[1].Code.Trimmed() == "EDYY";
  if (name == "coords") return s.Panel.Table.Text(2, WPTable::kName) == "N50\xB0" "03.00' E008\xB0" "18.00'";
  if (name == "extended") return s.Panel.Table.ColWidth(WPTable::kFuel) == 950;
  if (name == "connected") return s.Sim.Connected();
  if (name == "zones") return s.Window.menuCheckControlzone && s.ZoneMarks.ViolationCount == 1;
  return false;
}

TEST(MainWindowController, EveryMenuRowIsTriggeredAndDoesWhatItSays) {
  int checked = 0;
  for (const MenuEntry& e : MainMenuEntries()) {
    if (e.kind == MenuKind::Heading || !MainWindowController::MenuAvailable(e.name)) continue;
    auto row = std::find_if(std::begin(kEntryEffects), std::end(kEntryEffects),
                            [&](const EntryEffect& r) { return r.Entry == e.name; });
    if (row == std::end(kEntryEffects)) {
      ADD_FAILURE() << e.name << " is offered but has no line in kEntryEffects";
      continue;
    }
    Fixture f;  // a fresh window for each entry: Exit and the zoom steps change it
    PlanWithVor(f);
    ASSERT_EQ(f.s.Plan.LastRow, 2);
    f.view.calls.clear();
    f.ui.answers = {Answer::Yes};
    const bool before = MenuChecked(f.s.Toggles(), e.name);
    EXPECT_TRUE(f.c.Menu(e.name)) << e.name;
    ++checked;
    const std::string_view effect = row->Effect;
    if (effect == "toggle") {
      EXPECT_NE(MenuChecked(f.s.Toggles(), e.name), before) << e.name;
    } else if (StartsWith(effect, "state:")) {
      EXPECT_TRUE(NamedState(f, effect.substr(6))) << e.name;
    } else if (StartsWith(effect, "ui:")) {
      const std::string_view what = effect.substr(3);
      const std::string_view kind = what.substr(0, what.find(' '));
      const std::string_view text = what.size() > kind.size() ? what.substr(kind.size() + 1) : "";
      const auto seen = f.ui.Texts(kind);
      EXPECT_TRUE(std::any_of(seen.begin(), seen.end(), [&](const std::string& t) { return StartsWith(t, text); }))
          << e.name << " expected " << effect;
    } else {
      const auto& c = f.view.calls;
      EXPECT_TRUE(std::any_of(c.begin(), c.end(), [&](const std::string& t) { return StartsWith(t, effect); }))
          << e.name << " expected " << effect;
    }
  }
  EXPECT_GE(checked, 90);
  Fixture f;
  EXPECT_FALSE(MainWindowController::MenuAvailable("NoSuchEntry"));
  EXPECT_FALSE(f.c.Menu("NoSuchEntry"));
}

TEST(MainWindowController, RightClickInsertsRowsBehindTheSelection) {
  Fixture f;
  SetPlanEnds(f.s, 0, 1);
  f.s.Window.MenuShowPlan = true;
  const ViewState& v = f.s.View;
  auto click = [&](double lat, double lon) { f.c.MouseDown(2, false, false, MapXFromLon(v, lon, lat), MapYFromLat(v, lat)); };
  // No row selected: one notice, nothing inserted.
  click(50.05, 8.3);
  EXPECT_EQ(f.ui.Messages(), std::vector<std::string>{std::string(kNoInsertionPoint)});
  EXPECT_EQ(f.s.Plan.LastRow, 1);
  // One object under the pointer goes in at once behind the selected row.
  f.c.SelectRow(0, -1);
  click(50.05, 8.3);
  ASSERT_EQ(f.s.Plan.LastRow, 2);
  EXPECT_EQ(f.s.Plan.Waypoints[1].Code.Trimmed(), "FFM");
  EXPECT_EQ(f.s.Plan.Waypoints[1].Origin, kOriginEnroute);
  // Nothing there: txtManWP offers a position of its own, numbered by its row
  // when the user gives no name.
  click(50.2, 7.7);
  EXPECT_TRUE(f.s.Edit.ManualMode);
  EXPECT_EQ(f.s.Edit.ManualCaption, "... select ...");
  EXPECT_TRUE(f.c.ManualWaypointEnter(""));
  ASSERT_EQ(f.s.Plan.LastRow, 3);
  EXPECT_EQ(f.s.Plan.Waypoints[2].Code.Trimmed(), "FIX 02");  // the refresh upper-cases codes
  EXPECT_NEAR(f.s.Plan.Waypoints[2].Lat, 50.2, 0.01);
  // Several objects (at 2000 NM both VORs, the NDB and the user waypoint
  // are within reach): lstWP lists them VORs first, each with its course
  // from the selected row, and Enter takes the line the user is on.
  f.c.Menu("Menu2000NM");
  f.c.SelectRow(0, -1);
  click(49.9, 8.2);
  ASSERT_TRUE(f.s.Edit.PickListShown);
  ASSERT_EQ(f.s.Panel.WpList.size(), 4u);
  EXPECT_EQ(f.s.Panel.WpList[0].substr(0, 9), "VOR FFM (");
  EXPECT_EQ(f.s.Panel.WpList[1], "VOR TAU (232\xB0)");
  EXPECT_EQ(f.s.Panel.WpList[2].substr(0, 8), "NDB FW (");
  EXPECT_EQ(f.s.Panel.WpList[3].substr(0, 10), "Uwp MYWPT ");
  f.s.Edit.PickIndex = 2;
  EXPECT_TRUE(f.c.Key(13));
  EXPECT_EQ(f.s.Plan.Waypoints[1].Code.Trimmed(), "FW");
  EXPECT_FALSE(f.s.Edit.PickListShown);
  // Delete removes the selected row; Esc drops the selection.
  f.c.SelectRow(1, -1);
  f.c.Key(46);
  EXPECT_EQ(f.s.Plan.Waypoints[1].Code.Trimmed(), "FFM");
  f.c.Key(27);
  EXPECT_EQ(f.s.Plan.CurrentRow, -1);
}

TEST(MainWindowController, TypedIdentifiersAndTheUserWindowsClick) {
  Fixture f;
  SetPlanEnds(f.s, 0, 1);
  EXPECT_FALSE(f.c.ManualWaypointEnter("nosuch"));
  EXPECT_EQ(f.ui.Messages().back(),
            "No VOR, NDB, fix, intersection or user waypoint with the identifier NOSUCH was found!");
  EXPECT_TRUE(f.c.ManualWaypointEnter("tau"));
  ASSERT_EQ(f.s.Panel.WpList.size(), 1u);
  EXPECT_EQ(f.s.Panel.WpList[0].substr(0, 7), "Vor TAU");
  EXPECT_TRUE(f.c.PickWaypoint(0));
  EXPECT_EQ(f.s.Plan.Waypoints[1].Code.Trimmed(), "TAU");  // ahead of the destination
  // With the user waypoint window open a right click fills its position.
  std::vector<UserWaypointRec> none;
  FrmUser form(none, f.ui, f.s.Core.Folder);
  f.view.userForm = &form;
  const ViewState& v = f.s.View;
  EXPECT_TRUE(f.c.MouseDown(2, false, false, MapXFromLon(v, 8.25, 50.1), MapYFromLat(v, 50.1)));
  EXPECT_EQ(form.txtLatNS + form.txtLatDeg + " " + form.txtLonEW + form.txtLonDeg, "N50 E8");
  EXPECT_EQ(f.view.calls.back(), "mark");
  EXPECT_EQ(f.s.Plan.LastRow, 2);
}

TEST(MainWindowController, NewPlanTakesItsAirportsByRightClick) {
  Fixture f;
  f.c.Menu("MenuNewFP");
  EXPECT_TRUE(f.s.Window.MenuShowPlan);
  EXPECT_FALSE(f.c.BarButtonEnabled("cmdHiAlt"));
  const ViewState& v = f.s.View;
  auto click = [&](double lat, double lon) { f.c.MouseDown(2, false, false, MapXFromLon(v, lon, lat), MapYFromLat(v, lat)); };
  click(50.0, 8.0);
  EXPECT_EQ(f.s.Plan.DepartureAirport, 0);
  EXPECT_EQ(f.s.Edit.Pick, AirportPick::Destination);
  f.c.Menu("Menu200NM");
  click(50.3, 8.4);
  EXPECT_EQ(f.s.Plan.DestinationAirport, 1);
  EXPECT_EQ(f.s.Plan.LastRow, 1);
  EXPECT_EQ(f.s.Edit.Pick, AirportPick::None);
  EXPECT_EQ(f.s.Panel.DepList.front().Text, "Rwy 07  (10000ft)");  // lstDep of the departure
  EXPECT_TRUE(f.c.BarButtonEnabled("cmdHiAlt"));
}

TEST(MainWindowController, BarButtonsRunTheirMenuEntries) {
  for (const BarButtonEntry& b : BottomBarButtons()) {
    if (b.menu.empty()) continue;  // cmdLayout has no menu twin: SideWindows checks it
    Fixture byMenu, byButton;
    for (Fixture* f : {&byMenu, &byButton}) {
      SetPlanEnds(f->s, 0, 1);
      f->view.calls.clear();
    }
    const bool enabled = byButton.c.BarButtonEnabled(b.name);
    EXPECT_EQ(enabled, MainWindowController::MenuAvailable(b.menu)) << b.name;
    if (!enabled) continue;
    byMenu.c.Menu(b.menu);
    byButton.c.BarButton(b.name);
    EXPECT_EQ(byButton.view.calls, byMenu.view.calls) << b.name;
  }
}

TEST(MainWindowController, PlanEntriesBuildAndShowThePlan) {
  Fixture f;
  f.c.Menu("MenuCreateNavaid");
  EXPECT_EQ(f.ui.Texts("beep").size(), 1u);  // no airports chosen
  EXPECT_EQ(f.s.Plan.LastRow, 0);
  EXPECT_FALSE(f.s.Window.MenuShowPlan);
  SetPlanEnds(f.s, 0, 1);
  f.view.calls.clear();
  f.c.Menu("MenuCreateNavaid");
  EXPECT_GE(f.s.Plan.LastRow, 1);
  EXPECT_TRUE(f.s.Window.MenuShowPlan);
  const std::vector<std::string>& c = f.view.calls;
  EXPECT_NE(std::find(c.begin(), c.end(), "table"), c.end());
  EXPECT_NE(std::find(c.begin(), c.end(), "showplan"), c.end());
  EXPECT_EQ(c.back(), "draw");
  for (const std::string& m : f.ui.Messages()) ADD_FAILURE() << m;

  // The saved plan is the one the next start opens again.
  const std::string path = (f.dir.Path() / "last.pln").string();
  f.s.Files.CurrentPath = path;
  f.c.Menu("MenuSaveFP");
  f.c.Unload();
  EXPECT_EQ(f.s.Core.Config.LastPlan, path);
  Fixture next;
  next.s.Core.Config.LastPlan = path;
  next.c.ReopenLastPlan();
  EXPECT_EQ(next.s.Plan.LastRow, f.s.Plan.LastRow);
  EXPECT_TRUE(next.s.Window.MenuShowPlan);
  for (const std::string& m : next.ui.Messages()) ADD_FAILURE() << m;
}

TEST(MainWindowController, ConnectFliesThePlanWithTheBuiltinSimulator) {
  Fixture f;
  SetPlanEnds(f.s, 0, 1);
  f.c.Menu("MenuCreateNavaid");
  ASSERT_GE(f.s.Plan.LastRow, 1);
  f.c.Menu("MenuLocal");
  ASSERT_TRUE(f.s.Sim.Connected());
  EXPECT_TRUE(f.timers.Enabled(TimerId::Gps));
  const float lat0 = f.s.Sim.Live->Snap.Latitude, lon0 = f.s.Sim.Live->Snap.Longitude;
  // Five minutes of window time: the aircraft takes off and moves along the
  // plan (the two airports are 25 NM apart).
  f.timers.Advance(300000, [&](TimerId id) {
    f.clock.tickMs += 250;
    f.c.OnTimer(id);
  });
  const SimSnapshot& snap = f.s.Sim.Live->Snap;
  EXPECT_EQ(snap.Airborne, -1);
  EXPECT_GT(GcDistance(lat0, lon0, snap.Latitude, snap.Longitude), 3.0);
  EXPECT_EQ(f.s.View.CurrentLat, snap.Latitude);
  // The trace: a sample every 15 ticks once the aircraft rolls at 60 kt.
  EXPECT_GE(f.s.Trace.Trace().Samples.size(), 30u);
  EXPECT_EQ(f.s.Overlays.Trace.size(), f.s.Trace.Trace().Samples.size());
  // Shift and the left button on the VOR at 50.05 N 8.3 E tune NAV1 to it;
  // control and the right button move the aircraft to the click.
  const ViewState& v = f.s.View;
  ASSERT_TRUE(f.c.MouseDown(1, true, false, MapXFromLon(v, 8.3, 50.05), MapYFromLat(v, 50.05)));
  EXPECT_EQ(f.s.Sim.Image->Get<uint16_t>(fsoff::Nav1), 0x1420);
  EXPECT_FALSE(f.c.MouseDown(1, false, false, 0, 0));  // a plain click is the rubber band's
  ASSERT_TRUE(f.c.MouseDown(2, false, false, MapXFromLon(v, 8.3, 50.05), MapYFromLat(v, 50.05)));
  EXPECT_NEAR(f.s.Overlays.MapPointLat, 50.05, 0.01);  // Go To's target
  f.c.Menu("MenuLocal");
  EXPECT_FALSE(f.s.Sim.Connected());
  EXPECT_FALSE(f.timers.Enabled(TimerId::Gps));
}

TEST(MainWindowController, ControlZoneMarksTrafficAndTheAircraftInAZone) {
  Fixture f;
  SetPlanEnds(f.s, 0, 1);
  f.c.Menu("MenuCreateNavaid");
  // The first leg leaves the zone around the departure.
  f.c.Menu("menuCheckControlzone");
  ASSERT_EQ(f.s.ZoneMarks.ViolationCount, 1);
  const int line = f.s.ZoneMarks.Rows[0] + 1;
  const std::string cell = f.s.Panel.Table.Text(line, WPTable::kName);
  EXPECT_EQ(cell.substr(cell.size() - 9), " [CTRZ!!]");
  EXPECT_TRUE(MenuChecked(f.s.Toggles(), "menuCheckControlzone"));
  f.c.Menu("menuCheckControlzone");
  EXPECT_EQ(f.s.Panel.Table.Text(line, WPTable::kName).find("CTRZ"), std::string::npos);

  // Connected on the runway inside that zone, with the violation watch: the
  // aircraft takes ACINCTRZ=; AI Traffic draws the three airborne aircraft.
  f.c.Menu("MenuViolation");
  f.c.Menu("MenuAi");
  f.c.Menu("MenuLocal");
  f.c.OnTimer(TimerId::Gps);
  EXPECT_EQ(LiveAircraftColour(f.s), f.s.Core.Config.AcInCtrz);
  EXPECT_EQ(f.s.Sim.Live->Traffic.Symbols().size(), 3u);
  f.c.Menu("MenuAi");
  f.c.OnTimer(TimerId::Gps);
  EXPECT_TRUE(f.s.Sim.Live->Traffic.Symbols().empty());
  f.c.Menu("MenuViolation");
  EXPECT_EQ(LiveAircraftColour(f.s), f.s.Core.Config.MovAc);
}

TEST(MainWindowController, OnlineEntriesShowOneNetworkAtATime) {
  Fixture f;
  const std::filesystem::path db = f.dir.Path() / "database";
  std::filesystem::create_directories(db);
  ASSERT_TRUE(WriteFileAtomic(db / "orv_vatsim.txt", test::VatsimWhazzupText(test::ManyPilots(3), {})));
  f.c.Menu("menuVatsimAircraft");
  EXPECT_EQ(f.s.Online.Data.Network, OnlineNetwork::Vatsim);
  EXPECT_GT(f.s.Online.Data.OnlinePilotCount(), 0);
  EXPECT_TRUE(f.s.Online.ShowPilots);
  f.c.Menu("menuIvaoAircraft");  // no IVAO file: the entry stays off, VATSIM stays
  EXPECT_EQ(f.s.Online.Data.Network, OnlineNetwork::Vatsim);
  EXPECT_FALSE(f.s.Online.ShowPilots);
  EXPECT_FALSE(f.ui.Messages().empty());
  f.c.Menu("menuDownloadVatSim");  // no interface thread in this view: refused
  EXPECT_EQ(f.ui.Texts("beep").size(), 1u);
}

TEST(ManualTimers, FireInDeadlineOrderFromWhenEnabled) {
  ManualTimers t;
  std::string order;
  t.SetEnabled(TimerId::Clock, true);
  t.Advance(250, [&](TimerId) {});
  t.SetEnabled(TimerId::Gps, true);       // due at 750, 1250
  t.SetEnabled(TimerId::MousePos, true);  // due at 500, 750, 1000, 1250; first on a tie
  t.Advance(1000, [&](TimerId id) { order += std::string(TimerName(id)) + " "; });
  EXPECT_EQ(order, "tmrMousePos tmrMousePos tmGPS tmrMousePos Clock tmrMousePos tmGPS ");
  EXPECT_EQ(t.Now(), 1250);
}

}  // namespace
}  // namespace orv

namespace orv {
namespace {

TEST(SideWindows, AirportPreviewAndParkingPlaceTheAircraftOnlyWhenLinked) {
  Fixture f;
  FillNameTables(f.s.Core);
  for (const char* menu : {"MenuAPPrev", "MenuSelParking"}) {
    EXPECT_TRUE(MainWindowController::MenuAvailable(menu));
    EXPECT_TRUE(f.c.Menu(menu));
  }
  EXPECT_TRUE(f.c.BarButtonEnabled("cmdLayout"));
  EXPECT_TRUE(f.c.BarButton("cmdLayout"));
  EXPECT_EQ(f.view.calls.back(), "open OVRLay");
  EXPECT_NE(std::find(f.view.calls.begin(), f.view.calls.end(), "open APPrev"), f.view.calls.end());
  EXPECT_NE(std::find(f.view.calls.begin(), f.view.calls.end(), "open frmSelParking"), f.view.calls.end());

  // Without a plan the windows take the airport nearest the map's centre;
  // with one its destination.
  EXPECT_EQ(SideWindowAirport(f.s), 0);
  AirportPreview preview;
  ASSERT_TRUE(preview.Open(f.s));
  EXPECT_EQ(preview.Caption, "Airport Preview - EDXX Main Field");
  EXPECT_FALSE(preview.Find(f.s, "ZZZZ", f.ui));
  EXPECT_EQ(f.ui.Messages().back(), kNoIcaoMatchText);
  EXPECT_EQ(preview.Airport, 0);
  EXPECT_TRUE(preview.Find(f.s, " edyy", f.ui));
  EXPECT_EQ(preview.Caption, "Airport Preview - EDYY Hill Strip");

  ParkingSelection parking;
  ASSERT_TRUE(parking.Load(f.s, f.ui));
  ASSERT_EQ(parking.Rows().size(), 3u);
  EXPECT_EQ(parking.Rows()[0].Text, "GATE 1 (Ramp GA)");
  EXPECT_EQ(parking.Rows()[1].Text, "Rwy 07");
  EXPECT_EQ(parking.Rows()[2].Text, "Rwy 25");
  // The 07 threshold lies 5000 ft (0.823 NM) from the middle on 250, facing 070.
  const ParkingChoice& rwy07 = parking.Rows()[1];
  EXPECT_NEAR(RhumbDistance(50.0f, 8.0f, rwy07.Lat, rwy07.Lon), 0.823, 0.01);
  EXPECT_NEAR(RhumbCourse(50.0f, 8.0f, rwy07.Lat, rwy07.Lon), 250, 0.5);
  EXPECT_EQ(rwy07.Heading, 70.0f);

  EXPECT_FALSE(parking.Place(f.s, f.ui, 1));
  EXPECT_EQ(f.ui.Messages().back(), kNotConnectedText);
  f.c.Menu("MenuLocal");
  ASSERT_TRUE(f.s.Sim.Connected());
  ASSERT_TRUE(parking.Place(f.s, f.ui, 1));
  f.timers.Advance(1000, [&](TimerId id) {
    f.clock.tickMs += 250;
    f.c.OnTimer(id);
  });
  EXPECT_NEAR(f.s.Sim.Live->Snap.Latitude, rwy07.Lat, 0.0005);
  EXPECT_NEAR(f.s.Sim.Live->Snap.Longitude, rwy07.Lon, 0.0005);

  SetPlanEnds(f.s, 0, 1);
  EXPECT_EQ(SideWindowAirport(f.s), 1);
}

}  // namespace
}  // namespace orv
