// The map side of OVRMap: the surface, the layer toggle panel, the status
// line and the flight plan panel. Every click, key and resize goes to the
// headless MainWindowController; this class only builds the widgets and
// shows what the controller tells it.
#pragma once

#include <QObject>
#include <array>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "app/MainWindowController.h"
#include "app/ProgramState.h"
#include "mapqt/QtFontSet.h"

class QAction;
class QDockWidget;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QTableView;
class QToolBar;

namespace orv::ui {

class MainWindow;
class MapWidget;
class PlanTableModel;
class ReplayView;

class MapWindow : public QObject, public MainWindowView {
  Q_OBJECT
public:
  MapWindow(MainWindow& window, ProgramState& state, Ui& ui, Timers& timers, const Clock& clock);
  ~MapWindow() override;

  MainWindowController& Controller() { return controller_; }
  // Side windows the controller opens, by name ("frmFind", "OVRLL", ...).
  std::function<void(std::string_view)> onOpenWindow;
  // The GPS window shown or closed by the link, and its text lines.
  std::function<void(bool)> onGpsWindow;
  std::function<void(int, std::string_view, Colour)> onGpsLine;
  // The user waypoint window's form while the window is open, and the
  // window's refresh after a right click filled its position.
  std::function<FrmUser*()> userForm;
  std::function<void()> onUserFormFilled;
  // Whether the program has a window that no menu entry opens ("frmSID").
  std::function<bool(std::string_view)> hasWindow;

  MapWidget* Map() { return map_; }
  QToolBar* ToggleBar() { return toggles_; }
  QLabel* Status(int field) { return status_[static_cast<std::size_t>(field)]; }
  QTableView* PlanTable() { return table_; }
  QListWidget* PickList() { return lstWP_; }
  QLineEdit* ManualField() { return txtManWP_; }
  QListWidget* DepartureList() { return lstDep_; }
  MapLayers& Layers() { return s_.Layers; }
  WindowToggles& Toggles() { return s_.Window; }
  PlanPanel& Panel() { return s_.Panel; }

  // MainWindowView
  void FocusMap() override;
  void DrawMap() override;
  void SetMapStatus(int field, std::string_view text) override;
  void RepositionMeasure() override { controller_.Mouse().RepositionMeasure(); }
  void ClearSelection() override;
  void SetOnTop(bool on) override;
  void ShowPlan(bool on) override;
  void SyncChecks() override;
  void OpenWindow(std::string_view name) override;
  void CloseProgram() override;
  void RefreshPlanTable() override;
  void ShowReduced(bool on) override;
  void RestoreMapPicture() override;
  void DrawAircraft(float lat, float lon, float trueHeading) override;
  void DrawWind(int16_t windDir, int16_t windSpeed) override;
  void DrawTraffic(const std::vector<TrafficSymbol>& symbols) override;
  void ShowTcas(bool visible, std::string_view caption) override;
  QLabel* TcasLabel() { return tcasLabel_; }
  void ShowGpsWindow(bool show) override;
  void GpsLine(int y, std::string_view text, Colour colour) override;
  void ShowExtendedTable() override { RefreshPlanTable(); }
  bool Minimised() const override;
  double PlanPanelWidth() const override;
  double MapWidth() const override;
  double MapHeight() const override;
  void ShowDownload(bool visible) override;
  void SetDownloadLabel(std::string_view text) override;
  void SetBar(int percent) override;
  void OpenUrl(const std::string& url) override;
  UiThread* InterfaceThread() override { return &uiThread_; }
  void SetMenuChecked(std::string_view name, bool on) override;
  void SetMenuCaption(std::string_view name, std::string_view caption) override;
  void SetMenuEnabled(std::string_view name, bool on) override;
  void ShowReplay(bool on) override;
  void ShowReplayRow(const ReplayLabels& labels) override;

  // pnlButton, the bottom bar, and the stepping view of Flight Analysis.
  QToolBar* ButtonBar() { return buttonBar_; }
  ReplayView* Replay() { return replay_; }
  void DrawOnMap(const std::function<void(DrawTarget&)>& draw) override;
  void SetMapStatusColour(int field, Colour colour) override;
  void ShowTogglePanel(bool visible) override;
  void SetMeasureLine(bool visible, double x1, double y1, double x2, double y2) override;
  void SetMeasureLabel(bool visible, double x, double y, std::string_view text) override;
  void SetMeasureButton(bool on) override;
  void FocusSurface() override;
  void ShowPlanEdit() override;
  FrmUser* OpenUserForm() override { return userForm ? userForm() : nullptr; }
  void MarkPoint(double x, double y) override;
  bool HasWindow(std::string_view name) const override { return hasWindow && hasWindow(name); }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  void BuildToggleBar();
  void BuildStatusLine();
  void BuildPlanPanel();
  void BuildButtonBar();
  void SyncBarButtons();
  void TableSelectionChanged();
  void OnWindowResized(bool stateChange);

  // Finished transfers come back through the event loop.
  class QtUiThread : public UiThread {
  public:
    void Post(std::function<void()> task) override;
  };

  MainWindow& w_;
  ProgramState& s_;
  QtUiThread uiThread_;
  QLabel* downloadLabel_ = nullptr;  // lblDownLoad
  QProgressBar* showBar_ = nullptr;        // ShowBar
  MainWindowController controller_;
  QtFontSet fonts_;
  MapWidget* map_ = nullptr;
  QToolBar* toggles_ = nullptr;
  QToolBar* buttonBar_ = nullptr;
  ReplayView* replay_ = nullptr;
  std::array<QLabel*, 7> status_{};
  QLabel* tcasLabel_ = nullptr;  // lblTCAS, centred on the map
  QDockWidget* planDock_ = nullptr;
  QTableView* table_ = nullptr;
  PlanTableModel* model_ = nullptr;
  QAction* reducedButton_ = nullptr;
  QAction* measureButton_ = nullptr;  // rbnMeasure
  QListWidget* lstWP_ = nullptr;
  QLabel* manCaption_ = nullptr;      // txtManWP's caption
  QLineEdit* txtManWP_ = nullptr;
  QListWidget* lstDep_ = nullptr;
  QWidget* editRow_ = nullptr;        // the manual field and the two lists
  bool filling_ = false;
  std::set<std::string> barDisabled_;  // bar buttons the core switched off              // the lists are being filled, not clicked
  bool resizing_ = false;
  bool restoring_ = false;  // a maximise of the reduced window is being undone
};

}  // namespace orv::ui
