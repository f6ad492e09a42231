// The program: owns the application state and the loaded database, runs the
// start-up behind the splash and opens the first window. Everything it shows
// comes from the headless core; this class only connects the pieces.
#pragma once

#include <memory>
#include <string>

#include "core/AppState.h"
#include "core/Clock.h"
#include "database/NavDatabase.h"
#include "ui/QtUi.h"

namespace orv::ui {

class MainWindow;
class SplashWindow;

class Program {
public:
  explicit Program(std::string appDir);
  ~Program();

  // Runs the start-up; false when the program ends there (the message was shown).
  bool Start();
  // Shows the first window the start-up chose.
  void ShowFirstWindow();
  // What the main window's unload does: the settings are written back.
  void SaveSettings();

  AppState& State() { return state_; }
  NavDatabase& Database() { return db_; }
  MainWindow* Main() { return main_.get(); }

private:
  void OnMenu(const std::string& name);

  AppState state_;
  NavDatabase db_;
  SystemClock clock_;
  QtUi ui_;
  std::unique_ptr<SplashWindow> splash_;
  std::unique_ptr<MainWindow> main_;
  std::string firstWindow_;
};

// The application folder from the command line (--appdir DIR), else the
// folder of the executable.
std::string AppDirFromArgs(int argc, char** argv);

}  // namespace orv::ui
