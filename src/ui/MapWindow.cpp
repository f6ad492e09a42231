#include "ui/MapWindow.h"

#include <QAbstractTableModel>
#include <QAction>
#include <QDockWidget>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>
#include <QWindowStateChangeEvent>

#include "map/MainMenu.h"
#include "mapqt/MapPicture.h"
#include "planning/Aircraft.h"
#include "planning/FlightPlan.h"
#include "planning/NavLookupDb.h"
#include "planning/RouteCreation.h"
#include "ui/MainWindow.h"
#include "ui/MapWidget.h"
#include "ui/QtUi.h"

namespace orv::ui {

// The plan table as a read-only view of the headless WPTable.
class PlanTableModel : public QAbstractTableModel {
public:
  explicit PlanTableModel(const WPTable& table, QObject* parent) : QAbstractTableModel(parent), table_(table) {}
  int rowCount(const QModelIndex& parent = QModelIndex()) const override {
    return parent.isValid() ? 0 : table_.Rows();
  }
  int columnCount(const QModelIndex& parent = QModelIndex()) const override {
    return parent.isValid() ? 0 : WPTable::kColumns;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= table_.Rows()) return {};
    return ToQt(table_.Text(index.row(), index.column()));
  }
  void Reset() {
    beginResetModel();
    endResetModel();
  }

private:
  const WPTable& table_;
};

namespace {

struct ToggleButton {
  const char* Name;
  const char* Text;
  const char* Tip;
};

// The toggle panel, top to bottom.
constexpr ToggleButton kToggleButtons[] = {
    {"btnAP", "AP", "Airports"},         {"btnVor", "VOR", "VOR"},
    {"btnNdb", "NDB", "NDB"},            {"btnIls", "ILS", "ILS"},
    {"btnInter", "INT", "Intersections"}, {"btnFix", "FIX", "GPS fixes"},
    {"btnUser", "USR", "User waypoints"}, {"btnJet", "JET", "Jet airways"},
    {"btnVictor", "VIC", "Victor airways"}, {"btnCtrz", "CTR", "Control zones"},
    {"btnAir1", "CTA", "Control areas"}, {"btnAir2", "FIR", "Flight information regions"},
    {"btnMsa", "MSA", "Minimum safe altitude"}, {"btnMap", "MAP", "Coastlines"},
    {"btnAI", "AI", "AI traffic"},       {"btnFreq", "FRQ", "Frequencies in the labels"},
    {"btnIcao", "ID", "Identifiers in the labels"}, {"btnName", "NAM", "Names in the labels"},
};

constexpr int kTwips = static_cast<int>(kTwipsPerPixel);

}  // namespace

MapWindow::MapWindow(MainWindow& window, AppState& state, NavDatabase& db, FlightPlan& plan, ViewState& view,
                     Ui& ui)
    : QObject(&window), w_(window), state_(state), db_(db), plan_(plan), view_(view), ui_(ui), geo_(db.MagVar) {
  // The load, in its order: the surface, sizes, the menus and buttons from
  // the settings, the zoom label, and MapReady at the very end.
  map_ = new MapWidget(MapSources{view_, state_.Config, layers_, db_, plan_}, fonts_, &w_);
  w_.setCentralWidget(map_);
  LoadWindowToggles(state_.Config, logic_);
  BuildToggleBar();
  BuildStatusLine();
  BuildPlanPanel();
  map_->onKey = [this](int code) { MapKeyDown(view_, code, *this, ui_); };
  map_->onWheel = [this](int delta) { MapWheel(view_, state_.Config.MZoom != 0, delta, *this, ui_); };
  map_->onBand = [this](double x1, double y1, double x2, double y2) {
    // A drag (not a plain click) is a manual zoom: autozoom goes off.
    if (x1 != x2 || y1 != y2) {
      view_.Autozoom = false;
      SyncChecks();
    }
    ReleaseBand(view_, x1, y1, x2, y2, *this, geo_);
  };
  map_->onResized = [this] {
    SetMapStatus(kStatusRange, RangeText(CurrentLabel(view_)));
  };
  w_.installEventFilter(this);
  SyncChecks();
  SetMapStatus(kStatusRange, RangeText(CurrentLabel(view_)));
  view_.MapReady = true;
}

MapWindow::~MapWindow() = default;

void MapWindow::BuildToggleBar() {
  toggles_ = new QToolBar("Layers", &w_);
  toggles_->setObjectName("pnlToggleButtons");
  toggles_->setOrientation(Qt::Vertical);
  toggles_->setMovable(false);
  w_.addToolBar(Qt::LeftToolBarArea, toggles_);
  for (const ToggleButton& b : kToggleButtons) {
    QAction* a = toggles_->addAction(QString::fromLatin1(b.Text));
    a->setObjectName(QString::fromLatin1(b.Name));
    a->setToolTip(QString::fromLatin1(b.Tip));
    a->setCheckable(true);
    const std::string name = b.Name;
    // triggered carries the button's new value: that value is the truth.
    connect(a, &QAction::triggered, this, [this, name](bool value) {
      ButtonClicked(logic_, name, value, *this);
      SyncChecks();
    });
  }
  toggles_->addSeparator();
  reducedButton_ = toggles_->addAction("RED");
  reducedButton_->setObjectName("btnReducedWindow");
  reducedButton_->setToolTip("Reduced window");
  reducedButton_->setCheckable(true);
  connect(reducedButton_, &QAction::triggered, this, [this](bool on) { SetReduced(on); });
  toggles_->setVisible(window_.ToggleBar);
}

void MapWindow::BuildStatusLine() {
  QStatusBar* bar = w_.statusBar();
  for (int i = 0; i < 7; ++i) {
    auto* label = new QLabel(bar);
    label->setObjectName(QString("MapStatus%1").arg(i));
    label->setMinimumWidth(i == kStatusPosition ? 220 : 60);
    bar->addWidget(label, i == 0 || i == 5 ? 1 : 0);
    status_[static_cast<std::size_t>(i)] = label;
  }
}

void MapWindow::BuildPlanPanel() {
  planDock_ = new QDockWidget("Flight Plan", &w_);
  planDock_->setObjectName("pnlFlightplan");
  planDock_->setFeatures(QDockWidget::NoDockWidgetFeatures);
  table_ = new QTableView(planDock_);
  table_->setObjectName("WPTable");
  model_ = new PlanTableModel(panel_.Table, table_);
  table_->setModel(model_);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->horizontalHeader()->setVisible(false);
  table_->verticalHeader()->setVisible(false);
  planDock_->setWidget(table_);
  w_.addDockWidget(Qt::TopDockWidgetArea, planDock_);
  planDock_->setVisible(window_.MenuShowPlan);
  panel_.DrawMap = [this] { DrawMap(); };
}

void MapWindow::SyncChecks() {
  for (const MenuEntry& e : MainMenuEntries()) {
    if (e.kind != MenuKind::Toggle || !IsWindowToggle(e.name)) continue;
    if (QAction* a = w_.Action(std::string(e.name))) a->setChecked(MenuChecked(logic_, e.name));
  }
  for (QAction* a : toggles_->actions()) {
    const std::string name = a->objectName().toStdString();
    if (const bool* value = ButtonSwitch(logic_, name)) a->setChecked(*value);
  }
}

bool MapWindow::HandleMenu(const std::string& name) {
  if (MenuToggleClicked(logic_, name, *this)) {
    SyncChecks();
    return true;
  }
  if (ZoomMenuClicked(view_, name, *this, ui_)) return true;
  if (name == "MenuCreateHiAlt") CreatePlan('J');
  else if (name == "MenuCreateLoAlt") CreatePlan('V');
  else if (name == "MenuCreateNavaid") CreatePlan('N');
  else return false;
  return true;
}

void MapWindow::CreatePlan(char kind) {
  if (plan_.DepartureAirport < 0 || plan_.DestinationAirport < 0) {
    ui_.Beep();  // nothing to build between
    return;
  }
  AircraftDb aircraft;
  int16_t number = 0;
  LoadAircraft(state_.Folder.Resolve(kAircraftFile), number, aircraft, ui_);
  NavLookupDb nav(db_, state_.ParkingNames);
  PlanEditor editor(plan_, panel_, aircraft.Current, nav);
  if (plan_.LastRow == 0) {
    // A direct plan between the two airports chosen in the selection window.
    plan_.Waypoints[0] = AirportRow(db_.Airports, plan_.DepartureAirport);
    plan_.Waypoints[1] = AirportRow(db_.Airports, plan_.DestinationAirport);
    plan_.DepartLat = plan_.Waypoints[0].Lat;
    plan_.DepartLon = plan_.Waypoints[0].Lon;
    plan_.DestLat = plan_.Waypoints[1].Lat;
    plan_.DestLon = plan_.Waypoints[1].Lon;
    editor.SetDirectPlan(1);
  }
  const int row = editor.PrepareRouteCreation();
  if (row >= 0) {
    RouteSearch search;
    RouteBuilder builder(editor, aircraft.Current, db_.Navaids, search, ui_);
    if (kind == 'N') {
      NavaidPlanOptions options;
      options.Vor = layers_.btnVor;
      options.Ndb = layers_.btnNdb;
      options.Intersection = layers_.btnInter;
      options.SecLen = state_.Config.SecLen;
      options.SecWidth = state_.Config.SecWidth;
      options.GreatCircle = state_.Config.Gc;
      builder.CreateNavaidPlan(row, options);
    } else {
      builder.CreateAirwayPlan(kind, row);
    }
  }
  RefreshPlanTable();
  if (!window_.MenuShowPlan) HandleMenu("MenuShowPlan");
  DrawMap();
}

void MapWindow::RefreshPlanTable() {
  model_->Reset();
  table_->resizeColumnsToContents();
}

void MapWindow::Unload() {
  SaveWindowToggles(logic_, state_.Config);
  view_.MapReady = false;
}

void MapWindow::SetReduced(bool on) {
  window_.ReducedWindow = on;
  for (std::string_view top : ReducedModeHiddenMenus())
    if (QAction* a = w_.Action(std::string(top))) a->setVisible(!on);
  w_.statusBar()->setVisible(!on);
  if (on && w_.isMaximized()) OnWindowResized(true);
}

void MapWindow::FocusMap() { map_->setFocus(); }

void MapWindow::DrawMap() {
  map_->PrepareSurface();
  map_->Redraw();
  SetMapStatus(kStatusMagVar, map_->Renderer().MagVarStatus());
  SetMapStatus(kStatusPosition, map_->Renderer().PositionStatus());
}

void MapWindow::SetMapStatus(int field, std::string_view text) {
  if (field < 0 || field >= 7) return;
  status_[static_cast<std::size_t>(field)]->setText(ToQt(text));
}

void MapWindow::ClearSelection() {
  plan_.CurrentRow = -1;
  table_->clearSelection();
}

void MapWindow::SetOnTop(bool on) {
  const bool visible = w_.isVisible();
  w_.setWindowFlag(Qt::WindowStaysOnTopHint, on);
  if (visible) w_.show();  // changing a window flag hides the window
}

void MapWindow::ShowPlan(bool on) {
  planDock_->setVisible(on);
  if (on) RefreshPlanTable();
}

bool MapWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &w_ && (event->type() == QEvent::Resize || event->type() == QEvent::WindowStateChange))
    OnWindowResized(event->type() == QEvent::WindowStateChange);
  return QObject::eventFilter(watched, event);
}

void MapWindow::OnWindowResized(bool stateChange) {
  if (resizing_) return;
  // A maximise arrives as a state change and as resizes; only the state
  // change answers it, so that the reduced window's message shows once.
  if (!stateChange && w_.isMaximized()) return;
  // The platform may report the same maximise twice before the restore
  // lands; it was answered already.
  if (w_.isMaximized() && restoring_) return;
  if (!w_.isMaximized()) restoring_ = false;
  resizing_ = true;
  WindowGeometry g;
  g.Show = w_.isMinimized() ? WindowShow::Minimised : w_.isMaximized() ? WindowShow::Maximised : WindowShow::Normal;
  g.Width = w_.width() * kTwips;
  g.Height = w_.height() * kTwips;
  const int statusHeight = w_.statusBar()->isVisible() ? w_.statusBar()->height() * kTwips : 0;
  const ResizeOutcome r = ResizeWindow(g, window_.ReducedWindow, window_.MenuShowPlan, 0, statusHeight, ui_);
  if (!r.Ignore) {
    if (r.Restore) {
      restoring_ = true;
      w_.showNormal();
    }
    if (r.HidePlan) HandleMenu("MenuShowPlan");
    if (!r.Restore && g.Show == WindowShow::Normal && (r.Width != g.Width || r.Height != g.Height))
      w_.resize((r.Width + kTwips - 1) / kTwips, (r.Height + kTwips - 1) / kTwips);
    // The window can't be dragged below the limits either.
    w_.setMinimumSize(window_.ReducedWindow ? kReducedMinWidth / kTwips : kNormalMinWidth / kTwips,
                      window_.ReducedWindow ? kReducedMinHeight / kTwips : kNormalMinHeight / kTwips);
  }
  resizing_ = false;
}

}  // namespace orv::ui
