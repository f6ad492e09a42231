// The Blackbox and logbook windows on the offscreen platform: frmSaveRec and
// frmLoadRec over their forms, the stepping view with pctVert over the map,
// and frmLogbook with its grid, labels and PDF.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QToolBar>

#include "core/FileIo.h"
#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"
#include "ui/LogbookDialog.h"
#include "ui/MainWindow.h"
#include "ui/MapWindow.h"
#include "ui/RecordingWindows.h"

namespace orv::ui {
namespace {

TraceSample At(float lat, float lon, int32_t alt) {
  TraceSample t;
  t.Latitude = lat;
  t.Longitude = lon;
  t.Altitude = alt;
  return t;
}

TEST(RecordingWindows, SaveLoadAndStepOverTheMap) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::BuildSmallWorld(s.Db);
  test::ScriptedUi ui;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindow window;
  auto* map = new MapWindow(window, s, ui, timers, clock);
  map->Controller().Load(50.0f, 8.0f);
  window.resize(900, 650);
  window.show();
  QApplication::processEvents();
  FlightAnalysis& a = map->Controller().Analysis();
  s.Trace.Recorder.Trace.Samples = {At(50.0f, 8.0f, 1000), At(50.02f, 8.04f, 1500), At(50.04f, 8.08f, 900)};
  s.Trace.Recorder.Trace.TraceTimes = {"10:00:00", "10:00:07", "10:00:14"};

  a.OpenSaveRec();
  SaveRecDialog save(a);
  EXPECT_EQ(save.FileName()->text(), "untitled");
  EXPECT_EQ(save.Description()->text(), "untitled");
  save.FileName()->setText("circuit");
  save.Description()->setText("Three samples");
  save.findChild<QPushButton*>("cmdOK")->click();
  EXPECT_EQ(save.result(), QDialog::Accepted);

  a.RefreshLoadRec();
  LoadRecDialog load(a);
  ASSERT_EQ(load.Files()->count(), 1);
  load.Files()->setCurrentRow(0);
  EXPECT_EQ(load.Description()->text(), "Three samples");

  ASSERT_TRUE(a.OpenRecording(dir.Path() / "user" / "circuit.rcd"));
  QApplication::processEvents();
  ReplayView& replay = *map->Replay();
  EXPECT_TRUE(replay.Profile()->isVisible());
  EXPECT_TRUE(replay.Panel()->isVisible());
  EXPECT_EQ(replay.Label("lblRecAlt")->text(), "Alt: 1000");
  replay.Panel()->findChild<QPushButton*>("cmdRecNext")->click();
  EXPECT_EQ(replay.Label("lblRecAlt")->text(), "Alt: 1500");
  EXPECT_EQ(map->Status(6)->text(), "Sample 2 of 3");
  QAction* tracing = map->ButtonBar()->findChild<QAction*>("cmdTracing");
  ASSERT_NE(tracing, nullptr);
  EXPECT_FALSE(tracing->isEnabled());
  // pctVert shows the red mark of the sample.
  const QImage picture = replay.Profile()->grab().toImage();
  int red = 0;
  for (int x = 0; x < picture.width(); ++x)
    if (picture.pixelColor(x, picture.height() / 2) == QColor(220, 0, 0)) ++red;
  EXPECT_GE(red, 1);
}

TEST(LogbookDialog, GridLabelsAndPdf) {
  test::TempDir dir;
  ProgramState s(dir.Path().string());
  test::ScriptedUi ui;
  QtFontSet fonts;
  LogbookEntry e;
  e.Departure = "EDDF";
  e.Destination = "EDDM";
  e.FlightDate = DateToDays({2026, 11, 20, 0, 0, 0});
  e.TakeoffMinutes = 600;
  e.LandingMinutes = 655;
  e.FlightNumber = "ORV7";
  e.Waypoints = {{'V', "FFM", 610}};
  std::filesystem::create_directories(dir.Path() / "user");
  ASSERT_TRUE(WriteFileAtomic(dir.Path() / "user" / "Logbook.orv", WriteLogbook({e, e})));

  LogbookDialog dialog(s, ui, fonts);
  dialog.Open();
  ASSERT_EQ(dialog.Grid()->model()->rowCount(), 2);
  EXPECT_EQ(dialog.Grid()->model()->headerData(3, Qt::Horizontal).toString(), "Takeoff");
  EXPECT_EQ(dialog.findChild<QLabel*>("lblTotal")->text(), "Total Flight Time: 1 hours 50 min");
  dialog.Grid()->selectRow(1);
  EXPECT_EQ(dialog.Label("lblFlightNo")->text(), "Flight No:   ORV7");
  ASSERT_EQ(dialog.Waypoints()->count(), 1);
  EXPECT_EQ(dialog.Waypoints()->item(0)->text(), "FFM (10:10)");
  const std::string pdf = (dir.Path() / "book.pdf").string();
  ASSERT_TRUE(dialog.WritePdfTo(pdf));
  EXPECT_EQ(ReadWholeText(pdf)->substr(0, 5), "%PDF-");
}

}  // namespace
}  // namespace orv::ui
