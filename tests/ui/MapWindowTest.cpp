// The main window's map side on the offscreen platform with the small world:
// the chart is drawn, the toggle buttons and the menu keep each other's
// state, the status line shows the zoom label, and the keys reach the view.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QTableView>
#include <QToolBar>
#include <cstdlib>
#include <filesystem>

#include "support/FakeClock.h"
#include "support/ScriptedUi.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"
#include "mapqt/MapPicture.h"
#include "planning/Aircraft.h"
#include "ui/MainWindow.h"
#include "ui/MapWidget.h"
#include "ui/MapWindow.h"

namespace orv::ui {
namespace {

struct MapFixture {
  test::TempDir dir;
  ProgramState program{dir.Path().string()};
  AppState& state = program.Core;
  FlightPlan& plan = program.Plan;
  ViewState& view = program.View;
  test::ScriptedUi ui;
  ManualTimers timers;
  test::FakeClock clock;
  MainWindow window;
  MapWindow* map = nullptr;

  MapFixture() {
    test::BuildSmallWorld(program.Db);
    map = new MapWindow(window, program, ui, timers, clock);
    map->Controller().Load(50.0f, 8.0f);
    window.onMenu = [this](const std::string& name) { map->Controller().Menu(name); };
    window.resize(900, 650);
    window.show();
    QApplication::processEvents();
  }
};

// Pixels that differ from the top-left corner's colour (the background).
int ChartPixels(const QImage& image) {
  const QRgb background = image.pixel(0, 0);
  int n = 0;
  for (int y = 0; y < image.height(); y += 2)
    for (int x = 0; x < image.width(); x += 2)
      if (image.pixel(x, y) != background) ++n;
  return n;
}

QAction* Button(MapWindow& m, const char* name) {
  for (QAction* a : m.ToggleBar()->actions())
    if (a->objectName() == name) return a;
  return nullptr;
}

TEST(MapWindow, DrawsTheSmallWorldAndShowsTheStatusLineFromTheFirstPaint) {
  MapFixture f;
  // The first paint's pass wrote the variation and the position already.
  EXPECT_GE(f.map->Map()->Passes(), 1);
  EXPECT_EQ(f.map->Status(1)->text(), "30NM");
  EXPECT_TRUE(f.map->Status(2)->text().startsWith("MagVar: ")) << f.map->Status(2)->text().toStdString();
  EXPECT_FALSE(f.map->Status(3)->text().isEmpty());
  f.map->DrawMap();
  const QImage& picture = f.map->Map()->Picture();
  ASSERT_FALSE(picture.isNull());
  EXPECT_EQ(picture.size(), f.map->Map()->size());
  EXPECT_GT(ChartPixels(picture), 200);
  EXPECT_TRUE(f.view.MapReady);
  EXPECT_EQ(f.map->Status(1)->text(), "30NM");
  EXPECT_TRUE(f.map->Status(2)->text().startsWith("MagVar: "));
  EXPECT_TRUE(f.ui.Messages().empty());
  // ORV_SCREENSHOT=file.png keeps the window's picture (the README's).
  if (const char* shot = std::getenv("ORV_SCREENSHOT"); shot && *shot) {
    f.map->Layers().btnVictor = true;
    f.map->Layers().ShowName = true;
    f.map->DrawMap();
    EXPECT_TRUE(f.window.grab().save(QString::fromLocal8Bit(shot)));
  }
}

TEST(MapWindow, ZoomFactorIsTheWindowHeightOver8535Twips) {
  MapFixture f;
  // 650 pixels are 9750 twips: the factor 1.14235 gives Scaling 15993 at
  // 30 NM, above the 14000 from which the ILS markers show.
  EXPECT_FLOAT_EQ(f.view.ZoomFactor, static_cast<float>(650 * 15 / 8535.0));
  EXPECT_EQ(f.view.Scaling, 15993);
  // 560 pixels (8400 twips): 13779, and the markers stay hidden at 30 NM.
  f.window.resize(900, 560);
  QApplication::processEvents();
  f.map->DrawMap();
  ASSERT_EQ(f.window.height(), 560);
  EXPECT_EQ(f.view.Scaling, 13779);
}

TEST(MapWindow, ToggleButtonAndMenuEntryStayInStep) {
  MapFixture f;
  QAction* button = Button(*f.map, "btnAP");
  QAction* menu = f.window.Action("menuAirport");
  ASSERT_NE(button, nullptr);
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(button->isChecked());
  EXPECT_TRUE(menu->isChecked());
  const int before = f.map->Map()->Passes();
  button->trigger();  // the button goes up
  EXPECT_FALSE(f.map->Layers().btnAP);
  EXPECT_FALSE(menu->isChecked());
  EXPECT_GT(f.map->Map()->Passes(), before);
  menu->trigger();  // the menu flips the button back down
  EXPECT_TRUE(f.map->Layers().btnAP);
  EXPECT_TRUE(button->isChecked());
  EXPECT_TRUE(menu->isChecked());

  f.window.Action("MenuCtrz")->trigger();
  EXPECT_FALSE(Button(*f.map, "btnCtrz")->isChecked());
  EXPECT_FALSE(f.map->Layers().btnCtrz);

  f.window.Action("MenuShowPlan")->trigger();
  EXPECT_TRUE(f.map->Toggles().MenuShowPlan);
  EXPECT_TRUE(f.map->PlanTable()->isVisible());
}

TEST(MapWindow, KeysZoomAndTheWheelWaitsForMouseZoom) {
  MapFixture f;
  MapWidget* m = f.map->Map();
  QKeyEvent pageDown(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
  QApplication::sendEvent(m, &pageDown);
  EXPECT_EQ(f.view.ZoomIndex, 5);
  EXPECT_EQ(f.map->Status(1)->text(), "20NM");
  QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(m, &wheel);
  EXPECT_EQ(f.view.ZoomIndex, 5);  // MZOOM is off by default
  f.state.Config.MZoom = 1;
  QApplication::sendEvent(m, &wheel);
  EXPECT_EQ(f.view.ZoomIndex, 4);
  f.window.Action("Menu800NM")->trigger();
  EXPECT_EQ(f.view.ZoomIndex, 17);
}

TEST(MapWindow, MaximisingTheReducedWindowSnapsBackWithOneMessage) {
  MapFixture f;
  f.map->Controller().SetReduced(true);
  f.window.showMaximized();
  QApplication::processEvents();
  EXPECT_EQ(f.ui.Messages(), (std::vector<std::string>{"You cannot maximize the reduced window!"}));
  EXPECT_FALSE(f.window.isMaximized());
  EXPECT_FALSE(f.window.Action("MenuFlightplan")->isVisible());
}

TEST(MapWindow, UnloadWritesTheToggleKeys) {
  MapFixture f;
  f.window.Action("MenuCompass")->trigger();
  f.map->Controller().Unload();
  EXPECT_EQ(f.state.Config.CompMenu, 0);
  EXPECT_FALSE(f.view.MapReady);
}

TEST(MapWindow, NavaidPlanFillsTheTableAndShowsThePlan) {
  MapFixture f;
  AircraftRec a;
  a.Id = 1;
  a.AircraftName = "Test Twin";
  a.CruiseSpeed = 180;
  a.CruiseLevel = 90;
  a.ApproachSpeed = 100;
  a.ClimbRate = 1000;
  a.ClimbSpeed = 120;
  a.DescentRate = 1000;
  a.DescentSpeed = 150;
  f.program.Aircraft.List = {a};
  f.program.Aircraft.Current = a;
  f.plan.DepartureAirport = 0;
  f.plan.DestinationAirport = 1;
  f.window.Action("MenuCreateNavaid")->trigger();
  EXPECT_GE(f.plan.LastRow, 1);
  EXPECT_TRUE(f.map->Toggles().MenuShowPlan);
  EXPECT_TRUE(f.window.Action("MenuShowPlan")->isChecked());
  ASSERT_GE(f.map->PlanTable()->model()->rowCount(), 2);
  for (const std::string& m : f.ui.Messages()) ADD_FAILURE() << m;
}

TEST(MapWindow, ClickRecentresAndADragZooms) {
  MapFixture f;
  f.map->DrawMap();
  MapWidget* m = f.map->Map();
  const QPoint centre(m->width() / 2, m->height() / 2);
  // A click a quarter of the surface's height above the centre: the view
  // moves north by that many twips at Scaling units a degree (the zoom
  // factor is the window's, so 30 NM is a little less than the map's
  // height), the zoom step stays.
  const QPoint click(centre.x(), centre.y() - m->height() / 4);
  QMouseEvent press(QEvent::MouseButtonPress, click, m->mapToGlobal(click), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QMouseEvent release(QEvent::MouseButtonRelease, click, m->mapToGlobal(click), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
  QApplication::sendEvent(m, &press);
  QApplication::sendEvent(m, &release);
  EXPECT_EQ(f.view.ZoomIndex, 6);
  EXPECT_NEAR(f.view.CntrLat, 50.0 + m->height() / 4 * kTwipsPerPixel / f.view.Scaling, 0.002);
  EXPECT_NEAR(f.view.CntrLon, 8.0, 0.001);

  // A band 2 degrees high: the nearest label to 120 NM is 100 NM.
  f.view.Autozoom = true;
  const double pxPerDegree = f.view.Scaling / kTwipsPerPixel;
  const QPoint top(centre.x(), centre.y() - static_cast<int>(pxPerDegree));
  const QPoint bottom(centre.x(), centre.y() + static_cast<int>(pxPerDegree));
  QMouseEvent press2(QEvent::MouseButtonPress, top, m->mapToGlobal(top), Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
  QMouseEvent release2(QEvent::MouseButtonRelease, bottom, m->mapToGlobal(bottom), Qt::LeftButton, Qt::NoButton,
                       Qt::NoModifier);
  QApplication::sendEvent(m, &press2);
  QApplication::sendEvent(m, &release2);
  EXPECT_EQ(f.view.ZoomIndex, 9);
  EXPECT_FALSE(f.view.Autozoom);
  EXPECT_EQ(f.map->Status(1)->text(), "100NM");
}

TEST(MapWindow, HoverBoxShowsOnTheSurfaceAndGoesWithTheNextMove) {
  MapFixture f;
  f.map->DrawMap();
  MapWidget* m = f.map->Map();
  const QImage clean = m->Picture().copy();
  auto move = [&](QPointF at) {
    QMouseEvent e(QEvent::MouseMove, at, m->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(m, &e);
    f.map->Controller().OnTimer(TimerId::MousePos);
    f.map->Controller().OnTimer(TimerId::MousePos);
  };
  const VorRec& ffm = f.program.Db.Navaids.Vors[0];
  move(QPointF(MapXFromLon(f.view, ffm.Lon, ffm.Lat) / kTwipsPerPixel, MapYFromLat(f.view, ffm.Lat) / kTwipsPerPixel));
  EXPECT_TRUE(f.map->Controller().Mouse().HoverShown);
  EXPECT_NE(m->Picture(), clean);
  EXPECT_FALSE(f.map->Status(5)->text().isEmpty());
  move(QPointF(5, 5));
  EXPECT_FALSE(f.map->Controller().Mouse().HoverShown);
  EXPECT_EQ(m->Picture(), clean);
}

TEST(MapWindow, KeyCodes) {
  EXPECT_EQ(KeyCodeOf(Qt::Key_PageUp, false), 33);
  EXPECT_EQ(KeyCodeOf(Qt::Key_Plus, true), 107);
  EXPECT_EQ(KeyCodeOf(Qt::Key_Plus, false), 187);
  EXPECT_EQ(KeyCodeOf(Qt::Key_Minus, true), 109);
  EXPECT_EQ(KeyCodeOf(Qt::Key_Minus, false), 189);
  EXPECT_EQ(KeyCodeOf(Qt::Key_Escape, false), 27);
  EXPECT_EQ(KeyCodeOf(Qt::Key_A, false), 0);
}

}  // namespace
}  // namespace orv::ui
