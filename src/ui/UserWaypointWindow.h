// frmUser, the user waypoint editor: shows the headless FrmUser's fields and
// list, copies what the user typed back into it before each button, and
// saves through it when the window closes.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <utility>

#include "database/FrmUser.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace orv::ui {

class UserWaypointWindow : public QWidget {
  Q_OBJECT
public:
  explicit UserWaypointWindow(FrmUser& form, QWidget* parent = nullptr);

  void Open();
  void Refresh();
  // A position from outside (a right click on the map) into the fields.
  void ShowPosition(double lat, double lon);

  // The simulator's position for cmdFSPos; nothing while there is none.
  std::function<std::optional<std::pair<double, double>>()> simPosition;
  // Called after the waypoint array changed, so that the map redraws.
  std::function<void()> onChanged;

  QListWidget* LstWP() const { return lstWP_; }
  QRadioButton* OptSort(int index) const { return index == 0 ? optSortIdent_ : optSortName_; }
  QLineEdit* Field(const char* name) const;
  QPushButton* CmdAdd() const { return cmdAdd_; }
  QPushButton* CmdEdit() const { return cmdEdit_; }
  QPushButton* CmdDelete() const { return cmdDelete_; }
  QPushButton* CmdFSPos() const { return cmdFSPos_; }
  QPushButton* CmdCancel() const { return cmdCancel_; }

protected:
  void closeEvent(QCloseEvent* event) override;

public:
  // The typed texts into the form's fields.
  void Collect();

private:
  void Changed(bool changed);

  FrmUser& form_;
  QListWidget* lstWP_;
  QRadioButton* optSortIdent_;
  QRadioButton* optSortName_;
  QLineEdit* txtICAO_;
  QLineEdit* txtName_;
  QLineEdit* txtLatNS_;
  QLineEdit* txtLatDeg_;
  QLineEdit* txtLatMin_;
  QLineEdit* txtLatSec_;
  QLineEdit* txtLonEW_;
  QLineEdit* txtLonDeg_;
  QLineEdit* txtLonMin_;
  QLineEdit* txtLonSec_;
  QPushButton* cmdAdd_;
  QPushButton* cmdEdit_;
  QPushButton* cmdDelete_;
  QPushButton* cmdFSPos_;
  QPushButton* cmdCancel_;
};

}  // namespace orv::ui
