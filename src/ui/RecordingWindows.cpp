#include "ui/RecordingWindows.h"

#include <QDialogButtonBox>
#include <QDockWidget>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "mapqt/QPainterTarget.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

constexpr int kTwips = 15;  // twips a pixel
constexpr int kProfileWidth = kProfileWidthTwips / kTwips;
constexpr int kProfileHeight = kProfileHeightTwips / kTwips;

}  // namespace

// ------------------------------------------------------------ frmSaveRec

SaveRecDialog::SaveRecDialog(FlightAnalysis& analysis, QWidget* parent) : QDialog(parent), a_(analysis) {
  setObjectName("frmSaveRec");
  setWindowTitle("Save Recording");
  txtFilename_ = new QLineEdit(this);
  txtFilename_->setObjectName("txtFilename");
  txtFileDescription_ = new QLineEdit(this);
  txtFileDescription_->setObjectName("txtFileDescription");
  txtFileDescription_->setMaxLength(static_cast<int>(kRecDescriptionChars));
  auto* lblFilename = new QLabel("File name:", this);
  lblFilename->setObjectName("lblFilename");
  auto* lblFileDescription = new QLabel("Description:", this);
  lblFileDescription->setObjectName("lblFileDescription");
  auto* form = new QFormLayout;
  form->addRow(lblFilename, txtFilename_);
  form->addRow(lblFileDescription, txtFileDescription_);
  auto* buttons = new QDialogButtonBox(this);
  auto* ok = buttons->addButton(QDialogButtonBox::Ok);
  ok->setObjectName("cmdOK");
  auto* cancel = buttons->addButton(QDialogButtonBox::Cancel);
  cancel->setObjectName("cmdCancel");
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
  connect(ok, &QPushButton::clicked, this, [this] {
    a_.SaveForm.txtFilename = FromQt(txtFilename_->text());
    a_.SaveForm.txtFileDescription = FromQt(txtFileDescription_->text());
    if (a_.SaveRecOk()) accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, sizeHint().height());
  Refresh();
}

void SaveRecDialog::Refresh() {
  txtFilename_->setText(ToQt(a_.SaveForm.txtFilename));
  txtFileDescription_->setText(ToQt(a_.SaveForm.txtFileDescription));
  txtFilename_->selectAll();
  txtFilename_->setFocus();
}

// ------------------------------------------------------------ frmLoadRec

LoadRecDialog::LoadRecDialog(FlightAnalysis& analysis, QWidget* parent) : QDialog(parent), a_(analysis) {
  setObjectName("frmLoadRec");
  setWindowTitle("Flight Analysis - Load Recording");
  flstFiles_ = new QListWidget(this);
  flstFiles_->setObjectName("flstFiles");
  lbldescription_ = new QLabel(this);
  lbldescription_->setObjectName("lbldescription");
  lbldescription_->setWordWrap(true);
  auto* ok = new QPushButton("&OK", this);
  ok->setObjectName("cmdOK");
  ok->setDefault(true);
  auto* del = new QPushButton("&Delete", this);
  del->setObjectName("cmdDelete");
  auto* cancel = new QPushButton("&Cancel", this);
  cancel->setObjectName("cmdCancel");
  auto* row = new QHBoxLayout;
  row->addWidget(ok);
  row->addWidget(del);
  row->addStretch(1);
  row->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(flstFiles_, 1);
  layout->addWidget(lbldescription_);
  layout->addLayout(row);
  connect(flstFiles_, &QListWidget::currentRowChanged, this, [this](int r) {
    a_.SelectRecording(r);
    lbldescription_->setText(ToQt(a_.LoadForm.lbldescription));
  });
  connect(flstFiles_, &QListWidget::itemDoubleClicked, ok, &QPushButton::click);
  connect(ok, &QPushButton::clicked, this, [this] {
    if (a_.LoadRecOk()) accept();
  });
  connect(del, &QPushButton::clicked, this, [this] {
    if (a_.LoadRecDelete()) Refresh();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  resize(380, 320);
  Refresh();
}

void LoadRecDialog::Refresh() {
  flstFiles_->blockSignals(true);
  flstFiles_->clear();
  for (const std::string& name : a_.LoadForm.flstFiles) flstFiles_->addItem(ToQt(name));
  flstFiles_->blockSignals(false);
  lbldescription_->setText(ToQt(a_.LoadForm.lbldescription));
}

// ------------------------------------------------------------ pctVert

ProfileView::ProfileView(const FlightAnalysis& analysis, const QtFontSet& fonts, QWidget* parent)
    : QWidget(parent), a_(analysis), fonts_(fonts) {
  setObjectName("pctVert");
  setFixedSize(kProfileWidth, kProfileHeight);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void ProfileView::paintEvent(QPaintEvent*) {
  QPainterTarget picture(fonts_, width(), height());
  a_.DrawProfile(picture);
  QPainter p(this);
  p.drawImage(0, 0, picture.Image());
  p.setPen(QColor(90, 90, 90));
  p.drawRect(0, 0, width() - 1, height() - 1);
}

// ------------------------------------------------------------ the stepping view

namespace {

// The labels in their order on the panel.
constexpr const char* kLabelNames[] = {"lblRecTime", "lblRecLat",    "lblRecLon",   "lblRecAlt", "lblRecAGL",
                                       "lblRecCourse", "lblRecSpeed", "lblRecPitch", "lblRecBank"};

}  // namespace

ReplayView::ReplayView(QMainWindow& window, QWidget& map, MainWindowController& controller, const QtFontSet& fonts)
    : QObject(&window), map_(map), c_(controller) {
  dock_ = new QDockWidget("Flight Analysis", &window);
  dock_->setObjectName("fraReplay");
  dock_->setFeatures(QDockWidget::NoDockWidgetFeatures);
  auto* panel = new QWidget(dock_);
  auto* layout = new QVBoxLayout(panel);
  for (const char* name : kLabelNames) {
    auto* label = new QLabel(panel);
    label->setObjectName(name);
    label->setMinimumWidth(150);
    layout->addWidget(label);
    labels_[name] = label;
  }
  auto* previous = new QPushButton("Previous", panel);
  previous->setObjectName("cmdRecPrevious");
  previous->setToolTip("The sample before (cursor down)");
  auto* next = new QPushButton("Next", panel);
  next->setObjectName("cmdRecNext");
  next->setToolTip("The next sample (cursor up)");
  for (QPushButton* b : {previous, next}) b->setFocusPolicy(Qt::NoFocus);
  auto* steps = new QHBoxLayout;
  steps->addWidget(previous);
  steps->addWidget(next);
  layout->addLayout(steps);
  updnMaxVert_ = new QSpinBox(panel);
  updnMaxVert_->setObjectName("updnMaxVert");
  updnMaxVert_->setRange(kMinProfileAltitude, kMaxProfileAltitude);
  updnMaxVert_->setSingleStep(kProfileAltitudeStep);
  updnMaxVert_->setSuffix(" ft");
  updnMaxVert_->setToolTip("The top of the profile's scale");
  auto* scale = new QFormLayout;
  scale->addRow("Profile top", updnMaxVert_);
  layout->addLayout(scale);
  layout->addStretch(1);
  dock_->setWidget(panel);
  window.addDockWidget(Qt::RightDockWidgetArea, dock_);
  dock_->hide();

  profile_ = new ProfileView(controller.Analysis(), fonts, &map);
  profile_->hide();
  map.installEventFilter(this);

  // The buttons go through the key handler, as the cursor keys do.
  connect(previous, &QPushButton::clicked, this, [this] { c_.Key(40); });
  connect(next, &QPushButton::clicked, this, [this] { c_.Key(38); });
  connect(updnMaxVert_, &QSpinBox::valueChanged, this, [this](int feet) {
    c_.Analysis().SetMaxVert(feet);
    profile_->update();
  });
}

void ReplayView::Show(bool on) {
  dock_->setVisible(on);
  if (on) {
    updnMaxVert_->blockSignals(true);
    updnMaxVert_->setValue(c_.Analysis().MaxVert());
    updnMaxVert_->blockSignals(false);
    Place();
  }
  profile_->setVisible(on);
}

void ReplayView::ShowRow(const ReplayLabels& l) {
  const std::pair<const char*, const std::string*> texts[] = {
      {"lblRecTime", &l.lblRecTime},   {"lblRecLat", &l.lblRecLat},     {"lblRecLon", &l.lblRecLon},
      {"lblRecAlt", &l.lblRecAlt},     {"lblRecAGL", &l.lblRecAGL},     {"lblRecCourse", &l.lblRecCourse},
      {"lblRecSpeed", &l.lblRecSpeed}, {"lblRecPitch", &l.lblRecPitch}, {"lblRecBank", &l.lblRecBank}};
  for (const auto& [name, text] : texts) labels_[name]->setText(ToQt(*text));
  profile_->update();
}

void ReplayView::Place() {
  profile_->move((map_.width() - profile_->width()) / 2,
                 map_.height() - profile_->height() - (kProfileGapTwips + kTwips - 1) / kTwips);
  profile_->raise();
}

QLabel* ReplayView::Label(const std::string& name) const {
  auto it = labels_.find(name);
  return it == labels_.end() ? nullptr : it->second;
}

bool ReplayView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &map_ && event->type() == QEvent::Resize) Place();
  return QObject::eventFilter(watched, event);
}

}  // namespace orv::ui
