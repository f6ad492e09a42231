#include "ui/PlanFileDialogs.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "mapqt/PaperPdf.h"
#include "planning/NavLookupDb.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

// In the order of SaveFormat.
constexpr const char* kFormatCaptions[kSaveFormatCount] = {
    "SquawkBox", "Plain navaid lines", "IVAO", "Level-D", "PMDG",
    "FS X / Prepar3D / MSFS XML", "X-Plane FMS", "Garmin FPL", "GPX",
};

}  // namespace

SaveRouteDialog::SaveRouteDialog(ProgramState& s, MainWindowController& controller, QWidget* parent)
    : QDialog(parent), s_(s), controller_(controller) {
  setObjectName("SaveRoute");
  setWindowTitle("Save Flight Plan");
  txtFplan_ = new QLineEdit(this);
  txtFplan_->setObjectName("txtFplan");
  dirFplan_ = new QLineEdit(this);
  dirFplan_->setObjectName("dirFplan");
  auto* browse = new QPushButton("...", this);
  flFplan_ = new QListWidget(this);
  flFplan_->setObjectName("flFplan");
  optIFR_ = new QRadioButton("&IFR", this);
  optIFR_->setObjectName("optIFR");
  optVFR_ = new QRadioButton("&VFR", this);
  optVFR_->setObjectName("optVFR");
  auto* folderRow = new QHBoxLayout;
  folderRow->addWidget(dirFplan_, 1);
  folderRow->addWidget(browse);
  auto* rules = new QHBoxLayout;
  rules->addWidget(optIFR_);
  rules->addWidget(optVFR_);
  rules->addStretch(1);
  auto* formats = new QGridLayout;
  for (int i = 0; i < kSaveFormatCount; ++i) {
    auto* box = new QCheckBox(kFormatCaptions[i], this);
    box->setObjectName(QString("chckFormat%1").arg(i));
    formats_[static_cast<std::size_t>(i)] = box;
    formats->addWidget(box, i / 3, i % 3);
  }
  auto* form = new QFormLayout;
  form->addRow("Folder", folderRow);
  form->addRow("File", txtFplan_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(flFplan_, 1);
  layout->addLayout(rules);
  layout->addLayout(formats);
  layout->addWidget(buttons);

  connect(browse, &QPushButton::clicked, this, [this] {
    const QString dir = QFileDialog::getExistingDirectory(this, "Folder of the plan", dirFplan_->text());
    if (dir.isEmpty()) return;
    s_.SaveRouteForm.SetFolder(FromQt(dir));
    Refresh();
  });
  connect(flFplan_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0) return;
    s_.SaveRouteForm.FileClick(row);
    txtFplan_->setText(ToQt(s_.SaveRouteForm.txtFplan));
  });
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    TakeControls();
    if (controller_.SaveRouteClick()) accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void SaveRouteDialog::Refresh() {
  const SaveRoute& f = s_.SaveRouteForm;
  txtFplan_->setText(ToQt(f.txtFplan));
  dirFplan_->setText(ToQt(f.dirFplan));
  flFplan_->blockSignals(true);
  flFplan_->clear();
  for (const std::string& name : f.flFplan) flFplan_->addItem(ToQt(name));
  flFplan_->blockSignals(false);
  optIFR_->setChecked(f.optIFR);
  optVFR_->setChecked(!f.optIFR);
  for (int i = 0; i < kSaveFormatCount; ++i) formats_[static_cast<std::size_t>(i)]->setChecked(f.chckFormat[static_cast<std::size_t>(i)]);
}

void SaveRouteDialog::TakeControls() {
  SaveRoute& f = s_.SaveRouteForm;
  if (FromQt(dirFplan_->text()) != f.dirFplan) f.SetFolder(FromQt(dirFplan_->text()));
  f.txtFplan = FromQt(txtFplan_->text());
  f.SetIfr(optIFR_->isChecked());
  for (int i = 0; i < kSaveFormatCount; ++i) f.chckFormat[static_cast<std::size_t>(i)] = formats_[static_cast<std::size_t>(i)]->isChecked();
}

void PrintPlanPapers(ProgramState& s, const QtFontSet& fonts, Ui& ui, QWidget* parent) {
  if (s.Plan.LastRow < 1) {
    ui.MsgBox("You have to file a flight plan first!!");
    return;
  }
  QDialog ask(parent);
  ask.setObjectName("PrintFP");
  ask.setWindowTitle("Print Flight Plan");
  auto* gfi = new QCheckBox("&General flight information", &ask);
  auto* wp = new QCheckBox("&Waypoint list", &ask);
  auto* ctrz = new QCheckBox("&Control zone information", &ask);
  for (QCheckBox* b : {gfi, wp, ctrz}) b->setChecked(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &ask);
  auto* layout = new QVBoxLayout(&ask);
  for (QCheckBox* b : {gfi, wp, ctrz}) layout->addWidget(b);
  layout->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &ask, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &ask, &QDialog::reject);
  if (ask.exec() != QDialog::Accepted) return;
  PrintFP choice;
  choice.chckGFI = gfi->isChecked();
  choice.chckWPList = wp->isChecked();
  choice.chckCtrz = ctrz->isChecked();
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() != QDialog::Accepted) return;
  NavLookupDb nav(s.Db, s.Core.ParkingNames);
  PaperSources sources;
  sources.Plan = &s.Plan;
  sources.Db = &s.Db;
  sources.Aircraft = &s.Aircraft.Current;
  sources.State = &s.Core;
  sources.Nav = &nav;
  PrintPapers(printer, fonts, choice, sources);
}

void PrintMapView(ProgramState& s, const QtFontSet& fonts, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() != QDialog::Accepted) return;
  MapRenderer renderer;
  MapScene scene{s.View, s.Core.Config, s.Layers, s.Db, s.Plan, s.Highlight, &s.Overlays, &s.Registry};
  PrintMap(printer, fonts, scene, renderer);
}

}  // namespace orv::ui
