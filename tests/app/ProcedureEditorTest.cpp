// The procedure editor over the small world: the fix looked up, the boxes
// refused with their names, the shape drawn on the map and handed to the
// link, and proc.orv's library that never writes over a damaged file.
#include "app/ProcedureEditor.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/MainWindowController.h"
#include "core/FileIo.h"
#include "map/RecordingTarget.h"
#include "map/RenderPass.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

struct NoView : MainWindowView {
  std::vector<std::string> opened;
  void FocusMap() override {}
  void DrawMap() override {}
  void SetMapStatus(int, std::string_view) override {}
  void RepositionMeasure() override {}
  void ClearSelection() override {}
  void SetOnTop(bool) override {}
  void ShowPlan(bool) override {}
  void SyncChecks() override {}
  void OpenWindow(std::string_view name) override { opened.emplace_back(name); }
  void CloseProgram() override {}
  void RefreshPlanTable() override {}
  void ShowReduced(bool) override {}
};

TEST(ProcedureEditor, DrawsTheShapeAtTheFixAndHandsItToTheLink) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  test::ScriptedUi ui;
  NoView view;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindowController c(s, view, ui, timers, clock);
  c.Load(50.0f, 8.0f);
  ASSERT_TRUE(c.Menu("MenuProc"));
  EXPECT_EQ(view.opened, std::vector<std::string>{"EdProc"});

  ProcedureEditor e;
  e.Load(s);
  e.Fix = "XXXXX";
  e.Course = "250";
  EXPECT_FALSE(e.Draw(s, ui));
  EXPECT_EQ(ui.Messages().back(), "Fix XXXXX not found!");
  e.Fix = "ffm";
  e.Course = "25o";
  EXPECT_FALSE(e.Draw(s, ui));
  EXPECT_EQ(ui.Messages().back(), "Inbound course: must be from 0 to 360.");
  e.Course = "250";
  e.Speed = "500";
  EXPECT_FALSE(e.Draw(s, ui));
  EXPECT_EQ(ui.Messages().back(), "Speed: must be from 60 to 400 kt.");
  EXPECT_FALSE(s.Procedure.Set);
  e.Speed = "180";
  ASSERT_TRUE(e.Draw(s, ui));
  EXPECT_TRUE(s.Window.MenuDisplayProc);
  EXPECT_EQ(s.Procedure.Shape.Fix, "FFM");
  EXPECT_EQ(s.Procedure.Points[0].Lat, 50.05f);  // the VOR
  EXPECT_EQ(s.Procedure.Points[0].Lon, 8.3f);

  // The map draws the 15 points while the menu entry is checked.
  auto drawn = [&] {
    RecordingTarget t(10000, 7000);
    s.View.CntrLat = 50.05f, s.View.CntrLon = 8.3f;
    MapRenderer renderer;
    renderer.DrawMap(MapScene{s.View, s.Core.Config, s.Layers, s.Db, s.Plan, {}, &s.Overlays, &s.Registry}, t);
    return std::count_if(t.Ops().begin(), t.Ops().end(), [&](const DrawOp& op) {
      return op.Kind == DrawOpKind::Polyline && op.PointCount == kProcPoints && op.Color == s.Core.Config.Hilite;
    });
  };
  EXPECT_EQ(drawn(), 1);
  c.Menu("MenuDisplayProc");
  EXPECT_EQ(drawn(), 0);
  c.Menu("MenuDisplayProc");

  // With the link the autopilot gets the points and the hold its plan row.
  test::BuildSmallPlan(s.Plan);  // EDXX - FFM - EDYY
  const int32_t row = ProcedureRowOf(s.Plan, s.Procedure);
  ASSERT_EQ(row, 1);
  c.Menu("MenuLocal");
  ASSERT_TRUE(s.Sim.Connected());
  c.OnTimer(TimerId::AutoPilot);
  EXPECT_EQ(s.Sim.Live->State().ProcedureRow, row);
  EXPECT_EQ(s.Sim.Autopilot->ProcedurePoints[7].Lat, s.Procedure.Points[7].Lat);
  EXPECT_TRUE(s.Sim.Live->Menus.MenuDisplayProc);
}

TEST(ProcedureEditor, LibraryReplacesByNameAndLeavesADamagedFileAlone) {
  test::TempDir dir;
  AppFolder app(dir.Path().string());
  test::ScriptedUi ui;
  ProcShape a;
  a.Name = "HOLD";
  a.Fix = "FFM";
  a.Lat = 50, a.Lon = 8, a.InboundCourse = 250;
  ProcShape b = a;
  b.Name = "PT";
  ASSERT_TRUE(SaveProcShape(app, a, ui));  // makes the user folder
  ASSERT_TRUE(SaveProcShape(app, b, ui));
  a.InboundCourse = 70;
  EXPECT_FALSE(SaveProcShape(app, a, ui));  // "Replace ...?" answered No
  ui.answers.push_back(Answer::Yes);
  ASSERT_TRUE(SaveProcShape(app, a, ui));
  ProcLibrary lib = ReadProcLibrary(app);
  ASSERT_EQ(lib.Shapes.size(), 2u);
  EXPECT_EQ(lib.Shapes[0].InboundCourse, 70.0f);
  ASSERT_TRUE(DeleteProcShape(app, "pt", ui));
  EXPECT_EQ(ReadProcLibrary(app).Shapes.size(), 1u);

  const auto path = app.Resolve(kProcFile);
  ASSERT_TRUE(WriteFileAtomic(path, std::string_view("\x01\x00\x00\x00garbage", 11)));
  EXPECT_FALSE(SaveProcShape(app, b, ui));
  EXPECT_EQ(ui.Messages().back(), "proc.orv: 1 shapes need 54 bytes, the file has 11. The file is left as it is.");
  EXPECT_FALSE(DeleteProcShape(app, "HOLD", ui));
  EXPECT_EQ(ReadWholeText(path)->size(), 11u);
}

}  // namespace
}  // namespace orv
