// frmGPSMM, the small GPS panel a pilot keeps over the simulator's view: four
// to six text lines written by the live tick and the page buttons. It is a
// frameless window that stays on top and drags from anywhere; a line is
// painted whole in one go, so a tick never flickers.
#pragma once

#include <QWidget>
#include <map>
#include <string>

#include "app/GpsWindow.h"

class QPushButton;

namespace orv::ui {

class GpsWindow : public QWidget {
  Q_OBJECT
public:
  GpsWindow(GpsWindowLogic& logic, QWidget* parent = nullptr);

  // One line at its vertical place (the tick's 5, 20, 35 ...), in a colour
  // of the settings' kind.
  void SetLine(int y, std::string_view text, Colour colour);
  QString LineText(int y) const;
  QPushButton* Button(const char* name) const;
  // The button colours of Auto Heading and Go To follow the coupling.
  void RefreshButtons();

protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

private:
  struct Line {
    QString Text;
    Colour Ink = 65280;
  };
  GpsWindowLogic& logic_;
  std::map<int, Line> lines_;
  QPoint dragFrom_;
  QWidget* display_;
};

}  // namespace orv::ui
