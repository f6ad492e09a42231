// Aircraft, the aircraft database: the list of aircraft, the values of the
// one chosen in the list, and the commands to select, add, delete and keep.
// All of it is the headless AircraftWindow; this window shows it.
#pragma once

#include <QWidget>
#include <array>

#include "app/ProgramState.h"
#include "planning/Aircraft.h"

class QLineEdit;
class QListWidget;

namespace orv::ui {

class AircraftDialog : public QWidget {
  Q_OBJECT
public:
  AircraftDialog(ProgramState& s, Ui& ui, QWidget* parent = nullptr);

  void Open();
  AircraftWindow& Form() { return form_; }
  QListWidget* List() const { return list_; }
  QLineEdit* Box(AircraftBox box) const { return boxes_[static_cast<std::size_t>(box)]; }

  // Called after the selected aircraft changed (the plan's times follow it).
  std::function<void()> onSelected;

private:
  void Refresh();
  void TakeBoxes();

  ProgramState& s_;
  AircraftWindow form_;
  QListWidget* list_;
  std::array<QLineEdit*, kAircraftBoxCount> boxes_{};
};

}  // namespace orv::ui
