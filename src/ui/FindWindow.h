// frmFind, the object search: shows the headless FrmFind's fields and hands
// the clicks to it. A chosen object goes to onFound, where the program
// centres the map on it.
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "database/FrmFind.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace orv::ui {

class FindWindow : public QWidget {
  Q_OBJECT
public:
  explicit FindWindow(FrmFind& form, QWidget* parent = nullptr);

  // Loads the form and shows the window.
  void Open();
  // Shows the form's state in the controls.
  void Refresh();

  // Called with an object chosen in the list that has a position.
  std::function<void(const FoundObject&)> onFound;

  QLineEdit* TxtFind() const { return txtFind_; }
  QListWidget* LstFind() const { return lstFind_; }
  QPushButton* CmdFind() const { return cmdFind_; }
  QPushButton* CmdCancel() const { return cmdCancel_; }
  QRadioButton* Option(FindKind kind) const { return options_[static_cast<std::size_t>(kind)]; }

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  void Find();
  void Choose(int row);

  FrmFind& form_;
  QLineEdit* txtFind_;
  QListWidget* lstFind_;
  QPushButton* cmdFind_;
  QPushButton* cmdCancel_;
  std::array<QRadioButton*, kFindKindCount> options_{};
};

}  // namespace orv::ui
