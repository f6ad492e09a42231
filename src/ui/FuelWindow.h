// Fuel, the fuel calculation for the plan in memory: shows the headless
// FuelWindow's boxes and labels; the unit options recompute them.
#pragma once

#include <QWidget>
#include <array>

#include "app/ProgramState.h"
#include "planning/Profile.h"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace orv::ui {

class FuelDialog : public QWidget {
  Q_OBJECT
public:
  FuelDialog(ProgramState& s, Ui& ui, QWidget* parent = nullptr);

  // Computes the figures for the present plan and aircraft and shows the
  // window; false (the window stays closed) when there is nothing to compute.
  bool Open();
  const FuelWindow& Form() const { return form_; }
  QLineEdit* Box(const char* name) const;

private:
  void Refresh();

  ProgramState& s_;
  Ui& ui_;
  FuelWindow form_;
  std::array<QRadioButton*, 4> units_{};
  QLabel* trip_;
  QLabel* unit_;
  QLabel* alternate_;
  QLabel* altDist_;
  QLabel* altCourse_;
  QLabel* stops_;
};

}  // namespace orv::ui
