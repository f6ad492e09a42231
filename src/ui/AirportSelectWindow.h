// OVRLL, the airport selection: shows the headless OvrLL's lists, labels and
// buttons and hands every choice to it. After cmdSelect onSelected gets the
// airport for the map to centre on; "Exit" while the start airport is chosen
// calls onEndProgram.
#pragma once

#include <QWidget>
#include <functional>

#include "database/OvrLL.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace orv::ui {

class AirportSelectWindow : public QWidget {
  Q_OBJECT
public:
  explicit AirportSelectWindow(OvrLL& form, QWidget* parent = nullptr);

  // Loads the form and shows the window, on top of the others.
  void Open();
  void Refresh();

  std::function<void(const AirportSelection&)> onSelected;
  std::function<void()> onEndProgram;

  QComboBox* CmbRegion() const { return cmbRegion_; }
  QComboBox* CmbCountry() const { return cmbCountry_; }
  QComboBox* CmbState() const { return cmbState_; }
  QComboBox* CmbCity() const { return cmbCity_; }
  QLabel* LblRegion() const { return lblRegion_; }
  QLabel* LblCountry() const { return lblCountry_; }
  QLabel* LblState() const { return lblState_; }
  QLabel* LblCity() const { return lblCity_; }
  QListWidget* LstAirport() const { return lstAirport_; }
  QCheckBox* ChckAPOnly() const { return chckAPOnly_; }
  QCheckBox* ChckICAO() const { return chckICAO_; }
  QLineEdit* TxtICAO() const { return txtICAO_; }
  QPushButton* CmdSearch() const { return cmdSearch_; }
  QRadioButton* OptDepart() const { return optDepart_; }
  QRadioButton* OptDestination() const { return optDestination_; }
  QPushButton* CmdSelect() const { return cmdSelect_; }
  QPushButton* CmdClose() const { return cmdClose_; }

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  void Close();

  OvrLL& form_;
  QComboBox* cmbRegion_;
  QComboBox* cmbCountry_;
  QComboBox* cmbState_;
  QComboBox* cmbCity_;
  QLabel* lblRegion_;
  QLabel* lblCountry_;
  QLabel* lblState_;
  QLabel* lblCity_;
  QListWidget* lstAirport_;
  QCheckBox* chckAPOnly_;
  QCheckBox* chckICAO_;
  QLineEdit* txtICAO_;
  QPushButton* cmdSearch_;
  QRadioButton* optDepart_;
  QRadioButton* optDestination_;
  QPushButton* cmdSelect_;
  QPushButton* cmdClose_;
  bool closing_ = false;
};

}  // namespace orv::ui
