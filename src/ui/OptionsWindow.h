// OVRPrefnew, the options window: one tab of boxes per page of the headless
// OptionsForm, the colour themes with a live preview of the map in the
// chosen colours, OK and Cancel.
#pragma once

#include <QDialog>
#include <functional>

#include "app/OptionsWindow.h"
#include "app/ProgramState.h"
#include "map/RenderPass.h"
#include "mapqt/QtFontSet.h"

class QComboBox;
class QLabel;

namespace orv::ui {

class OptionsDialog : public QDialog {
  Q_OBJECT
public:
  OptionsDialog(ProgramState& s, Ui& ui, QWidget* parent = nullptr);
  // Reads the live settings and orvcolor.ini into the boxes and shows the window.
  void Open();
  OptionsForm& Form() { return form_; }
  QLabel* Preview() const { return preview_; }
  QComboBox* ThemeBox() const { return themes_; }
  // OK: true when the settings were taken and written; the window closes.
  bool OkClick();
  // Called after OK took the settings, so that the map redraws in them.
  std::function<void()> onApplied;

private:
  void Refresh();
  void RedrawPreview();

  ProgramState& s_;
  Ui& ui_;
  OptionsForm form_;
  QtFontSet fonts_;
  MapRenderer renderer_;
  QLabel* preview_;
  QComboBox* themes_;
};

}  // namespace orv::ui
