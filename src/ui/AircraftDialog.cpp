#include "ui/AircraftDialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "planning/NavLookupDb.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

struct BoxControl {
  const char* Name;
  const char* Caption;
};

// In the order of AircraftBox.
constexpr BoxControl kBoxes[kAircraftBoxCount] = {
    {"ACNameBox", "Aircraft"},
    {"CruiseFLBox", "Cruise flight level"},
    {"LoadBox", "Load weight (kg)"},
    {"MaxWeightBox", "Max weight (kg)"},
    {"ClimbSpeedBox", "Climb speed (kts)"},
    {"ClimbRateBox", "Climb rate (ft/min)"},
    {"MaxFuelBox", "Maximum fuel (kg)"},
    {"DescentRateBox", "Descent rate (ft/min)"},
    {"CruiseSpeedBox", "Cruise speed (kts)"},
    {"MaxRangeBox", "Max range (NM)"},
    {"ApproachSpeedBox", "Approach speed (kts)"},
    {"DescentSpeedBox", "Descent speed (kts)"},
    {"EmptyBox", "Empty weight (kg)"},
};

}  // namespace

AircraftDialog::AircraftDialog(ProgramState& s, Ui& ui, QWidget* parent)
    : QWidget(parent, Qt::Tool), s_(s), form_(s.Aircraft, ui, s.Core.Folder.Resolve(kAircraftFile)) {
  setObjectName("Aircraft");
  setWindowTitle("Aircraft");
  list_ = new QListWidget(this);
  list_->setObjectName("ACList");
  list_->setMinimumWidth(220);
  auto* form = new QFormLayout;
  for (int i = 0; i < kAircraftBoxCount; ++i) {
    auto* box = new QLineEdit(this);
    box->setObjectName(kBoxes[i].Name);
    boxes_[static_cast<std::size_t>(i)] = box;
    form->addRow(kBoxes[i].Caption, box);
  }
  auto button = [this](const char* name, const char* caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(name);
    return b;
  };
  QPushButton* select = button("ButtonSelectAC", "&Select");
  QPushButton* add = button("MenuNew", "&New");
  QPushButton* del = button("MenuDelete", "&Delete");
  QPushButton* ok = button("CmdOk", "&OK");
  QPushButton* cancel = button("CmdCancel", "&Cancel");

  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {select, add, del}) buttons->addWidget(b);
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* top = new QHBoxLayout;
  top->addWidget(list_);
  top->addLayout(form, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addLayout(buttons);

  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0 || row == form_.ListIndex()) return;
    TakeBoxes();
    form_.SelectRow(row);  // a box that fails its check keeps the old row
    Refresh();
  });
  connect(select, &QPushButton::clicked, this, [this] {
    TakeBoxes();
    NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
    if (form_.ButtonSelectAC(s_.Plan, s_.Panel, nav) && onSelected) onSelected();
    Refresh();
  });
  connect(add, &QPushButton::clicked, this, [this] {
    TakeBoxes();
    form_.MenuNew();
    Refresh();
  });
  connect(del, &QPushButton::clicked, this, [this] {
    form_.MenuDelete();
    Refresh();
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    TakeBoxes();
    if (form_.CmdOk()) close();
    Refresh();
  });
  connect(cancel, &QPushButton::clicked, this, &QWidget::close);
}

void AircraftDialog::Open() {
  form_.Load();
  Refresh();
  show();
  raise();
}

void AircraftDialog::TakeBoxes() {
  for (int i = 0; i < kAircraftBoxCount; ++i)
    form_.SetBox(static_cast<AircraftBox>(i), FromQt(boxes_[static_cast<std::size_t>(i)]->text()));
}

void AircraftDialog::Refresh() {
  const QSignalBlocker block(list_);
  list_->clear();
  for (const std::string& name : form_.AircraftList()) list_->addItem(ToQt(name));
  list_->setCurrentRow(form_.ListIndex());
  for (int i = 0; i < kAircraftBoxCount; ++i)
    boxes_[static_cast<std::size_t>(i)]->setText(ToQt(form_.Box(static_cast<AircraftBox>(i))));
}

}  // namespace orv::ui
