// The plan's file windows: SaveRoute (Save As, with the export choices) and
// PrintFP (the papers' three parts), both over their headless controllers;
// printing goes through Qt's print dialog to the platform's printers or to a
// PDF file.
#pragma once

#include <QDialog>
#include <array>

#include "app/MainWindowController.h"
#include "documents/Papers.h"
#include "mapqt/QtFontSet.h"

class QCheckBox;
class QLineEdit;
class QListWidget;
class QRadioButton;

namespace orv::ui {

class SaveRouteDialog : public QDialog {
  Q_OBJECT
public:
  SaveRouteDialog(ProgramState& s, MainWindowController& controller, QWidget* parent = nullptr);
  // Shows the controls of the program state's SaveRoute form.
  void Refresh();
  QLineEdit* FileName() const { return txtFplan_; }
  QCheckBox* Format(int index) const { return formats_[static_cast<std::size_t>(index)]; }

private:
  void TakeControls();

  ProgramState& s_;
  MainWindowController& controller_;
  QLineEdit* txtFplan_;
  QLineEdit* dirFplan_;
  QListWidget* flFplan_;
  QRadioButton* optIFR_;
  QRadioButton* optVFR_;
  std::array<QCheckBox*, kSaveFormatCount> formats_{};
};

// PrintFP's three parts, then Qt's print dialog; the papers go to the printer
// chosen there (or to a PDF file).
void PrintPlanPapers(ProgramState& s, const QtFontSet& fonts, Ui& ui, QWidget* parent);
// menuPrintMap: the present view on one landscape page.
void PrintMapView(ProgramState& s, const QtFontSet& fonts, QWidget* parent);

}  // namespace orv::ui
