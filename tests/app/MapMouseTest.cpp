// The map mouse and the hover box over the small world, with a view that
// keeps what is drawn straight on the surface in a recording target.
#include <gtest/gtest.h>

#include "app/MainWindowController.h"
#include "core/Runtime.h"
#include "map/RecordingTarget.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

struct SurfaceView : MainWindowView {
  RecordingTarget map;
  std::vector<std::string> calls;
  void FocusMap() override {}
  void DrawMap() override { calls.push_back("draw"); }
  void SetMapStatus(int field, std::string_view text) override {
    calls.push_back("status" + std::to_string(field) + " " + std::string(text));
  }
  void RepositionMeasure() override {}
  void ClearSelection() override {}
  void SetOnTop(bool) override {}
  void ShowPlan(bool) override {}
  void SyncChecks() override {}
  void OpenWindow(std::string_view) override {}
  void CloseProgram() override {}
  void RefreshPlanTable() override {}
  void ShowReduced(bool) override {}
  void RestoreMapPicture() override { calls.push_back("restore"); }
  void DrawOnMap(const std::function<void(DrawTarget&)>& draw) override { draw(map); }
  void SetMapStatusColour(int field, Colour c) override {
    calls.push_back("colour" + std::to_string(field) + " " + std::to_string(c));
  }
  void ShowTogglePanel(bool visible) override { calls.push_back(visible ? "panel" : "nopanel"); }
};

struct Fixture {
  test::TempDir dir;
  ProgramState s{dir.Path().string()};
  SurfaceView view;
  test::ScriptedUi ui;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindowController c{s, view, ui, timers, clock};
  Fixture() {
    test::BuildSmallWorld(s.Db);
    c.Load(50.0f, 8.0f);
  }
  // The pointer rests at (x, y) for two ticks: the first stores, the second walks.
  void Rest(double x, double y) {
    c.MapMove(x, y);
    c.OnTimer(TimerId::MousePos);
    c.OnTimer(TimerId::MousePos);
  }
  double X(float lat, float lon) const { return MapXFromLon(s.View, lon, lat); }
  double Y(float lat) const { return MapYFromLat(s.View, lat); }
};

TEST(HoverBox, RadiusIsStrictAndObjectsComeInArrayOrder) {
  Fixture f;
  VorRec& ffm = f.s.Db.Navaids.Vors[0];
  ffm.TypeName.Assign("VOR-DME");
  const double x = f.X(ffm.Lat, ffm.Lon), y = f.Y(ffm.Lat);
  f.Rest(x + 100, y);
  EXPECT_EQ(f.c.Mouse().HoverLineCount, 0);
  f.Rest(x + 99, y - 99);
  EXPECT_EQ(f.c.Mouse().HoverLines(), (std::vector<std::string>{"FRANKFURT  FFM", "0 ft", "114.20",
                                                                "N50\xB0" "03.00'  E008\xB0" "18.00'", "",
                                                                "VOR VOR-DME"}));
  EXPECT_EQ(f.s.Highlight.Kind, kHiliteVor);
  EXPECT_EQ(f.s.Highlight.Index, 0);

  // Two airports under the pointer: the first of the array first.
  AirportRec& second = f.s.Db.Airports.Airports[1];
  second.Lat = 50.001f, second.Lon = 8.001f;
  f.Rest(f.X(50.0f, 8.0f), f.Y(50.0f));
  const std::vector<std::string>& lines = f.c.Mouse().HoverLines();
  const auto first = std::find(lines.begin(), lines.end(), "Main Field (EDXX)");
  const auto next = std::find(lines.begin(), lines.end(), "Hill Strip (EDYY)");
  ASSERT_NE(first, lines.end());
  ASSERT_NE(next, lines.end());
  EXPECT_LT(first, next);
  EXPECT_EQ(f.s.Highlight.Kind, kHiliteAirport);
  EXPECT_EQ(f.s.Highlight.Index, 1);
}

TEST(HoverBox, StandsBesideThePointerOnTheSurfaceAndGoesAtTheNextMove) {
  Fixture f;
  const VorRec& ffm = f.s.Db.Navaids.Vors[0];
  const double x = CLng(f.X(ffm.Lat, ffm.Lon)), y = CLng(f.Y(ffm.Lat));
  f.c.MapMove(x, y);
  f.c.OnTimer(TimerId::MousePos);
  EXPECT_TRUE(f.view.map.Ops().empty());  // the first tick only stores the position
  f.c.OnTimer(TimerId::MousePos);
  EXPECT_TRUE(f.c.Mouse().HoverShown);
  // Past the middle in X, above it in Y: left of the pointer and below it.
  // The widest line, "N50°03.00'  E008°18.00'", is 23 characters of 70 units.
  const DrawOp& box = f.view.map.Ops()[0];
  EXPECT_EQ(box.Kind, DrawOpKind::Box);
  EXPECT_EQ(box.FillStyle, kFillSolid);
  EXPECT_EQ(f.c.Mouse().HoverWidth, 23 * 70);
  EXPECT_DOUBLE_EQ(box.X2, x - 100);
  EXPECT_DOUBLE_EQ(box.X1, x - 100 - (23 * 70 + 100));
  EXPECT_DOUBLE_EQ(box.Y1, y + 100);
  EXPECT_DOUBLE_EQ(box.Y2, y + 100 + 6 * 170 + 100);
  EXPECT_EQ(f.view.map.Ops()[1].Text, "FRANKFURT  FFM");
  EXPECT_DOUBLE_EQ(f.view.map.Ops()[2].Y1, y + 150 + 170);
  // The box is not worked out again while the pointer rests.
  f.view.map.ClearOps();
  f.c.OnTimer(TimerId::MousePos);
  EXPECT_TRUE(f.view.map.Ops().empty());
  f.view.calls.clear();
  f.c.MapMove(x + 1, y);
  f.c.OnTimer(TimerId::MousePos);
  EXPECT_FALSE(f.c.Mouse().HoverShown);
  EXPECT_NE(std::find(f.view.calls.begin(), f.view.calls.end(), "restore"), f.view.calls.end());
  // A wheel step over the box redraws the map: the box is gone and stays so.
  f.Rest(x, y);
  f.s.Core.Config.MZoom = 1;
  f.c.Wheel(120);
  EXPECT_EQ(f.view.calls.back(), "draw");
  EXPECT_FALSE(f.c.Mouse().HoverShown);
}

TEST(MapMouse, TogglePanelStatusModesAndTheBand) {
  Fixture f;
  f.c.MapMove(600, 100);
  f.c.MapMove(499, 13499);
  f.c.MapMove(500, 13499);
  f.c.MapMove(499, 13499);
  f.c.MapMove(499, 13500);
  std::vector<std::string> panel;
  for (const std::string& c : f.view.calls)
    if (c.find("panel") != std::string::npos) panel.push_back(c);
  EXPECT_EQ(panel, (std::vector<std::string>{"nopanel", "panel", "nopanel", "panel", "nopanel"}));

  f.c.StatusClick(kStatusCursor);
  EXPECT_EQ(f.view.calls.back(), "status5 Inbound");
  f.c.MapMove(5000, 3500 - f.s.View.Scaling);  // a degree north of the centre, inbound due south
  EXPECT_EQ(f.view.calls[f.view.calls.size() - 2], "colour5 16711680");
  EXPECT_EQ(f.view.calls.back(), "status5 Inbound:  60.0 NM / 180\xB0");
  f.c.StatusClick(kStatusCursor);
  f.c.StatusClick(kStatusCursor);
  EXPECT_EQ(f.view.calls.back(), "status5 Coordinates");

  // The band: exclusive or and dots, erased by drawing it again.
  f.view.map.ClearOps();
  f.c.MapPress(1, false, false, 1000, 1000);
  f.c.MapMove(3000, 4000);
  f.c.MapRelease(1, false, 3000, 4000);
  std::vector<std::string> boxes;
  for (const DrawOp& op : f.view.map.Ops()) {
    EXPECT_EQ(op.DrawMode, kDrawModeXor);
    EXPECT_EQ(op.DrawStyle, kDrawStyleDot);
    boxes.push_back(f.view.map.Describe(op));
  }
  EXPECT_EQ(boxes, (std::vector<std::string>{"Box 1000 1000 1000 1000", "Box 1000 1000 1000 1000",
                                             "Box 1000 1000 3000 4000", "Box 1000 1000 3000 4000"}));
  EXPECT_GT(f.s.View.CntrLat, 50.0f);  // re-centred on the band's middle, north of the old centre
  // Esc while a band is dragged erases it.
  f.c.MapPress(1, false, false, 1000, 1000);
  f.c.MapMove(2000, 2000);
  f.view.map.ClearOps();
  f.c.Key(27);
  EXPECT_FALSE(f.c.Mouse().BandActive);
  ASSERT_FALSE(f.view.map.Ops().empty());
  EXPECT_EQ(f.view.map.Describe(f.view.map.Ops()[0]), "Box 1000 1000 2000 2000");
}

}  // namespace
}  // namespace orv
