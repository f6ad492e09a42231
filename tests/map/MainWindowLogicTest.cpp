#include <gtest/gtest.h>

#include "map/MainMenu.h"
#include "map/MainWindowLogic.h"
#include "support/ScriptedUi.h"

namespace orv {
namespace {

class FakeWindow : public MainWindowHost {
public:
  void FocusMap() override { log.push_back("focus"); }
  void DrawMap() override { log.push_back("draw"); }
  void SetMapStatus(int field, std::string_view text) override {
    log.push_back("status" + std::to_string(field) + " " + std::string(text));
  }
  void RepositionMeasure() override { log.push_back("measure"); }
  void ClearSelection() override { log.push_back("clear"); }
  void SetOnTop(bool on) override { log.push_back(on ? "ontop" : "notontop"); }
  void ShowPlan(bool on) override { log.push_back(on ? "plan" : "noplan"); }
  std::vector<std::string> log;
};

struct Fixture {
  MapLayers layers;
  ViewState view;
  WindowToggles window;
  MainWindowState state{layers, view, window};
  FakeWindow host;
  test::ScriptedUi ui;
};

using Log = std::vector<std::string>;

TEST(MainWindowToggles, ButtonAndMenuNeverDisagreeWhicheverIsClicked) {
  Fixture f;
  f.view.MapReady = true;
  // Every paired entry of the menu table, clicked from both sides in turn.
  int pairs = 0;
  for (const MenuEntry& e : MainMenuEntries()) {
    if (e.button.empty()) continue;
    ++pairs;
    bool* button = ButtonSwitch(f.state, e.button);
    ASSERT_NE(button, nullptr) << e.button;
    const bool start = *button;
    ASSERT_TRUE(MenuToggleClicked(f.state, e.name, f.host)) << e.name;
    EXPECT_EQ(*button, !start) << e.name;
    EXPECT_EQ(MenuChecked(f.state, e.name), *button) << e.name;
    ASSERT_TRUE(ButtonClicked(f.state, e.button, start, f.host));
    EXPECT_EQ(MenuChecked(f.state, e.name), start) << e.name;
    ASSERT_TRUE(MenuToggleClicked(f.state, e.name, f.host));
    ASSERT_TRUE(MenuToggleClicked(f.state, e.name, f.host));
    EXPECT_EQ(*button, start) << e.name;
    EXPECT_EQ(MenuChecked(f.state, e.name), start) << e.name;
  }
  EXPECT_EQ(pairs, 15);

  // The order of a button click: focus, value, redraw.
  f.host.log.clear();
  ASSERT_TRUE(ButtonClicked(f.state, "btnAP", false, f.host));
  EXPECT_EQ(f.host.log, (Log{"focus", "draw"}));
  EXPECT_FALSE(f.layers.btnAP);
  EXPECT_FALSE(MenuChecked(f.state, "menuAirport"));
  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "menuAirport", f.host));
  EXPECT_EQ(f.host.log, (Log{"focus", "draw"}));
  EXPECT_TRUE(f.layers.btnAP);
}

TEST(MainWindowToggles, NoRedrawBeforeTheMapIsReadyAndUnknownNamesAreLeftAlone) {
  Fixture f;
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuVOR", f.host));
  EXPECT_EQ(f.host.log, (Log{"focus"}));
  EXPECT_FALSE(f.layers.btnVor);
  EXPECT_FALSE(MenuToggleClicked(f.state, "MenuFindObject", f.host));
  EXPECT_FALSE(ButtonClicked(f.state, "btnNothing", true, f.host));
  EXPECT_FALSE(IsWindowToggle("MenuExit"));
  EXPECT_TRUE(IsWindowToggle("MenuCtrz"));
  EXPECT_TRUE(IsWindowToggle("menuUIR"));
}

TEST(MainWindowToggles, AirspaceClassesLabelButtonsAndPlainToggles) {
  Fixture f;
  f.view.MapReady = true;
  // Control zones: the menu entry and btnCtrz together hide the whole class.
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuCtrz", f.host));
  EXPECT_FALSE(f.layers.btnCtrz);
  EXPECT_FALSE(MenuChecked(f.state, "MenuCtrz"));
  // A class without a button: its flag flips, then the redraw (no focus).
  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "menuTCA", f.host));
  EXPECT_FALSE(f.layers.menuTCA);
  EXPECT_EQ(f.host.log, (Log{"draw"}));

  ASSERT_TRUE(ButtonClicked(f.state, "btnFreq", true, f.host));
  ASSERT_TRUE(ButtonClicked(f.state, "btnIcao", false, f.host));
  ASSERT_TRUE(ButtonClicked(f.state, "btnName", true, f.host));
  EXPECT_TRUE(f.layers.ShowFreq);
  EXPECT_FALSE(f.layers.ShowIcao);
  EXPECT_TRUE(f.layers.ShowName);

  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "menuRoundWorld", f.host));
  EXPECT_TRUE(f.view.RoundWorld);
  EXPECT_TRUE(MenuChecked(f.state, "menuRoundWorld"));
  EXPECT_EQ(f.host.log, (Log{"draw", "focus"}));

  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuOnTop", f.host));
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuOnTop", f.host));
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuShowPlan", f.host));
  EXPECT_EQ(f.host.log, (Log{"ontop", "notontop", "plan"}));
  EXPECT_TRUE(f.window.MenuShowPlan);

  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuCompass", f.host));
  EXPECT_FALSE(f.layers.MenuCompass);
  EXPECT_EQ(f.host.log, (Log{"focus", "draw"}));

  // Control Zone Violation is a check mark the render pass reads.
  f.host.log.clear();
  ASSERT_TRUE(MenuToggleClicked(f.state, "MenuViolation", f.host));
  EXPECT_TRUE(f.layers.MenuViolation);
  EXPECT_TRUE(MenuChecked(f.state, "MenuViolation"));
  EXPECT_EQ(f.host.log, (Log{"draw"}));

  // Extended Table opens the table's live columns (their widths:
  // WPTableTest.HeadingsAndWidths) and closes them again.
  WPTable table;
  f.state.Table = &table;
  ASSERT_TRUE(MenuToggleClicked(f.state, "menuExtTable", f.host));
  EXPECT_TRUE(MenuChecked(f.state, "menuExtTable"));
  EXPECT_EQ(table.ColWidth(WPTable::kFuel), 950);
  ASSERT_TRUE(MenuToggleClicked(f.state, "menuExtTable", f.host));
  EXPECT_EQ(table.ColWidth(WPTable::kFuel), 1);
  SetExtendedTable(f.state, true);  // the takeoff of live tracking
  EXPECT_TRUE(f.window.menuExtTable);
  EXPECT_TRUE(table.Extended());
}

TEST(MainWindowKeys, EscSpaceZoomKeysAndTheWheel) {
  Fixture f;
  f.view.ZoomIndex = 6;
  f.view.CurrentLat = 50.5f;
  f.view.CurrentLon = 8.25f;
  ASSERT_TRUE(MapKeyDown(f.view, 27, f.host, f.ui));
  EXPECT_EQ(f.host.log, (Log{"clear", "draw"}));
  ASSERT_TRUE(MapKeyDown(f.view, 32, f.host, f.ui));
  EXPECT_FLOAT_EQ(f.view.CntrLat, 50.5f);
  EXPECT_FLOAT_EQ(f.view.CntrLon, 8.25f);

  ASSERT_TRUE(MapKeyDown(f.view, 34, f.host, f.ui));  // Page Down zooms in
  EXPECT_EQ(f.view.ZoomIndex, 5);
  ASSERT_TRUE(MapKeyDown(f.view, 187, f.host, f.ui));
  EXPECT_EQ(f.view.ZoomIndex, 4);
  ASSERT_TRUE(MapKeyDown(f.view, 33, f.host, f.ui));  // Page Up zooms out
  ASSERT_TRUE(MapKeyDown(f.view, 109, f.host, f.ui));
  EXPECT_EQ(f.view.ZoomIndex, 6);
  EXPECT_FALSE(MapKeyDown(f.view, 65, f.host, f.ui));

  // The wheel with mouse zoom off: nothing at all happens.
  f.host.log.clear();
  MapWheel(f.view, false, 120, f.host, f.ui);
  MapWheel(f.view, false, -120, f.host, f.ui);
  EXPECT_EQ(f.view.ZoomIndex, 6);
  EXPECT_TRUE(f.host.log.empty());
  MapWheel(f.view, true, 120, f.host, f.ui);
  EXPECT_EQ(f.view.ZoomIndex, 5);
  MapWheel(f.view, true, -120, f.host, f.ui);
  EXPECT_EQ(f.view.ZoomIndex, 6);

  // The zoom menu's steps.
  ASSERT_TRUE(ZoomMenuClicked(f.view, "Menu200NM", f.host, f.ui));
  EXPECT_EQ(f.view.ZoomIndex, 11);
  f.view.Autozoom = true;
  ASSERT_TRUE(ZoomMenuClicked(f.view, "Menu3NM", f.host, f.ui));
  EXPECT_EQ(f.view.ZoomIndex, 2);
  EXPECT_FALSE(f.view.Autozoom);
  EXPECT_FALSE(ZoomMenuClicked(f.view, "Menu7NM", f.host, f.ui));
  EXPECT_TRUE(f.ui.Messages().empty());
}

TEST(MainWindowSize, MaximiseInReducedModeSnapsBackWithOneMessage) {
  test::ScriptedUi ui;
  ResizeOutcome r = ResizeWindow({WindowShow::Maximised, 30000, 20000}, true, false, 500, 300, ui);
  EXPECT_TRUE(r.Restore);
  EXPECT_EQ(ui.Messages(), (std::vector<std::string>{"You cannot maximize the reduced window!"}));
  ASSERT_EQ(ui.events.size(), 1u);
  // Maximised in normal mode: no message.
  r = ResizeWindow({WindowShow::Maximised, 30000, 20000}, false, false, 500, 300, ui);
  EXPECT_FALSE(r.Restore);
  EXPECT_EQ(ui.events.size(), 1u);
  r = ResizeWindow({WindowShow::Minimised, 10, 10}, true, false, 500, 300, ui);
  EXPECT_TRUE(r.Ignore);
}

TEST(MainWindowSize, TheLimitsAndTheSurfaceHeight) {
  test::ScriptedUi ui;
  ResizeOutcome r = ResizeWindow({WindowShow::Normal, 5000, 3000}, false, true, 500, 300, ui);
  EXPECT_EQ(r.Width, 6945);
  EXPECT_EQ(r.Height, 4980);
  EXPECT_TRUE(r.HidePlan);
  EXPECT_EQ(r.MapHeight, 4980 - 500 - 300 - 800);
  EXPECT_EQ(r.PlanLeftMax, 878);
  r = ResizeWindow({WindowShow::Normal, 6945, 9000}, false, true, 500, 300, ui);
  EXPECT_FALSE(r.HidePlan);
  EXPECT_EQ(r.MapHeight, 7400);
  EXPECT_EQ(r.PlanLeftMax, 460);
  r = ResizeWindow({WindowShow::Normal, 4000, 3000}, true, false, 500, 300, ui);
  EXPECT_EQ(r.Width, 4065);
  EXPECT_EQ(r.Height, 3825);
  EXPECT_EQ(r.MapHeight, 3825);
  EXPECT_FALSE(r.HidePlan);
  EXPECT_TRUE(ui.events.empty());

  EXPECT_EQ(PlanPanelLeft(12000, 7000, 9000), 460);
  EXPECT_EQ(PlanPanelLeft(12000, 6000, 11000), 500);
  EXPECT_EQ(PlanPanelLeft(12000, 6000, 9000), 878);
}

TEST(MainWindowSettings, ToggleKeysRoundTrip) {
  Fixture f;
  Settings cfg;
  cfg.Button = 0;
  cfg.Airspace = 0;
  cfg.CompMenu = 0;
  cfg.LatLonMenu = 1;
  cfg.AiMenu = 1;
  LoadWindowToggles(cfg, f.state);
  EXPECT_FALSE(f.window.ToggleBar);
  EXPECT_FALSE(f.layers.btnCtrz);
  EXPECT_FALSE(f.layers.menuUIR);
  EXPECT_FALSE(f.layers.MenuCompass);
  EXPECT_TRUE(f.layers.MenuLatLong);
  EXPECT_TRUE(f.window.btnAI);

  f.layers.btnAir2 = true;
  f.layers.MenuCompass = true;
  f.view.ZoomIndex = 9;
  Settings out;
  SaveWindowToggles(f.state, out);
  EXPECT_EQ(out.Button, 0);
  EXPECT_EQ(out.Airspace, 1);
  EXPECT_EQ(out.CompMenu, 1);
  EXPECT_EQ(out.LatLonMenu, 1);
  EXPECT_EQ(out.AiMenu, 1);
  EXPECT_EQ(out.Scale, 9);
}

}  // namespace
}  // namespace orv
