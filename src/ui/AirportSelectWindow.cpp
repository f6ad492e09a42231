#include "ui/AirportSelectWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/QtUi.h"

namespace orv::ui {

namespace {

QStringList ToQtLines(const std::vector<std::string>& lines) {
  QStringList out;
  out.reserve(static_cast<qsizetype>(lines.size()));
  for (const std::string& line : lines) out << ToQt(line);
  return out;
}

void ShowList(QComboBox* combo, const std::vector<std::string>& lines, int index) {
  QSignalBlocker block(combo);
  combo->clear();
  combo->addItems(ToQtLines(lines));
  combo->setCurrentIndex(index);
}

template <typename T>
T* Named(T* widget, const char* name) {
  widget->setObjectName(name);
  return widget;
}

}  // namespace

AirportSelectWindow::AirportSelectWindow(OvrLL& form, QWidget* parent) : QWidget(parent, Qt::Window), form_(form) {
  setObjectName("OVRLL");
  setWindowTitle("Airport Selection");

  cmbRegion_ = Named(new QComboBox(this), "cmbRegion");
  cmbCountry_ = Named(new QComboBox(this), "cmbCountry");
  cmbState_ = Named(new QComboBox(this), "cmbState");
  cmbCity_ = Named(new QComboBox(this), "cmbCity");
  lblRegion_ = Named(new QLabel(this), "lblRegion");
  lblCountry_ = Named(new QLabel(this), "lblCountry");
  lblState_ = Named(new QLabel(this), "lblState");
  lblCity_ = Named(new QLabel(this), "lblCity");
  lstAirport_ = Named(new QListWidget(this), "lstAirport");
  lstAirport_->setMinimumSize(380, 240);
  chckAPOnly_ = Named(new QCheckBox("All &airports", this), "chckAPOnly");
  chckICAO_ = Named(new QCheckBox("ICAO &codes first", this), "chckICAO");
  txtICAO_ = Named(new QLineEdit(this), "txtICAO");
  txtICAO_->setMaxLength(10);
  cmdSearch_ = Named(new QPushButton("Sea&rch", this), "cmdSearch");
  optDepart_ = Named(new QRadioButton("&Departure", this), "optDepart");
  optDestination_ = Named(new QRadioButton("D&estination", this), "optDestination");
  cmdSelect_ = Named(new QPushButton("&Select", this), "cmdSelect");
  cmdClose_ = Named(new QPushButton(this), "cmdClose");

  auto* cascade = new QGridLayout;
  const std::pair<QComboBox*, QLabel*> rows[] = {
      {cmbRegion_, lblRegion_}, {cmbCountry_, lblCountry_}, {cmbState_, lblState_}, {cmbCity_, lblCity_}};
  for (int i = 0; i < 4; ++i) {
    cascade->addWidget(rows[i].first, i, 0);
    cascade->addWidget(rows[i].second, i, 1);
  }
  cascade->setColumnStretch(0, 1);
  auto* search = new QHBoxLayout;
  search->addWidget(new QLabel("ICAO:", this));
  search->addWidget(txtICAO_);
  search->addWidget(cmdSearch_);
  search->addStretch(1);
  search->addWidget(chckAPOnly_);
  search->addWidget(chckICAO_);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(optDepart_);
  buttons->addWidget(optDestination_);
  buttons->addStretch(1);
  buttons->addWidget(cmdSelect_);
  buttons->addWidget(cmdClose_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(cascade);
  layout->addLayout(search);
  layout->addWidget(lstAirport_, 1);
  layout->addLayout(buttons);

  // Each event goes to the form, then the whole window shows its state again.
  auto forward = [this](auto event) {
    return [this, event](auto... args) {
      event(args...);
      Refresh();
    };
  };
  connect(cmbRegion_, &QComboBox::activated, this, forward([this](int i) { form_.CmbRegionClick(i); }));
  connect(cmbCountry_, &QComboBox::activated, this, forward([this](int i) { form_.CmbCountryClick(i); }));
  connect(cmbState_, &QComboBox::activated, this, forward([this](int i) { form_.CmbStateClick(i); }));
  connect(cmbCity_, &QComboBox::activated, this, forward([this](int i) { form_.CmbCityClick(i); }));
  connect(lstAirport_, &QListWidget::currentRowChanged, this, forward([this](int row) { form_.LstAirportClick(row); }));
  connect(chckAPOnly_, &QCheckBox::clicked, this, forward([this](bool on) { form_.ChckAPOnlyClick(on); }));
  connect(chckICAO_, &QCheckBox::clicked, this, forward([this](bool on) { form_.ChckICAOClick(on); }));
  connect(optDepart_, &QRadioButton::clicked, this, forward([this](bool) { form_.OptDepartClick(); }));
  connect(optDestination_, &QRadioButton::clicked, this, forward([this](bool) { form_.OptDestinationClick(); }));
  auto runSearch = [this] {
    form_.txtICAO = FromQt(txtICAO_->text());
    form_.CmdSearchClick();
    Refresh();
  };
  connect(cmdSearch_, &QPushButton::clicked, this, runSearch);
  connect(txtICAO_, &QLineEdit::returnPressed, this, runSearch);
  connect(cmdSelect_, &QPushButton::clicked, this, [this] {
    std::optional<AirportSelection> chosen = form_.CmdSelectClick();
    Refresh();
    if (chosen && onSelected) onSelected(*chosen);
  });
  connect(cmdClose_, &QPushButton::clicked, this, [this] { Close(); });
  Refresh();
}

void AirportSelectWindow::Open() {
  form_.FormLoad();
  setWindowFlag(Qt::WindowStaysOnTopHint, form_.TopMost);
  Refresh();
  show();
  raise();
}

void AirportSelectWindow::Refresh() {
  ShowList(cmbRegion_, form_.cmbRegion, form_.cmbRegionIndex);
  ShowList(cmbCountry_, form_.cmbCountry, form_.cmbCountryIndex);
  ShowList(cmbState_, form_.cmbState, form_.cmbStateIndex);
  ShowList(cmbCity_, form_.cmbCity, form_.cmbCityIndex);
  lblRegion_->setText(ToQt(form_.lblRegion));
  lblCountry_->setText(ToQt(form_.lblCountry));
  lblState_->setText(ToQt(form_.lblState));
  lblCity_->setText(ToQt(form_.lblCity));
  {
    QSignalBlocker block(lstAirport_);
    lstAirport_->clear();
    lstAirport_->addItems(ToQtLines(form_.lstAirport));
    lstAirport_->setCurrentRow(form_.lstAirportIndex);
    if (form_.lstAirportIndex >= 0) lstAirport_->scrollToItem(lstAirport_->currentItem());
  }
  chckAPOnly_->setChecked(form_.chckAPOnly);
  chckICAO_->setChecked(form_.chckICAO);
  txtICAO_->setText(ToQt(form_.txtICAO));
  optDepart_->setChecked(form_.optDepart);
  optDestination_->setChecked(form_.optDestination);
  cmdSelect_->setEnabled(form_.cmdSelectEnabled);
  cmdClose_->setText(ToQt(form_.cmdCloseCaption));
}

void AirportSelectWindow::Close() {
  if (form_.CmdCloseClick() == OvrLLClose::EndProgram) {
    if (onEndProgram) onEndProgram();
    return;
  }
  closing_ = true;
  close();
  closing_ = false;
}

void AirportSelectWindow::closeEvent(QCloseEvent* event) {
  // The window's close box does what cmdClose does.
  if (!closing_ && form_.CmdCloseClick() == OvrLLClose::EndProgram) {
    event->ignore();
    if (onEndProgram) onEndProgram();
    return;
  }
  QWidget::closeEvent(event);
}

}  // namespace orv::ui
