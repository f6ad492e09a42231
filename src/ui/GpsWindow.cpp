#include "ui/GpsWindow.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "mapqt/QPainterTarget.h"
#include "ui/QtUi.h"

namespace orv::ui {

namespace {
constexpr int kDisplayHeight = 100;  // the tick's lines reach down to 95
}

GpsWindow::GpsWindow(GpsWindowLogic& logic, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), logic_(logic) {
  setObjectName("frmGPSMM");
  setWindowTitle("GPS");
  display_ = new QWidget(this);
  display_->setObjectName("GPSWindow");
  display_->setFixedSize(330, kDisplayHeight + 10);
  display_->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* buttons = new QGridLayout;
  int i = 0;
  for (const GpsButtonInfo& b : GpsButtons()) {
    auto* button = new QPushButton(ToQt(b.Caption.empty() ? std::string_view("ILS") : b.Caption), this);
    button->setObjectName(QString::fromLatin1(b.Name.data(), static_cast<int>(b.Name.size())));
    button->setToolTip(ToQt(b.ToolTip));
    button->setFocusPolicy(Qt::NoFocus);
    const std::string name(b.Name);
    connect(button, &QPushButton::clicked, this, [this, name] {
      logic_.Click(name);
      RefreshButtons();
    });
    buttons->addWidget(button, i / 6, i % 6);
    ++i;
  }
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(display_);
  layout->addLayout(buttons);
  setStyleSheet("QWidget#frmGPSMM { background: #202020; border: 2px solid #606060; }");
  RefreshButtons();
}

QPushButton* GpsWindow::Button(const char* name) const { return findChild<QPushButton*>(name); }

void GpsWindow::RefreshButtons() {
  auto paint = [](QPushButton* b, Colour c) {
    if (b) b->setStyleSheet(QString("background: %1;").arg(ToQColor(c).name()));
  };
  paint(Button("cmdAutoHdg"), logic_.AutoHdgColour());
  paint(Button("cmdDirTo"), logic_.DirToColour());
}

void GpsWindow::SetLine(int y, std::string_view text, Colour colour) {
  Line& line = lines_[y];
  const QString t = ToQt(text);
  if (line.Text == t && line.Ink == colour) return;
  line.Text = t;
  line.Ink = colour;
  update(display_->geometry());
}

QString GpsWindow::LineText(int y) const {
  auto it = lines_.find(y);
  return it == lines_.end() ? QString() : it->second.Text;
}

void GpsWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  QPainter p(this);
  const QRect r = display_->geometry();
  p.fillRect(r, Qt::black);
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setPixelSize(12);
  font.setBold(true);
  p.setFont(font);
  for (const auto& [y, line] : lines_) {
    p.setPen(ToQColor(line.Ink));
    p.drawText(r.left() + 4, r.top() + y + 12, line.Text);
  }
}

void GpsWindow::mousePressEvent(QMouseEvent* event) {
  dragFrom_ = event->globalPosition().toPoint() - frameGeometry().topLeft();
}

void GpsWindow::mouseMoveEvent(QMouseEvent* event) {
  // Dragging anywhere moves the window: it has no caption of its own.
  if (event->buttons() & Qt::LeftButton) move(event->globalPosition().toPoint() - dragFrom_);
}

}  // namespace orv::ui
