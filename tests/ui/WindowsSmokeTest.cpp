#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenuBar>

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextBrowser>

#include "app/PlanCommands.h"
#include "core/Startup.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"
#include "ui/AircraftDialog.h"
#include "ui/AirportWindows.h"
#include "ui/OptionsWindow.h"
#include "ui/ProcedureEditorWindow.h"
#include "core/FileIo.h"
#include <QComboBox>
#include "ui/FuelWindow.h"
#include "ui/GpsWindow.h"
#include "ui/HelpWindows.h"
#include "ui/PlanFileDialogs.h"
#include "ui/ProcedureWindows.h"
#include "ui/MainWindow.h"
#include "ui/QtUi.h"
#include "ui/SplashWindow.h"

namespace orv::ui {
namespace {

TEST(MainWindow, ShowsTitleAndTheMenuBarFromTheTable) {
  MainWindow w;
  w.show();
  EXPECT_EQ(w.windowTitle(), "Orvanta");
  QStringList tops;
  for (QAction* a : w.menuBar()->actions()) tops << a->text();
  EXPECT_EQ(tops.first(), "&Map");
  EXPECT_TRUE(tops.contains("&Online"));
  EXPECT_TRUE(tops.contains("&Exit"));
  ASSERT_NE(w.Action("MenuVOR"), nullptr);
  EXPECT_TRUE(w.Action("MenuVOR")->isCheckable());
  EXPECT_FALSE(w.Action("MenuFindObject")->isCheckable());

  std::string clicked;
  w.onMenu = [&](const std::string& name) { clicked = name; };
  w.Action("MenuFindObject")->trigger();
  EXPECT_EQ(clicked, "MenuFindObject");
}

TEST(SplashWindow, ProgressGoesThroughTheUiSeam) {
  SplashWindow s;
  s.show();
  QtUi ui(&s);
  ui.SetProgressLabel(s.ProgressLabel());
  ui.ShowProgress("...loading airports for FS2004");
  EXPECT_EQ(s.ProgressLabel()->text(), "...loading airports for FS2004");
  s.SetAirac("2511 - 27NOV2025", true, 0x008000);
  EXPECT_FALSE(s.AiracLabel()->isHidden());
  ui.RegisterWindow("OVRIntro", &s);
  ui.SetCaption("OVRIntro", "Caption \xB7 8-bit");
  EXPECT_EQ(s.windowTitle(), QString::fromUtf8("Caption \xC2\xB7 8-bit"));
}

TEST(SideWindows, AirportPreviewLayoutAndParkingShowTheCoreState) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  FillNameTables(s.Core);
  test::ScriptedUi ui;
  AirportPreviewWindow preview(s, ui);
  int32_t laidOut = -1;
  preview.onLayout = [&](int32_t airport) { laidOut = airport; };
  ASSERT_TRUE(preview.Open());
  EXPECT_EQ(preview.windowTitle(), "Airport Preview - EDXX Main Field");
  EXPECT_EQ(preview.List("lstRunways")->count(), 1);
  EXPECT_EQ(preview.List("lstParking")->item(0)->text(), "GATE 1   Ramp GA");
  preview.findChild<QPushButton*>("cmdLayout")->click();
  EXPECT_EQ(laidOut, 0);

  LayoutWindow layout(s);
  layout.Open(0);
  EXPECT_TRUE(layout.windowTitle().startsWith("Runway Window - EDXX"));
  ASSERT_FALSE(layout.Picture().isNull());
  EXPECT_EQ(layout.Picture().pixel(1, 1), qRgb(0, 0, 0x40));  // the map colour

  ParkingWindow parking(s, ui);
  ASSERT_TRUE(parking.Open());
  EXPECT_EQ(parking.List()->count(), 3);
  EXPECT_FALSE(parking.SelectClick());  // no simulator: the window says so
  EXPECT_EQ(ui.Messages().back(), kNotConnectedText);
}

TEST(SideWindows, FuelAircraftAndHelpShowTheCoreState) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  test::ScriptedUi ui;
  AircraftRec a;
  a.Id = 1;
  a.AircraftName = "Test Twin";
  a.CruiseSpeed = 180;
  a.CruiseLevel = 90;
  a.ApproachSpeed = 100;
  a.ClimbRate = a.DescentRate = 1000;
  a.ClimbSpeed = 120;
  a.DescentSpeed = 150;
  a.MaxFuel = 800;
  a.MaxRange = 900;
  a.MaxWeight = 2500;
  a.EmptyWeight = 1500;
  a.LoadWeight = 400;
  s.Aircraft.List = {a};
  s.Aircraft.Current = a;

  FuelDialog fuel(s, ui);
  EXPECT_FALSE(fuel.Open());  // no plan: the core's message, no window
  EXPECT_FALSE(fuel.isVisible());
  SetPlanEnds(s, 0, 1);
  ASSERT_TRUE(CreatePlan(s, PlanKind::Navaid, ui));
  ASSERT_TRUE(fuel.Open()) << ui.Messages().back();
  EXPECT_TRUE(fuel.windowTitle().startsWith("Fuel Calculation for FL "));
  EXPECT_EQ(fuel.Box("TotalIfrBox")->text().toStdString(), fuel.Form().TotalIfrBox);
  EXPECT_FALSE(fuel.Box("ClimbFuelBox")->text().isEmpty());

  AircraftDialog aircraft(s, ui);
  aircraft.Open();
  ASSERT_EQ(aircraft.List()->count(), 1);
  EXPECT_EQ(aircraft.List()->item(0)->text(), "Test Twin");
  EXPECT_EQ(aircraft.Box(AircraftBox::CruiseSpeedBox)->text(), "180");

  // The plan windows: Save As offers the airports' file name, Save Route
  // Segment lists the plan's rows.
  struct NoView : MainWindowView {
    void FocusMap() override {}
    void DrawMap() override {}
    void SetMapStatus(int, std::string_view) override {}
    void RepositionMeasure() override {}
    void ClearSelection() override {}
    void SetOnTop(bool) override {}
    void ShowPlan(bool) override {}
    void SyncChecks() override {}
    void OpenWindow(std::string_view) override {}
    void CloseProgram() override {}
    void RefreshPlanTable() override {}
    void ShowReduced(bool) override {}
  } view;
  ManualTimers timers;
  SystemClock clock;
  MainWindowController controller(s, view, ui, timers, clock);
  s.SaveRouteForm.Load(s.Plan, dir.Path().string(), "", dir.Path().string());
  SaveRouteDialog save(s, controller);
  save.Refresh();
  EXPECT_EQ(save.FileName()->text(), "EDXXEDYY.pln");
  SegmentDialog segment(s, ui, true);
  segment.Load();
  EXPECT_EQ(segment.Form().lstFpWaypoints.size(), static_cast<std::size_t>(s.Plan.LastRow + 1));

  // The GPS window: its buttons with their captions and tool tips, a line
  // written at its place.
  GpsWindow gps(controller.Gps());
  ASSERT_NE(gps.Button("cmdWx"), nullptr);
  EXPECT_EQ(gps.Button("cmdWx")->text(), "Wx");
  EXPECT_EQ(gps.Button("cmdDirTo")->toolTip(), "Go directly to");
  gps.SetLine(20, "  TAS:   280", 65280);
  EXPECT_EQ(gps.LineText(20), "  TAS:   280");

  HelpWindow help;
  EXPECT_TRUE(help.Browser()->toPlainText().contains("Flight plans"));
  EXPECT_TRUE(AboutText().contains("Version 8.0"));
}

}  // namespace
}  // namespace orv::ui

namespace orv::ui {
namespace {

TEST(SideWindows, OptionsShowTheSettingsAndPreviewATheme) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  WriteFileAtomic(dir.Path() / "orvcolor.ini", std::string_view("[Night]\r\nMAP=0\r\n"));
  test::ScriptedUi ui;
  OptionsDialog options(s, ui);
  options.Open();
  EXPECT_EQ(options.findChild<QLineEdit*>("SECLEN")->text(), "50");
  ASSERT_EQ(options.ThemeBox()->count(), 1);
  const QImage before = options.Preview()->pixmap().toImage();
  options.Form().ApplyTheme("Night");
  options.Form().SetValue("SECLEN", "300");
  EXPECT_FALSE(options.OkClick());
  EXPECT_EQ(ui.Messages().back(), "Sector Length: must be a whole number from 5 to 200.");
  options.Form().SetValue("SECLEN", "60");
  bool applied = false;
  options.onApplied = [&] { applied = true; };
  ASSERT_TRUE(options.OkClick());
  EXPECT_TRUE(applied);
  EXPECT_EQ(s.Core.Config.SecLen, 60);
  EXPECT_EQ(s.Core.Config.Map, 0);
  EXPECT_FALSE(before.isNull());
}

}  // namespace
}  // namespace orv::ui

namespace orv::ui {
namespace {

TEST(SideWindows, ProcedureEditorDrawsSavesAndLoads) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  test::ScriptedUi ui;
  ProcedureEditorWindow editor(s, ui);
  bool drawn = false;
  editor.onDrawn = [&] { drawn = true; };
  editor.Open();
  EXPECT_EQ(editor.Box("txtName")->text(), "HOLD");
  editor.Box("txtFix")->setText("FFM");
  editor.Box("txtCourse")->setText("250");
  ASSERT_TRUE(editor.DrawClick()) << ui.Messages().back();
  EXPECT_TRUE(drawn);
  EXPECT_TRUE(s.Procedure.Set);
  ASSERT_TRUE(editor.SaveAs("FFM HOLD"));
  editor.Box("txtCourse")->setText("70");
  ASSERT_TRUE(editor.LoadShape(0));
  EXPECT_EQ(editor.Box("txtCourse")->text(), "250");
  ProcListDialog load(s.Core.Folder, ui, false);
  ASSERT_TRUE(load.Refresh());
  ASSERT_EQ(load.List()->count(), 1);
  EXPECT_EQ(load.List()->item(0)->text(), "FFM HOLD  (FFM)");
}

}  // namespace
}  // namespace orv::ui
