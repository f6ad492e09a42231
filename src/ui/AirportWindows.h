// The airport side windows: APPrev (the airport information lists), OVRLay
// (the Runway Window, the airport's layout drawn by the core) and
// frmSelParking (parking positions and runway ends of the arrival airport).
// Each shows the state of its headless model and forwards its buttons.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "app/AirportWindows.h"
#include "mapqt/QtFontSet.h"

class QLabel;
class QLineEdit;
class QListWidget;

namespace orv::ui {

class LayoutWindow : public QWidget {
  Q_OBJECT
public:
  LayoutWindow(const ProgramState& s, QWidget* parent = nullptr);
  // Draws the airport (an index into the airport array) and shows the window.
  void Open(int32_t airport);
  int32_t Airport() const { return airport_; }
  // The last picture drawn.
  const QImage& Picture() const { return picture_; }

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

private:
  void Redraw();

  const ProgramState& s_;
  QtFontSet fonts_;
  QImage picture_;
  int32_t airport_ = -1;
};

class AirportPreviewWindow : public QWidget {
  Q_OBJECT
public:
  AirportPreviewWindow(const ProgramState& s, Ui& ui, QWidget* parent = nullptr);
  // Opens on the plan's destination, departure or the airport nearest the
  // map's centre; false (nothing shown) without airports.
  bool Open();
  const AirportPreview& Form() const { return form_; }
  QListWidget* List(const char* name) const;
  // cmdLayout: the Runway Window for the shown airport.
  std::function<void(int32_t)> onLayout;

private:
  void Refresh();

  const ProgramState& s_;
  Ui& ui_;
  AirportPreview form_;
  QLineEdit* icao_;
  QLabel* header_;
};

class ParkingWindow : public QWidget {
  Q_OBJECT
public:
  ParkingWindow(ProgramState& s, Ui& ui, QWidget* parent = nullptr);
  bool Open();
  const ParkingSelection& Form() const { return form_; }
  QListWidget* List() const { return list_; }
  // cmdSelect.
  bool SelectClick();

private:
  ProgramState& s_;
  Ui& ui_;
  ParkingSelection form_;
  QListWidget* list_;
};

}  // namespace orv::ui
