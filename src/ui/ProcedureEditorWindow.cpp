#include "ui/ProcedureEditorWindow.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/QtUi.h"

namespace orv::ui {

namespace {

QPushButton* NamedButton(QWidget* parent, const char* name, const char* caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  return b;
}

QHBoxLayout* Pair(QWidget* parent, QRadioButton*& a, const char* nameA, const char* captionA, QRadioButton*& b,
                  const char* nameB, const char* captionB) {
  a = new QRadioButton(captionA, parent);
  a->setObjectName(nameA);
  b = new QRadioButton(captionB, parent);
  b->setObjectName(nameB);
  auto* group = new QButtonGroup(parent);
  group->addButton(a);
  group->addButton(b);
  auto* row = new QHBoxLayout;
  row->addWidget(a);
  row->addWidget(b);
  return row;
}

}  // namespace

// ---------------------------------------------------------------- ProcLoad, ProcSave

ProcListDialog::ProcListDialog(const AppFolder& app, Ui& ui, bool save, QWidget* parent)
    : QDialog(parent), app_(app), ui_(ui) {
  setObjectName(save ? "ProcSave" : "ProcLoad");
  setWindowTitle(save ? "Save Procedure" : "Load Procedure");
  list_ = new QListWidget(this);
  list_->setObjectName("lstProc");
  auto* v = new QVBoxLayout(this);
  v->addWidget(list_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  if (save) {
    name_ = new QLineEdit(this);
    name_->setObjectName("txtName");
    name_->setMaxLength(20);
    v->addWidget(name_);
    connect(list_, &QListWidget::currentTextChanged, name_, &QLineEdit::setText);
    auto* ok = NamedButton(this, "cmdSave", "&Save");
    buttons->addWidget(ok);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  } else {
    auto* load = NamedButton(this, "cmdLoad", "&Load");
    auto* del = NamedButton(this, "cmdDelete", "&Delete");
    buttons->addWidget(load);
    buttons->addWidget(del);
    connect(load, &QPushButton::clicked, this, &QDialog::accept);
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(del, &QPushButton::clicked, this, [this] {
      if (list_->currentRow() < 0) return;
      if (DeleteProcShape(app_, lib_.Shapes[static_cast<std::size_t>(list_->currentRow())].Name, ui_)) Refresh();
    });
  }
  auto* cancel = NamedButton(this, "cmdCancel", "&Cancel");
  buttons->addWidget(cancel);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  v->addLayout(buttons);
  resize(300, 320);
}

bool ProcListDialog::Refresh() {
  lib_ = ReadProcLibrary(app_);
  list_->clear();
  if (lib_.Damaged) {
    ui_.MsgBox(*lib_.Damaged + " The file is left as it is.");
    return false;
  }
  for (const ProcShape& p : lib_.Shapes) list_->addItem(ToQt(p.Name + "  (" + p.Fix + ")"));
  return true;
}

// ---------------------------------------------------------------- EdProc

ProcedureEditorWindow::ProcedureEditorWindow(ProgramState& s, Ui& ui, QWidget* parent)
    : QWidget(parent, Qt::Tool), s_(s), ui_(ui) {
  setObjectName("EdProc");
  setWindowTitle("Procedure");
  auto* form = new QFormLayout;
  for (auto [name, caption] : {std::pair{"txtName", "Name:"}, std::pair{"txtFix", "Fix:"},
                               std::pair{"txtCourse", "Inbound course (\xC2\xB0M):"}, std::pair{"txtLeg", "Leg:"},
                               std::pair{"txtSpeed", "Speed (kt):"}}) {
    auto* box = new QLineEdit(this);
    box->setObjectName(name);
    form->addRow(QString::fromUtf8(caption), box);
  }
  form->addRow("Shape:", Pair(this, hold_, "optHolding", "&Holding", turn_, "optProcTurn", "Procedure &turn"));
  form->addRow("Turns:", Pair(this, right_, "optRight", "&Right", left_, "optLeft", "&Left"));
  form->addRow("Leg in:", Pair(this, minutes_, "optMinutes", "&Minutes", miles_, "optMiles", "&NM"));
  auto* draw = NamedButton(this, "cmdDraw", "&Draw");
  auto* save = NamedButton(this, "cmdSave", "&Save...");
  auto* load = NamedButton(this, "cmdLoad", "L&oad...");
  auto* close = NamedButton(this, "cmdClose", "&Close");
  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {draw, save, load, close}) buttons->addWidget(b);
  auto* v = new QVBoxLayout(this);
  v->addLayout(form);
  v->addLayout(buttons);
  connect(draw, &QPushButton::clicked, this, [this] { DrawClick(); });
  connect(save, &QPushButton::clicked, this, [this] {
    ProcListDialog dialog(s_.Core.Folder, ui_, true, this);
    if (!dialog.Refresh()) return;
    dialog.NameBox()->setText(Box("txtName")->text());
    if (dialog.exec() == QDialog::Accepted) SaveAs(FromQt(dialog.NameBox()->text()));
  });
  connect(load, &QPushButton::clicked, this, [this] {
    ProcListDialog dialog(s_.Core.Folder, ui_, false, this);
    if (!dialog.Refresh()) return;
    if (dialog.exec() == QDialog::Accepted && dialog.List()->currentRow() >= 0) {
      form_.FromShape(dialog.Library().Shapes[static_cast<std::size_t>(dialog.List()->currentRow())]);
      Refresh();
      DrawClick();
    }
  });
  connect(close, &QPushButton::clicked, this, &QWidget::close);
}

QLineEdit* ProcedureEditorWindow::Box(const char* name) const { return findChild<QLineEdit*>(name); }

void ProcedureEditorWindow::Open() {
  form_.Load(s_);
  Refresh();
  show();
  raise();
}

void ProcedureEditorWindow::Refresh() {
  Box("txtName")->setText(ToQt(form_.Name));
  Box("txtFix")->setText(ToQt(form_.Fix));
  Box("txtCourse")->setText(ToQt(form_.Course));
  Box("txtLeg")->setText(ToQt(form_.Leg));
  Box("txtSpeed")->setText(ToQt(form_.Speed));
  (form_.Kind == ProcKind::Holding ? hold_ : turn_)->setChecked(true);
  (form_.RightTurns ? right_ : left_)->setChecked(true);
  (form_.LegInMinutes ? minutes_ : miles_)->setChecked(true);
}

void ProcedureEditorWindow::Take() {
  form_.Name = FromQt(Box("txtName")->text());
  form_.Fix = FromQt(Box("txtFix")->text());
  form_.Course = FromQt(Box("txtCourse")->text());
  form_.Leg = FromQt(Box("txtLeg")->text());
  form_.Speed = FromQt(Box("txtSpeed")->text());
  form_.Kind = hold_->isChecked() ? ProcKind::Holding : ProcKind::ProcedureTurn;
  form_.RightTurns = right_->isChecked();
  form_.LegInMinutes = minutes_->isChecked();
}

bool ProcedureEditorWindow::DrawClick() {
  Take();
  if (!form_.Draw(s_, ui_)) return false;
  if (onDrawn) onDrawn();
  return true;
}

bool ProcedureEditorWindow::SaveAs(const std::string& name) {
  Take();
  form_.Name = name;
  Box("txtName")->setText(ToQt(name));
  const std::optional<ProcShape> shape = form_.Shape(s_, ui_);
  return shape && SaveProcShape(s_.Core.Folder, *shape, ui_);
}

bool ProcedureEditorWindow::LoadShape(int row) {
  const ProcLibrary lib = ReadProcLibrary(s_.Core.Folder);
  if (lib.Damaged || row < 0 || static_cast<std::size_t>(row) >= lib.Shapes.size()) return false;
  form_.FromShape(lib.Shapes[static_cast<std::size_t>(row)]);
  Refresh();
  return DrawClick();
}

}  // namespace orv::ui
