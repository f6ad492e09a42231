// The Qt drawing suite's main: one QGuiApplication (fonts and painting need
// it) alive for all tests, on the offscreen platform.
#include <gtest/gtest.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
