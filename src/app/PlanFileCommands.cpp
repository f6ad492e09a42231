// The plan file menus of the main window.
#include <array>
#include <filesystem>

#include "app/MainWindowController.h"
#include "core/FileIo.h"
#include "planning/NavLookupDb.h"
#include "planning/StoredProcedures.h"

namespace orv {

namespace {

constexpr std::array<std::string_view, 11> kPlanFileMenus = {
    "MenuOpenFP",    "MenuSaveFP",      "MenuSaveFPAs",    "menuDeleteSid",   "menuDeleteStar", "MenuPrintPlan",
    "menuPrintMap",  "MenuOpenSid",     "MenuOpenStar",    "menuOpenSegment", "menuSaveSegment",
};

// Whether the stored procedure files hold procedures for an airport, read
// when asked: the files are small and may change while the program runs.
ProcedureProbe ProbeOf(const AppFolder& folder) {
  auto has = [folder](std::string_view file, std::string_view icao) {
    const std::optional<Bytes> bytes = ReadWholeFile(folder.Resolve(file));
    return bytes && HasProcedures(*bytes, icao);
  };
  return ProcedureProbe{[has](std::string_view icao) { return has(kSidFile, icao); },
                        [has](std::string_view icao) { return has(kStarFile, icao); }};
}

}  // namespace

bool MainWindowController::IsPlanFileMenu(std::string_view name) {
  for (std::string_view m : kPlanFileMenus)
    if (m == name) return true;
  return false;
}

std::string MainWindowController::PlanFolder() const {
  const std::string& configured = s_.Core.IsFsx ? s_.Core.Config.FpPath10 : s_.Core.Config.FpPath09;
  if (!configured.empty()) return configured;
  return s_.Core.Folder.Resolve("\\FSplan").string();
}

bool MainWindowController::PlanFileMenu(std::string_view name) {
  if (!IsPlanFileMenu(name)) return false;
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
  if (name == "MenuOpenFP") {
    if (!MenuOpenFP(ui_, editor, ProbeOf(s_.Core.Folder), s_.Files, PlanFolder())) return true;
    view_.SetMenuEnabled("MenuOpenSid", s_.Files.Menu.OpenSidEnabled);
    view_.SetMenuEnabled("MenuOpenStar", s_.Files.Menu.OpenStarEnabled);
  } else if (name == "MenuSaveFP") {
    if (!MenuSaveFP(ui_, editor, s_.Files)) PlanFileMenu("MenuSaveFPAs");
    return true;
  } else if (name == "MenuSaveFPAs") {
    if (s_.Plan.LastRow < 1) {
      ui_.Beep();  // nothing to save
      return true;
    }
    s_.SaveRouteForm.Load(s_.Plan, PlanFolder(), s_.Core.FsPath, s_.Core.Folder.AppPath());
    view_.OpenWindow("SaveRoute");
    return true;
  } else if (name == "menuDeleteSid") {
    menuDeleteSid(editor);
  } else if (name == "menuDeleteStar") {
    menuDeleteStar(editor);
  } else {
    // The windows of these entries: printing, the stored procedures, the
    // route segments.
    view_.OpenWindow(name == "MenuPrintPlan" ? "PrintFP" : name == "menuPrintMap" ? "PrintMap" : name);
    return true;
  }
  view_.RefreshPlanTable();
  if (!s_.Window.MenuShowPlan && s_.Plan.LastRow >= 1) Menu("MenuShowPlan");
  view_.DrawMap();
  return true;
}

void MainWindowController::ReopenLastPlan() {
  const std::string path = s_.Core.Config.LastPlan;
  std::error_code ec;
  if (path.empty() || !std::filesystem::is_regular_file(path, ec)) return;
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
  if (!OpenPlanPath(ui_, editor, ProbeOf(s_.Core.Folder), s_.Files, path)) return;
  view_.SetMenuEnabled("MenuOpenSid", s_.Files.Menu.OpenSidEnabled);
  view_.SetMenuEnabled("MenuOpenStar", s_.Files.Menu.OpenStarEnabled);
  view_.RefreshPlanTable();
  if (!s_.Window.MenuShowPlan && s_.Plan.LastRow >= 1) Menu("MenuShowPlan");
  view_.DrawMap();
}

bool MainWindowController::SaveRouteClick() {
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
  const ExportFolders folders{s_.Core.Folder.AppPath(), s_.Core.Config.SquawkBoxPath, s_.Core.Config.IvaoPath,
                              s_.Core.FsPath};
  return !s_.SaveRouteForm.Save(ui_, editor, s_.Files, folders).empty();
}

}  // namespace orv
