#include "ui/FindWindow.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/QtUi.h"

namespace orv::ui {

namespace {

struct OptionControl {
  const char* name;
  const char* caption;
};

// In the order of FindKind.
constexpr OptionControl kOptions[kFindKindCount] = {
    {"optAP", "&Airport"},
    {"optVOR", "&VOR"},
    {"optNDB", "&NDB"},
    {"optILS", "&ILS"},
    {"optInt", "In&tersection"},
    {"optFix", "GPS &Fix"},
    {"optVictor", "Victor Air&way"},
    {"optJet", "&Jet Airway"},
};

}  // namespace

FindWindow::FindWindow(FrmFind& form, QWidget* parent) : QWidget(parent, Qt::Tool), form_(form) {
  setObjectName("frmFind");
  setWindowTitle("Find Object");

  txtFind_ = new QLineEdit(this);
  txtFind_->setObjectName("txtFind");
  cmdFind_ = new QPushButton("&Find", this);
  cmdFind_->setObjectName("cmdFind");
  cmdFind_->setDefault(true);
  cmdCancel_ = new QPushButton("&Cancel", this);
  cmdCancel_->setObjectName("cmdCancel");
  lstFind_ = new QListWidget(this);
  lstFind_->setObjectName("lstFind");
  lstFind_->setMinimumSize(360, 220);

  auto* kinds = new QGridLayout;
  for (int i = 0; i < kFindKindCount; ++i) {
    auto* opt = new QRadioButton(kOptions[i].caption, this);
    opt->setObjectName(kOptions[i].name);
    options_[static_cast<std::size_t>(i)] = opt;
    kinds->addWidget(opt, i / 4, i % 4);
    const auto kind = static_cast<FindKind>(i);
    connect(opt, &QRadioButton::clicked, this, [this, kind] { form_.OptClick(kind); });
  }

  auto* top = new QHBoxLayout;
  top->addWidget(txtFind_, 1);
  top->addWidget(cmdFind_);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch(1);
  bottom->addWidget(cmdCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addLayout(kinds);
  layout->addWidget(lstFind_, 1);
  layout->addLayout(bottom);

  connect(cmdFind_, &QPushButton::clicked, this, [this] { Find(); });
  connect(txtFind_, &QLineEdit::returnPressed, this, [this] { Find(); });
  connect(lstFind_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Choose(lstFind_->row(item)); });
  connect(cmdCancel_, &QPushButton::clicked, this, [this] { close(); });
  Refresh();
}

void FindWindow::Open() {
  form_.FormLoad();
  Refresh();
  show();
  raise();
  txtFind_->setFocus();
}

void FindWindow::Refresh() {
  txtFind_->setText(ToQt(form_.txtFind));
  options_[static_cast<std::size_t>(form_.Option)]->setChecked(true);
  QSignalBlocker block(lstFind_);
  lstFind_->clear();
  QStringList lines;
  lines.reserve(static_cast<qsizetype>(form_.lstFind.size()));
  for (const std::string& line : form_.lstFind) lines << ToQt(line);
  lstFind_->addItems(lines);
  lstFind_->setCurrentRow(form_.lstFindIndex);
}

void FindWindow::Find() {
  form_.txtFind = FromQt(txtFind_->text());
  form_.CmdFindClick();
  Refresh();
}

void FindWindow::Choose(int row) {
  std::optional<FoundObject> found = form_.LstFindClick(row);
  if (found && found->Lat != kNoLatitude && onFound) onFound(*found);
}

void FindWindow::closeEvent(QCloseEvent* event) {
  form_.CmdCancelClick();
  QWidget::closeEvent(event);
}

}  // namespace orv::ui
