// The map side of OVRMap: the surface, the layer toggle panel, the status
// line and the flight plan panel, wired to the headless window rules. The
// window's menu clicks come here first; what is not the map's goes back to
// the program.
#pragma once

#include <QObject>
#include <array>
#include <memory>
#include <string>

#include "core/AppState.h"
#include "map/MainWindowLogic.h"
#include "map/MapGeodesy.h"
#include "mapqt/QtFontSet.h"
#include "planning/WPTable.h"

class QAction;
class QDockWidget;
class QLabel;
class QTableView;
class QToolBar;

namespace orv::ui {

class MainWindow;
class MapWidget;
class PlanTableModel;

class MapWindow : public QObject, public MainWindowHost {
  Q_OBJECT
public:
  MapWindow(MainWindow& window, AppState& state, NavDatabase& db, FlightPlan& plan, ViewState& view, Ui& ui);
  ~MapWindow() override;

  // A menu click; false when the entry is not the map's.
  bool HandleMenu(const std::string& name);
  // The window's unload: the toggle states go back to the settings.
  void Unload();

  MapWidget* Map() { return map_; }
  QToolBar* ToggleBar() { return toggles_; }
  QLabel* Status(int field) { return status_[static_cast<std::size_t>(field)]; }
  QTableView* PlanTable() { return table_; }
  MapLayers& Layers() { return layers_; }
  WindowToggles& Toggles() { return window_; }
  PlanPanel& Panel() { return panel_; }

  // Sets the menu's check marks and the buttons from the switches.
  void SyncChecks();
  // Reduced mode on or off (btnReducedWindow).
  void SetReduced(bool on);

  // MainWindowHost
  void FocusMap() override;
  void DrawMap() override;
  void SetMapStatus(int field, std::string_view text) override;
  void RepositionMeasure() override {}
  void ClearSelection() override;
  void SetOnTop(bool on) override;
  void ShowPlan(bool on) override;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void BuildToggleBar();
  void BuildStatusLine();
  void BuildPlanPanel();
  void CreatePlan(char kind);
  void RefreshPlanTable();
  void OnWindowResized(bool stateChange);

  MainWindow& w_;
  AppState& state_;
  NavDatabase& db_;
  FlightPlan& plan_;
  ViewState& view_;
  Ui& ui_;
  MapLayers layers_;
  WindowToggles window_;
  MainWindowState logic_{layers_, view_, window_};
  MapGeodesy geo_;
  QtFontSet fonts_;
  PlanPanel panel_;
  MapWidget* map_ = nullptr;
  QToolBar* toggles_ = nullptr;
  std::array<QLabel*, 7> status_{};
  QDockWidget* planDock_ = nullptr;
  QTableView* table_ = nullptr;
  PlanTableModel* model_ = nullptr;
  QAction* reducedButton_ = nullptr;
  bool resizing_ = false;
  bool restoring_ = false;  // a maximise of the reduced window is being undone
};

}  // namespace orv::ui
