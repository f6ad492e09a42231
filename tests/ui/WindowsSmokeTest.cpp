#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenuBar>

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

}  // namespace
}  // namespace orv::ui
