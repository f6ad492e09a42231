#include "ui/AirportWindows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "mapqt/QPainterTarget.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

QPushButton* NamedButton(QWidget* parent, const char* name, const char* caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  return b;
}

void Fill(QListWidget* list, const std::vector<std::string>& lines) {
  list->clear();
  for (const std::string& line : lines) list->addItem(ToQt(line));
}

}  // namespace

// ---------------------------------------------------------------- OVRLay

LayoutWindow::LayoutWindow(const ProgramState& s, QWidget* parent) : QWidget(parent, Qt::Tool), s_(s) {
  setObjectName("OVRLay");
  setWindowTitle("Runway Window");
  resize(640, 520);
}

void LayoutWindow::Open(int32_t airport) {
  const auto& airports = s_.Db.Airports.Airports;
  if (airport < 0 || static_cast<std::size_t>(airport) >= airports.size()) return;
  airport_ = airport;
  const AirportRec& ap = airports[static_cast<std::size_t>(airport)];
  setWindowTitle(ToQt("Runway Window - " + std::string(ap.Icao.Trimmed()) + " " + std::string(ap.Name.Trimmed())));
  Redraw();
  show();
  raise();
}

void LayoutWindow::Redraw() {
  if (airport_ < 0) return;
  QPainterTarget target(fonts_, std::max(1, width()), std::max(1, height()));
  DrawAirportLayout(target, s_.Db, s_.Db.Airports.Airports[static_cast<std::size_t>(airport_)], s_.Core);
  picture_ = target.Image().copy();
  update();
}

void LayoutWindow::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (!picture_.isNull()) p.drawImage(0, 0, picture_);
}

void LayoutWindow::resizeEvent(QResizeEvent*) { Redraw(); }

// ---------------------------------------------------------------- APPrev

AirportPreviewWindow::AirportPreviewWindow(const ProgramState& s, Ui& ui, QWidget* parent)
    : QWidget(parent, Qt::Tool), s_(s), ui_(ui) {
  setObjectName("APPrev");
  icao_ = new QLineEdit(this);
  icao_->setObjectName("txtIcao");
  icao_->setMaxLength(5);
  auto* show = NamedButton(this, "cmdShow", "&Show");
  auto* layout = NamedButton(this, "cmdLayout", "&Layout");
  auto* close = NamedButton(this, "cmdClose", "&Close");
  header_ = new QLabel(this);
  header_->setObjectName("lblAirport");
  auto* tabs = new QTabWidget(this);
  for (auto [name, caption] : {std::pair{"lstRunways", "Runways"}, std::pair{"lstFrequencies", "Frequencies"},
                               std::pair{"lstIls", "ILS"}, std::pair{"lstParking", "Parking"}}) {
    auto* list = new QListWidget(tabs);
    list->setObjectName(name);
    tabs->addTab(list, caption);
  }
  auto* top = new QHBoxLayout;
  top->addWidget(new QLabel("ICAO:", this));
  top->addWidget(icao_);
  top->addWidget(show);
  top->addStretch();
  auto* bottom = new QHBoxLayout;
  bottom->addStretch();
  bottom->addWidget(layout);
  bottom->addWidget(close);
  auto* v = new QVBoxLayout(this);
  v->addLayout(top);
  v->addWidget(header_);
  v->addWidget(tabs, 1);
  v->addLayout(bottom);
  auto find = [this] {
    if (form_.Find(s_, FromQt(icao_->text()), ui_)) Refresh();
  };
  connect(show, &QPushButton::clicked, this, find);
  connect(icao_, &QLineEdit::returnPressed, this, find);
  connect(layout, &QPushButton::clicked, this, [this] {
    if (onLayout && form_.Airport >= 0) onLayout(form_.Airport);
  });
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  resize(560, 420);
}

bool AirportPreviewWindow::Open() {
  if (!form_.Open(s_)) return false;
  Refresh();
  show();
  raise();
  return true;
}

QListWidget* AirportPreviewWindow::List(const char* name) const { return findChild<QListWidget*>(name); }

void AirportPreviewWindow::Refresh() {
  setWindowTitle(ToQt(form_.Caption));
  std::string header;
  for (const std::string& line : form_.Lists.Header) header += (header.empty() ? "" : "\n") + line;
  header_->setText(ToQt(header));
  Fill(List("lstRunways"), form_.Lists.Runways);
  Fill(List("lstFrequencies"), form_.Lists.Frequencies);
  Fill(List("lstIls"), form_.Lists.Ils);
  Fill(List("lstParking"), form_.Lists.Parking);
}

// ---------------------------------------------------------------- frmSelParking

ParkingWindow::ParkingWindow(ProgramState& s, Ui& ui, QWidget* parent) : QWidget(parent, Qt::Tool), s_(s), ui_(ui) {
  setObjectName("frmSelParking");
  list_ = new QListWidget(this);
  list_->setObjectName("lstParking");
  auto* select = NamedButton(this, "cmdSelect", "&Select");
  auto* close = NamedButton(this, "cmdClose", "&Close");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(select);
  buttons->addWidget(close);
  auto* v = new QVBoxLayout(this);
  v->addWidget(list_, 1);
  v->addLayout(buttons);
  connect(select, &QPushButton::clicked, this, [this] { SelectClick(); });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { SelectClick(); });
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  resize(340, 400);
}

bool ParkingWindow::Open() {
  if (!form_.Load(s_, ui_)) return false;
  setWindowTitle(ToQt(form_.Caption()));
  list_->clear();
  for (const ParkingChoice& c : form_.Rows()) list_->addItem(ToQt(c.Text));
  if (list_->count() > 0) list_->setCurrentRow(0);
  show();
  raise();
  return true;
}

bool ParkingWindow::SelectClick() { return form_.Place(s_, ui_, list_->currentRow()); }

}  // namespace orv::ui
