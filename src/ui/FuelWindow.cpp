#include "ui/FuelWindow.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "planning/NavLookupDb.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

struct BoxField {
  const char* Name;
  const char* Caption;
  std::string FuelWindow::*Text;
};

constexpr BoxField kBoxes[] = {
    {"ClimbFuelBox", "Climb", &FuelWindow::ClimbFuelBox},
    {"CruiseFuelBox", "Cruise", &FuelWindow::CruiseFuelBox},
    {"DescentFuelBox", "Descent", &FuelWindow::DescentFuelBox},
    {"ApproachFuelBox", "Approach", &FuelWindow::ApproachFuelBox},
    {"ContingencyBox", "Contingency", &FuelWindow::ContingencyBox},
    {"HoldBox", "Holding", &FuelWindow::HoldBox},
    {"AlternateFuelBox", "Alternate", &FuelWindow::AlternateFuelBox},
    {"TotalIfrBox", "Total IFR", &FuelWindow::TotalIfrBox},
    {"TotalVfrBox", "Total VFR", &FuelWindow::TotalVfrBox},
};

constexpr const char* kUnitCaptions[4] = {"&Gallons", "&Pounds", "&Kilograms", "&Litres"};

}  // namespace

FuelDialog::FuelDialog(ProgramState& s, Ui& ui, QWidget* parent) : QWidget(parent, Qt::Tool), s_(s), ui_(ui) {
  setObjectName("Fuel");
  auto* form = new QFormLayout;
  for (const BoxField& b : kBoxes) {
    auto* box = new QLineEdit(this);
    box->setObjectName(b.Name);
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignRight);
    form->addRow(b.Caption, box);
  }
  auto* units = new QHBoxLayout;
  for (int i = 0; i < 4; ++i) {
    auto* opt = new QRadioButton(kUnitCaptions[i], this);
    opt->setObjectName(QString("optFuelType%1").arg(i));
    units_[static_cast<std::size_t>(i)] = opt;
    units->addWidget(opt);
    connect(opt, &QRadioButton::clicked, this, [this, i] {
      form_.SetFuelType(i);
      Refresh();
    });
  }
  unit_ = new QLabel(this);
  unit_->setObjectName("UnitLabel");
  trip_ = new QLabel(this);
  trip_->setObjectName("TripFuelLabel");
  alternate_ = new QLabel(this);
  alternate_->setObjectName("AltAirLabel");
  altDist_ = new QLabel(this);
  altDist_->setObjectName("AltDistLabel");
  altCourse_ = new QLabel(this);
  altCourse_->setObjectName("AltCourseLabel");
  stops_ = new QLabel(this);
  stops_->setObjectName("Stops");
  auto* close = new QPushButton("&Close", this);
  close->setObjectName("cmdClose");
  connect(close, &QPushButton::clicked, this, &QWidget::close);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(units);
  layout->addWidget(unit_);
  layout->addLayout(form);
  layout->addWidget(trip_);
  layout->addWidget(alternate_);
  layout->addWidget(altDist_);
  layout->addWidget(altCourse_);
  layout->addWidget(stops_);
  layout->addWidget(close, 0, Qt::AlignRight);
}

bool FuelDialog::Open() {
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  const int unit = s_.Core.Config.Fuel < kFuelUnitFactors.size() ? s_.Core.Config.Fuel : 2;
  if (!form_.Load(ui_, s_.Plan, s_.Aircraft.Current, nav, unit)) return false;
  Refresh();
  show();
  raise();
  return true;
}

QLineEdit* FuelDialog::Box(const char* name) const { return findChild<QLineEdit*>(name); }

void FuelDialog::Refresh() {
  setWindowTitle(ToQt(form_.Caption));
  for (const BoxField& b : kBoxes) Box(b.Name)->setText(ToQt(form_.*b.Text));
  for (int i = 0; i < 4; ++i) units_[static_cast<std::size_t>(i)]->setChecked(i == form_.FuelType);
  unit_->setText(ToQt(form_.UnitLabel));
  trip_->setText(ToQt(form_.TripFuelLabel));
  alternate_->setText(ToQt(form_.AltAirLabel));
  altDist_->setText(ToQt(form_.AltDistLabel));
  altCourse_->setText(ToQt(form_.AltCourseLabel));
  altDist_->setVisible(form_.AlternateLinesVisible);
  altCourse_->setVisible(form_.AlternateLinesVisible);
  stops_->setText(ToQt("VFR: " + form_.VFRStop + "    IFR: " + form_.IFRStop));
}

}  // namespace orv::ui
