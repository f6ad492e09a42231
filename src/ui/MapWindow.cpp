#include "ui/MapWindow.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QProgressBar>
#include <QUrl>
#include <QAction>
#include <QColor>
#include <QDockWidget>
#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableView>
#include <QToolBar>
#include <QWindowStateChangeEvent>

#include "app/PlanEditing.h"
#include "map/MainMenu.h"
#include "mapqt/MapPicture.h"
#include "map/MapLayer.h"
#include "simlink/LiveDraw.h"
#include "simlink/Tcas.h"
#include "ui/MainWindow.h"
#include "ui/MapWidget.h"
#include "ui/QtUi.h"
#include "ui/RecordingWindows.h"

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
    if (!index.isValid() || index.row() >= table_.Rows()) return {};
    if (role == Qt::ForegroundRole) {
      const Colour c = table_.Cell(index.row(), index.column()).ForeColor;
      if (c == kGridTextColour) return {};
      return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
    }
    if (role != Qt::DisplayRole) return {};
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

MapWindow::MapWindow(MainWindow& window, ProgramState& state, Ui& ui, Timers& timers, const Clock& clock)
    : QObject(&window), w_(window), s_(state), controller_(state, *this, ui, timers, clock) {
  // The surface, the panels and the menus first; the controller's load then
  // sets the toggles from the settings, the view and the zoom label, and
  // MapReady at the very end.
  map_ = new MapWidget(
      MapSources{s_.View, s_.Core.Config, s_.Layers, s_.Db, s_.Plan, &s_.Overlays, &s_.Registry}, fonts_, &w_);
  w_.setCentralWidget(map_);
  BuildToggleBar();
  BuildStatusLine();
  BuildPlanPanel();
  BuildButtonBar();
  replay_ = new ReplayView(w_, *map_, controller_, fonts_);
  for (const MenuEntry& e : MainMenuEntries())
    if (QAction* a = w_.Action(std::string(e.name))) a->setEnabled(MainWindowController::MenuAvailable(e.name));
  map_->onKey = [this](int code) { controller_.Key(code); };
  map_->onWheel = [this](int delta) { controller_.Wheel(delta); };
  map_->onMouseDown = [this](int button, bool shift, bool control, double x, double y) {
    controller_.MapPress(button, shift, control, x, y);
  };
  map_->onMouseMove = [this](double x, double y) { controller_.MapMove(x, y); };
  map_->onMouseUp = [this](int button, bool shift, double x, double y) { controller_.MapRelease(button, shift, x, y); };
  map_->onResized = [this] {
    SetMapStatus(kStatusRange, RangeText(CurrentLabel(s_.View)));
    if (tcasLabel_->isVisible()) ShowTcas(true, tcasLabel_->text().toStdString());
  };
  tcasLabel_ = new QLabel(ToQt(kTcasLabelCaption), map_);
  tcasLabel_->setObjectName("lblTCAS");
  tcasLabel_->setStyleSheet("QLabel { color: white; background: #d00000; font: bold 20pt; padding: 6px 14px; }");
  tcasLabel_->hide();
  w_.installEventFilter(this);
}

MapWindow::~MapWindow() = default;

void MapWindow::BuildToggleBar() {
  // The panel lies over the map's left edge and pops up when the cursor
  // reaches it, so the map keeps its size whether it shows or not.
  toggles_ = new QToolBar("Layers", map_);
  toggles_->setObjectName("pnlToggleButtons");
  toggles_->setOrientation(Qt::Vertical);
  toggles_->setMovable(false);
  toggles_->move(0, 0);
  for (const ToggleButton& b : kToggleButtons) {
    QAction* a = toggles_->addAction(QString::fromLatin1(b.Text));
    a->setObjectName(QString::fromLatin1(b.Name));
    a->setToolTip(QString::fromLatin1(b.Tip));
    a->setCheckable(true);
    const std::string name = b.Name;
    // triggered carries the button's new value: that value is the truth.
    connect(a, &QAction::triggered, this, [this, name](bool value) { controller_.Button(name, value); });
  }
  toggles_->addSeparator();
  reducedButton_ = toggles_->addAction("RED");
  reducedButton_->setObjectName("btnReducedWindow");
  reducedButton_->setToolTip("Reduced window (Ctrl+R)");
  reducedButton_->setShortcut(QKeySequence("Ctrl+R"));
  reducedButton_->setShortcutContext(Qt::ApplicationShortcut);
  reducedButton_->setCheckable(true);
  connect(reducedButton_, &QAction::triggered, this, [this](bool on) { controller_.SetReduced(on); });
  measureButton_ = toggles_->addAction("MEA");
  measureButton_->setObjectName("rbnMeasure");
  measureButton_->setToolTip("Measure");
  measureButton_->setCheckable(true);
  connect(measureButton_, &QAction::triggered, this, [this](bool on) { controller_.Button("rbnMeasure", on); });
  toggles_->adjustSize();
}

void MapWindow::BuildButtonBar() {
  buttonBar_ = new QToolBar("Buttons", &w_);
  buttonBar_->setObjectName("pnlButton");
  buttonBar_->setMovable(false);
  w_.addToolBar(Qt::BottomToolBarArea, buttonBar_);
  for (const BarButtonEntry& b : BottomBarButtons()) {
    QAction* a = buttonBar_->addAction(ToQt(b.caption));
    a->setObjectName(ToQt(b.name));
    const std::string name(b.name);
    connect(a, &QAction::triggered, this, [this, name] {
      controller_.BarButton(name);
      SyncBarButtons();
    });
  }
  SyncBarButtons();
}

void MapWindow::ShowReplay(bool on) { replay_->Show(on); }

void MapWindow::ShowReplayRow(const ReplayLabels& labels) { replay_->ShowRow(labels); }

void MapWindow::DrawOnMap(const std::function<void(DrawTarget&)>& draw) { map_->DrawOver(draw); }

void MapWindow::SetMapStatusColour(int field, Colour colour) {
  if (field < 0 || field >= 7) return;
  status_[static_cast<std::size_t>(field)]->setStyleSheet(
      QString("color: rgb(%1, %2, %3)").arg(RedOf(colour)).arg(GreenOf(colour)).arg(BlueOf(colour)));
}

void MapWindow::ShowTogglePanel(bool visible) {
  toggles_->setVisible(visible);
  if (visible) toggles_->raise();
}

void MapWindow::SetMeasureLine(bool visible, double x1, double y1, double x2, double y2) {
  map_->SetMeasureLine(visible, x1, y1, x2, y2);
}

void MapWindow::SetMeasureLabel(bool visible, double x, double y, std::string_view text) {
  map_->SetMeasureLabel(visible, x, y, ToQt(text), s_.Core.Config.Measure);
}

void MapWindow::SetMeasureButton(bool on) { measureButton_->setChecked(on); }

void MapWindow::FocusSurface() { map_->setFocus(); }

void MapWindow::QtUiThread::Post(std::function<void()> task) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

void MapWindow::ShowDownload(bool visible) {
  downloadLabel_->setVisible(visible);
  showBar_->setVisible(visible);
}

void MapWindow::SetDownloadLabel(std::string_view text) { downloadLabel_->setText(ToQt(text)); }

void MapWindow::SetBar(int percent) { showBar_->setValue(percent); }

void MapWindow::OpenUrl(const std::string& url) { QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); }

void MapWindow::SetMenuChecked(std::string_view name, bool on) {
  if (QAction* a = w_.Action(std::string(name))) {
    a->setCheckable(true);
    a->setChecked(on);
  }
}

void MapWindow::SetMenuCaption(std::string_view name, std::string_view caption) {
  if (QAction* a = w_.Action(std::string(name))) a->setText(ToQt(caption));
}

void MapWindow::SetMenuEnabled(std::string_view name, bool on) {
  if (QAction* a = w_.Action(std::string(name))) a->setEnabled(on);
  // The bottom bar's buttons go by the same names ("cmdTracing").
  for (QAction* a : buttonBar_->actions())
    if (a->objectName() == ToQt(name)) {
      if (on)
        barDisabled_.erase(std::string(name));
      else
        barDisabled_.insert(std::string(name));
      a->setEnabled(on && controller_.BarButtonEnabled(std::string(name)));
    }
}

void MapWindow::BuildStatusLine() {
  QStatusBar* bar = w_.statusBar();
  downloadLabel_ = new QLabel("Downloading file from Server: ", bar);
  downloadLabel_->setObjectName("lblDownLoad");
  showBar_ = new QProgressBar(bar);
  showBar_->setObjectName("ShowBar");
  showBar_->setRange(0, 100);
  showBar_->setMaximumWidth(160);
  bar->addPermanentWidget(downloadLabel_);
  bar->addPermanentWidget(showBar_);
  ShowDownload(false);
  for (int i = 0; i < 7; ++i) {
    auto* label = new QLabel(bar);
    label->setObjectName(QString("MapStatus%1").arg(i));
    label->setMinimumWidth(i == kStatusPosition || i == kStatusCursor ? 220 : 60);
    if (i == kStatusPosition || i == kStatusCursor) label->installEventFilter(this);
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
  model_ = new PlanTableModel(s_.Panel.Table, table_);
  table_->setModel(model_);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->horizontalHeader()->setVisible(false);
  table_->verticalHeader()->setVisible(false);
  table_->installEventFilter(this);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { TableSelectionChanged(); });

  // Below the table: txtManWP with its caption, the pick list lstWP and the
  // departure list lstDep.
  auto* panel = new QWidget(planDock_);
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table_, 1);
  editRow_ = new QWidget(panel);
  auto* row = new QHBoxLayout(editRow_);
  row->setContentsMargins(2, 0, 2, 2);
  manCaption_ = new QLabel("Waypoint:", editRow_);
  txtManWP_ = new QLineEdit(editRow_);
  txtManWP_->setObjectName("txtManWP");
  txtManWP_->setPlaceholderText("identifier, Enter");
  txtManWP_->setMaximumWidth(160);
  lstWP_ = new QListWidget(editRow_);
  lstWP_->setObjectName("lstWP");
  lstWP_->setMaximumHeight(90);
  lstDep_ = new QListWidget(editRow_);
  lstDep_->setObjectName("lstDep");
  lstDep_->setMaximumHeight(90);
  auto* manual = new QVBoxLayout();
  manual->addWidget(manCaption_);
  manual->addWidget(txtManWP_);
  manual->addStretch(1);
  row->addLayout(manual);
  row->addWidget(lstWP_, 2);
  row->addWidget(lstDep_, 1);
  layout->addWidget(editRow_);
  connect(txtManWP_, &QLineEdit::returnPressed, this, [this] {
    const std::string typed = FromQt(txtManWP_->text());
    if (controller_.ManualWaypointEnter(typed)) txtManWP_->clear();
  });
  connect(lstWP_, &QListWidget::currentRowChanged, this, [this](int r) {
    if (!filling_) s_.Edit.PickIndex = r;
  });
  // A click or Enter on a line takes it.
  connect(lstWP_, &QListWidget::itemActivated, this, [this] { controller_.PickWaypoint(lstWP_->currentRow()); });
  connect(lstWP_, &QListWidget::itemClicked, this, [this] { controller_.PickWaypoint(lstWP_->currentRow()); });
  connect(lstDep_, &QListWidget::currentRowChanged, this, [this](int r) {
    if (!filling_ && r >= 0) controller_.ChooseDeparture(r);
  });
  planDock_->setWidget(panel);
  w_.addDockWidget(Qt::TopDockWidgetArea, planDock_);
  planDock_->setVisible(s_.Window.MenuShowPlan);
  s_.Panel.DrawMap = [this] { DrawMap(); };
}

void MapWindow::SyncBarButtons() {
  if (!buttonBar_) return;
  for (QAction* a : buttonBar_->actions()) {
    const std::string name = a->objectName().toStdString();
    a->setEnabled(!barDisabled_.count(name) && controller_.BarButtonEnabled(name));
  }
}

void MapWindow::TableSelectionChanged() {
  // Grid line 0 is the heading: plan row r is line r + 1.
  const QModelIndexList rows = table_->selectionModel()->selectedRows();
  const int current = table_->currentIndex().isValid() ? table_->currentIndex().row() - 1 : -1;
  int rangeStart = -1;
  for (const QModelIndex& i : rows)
    if (i.row() - 1 != current && (rangeStart < 0 || std::abs(i.row() - 1 - current) > std::abs(rangeStart - current)))
      rangeStart = i.row() - 1;
  controller_.SelectRow(rows.isEmpty() ? -1 : current, rangeStart);
}

void MapWindow::ShowPlanEdit() {
  filling_ = true;
  lstWP_->clear();
  for (const std::string& line : s_.Panel.WpList) lstWP_->addItem(ToQt(line));
  if (!s_.Panel.WpList.empty()) lstWP_->setCurrentRow(std::clamp(s_.Edit.PickIndex, 0, lstWP_->count() - 1));
  s_.Edit.PickIndex = std::max(lstWP_->currentRow(), 0);
  lstDep_->clear();
  for (const ListLine& line : s_.Panel.DepList) lstDep_->addItem(ToQt(line.Text));
  if (s_.Panel.DepListIndex >= 0) lstDep_->setCurrentRow(s_.Panel.DepListIndex);
  manCaption_->setText(s_.Edit.ManualMode ? ToQt(s_.Edit.ManualCaption) : QString("Waypoint:"));
  if (s_.Edit.ManualMode) txtManWP_->setFocus();
  if (s_.Edit.PickListShown) lstWP_->setFocus();
  // The live columns of the extended table take the room of the lists.
  editRow_->setVisible(!s_.Panel.Table.Extended());
  filling_ = false;
}

void MapWindow::MarkPoint(double x, double y) {
  map_->DrawOver([&](DrawTarget& t) { t.Circle(x, y, 50, s_.Core.Config.Hilite); });
  if (onUserFormFilled) onUserFormFilled();
}

void MapWindow::SyncChecks() {
  MainWindowState logic = s_.Toggles();
  for (const MenuEntry& e : MainMenuEntries()) {
    if (e.kind != MenuKind::Toggle || !IsWindowToggle(e.name)) continue;
    if (QAction* a = w_.Action(std::string(e.name))) a->setChecked(MenuChecked(logic, e.name));
  }
  for (QAction* a : toggles_->actions()) {
    const std::string name = a->objectName().toStdString();
    if (const bool* value = ButtonSwitch(logic, name)) a->setChecked(*value);
  }
  toggles_->setVisible(s_.Window.ToggleBar);
  SyncBarButtons();
  if (QAction* a = w_.Action("MenuLocal")) {
    a->setCheckable(true);
    a->setChecked(s_.Sim.Connected());
  }
}

void MapWindow::OpenWindow(std::string_view name) {
  if (onOpenWindow) onOpenWindow(name);
}

void MapWindow::CloseProgram() { w_.close(); }

void MapWindow::RefreshPlanTable() {
  model_->Reset();
  // The table keeps its own column widths (in twips): the extended columns
  // stay closed until Extended Table or the takeoff opens them.
  for (int c = 0; c < WPTable::kColumns; ++c)
    table_->setColumnWidth(c, std::max(1, s_.Panel.Table.ColWidth(c) / kTwips));
  if (s_.Plan.CurrentRow >= 0 && s_.Plan.CurrentRow <= s_.Plan.LastRow) {
    // The selection follows the row the next insertion goes behind.
    const QSignalBlocker block(table_->selectionModel());
    table_->selectRow(s_.Plan.CurrentRow + 1);
  }
  ShowPlanEdit();
  SyncBarButtons();
}

void MapWindow::ShowReduced(bool on) {
  for (std::string_view top : ReducedModeHiddenMenus())
    if (QAction* a = w_.Action(std::string(top))) a->setVisible(!on);
  // The window gives up (or takes back) the height of the bars and 400
  // twips, so that the map keeps its size.
  const int bars = buttonBar_->height() + w_.statusBar()->height() + kReducedShrink / kTwips;
  w_.statusBar()->setVisible(!on);
  buttonBar_->setVisible(!on);
  if (!w_.isMaximized() && w_.isVisible()) w_.resize(w_.width(), w_.height() + (on ? -bars : bars));
  reducedButton_->setChecked(on);
  if (on && w_.isMaximized()) OnWindowResized(true);
}

void MapWindow::FocusMap() { map_->setFocus(); }

void MapWindow::RestoreMapPicture() { map_->RestoreBackground(); }

void MapWindow::DrawAircraft(float lat, float lon, float trueHeading) {
  map_->DrawOver([&](DrawTarget& t) { DrawLiveAircraft(t, s_.View, lat, lon, trueHeading, LiveAircraftColour(s_)); });
}

void MapWindow::DrawWind(int16_t windDir, int16_t windSpeed) {
  map_->DrawOver([&](DrawTarget& t) { DrawWindArrow(t, windDir, windSpeed, s_.Core.Config.Wind); });
}

void MapWindow::DrawTraffic(const std::vector<TrafficSymbol>& symbols) {
  map_->DrawOver([&](DrawTarget& t) {
    orv::DrawTraffic(t, s_.View, symbols, kMapLabelFontName, LabelFontSize(s_.Core.Config));
  });
}

void MapWindow::ShowTcas(bool visible, std::string_view caption) {
  if (!visible) {
    tcasLabel_->hide();
    return;
  }
  tcasLabel_->setText(ToQt(caption));
  tcasLabel_->adjustSize();
  tcasLabel_->move((map_->width() - tcasLabel_->width()) / 2, (map_->height() - tcasLabel_->height()) / 2);
  tcasLabel_->show();
  tcasLabel_->raise();
}

void MapWindow::ShowGpsWindow(bool show) {
  if (QAction* a = w_.Action("MenuGPSWindow")) a->setChecked(show);
  if (onGpsWindow) onGpsWindow(show);
}

void MapWindow::GpsLine(int y, std::string_view text, Colour colour) {
  if (onGpsLine) onGpsLine(y, text, colour);
}

bool MapWindow::Minimised() const { return w_.isMinimized(); }

double MapWindow::PlanPanelWidth() const { return planDock_->isVisible() ? planDock_->width() * kTwips : 0.0; }

double MapWindow::MapWidth() const { return map_->width() * kTwips; }

double MapWindow::MapHeight() const { return map_->height() * kTwips; }

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
  s_.Plan.CurrentRow = -1;
  const QSignalBlocker block(table_->selectionModel());
  table_->clearSelection();
  ShowPlanEdit();
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
  if (event->type() == QEvent::MouseButtonPress)
    for (int field : {kStatusPosition, kStatusCursor})
      if (watched == status_[static_cast<std::size_t>(field)]) controller_.StatusClick(field);
  if (watched == table_ && event->type() == QEvent::KeyPress) {
    // Delete, Enter and Esc on the table are the window's keys.
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Delete) return controller_.Key(46);
    if (key == Qt::Key_Escape) return controller_.Key(27);
  }
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
  const ResizeOutcome r = controller_.Resize(g, 0, statusHeight);
  if (!r.Ignore) {
    if (r.Restore) {
      restoring_ = true;
      w_.showNormal();
    }
    if (!r.Restore && g.Show == WindowShow::Normal && (r.Width != g.Width || r.Height != g.Height))
      w_.resize((r.Width + kTwips - 1) / kTwips, (r.Height + kTwips - 1) / kTwips);
    // The window can't be dragged below the limits either.
    const bool reduced = s_.Window.ReducedWindow;
    w_.setMinimumSize(reduced ? kReducedMinWidth / kTwips : kNormalMinWidth / kTwips,
                      reduced ? kReducedMinHeight / kTwips : kNormalMinHeight / kTwips);
  }
  resizing_ = false;
}

}  // namespace orv::ui
