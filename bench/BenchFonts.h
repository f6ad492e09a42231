// The Qt application and the fonts the drawing benchmarks paint with, made on
// first use. Both are kept to the end of the process: tearing the application
// down among the other statics at exit crashes in Qt's font cache.
#pragma once

#include <QGuiApplication>

#include "mapqt/QtFontSet.h"

namespace orv {

inline QtFontSet& Fonts() {
  static int argc = 1;
  static char name[] = "orvanta-bench";
  static char* argv[] = {name, nullptr};
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static auto* app = new QGuiApplication(argc, argv);
  static auto* fonts = new QtFontSet;
  (void)app;
  return *fonts;
}

}  // namespace orv
