// Map, the main window's chart surface. The render pass draws into a picture
// of the widget's size (the surface in twips, 15 a pixel) and keeps a clean
// copy in the back buffer VMap(0); a paint only shows the picture, so a
// redraw costs one pass and an expose none.
#pragma once

#include <QImage>
#include <QLineF>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

#include "map/RenderPass.h"
#include "mapqt/QPainterTarget.h"
#include "mapqt/QtFontSet.h"

namespace orv::ui {

// What the pass reads: the program's state, by reference.
struct MapSources {
  ViewState& View;
  const Settings& Colours;
  const MapLayers& Layers;
  const NavDatabase& Db;
  const FlightPlan& Plan;
  const MapOverlays* Overlays = nullptr;
  const MapLayerRegistry* Registry = nullptr;
};

class MapWidget : public QWidget {
  Q_OBJECT
public:
  MapWidget(MapSources sources, const QtFontSet& fonts, QWidget* parent = nullptr);
  ~MapWidget() override;

  // Runs the render pass now and repaints.
  void Redraw();
  // The picture last drawn (for checks and the screenshot).
  const QImage& Picture() const;
  // The status texts the last pass left (MapStatus(2), MapStatus(3)).
  const MapRenderer& Renderer() const { return renderer_; }
  int Passes() const { return passes_; }

  // The surface's user scale for the present size; the view's zoom step
  // is kept.
  void PrepareSurface();
  // The clean picture of the last pass back onto the map (VMap(0) copied
  // over Map), before the live layers draw on it again.
  void RestoreBackground();
  // Draws over the map picture in the map's units, then repaints.
  void DrawOver(const std::function<void(DrawTarget&)>& draw);

  // lnMeasure and MeasureLabel: shown over the picture, not drawn into it.
  void SetMeasureLine(bool visible, double x1, double y1, double x2, double y2);
  void SetMeasureLabel(bool visible, double x, double y, const QString& text, Colour colour);

  // Key codes in the numbering of the key handler (Page Up 33, plus 107, ...).
  std::function<void(int keyCode)> onKey;
  std::function<void(int delta)> onWheel;
  std::function<void()> onResized;
  // The mouse on the map, in surface units (button 1 left, 2 right; shift,
  // control held). Moves arrive with or without a button held.
  std::function<void(int button, bool shift, bool control, double x, double y)> onMouseDown;
  std::function<void(double x, double y)> onMouseMove;
  std::function<void(int button, bool shift, double x, double y)> onMouseUp;
  // Called once after the first paint.
  std::function<void()> onFirstPaint;

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

private:
  void EnsureTargets();

  MapSources src_;
  const QtFontSet& fonts_;
  MapRenderer renderer_;
  std::unique_ptr<QPainterTarget> map_;
  std::unique_ptr<QPainterTarget> back_;
  bool dirty_ = true;
  bool painted_ = false;
  int passes_ = 0;
  bool measureLineShown_ = false;
  QLineF measureLine_;  // pixels
  bool measureLabelShown_ = false;
  QPointF measureLabelAt_;
  QString measureLabel_;
  Colour measureColour_ = 0;
};

// The key code of the key handler for a Qt key, or 0.
int KeyCodeOf(int qtKey, bool keypad);

}  // namespace orv::ui
