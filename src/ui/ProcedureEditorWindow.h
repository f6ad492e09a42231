// EdProc, the procedure editor, with its ProcLoad and ProcSave windows: the
// boxes of the headless ProcedureEditor, Draw (the shape on the map), and
// the named shapes of proc.orv.
#pragma once

#include <QDialog>
#include <QWidget>
#include <functional>

#include "app/ProcedureEditor.h"

class QLineEdit;
class QListWidget;
class QRadioButton;

namespace orv::ui {

class ProcListDialog : public QDialog {
  Q_OBJECT
public:
  // save: ProcSave (a name box and Save), else ProcLoad (Load and Delete).
  ProcListDialog(const AppFolder& app, Ui& ui, bool save, QWidget* parent = nullptr);
  // Reads proc.orv into the list; false (after the message) when it is damaged.
  bool Refresh();
  QListWidget* List() const { return list_; }
  QLineEdit* NameBox() const { return name_; }
  const ProcLibrary& Library() const { return lib_; }

private:
  const AppFolder& app_;
  Ui& ui_;
  ProcLibrary lib_;
  QListWidget* list_;
  QLineEdit* name_ = nullptr;
};

class ProcedureEditorWindow : public QWidget {
  Q_OBJECT
public:
  ProcedureEditorWindow(ProgramState& s, Ui& ui, QWidget* parent = nullptr);
  void Open();
  ProcedureEditor& Form() { return form_; }
  QLineEdit* Box(const char* name) const;
  // cmdDraw; true when the shape became the display procedure.
  bool DrawClick();
  // ProcSave's Save with the name typed there; ProcLoad's Load of a row.
  bool SaveAs(const std::string& name);
  bool LoadShape(int row);
  // The map and the menu follow a drawn shape.
  std::function<void()> onDrawn;

private:
  void Refresh();
  void Take();

  ProgramState& s_;
  Ui& ui_;
  ProcedureEditor form_;
  QRadioButton* hold_;
  QRadioButton* turn_;
  QRadioButton* right_;
  QRadioButton* left_;
  QRadioButton* minutes_;
  QRadioButton* miles_;
};

}  // namespace orv::ui
