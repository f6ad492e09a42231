#include "ui/OptionsWindow.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "mapqt/MapPicture.h"
#include "mapqt/QPainterTarget.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {

QColor ToQColor(Colour c) { return QColor(RedOf(c), GreenOf(c), BlueOf(c)); }

void PaintSwatch(QPushButton* b, Colour c) {
  b->setStyleSheet(QString("background-color: %1").arg(ToQColor(c).name()));
}

}  // namespace

OptionsDialog::OptionsDialog(ProgramState& s, Ui& ui, QWidget* parent) : QDialog(parent), s_(s), ui_(ui) {
  setObjectName("OVRPrefnew");
  setWindowTitle("Options");
  auto* tabs = new QTabWidget(this);
  std::vector<std::pair<std::string_view, QFormLayout*>> pages;
  auto pageOf = [&](std::string_view page) {
    for (auto& [name, form] : pages)
      if (name == page) return form;
    auto* w = new QWidget(tabs);
    auto* form = new QFormLayout(w);
    tabs->addTab(w, ToQt(page));
    pages.emplace_back(page, form);
    return form;
  };
  for (const OptionDef& d : OptionDefs()) {
    const QString key = ToQt(d.Key);
    const std::string k(d.Key);
    QFormLayout* form = pageOf(d.Page);
    switch (d.Kind) {
      case OptionKind::Number:
      case OptionKind::Text: {
        auto* box = new QLineEdit(this);
        box->setObjectName(key);
        connect(box, &QLineEdit::textEdited, this, [this, k](const QString& t) { form_.SetValue(k, FromQt(t)); });
        form->addRow(ToQt(d.Caption), box);
        break;
      }
      case OptionKind::Flag: {
        auto* box = new QCheckBox(ToQt(d.Caption), this);
        box->setObjectName(key);
        connect(box, &QCheckBox::toggled, this, [this, k](bool on) { form_.SetValue(k, on ? "1" : "0"); });
        form->addRow(box);
        break;
      }
      case OptionKind::Choice: {
        auto* row = new QHBoxLayout;
        auto* group = new QButtonGroup(this);
        group->setObjectName(key);
        for (std::size_t i = 0; i < d.Choices.size(); ++i) {
          auto* opt = new QRadioButton(ToQt(d.Choices[i]), this);
          opt->setObjectName(key + QString::number(i));
          group->addButton(opt, static_cast<int>(i));
          row->addWidget(opt);
        }
        connect(group, &QButtonGroup::idClicked, this,
                [this, k](int id) { form_.SetValue(k, std::to_string(id)); });
        form->addRow(ToQt(d.Caption), row);
        break;
      }
      case OptionKind::Colour: {
        auto* button = new QPushButton(this);
        button->setObjectName(key);
        button->setFixedWidth(60);
        connect(button, &QPushButton::clicked, this, [this, k, button] {
          const QColor c = QColorDialog::getColor(ToQColor(form_.ColourOf(k)), this);
          if (!c.isValid()) return;
          form_.SetColour(k, RgbColour(c.red(), c.green(), c.blue()));
          PaintSwatch(button, form_.ColourOf(k));
          RedrawPreview();
        });
        form->addRow(ToQt(d.Caption), button);
        break;
      }
    }
  }
  themes_ = new QComboBox(this);
  themes_->setObjectName("cboTheme");
  connect(themes_, &QComboBox::textActivated, this, [this](const QString& name) {
    if (form_.ApplyTheme(FromQt(name))) Refresh();
  });
  preview_ = new QLabel(this);
  preview_->setObjectName("picPreview");
  preview_->setFixedSize(320, 220);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  buttons->button(QDialogButtonBox::Cancel)->setObjectName("cmdCancel");
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { OkClick(); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* right = new QVBoxLayout;
  auto* themeRow = new QHBoxLayout;
  themeRow->addWidget(new QLabel("Colour theme:", this));
  themeRow->addWidget(themes_, 1);
  right->addLayout(themeRow);
  right->addWidget(preview_);
  right->addStretch();
  auto* top = new QHBoxLayout;
  top->addWidget(tabs, 1);
  top->addLayout(right);
  auto* v = new QVBoxLayout(this);
  v->addLayout(top);
  v->addWidget(buttons);
}

void OptionsDialog::Open() {
  form_.Load(s_.Core.Config, ReadColorFile(s_.Core.Folder, ui_));
  themes_->clear();
  for (const std::string& name : form_.Themes()) themes_->addItem(ToQt(name));
  themes_->setCurrentIndex(-1);
  Refresh();
  show();
  raise();
}

void OptionsDialog::Refresh() {
  for (const OptionDef& d : OptionDefs()) {
    const QString key = ToQt(d.Key);
    const std::string value = form_.Value(d.Key);
    switch (d.Kind) {
      case OptionKind::Number:
      case OptionKind::Text: findChild<QLineEdit*>(key)->setText(ToQt(value)); break;
      case OptionKind::Flag: {
        QCheckBox* box = findChild<QCheckBox*>(key);
        const QSignalBlocker quiet(box);
        box->setChecked(value != "0");
        break;
      }
      case OptionKind::Choice:
        if (QAbstractButton* b = findChild<QButtonGroup*>(key)->button(std::atoi(value.c_str()))) b->setChecked(true);
        break;
      case OptionKind::Colour: PaintSwatch(findChild<QPushButton*>(key), form_.ColourOf(d.Key)); break;
    }
  }
  RedrawPreview();
}

void OptionsDialog::RedrawPreview() {
  // The present view of the map, small, in the colours being chosen.
  QPainterTarget target(fonts_, preview_->width(), preview_->height());
  ViewState view = s_.View;
  PrepareMapPicture(target, view, s_.View.ZoomIndex);
  MapScene scene{view, form_.Preview(), s_.Layers, s_.Db, s_.Plan, {}, nullptr, nullptr};
  renderer_.DrawMap(scene, target);
  preview_->setPixmap(QPixmap::fromImage(target.Image()));
}

bool OptionsDialog::OkClick() {
  if (!form_.Ok(s_.Core.Config, s_.Core.Folder, ui_)) return false;
  if (onApplied) onApplied();
  accept();
  return true;
}

}  // namespace orv::ui
