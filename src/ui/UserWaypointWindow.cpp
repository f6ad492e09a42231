#include "ui/UserWaypointWindow.h"

#include <QCloseEvent>
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

QLineEdit* Edit(QWidget* parent, const char* name, int width) {
  auto* e = new QLineEdit(parent);
  e->setObjectName(name);
  if (width > 0) e->setMaximumWidth(width);
  return e;
}

QPushButton* Button(QWidget* parent, const char* name, const char* caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  return b;
}

}  // namespace

UserWaypointWindow::UserWaypointWindow(FrmUser& form, QWidget* parent) : QWidget(parent, Qt::Tool), form_(form) {
  setObjectName("frmUser");
  setWindowTitle("User Waypoints");

  lstWP_ = new QListWidget(this);
  lstWP_->setObjectName("lstWP");
  lstWP_->setMinimumSize(340, 200);
  QFont fixed("Monospace");
  fixed.setStyleHint(QFont::TypeWriter);
  lstWP_->setFont(fixed);  // the ident column is padded to ten characters
  optSortIdent_ = new QRadioButton("Sort by &ident", this);
  optSortIdent_->setObjectName("optSort0");
  optSortName_ = new QRadioButton("Sort by &name", this);
  optSortName_->setObjectName("optSort1");

  txtICAO_ = Edit(this, "txtICAO", 120);
  txtName_ = Edit(this, "txtName", 0);
  txtLatNS_ = Edit(this, "txtLatNS", 30);
  txtLatDeg_ = Edit(this, "txtLatDeg", 50);
  txtLatMin_ = Edit(this, "txtLatMin", 60);
  txtLatSec_ = Edit(this, "txtLatSec", 60);
  txtLonEW_ = Edit(this, "txtLonEW", 30);
  txtLonDeg_ = Edit(this, "txtLonDeg", 50);
  txtLonMin_ = Edit(this, "txtLonMin", 60);
  txtLonSec_ = Edit(this, "txtLonSec", 60);
  cmdAdd_ = Button(this, "cmdAdd", "&Add");
  cmdEdit_ = Button(this, "cmdEdit", "&Change");
  cmdDelete_ = Button(this, "cmdDelete", "&Delete");
  cmdFSPos_ = Button(this, "cmdFSPos", "&FS Position");
  cmdCancel_ = Button(this, "cmdCancel", "Cl&ose");

  auto* fields = new QGridLayout;
  fields->addWidget(new QLabel("Ident:", this), 0, 0);
  fields->addWidget(txtICAO_, 0, 1, 1, 4);
  fields->addWidget(new QLabel("Name:", this), 1, 0);
  fields->addWidget(txtName_, 1, 1, 1, 4);
  fields->addWidget(new QLabel("Latitude:", this), 2, 0);
  fields->addWidget(txtLatNS_, 2, 1);
  fields->addWidget(txtLatDeg_, 2, 2);
  fields->addWidget(txtLatMin_, 2, 3);
  fields->addWidget(txtLatSec_, 2, 4);
  fields->addWidget(new QLabel("Longitude:", this), 3, 0);
  fields->addWidget(txtLonEW_, 3, 1);
  fields->addWidget(txtLonDeg_, 3, 2);
  fields->addWidget(txtLonMin_, 3, 3);
  fields->addWidget(txtLonSec_, 3, 4);
  auto* sort = new QHBoxLayout;
  sort->addWidget(optSortIdent_);
  sort->addWidget(optSortName_);
  sort->addStretch(1);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {cmdAdd_, cmdEdit_, cmdDelete_, cmdFSPos_}) buttons->addWidget(b);
  buttons->addStretch(1);
  buttons->addWidget(cmdCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(sort);
  layout->addWidget(lstWP_, 1);
  layout->addLayout(fields);
  layout->addLayout(buttons);

  connect(optSortIdent_, &QRadioButton::clicked, this, [this] {
    Collect();
    form_.OptSortClick(0);
    Refresh();
  });
  connect(optSortName_, &QRadioButton::clicked, this, [this] {
    Collect();
    form_.OptSortClick(1);
    Refresh();
  });
  connect(lstWP_, &QListWidget::currentRowChanged, this, [this](int row) {
    form_.LstWPClick(row);
    Refresh();
  });
  connect(cmdAdd_, &QPushButton::clicked, this, [this] {
    Collect();
    Changed(form_.CmdAddClick());
  });
  connect(cmdEdit_, &QPushButton::clicked, this, [this] {
    Collect();
    Changed(form_.CmdEditClick());
  });
  connect(cmdDelete_, &QPushButton::clicked, this, [this] {
    Collect();
    Changed(form_.CmdDeleteClick());
  });
  connect(cmdFSPos_, &QPushButton::clicked, this, [this] {
    std::optional<std::pair<double, double>> at = simPosition ? simPosition() : std::nullopt;
    if (!at) return;
    Collect();
    form_.CmdFSPosClick(at->first, at->second);
    Refresh();
  });
  connect(cmdCancel_, &QPushButton::clicked, this, [this] { close(); });
  Refresh();
}

QLineEdit* UserWaypointWindow::Field(const char* name) const { return findChild<QLineEdit*>(name); }

void UserWaypointWindow::Open() {
  form_.FormLoad();
  Refresh();
  show();
  raise();
}

void UserWaypointWindow::ShowPosition(double lat, double lon) {
  Collect();
  form_.ShowPosition(lat, lon);
  Refresh();
}

void UserWaypointWindow::Collect() {
  form_.txtICAO = FromQt(txtICAO_->text());
  form_.txtName = FromQt(txtName_->text());
  form_.txtLatNS = FromQt(txtLatNS_->text());
  form_.txtLatDeg = FromQt(txtLatDeg_->text());
  form_.txtLatMin = FromQt(txtLatMin_->text());
  form_.txtLatSec = FromQt(txtLatSec_->text());
  form_.txtLonEW = FromQt(txtLonEW_->text());
  form_.txtLonDeg = FromQt(txtLonDeg_->text());
  form_.txtLonMin = FromQt(txtLonMin_->text());
  form_.txtLonSec = FromQt(txtLonSec_->text());
}

void UserWaypointWindow::Refresh() {
  {
    QSignalBlocker block(lstWP_);
    lstWP_->clear();
    for (const std::string& line : form_.lstWP) lstWP_->addItem(ToQt(line));
    lstWP_->setCurrentRow(form_.lstWPIndex);
  }
  optSortIdent_->setChecked(form_.optSort == 0);
  optSortName_->setChecked(form_.optSort == 1);
  txtICAO_->setText(ToQt(form_.txtICAO));
  txtName_->setText(ToQt(form_.txtName));
  txtLatNS_->setText(ToQt(form_.txtLatNS));
  txtLatDeg_->setText(ToQt(form_.txtLatDeg));
  txtLatMin_->setText(ToQt(form_.txtLatMin));
  txtLatSec_->setText(ToQt(form_.txtLatSec));
  txtLonEW_->setText(ToQt(form_.txtLonEW));
  txtLonDeg_->setText(ToQt(form_.txtLonDeg));
  txtLonMin_->setText(ToQt(form_.txtLonMin));
  txtLonSec_->setText(ToQt(form_.txtLonSec));
}

void UserWaypointWindow::Changed(bool changed) {
  Refresh();
  if (changed && onChanged) onChanged();
}

void UserWaypointWindow::closeEvent(QCloseEvent* event) {
  // Unloading saves the waypoints; a failure has been shown by the form.
  if (form_.Visible) form_.FormUnload();
  QWidget::closeEvent(event);
}

}  // namespace orv::ui
