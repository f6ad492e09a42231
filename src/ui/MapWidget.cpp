#include "ui/MapWidget.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>
#include <algorithm>

#include "mapqt/MapPicture.h"
#include "ui/QtUi.h"

namespace orv::ui {

int KeyCodeOf(int qtKey, bool keypad) {
  switch (qtKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_Up: return 38;
    case Qt::Key_Down: return 40;
    case Qt::Key_Delete: return 46;
    case Qt::Key_I: return 73;
    case Qt::Key_Plus: return keypad ? 107 : 187;
    case Qt::Key_Equal: return 187;  // the main keyboard's plus key, unshifted
    case Qt::Key_Minus: return keypad ? 109 : 189;
    default: return 0;
  }
}

MapWidget::MapWidget(MapSources sources, const QtFontSet& fonts, QWidget* parent)
    : QWidget(parent), src_(sources), fonts_(fonts) {
  setObjectName("Map");
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);  // the status text and the hover box follow the bare cursor
  setMinimumSize(64, 64);
}

MapWidget::~MapWidget() = default;

const QImage& MapWidget::Picture() const {
  static const QImage kNone;
  return map_ ? map_->Image() : kNone;
}

void MapWidget::EnsureTargets() {
  const int w = std::max(1, width());
  const int h = std::max(1, height());
  if (map_ && map_->PixelWidth() == w && map_->PixelHeight() == h) return;
  map_ = std::make_unique<QPainterTarget>(fonts_, w, h);
  back_ = std::make_unique<QPainterTarget>(fonts_, w, h);
  PrepareSurface();
}

void MapWidget::PrepareSurface() {
  if (!map_) return;
  PrepareMapPicture(*map_, src_.View, src_.View.ZoomIndex);
  // The window's zoom factor is its whole height over 8535 twips, not the
  // picture's height over 7000.
  ApplyWindowZoomFactor(src_.View, window()->height() * kTwipsPerPixel);
  back_->SetScaleWidth(map_->ScaleWidth());
  back_->SetScaleHeight(map_->ScaleHeight());
}

void MapWidget::Redraw() {
  EnsureTargets();
  MapScene scene{src_.View, src_.Colours, src_.Layers, src_.Db, src_.Plan, {}, src_.Overlays, src_.Registry};
  renderer_.DrawMap(scene, *map_, back_.get());
  // Every pass writes MapStatus(2) and MapStatus(3), whatever asked for it
  // (the first paint, a resize or a redraw of the window).
  for (int field : {kStatusMagVar, kStatusPosition})
    if (auto* label = window()->findChild<QLabel*>(QString("MapStatus%1").arg(field)))
      label->setText(ToQt(field == kStatusMagVar ? renderer_.MagVarStatus() : renderer_.PositionStatus()));
  ++passes_;
  dirty_ = false;
  update();
}

void MapWidget::RestoreBackground() {
  if (!map_ || dirty_) return;  // a pass is due anyway
  map_->CopyPicture(*back_);
  update();
}

void MapWidget::DrawOver(const std::function<void(DrawTarget&)>& draw) {
  EnsureTargets();
  if (dirty_) Redraw();
  draw(*map_);
  update();
}

void MapWidget::paintEvent(QPaintEvent*) {
  if (dirty_ || !map_) Redraw();
  QPainter p(this);
  p.drawImage(0, 0, map_->Image());
  const QColor measure(RedOf(measureColour_), GreenOf(measureColour_), BlueOf(measureColour_));
  p.setPen(measure);
  if (measureLineShown_) p.drawLine(measureLine_);
  if (measureLabelShown_) p.drawText(measureLabelAt_ + QPointF(6, -6), measureLabel_);
  if (!painted_) {
    painted_ = true;
    if (onFirstPaint) onFirstPaint();
  }
}

void MapWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  EnsureTargets();
  dirty_ = true;
  if (onResized) onResized();
}

void MapWidget::keyPressEvent(QKeyEvent* event) {
  const int code = KeyCodeOf(event->key(), event->modifiers() & Qt::KeypadModifier);
  if (code != 0 && onKey) {
    onKey(code);
    return;
  }
  QWidget::keyPressEvent(event);
}

void MapWidget::wheelEvent(QWheelEvent* event) {
  if (onWheel) onWheel(event->angleDelta().y());
  event->accept();
}

void MapWidget::SetMeasureLine(bool visible, double x1, double y1, double x2, double y2) {
  measureLineShown_ = visible;
  measureLine_ = QLineF(x1 / kTwipsPerPixel, y1 / kTwipsPerPixel, x2 / kTwipsPerPixel, y2 / kTwipsPerPixel);
  update();
}

void MapWidget::SetMeasureLabel(bool visible, double x, double y, const QString& text, Colour colour) {
  measureLabelShown_ = visible;
  measureLabelAt_ = QPointF(x / kTwipsPerPixel, y / kTwipsPerPixel);
  measureLabel_ = text;
  measureColour_ = colour;
  update();
}

namespace {
int ButtonOf(Qt::MouseButton b) { return b == Qt::LeftButton ? 1 : b == Qt::RightButton ? 2 : 0; }
}  // namespace

void MapWidget::mousePressEvent(QMouseEvent* event) {
  setFocus();
  const QPointF at = event->position();
  const int button = ButtonOf(event->button());
  if (button && onMouseDown)
    onMouseDown(button, event->modifiers() & Qt::ShiftModifier, event->modifiers() & Qt::ControlModifier,
                at.x() * kTwipsPerPixel, at.y() * kTwipsPerPixel);
}

void MapWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  if (onMouseMove) onMouseMove(at.x() * kTwipsPerPixel, at.y() * kTwipsPerPixel);
}

void MapWidget::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const int button = ButtonOf(event->button());
  if (button && onMouseUp)
    onMouseUp(button, event->modifiers() & Qt::ShiftModifier, at.x() * kTwipsPerPixel, at.y() * kTwipsPerPixel);
}

}  // namespace orv::ui
