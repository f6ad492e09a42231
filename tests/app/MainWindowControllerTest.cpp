// The headless main window over the small world: every menu entry that is
// offered does something, the plan entries build and show a plan, the load
// and unload keep their order, and the window timers tick as the window's.
#include <gtest/gtest.h>

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

TEST(MainWindowController, EveryOfferedEntryDoesSomething) {
  int offered = 0;
  for (const MenuEntry& e : MainMenuEntries()) {
    if (e.kind == MenuKind::Heading || !MainWindowController::MenuAvailable(e.name)) continue;
    Fixture f;  // a fresh window for each entry: Exit and the zoom steps change it
    ++offered;
    EXPECT_TRUE(f.c.Menu(e.name)) << e.name;
  }
  EXPECT_GT(offered, 40);
  Fixture f;
  EXPECT_FALSE(MainWindowController::MenuAvailable("NoSuchEntry"));
  EXPECT_FALSE(f.c.Menu("NoSuchEntry"));
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
