#include "ui/ProcedureWindows.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/FileIo.h"
#include "documents/SidView.h"
#include "mapqt/QPainterTarget.h"
#include "planning/NavLookupDb.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {
constexpr int kPreviewPixels = 280;
}

SidStarDialog::SidStarDialog(ProgramState& s, Ui& ui, const QtFontSet& fonts, bool sid, QWidget* parent)
    : QDialog(parent), s_(s), fonts_(fonts), form_(ui, sid) {
  setObjectName("LoadSID");
  list_ = new QListWidget(this);
  list_->setObjectName("lstSidStar");
  list_->setMinimumWidth(220);
  airport_ = new QLabel(this);
  airport_->setObjectName("lblAirportRwy");
  name_ = new QLabel(this);
  name_->setObjectName("lblSidStarName");
  preview_ = new QLabel(this);
  preview_->setObjectName("pctSid");
  preview_->setFixedSize(kPreviewPixels, kPreviewPixels);
  auto* zoom = new QPushButton("+", this);
  zoom->setObjectName("cmdZoom");
  auto* unzoom = new QPushButton("-", this);
  unzoom->setObjectName("cmdUnzoom");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* zooms = new QHBoxLayout;
  zooms->addWidget(zoom);
  zooms->addWidget(unzoom);
  zooms->addStretch(1);
  auto* right = new QVBoxLayout;
  right->addWidget(airport_);
  right->addWidget(name_);
  right->addWidget(preview_);
  right->addLayout(zooms);
  auto* top = new QHBoxLayout;
  top->addWidget(list_, 1);
  top->addLayout(right);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(buttons);
  connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0) return;
    form_.SelectList(row);
    Refresh();
  });
  connect(zoom, &QPushButton::clicked, this, [this] {
    form_.cmdZoom();
    Refresh();
  });
  connect(unzoom, &QPushButton::clicked, this, [this] {
    form_.cmdUnzoom();
    Refresh();
  });
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
    PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
    if (!form_.OKButton(editor, &s_.Db.MagVar)) return;
    if (onPlanChanged) onPlanChanged();
    accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] {
    form_.CancelButton();
    reject();
  });
}

bool SidStarDialog::Load() {
  const std::optional<Bytes> bytes = ReadWholeFile(s_.Core.Folder.Resolve(form_.Sid() ? kSidFile : kStarFile));
  const Bytes empty;
  NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
  if (!form_.Load(bytes ? *bytes : empty, s_.Plan, nav)) return false;
  setWindowTitle(ToQt(form_.Caption));
  const QSignalBlocker block(list_);
  list_->clear();
  for (const ListLine& line : form_.lstSidStar) list_->addItem(ToQt(line.Text));
  Refresh();
  return true;
}

void SidStarDialog::Refresh() {
  airport_->setText(ToQt(form_.lblAirportRwy));
  name_->setText(ToQt(form_.lblSidStarName));
  QPainterTarget picture(fonts_, kPreviewPixels, kPreviewPixels);
  DrawProcedurePreview(picture, ViewBox{0, 0, picture.ScaleWidth(), picture.ScaleHeight()}, form_, s_.Core.Config);
  preview_->setPixmap(QPixmap::fromImage(picture.Image()));
}

SegmentDialog::SegmentDialog(ProgramState& s, Ui& ui, bool save, QWidget* parent)
    : QDialog(parent), s_(s), ui_(ui), save_(save), form_(s.Core.Folder) {
  setObjectName("frmSaveSegment");
  setWindowTitle(save ? "Save Route Segment" : "Open Route Segment");
  constexpr const char* kTypes[4] = {"&Departure", "&Arrival", "&Enroute", "&General"};
  auto* types = new QHBoxLayout;
  for (int i = 0; i < 4; ++i) {
    auto* opt = new QRadioButton(kTypes[i], this);
    opt->setObjectName(QString("optSegmentType%1").arg(i));
    types_[static_cast<std::size_t>(i)] = opt;
    types->addWidget(opt);
    connect(opt, &QRadioButton::clicked, this, [this, i] {
      form_.SetSegmentType(i);
      Refresh();
    });
  }
  rows_ = new QListWidget(this);
  rows_->setObjectName("lstFpWaypoints");
  rows_->setSelectionMode(QAbstractItemView::MultiSelection);
  rows_->setVisible(save);
  description_ = new QLineEdit(this);
  description_->setObjectName("txtDescription");
  description_->setPlaceholderText("Description");
  description_->setVisible(save);
  segments_ = new QListWidget(this);
  segments_->setObjectName("lstSegments");
  auto* buttons = new QDialogButtonBox((save ? QDialogButtonBox::Save : QDialogButtonBox::Open) | QDialogButtonBox::Cancel, this);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(types);
  layout->addWidget(rows_, 1);
  layout->addWidget(description_);
  layout->addWidget(segments_, 1);
  layout->addWidget(buttons);
  connect(segments_, &QListWidget::currentRowChanged, this, [this](int row) { form_.lstSegmentsIndex = row; });
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    if (save_) {
      for (int i = 0; i < rows_->count() && static_cast<std::size_t>(i) < form_.lstFpSelected.size(); ++i)
        form_.lstFpSelected[static_cast<std::size_t>(i)] = rows_->item(i)->isSelected();
      form_.txtDescription = FromQt(description_->text());
      if (form_.Save(ui_, s_.Plan)) accept();
      return;
    }
    NavLookupDb nav(s_.Db, s_.Core.ParkingNames);
    PlanEditor editor(s_.Plan, s_.Panel, s_.Aircraft.Current, nav);
    if (!form_.Open(ui_, editor)) return;
    if (onPlanChanged) onPlanChanged();
    accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void SegmentDialog::Load() {
  form_.Load(s_.Plan);
  Refresh();
}

void SegmentDialog::keyPressEvent(QKeyEvent* event) {
  // Delete on a stored segment asks and removes its file.
  if (event->key() == Qt::Key_Delete && segments_->hasFocus()) {
    form_.DeleteKey(ui_);
    Refresh();
    return;
  }
  QDialog::keyPressEvent(event);
}

void SegmentDialog::Refresh() {
  for (int i = 0; i < 4; ++i) types_[static_cast<std::size_t>(i)]->setChecked(i == form_.optSegmentType);
  const QSignalBlocker b1(rows_), b2(segments_);
  rows_->clear();
  for (const std::string& line : form_.lstFpWaypoints) rows_->addItem(ToQt(line));
  segments_->clear();
  for (const std::string& line : form_.lstSegments) segments_->addItem(ToQt(line));
  segments_->setCurrentRow(form_.lstSegmentsIndex);
}

}  // namespace orv::ui
