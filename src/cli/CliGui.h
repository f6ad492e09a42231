// The QGuiApplication that painting needs in the command-line program: the
// offscreen platform unless the caller chose another. Null when one runs
// already.
#pragma once

#include <QGuiApplication>
#include <memory>

namespace orv::cli {

inline std::unique_ptr<QGuiApplication> EnsureGuiApplication() {
  if (QCoreApplication::instance()) return nullptr;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "orvanta-cli";
  static char* argv[] = {name, nullptr};
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace orv::cli
