// The Blackbox windows over the headless FlightAnalysis: frmSaveRec (save
// the trace with its description), frmLoadRec (the recordings of the user
// folder with their descriptions, load and delete), and the stepping view of
// Flight Analysis: the labels of the sample shown with the step buttons and
// updnMaxVert, and pctVert, the profile drawn by the core on the map's lower
// edge.
#pragma once

#include <QDialog>
#include <QWidget>
#include <map>
#include <string>

#include "app/MainWindowController.h"
#include "mapqt/QtFontSet.h"

class QDockWidget;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QSpinBox;

namespace orv::ui {

class SaveRecDialog : public QDialog {
  Q_OBJECT
public:
  explicit SaveRecDialog(FlightAnalysis& analysis, QWidget* parent = nullptr);
  // The form's texts into the controls ("untitled" when it was just opened).
  void Refresh();
  QLineEdit* FileName() const { return txtFilename_; }
  QLineEdit* Description() const { return txtFileDescription_; }

private:
  FlightAnalysis& a_;
  QLineEdit* txtFilename_;
  QLineEdit* txtFileDescription_;
};

class LoadRecDialog : public QDialog {
  Q_OBJECT
public:
  explicit LoadRecDialog(FlightAnalysis& analysis, QWidget* parent = nullptr);
  // The list of the user folder again, nothing chosen.
  void Refresh();
  QListWidget* Files() const { return flstFiles_; }
  QLabel* Description() const { return lbldescription_; }

private:
  FlightAnalysis& a_;
  QListWidget* flstFiles_;
  QLabel* lbldescription_;
};

// pctVert: paints the core's profile at the widget's size.
class ProfileView : public QWidget {
  Q_OBJECT
public:
  ProfileView(const FlightAnalysis& analysis, const QtFontSet& fonts, QWidget* parent = nullptr);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  const FlightAnalysis& a_;
  const QtFontSet& fonts_;
};

// The stepping view around the map: the labels in a panel at the right with
// the step buttons and updnMaxVert, and pctVert over the map's lower edge.
class ReplayView : public QObject {
  Q_OBJECT
public:
  ReplayView(QMainWindow& window, QWidget& map, MainWindowController& controller, const QtFontSet& fonts);

  void Show(bool on);
  void ShowRow(const ReplayLabels& labels);
  // pctVert centred on the lower edge of the map, 100 twips above it.
  void Place();

  QLabel* Label(const std::string& name) const;
  ProfileView* Profile() const { return profile_; }
  QDockWidget* Panel() const { return dock_; }

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  QWidget& map_;
  MainWindowController& c_;
  QDockWidget* dock_;
  ProfileView* profile_;
  QSpinBox* updnMaxVert_;
  std::map<std::string, QLabel*> labels_;
};

}  // namespace orv::ui
