// The stored procedure and route segment windows: LoadSID (Open SID, Open
// STAR) with its list and preview picture, and frmSaveSegment (Open and Save
// Route Segment). Both show their headless controllers and hand the clicks
// back to them.
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "app/ProgramState.h"
#include "mapqt/QtFontSet.h"
#include "planning/RouteSegments.h"
#include "planning/StoredProcedures.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace orv::ui {

class SidStarDialog : public QDialog {
  Q_OBJECT
public:
  // sid: Open SID, else Open STAR. Load() reads the procedure file and says
  // so when the airport has none (false, the window stays closed).
  SidStarDialog(ProgramState& s, Ui& ui, const QtFontSet& fonts, bool sid, QWidget* parent = nullptr);
  bool Load();
  LoadSID& Form() { return form_; }
  QListWidget* List() const { return list_; }
  // The plan changed (OK put the procedure in).
  std::function<void()> onPlanChanged;

private:
  void Refresh();

  ProgramState& s_;
  const QtFontSet& fonts_;
  LoadSID form_;
  QListWidget* list_;
  QLabel* airport_;
  QLabel* name_;
  QLabel* preview_;
};

class SegmentDialog : public QDialog {
  Q_OBJECT
public:
  // save: Save Route Segment (the plan's rows to choose), else Open.
  SegmentDialog(ProgramState& s, Ui& ui, bool save, QWidget* parent = nullptr);
  void Load();
  frmSaveSegment& Form() { return form_; }
  std::function<void()> onPlanChanged;

protected:
  void keyPressEvent(QKeyEvent* event) override;

private:
  void Refresh();

  ProgramState& s_;
  Ui& ui_;
  bool save_;
  frmSaveSegment form_;
  std::array<QRadioButton*, 4> types_{};
  QListWidget* rows_;
  QLineEdit* description_;
  QListWidget* segments_;
};

}  // namespace orv::ui
