// The Qt suite's main: one QApplication for all tests, destroyed before the
// program's static objects.
#include <gtest/gtest.h>

#include <QApplication>

static void InitResources() { Q_INIT_RESOURCE(ui); }

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  InitResources();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
