#include "ui/SplashWindow.h"

#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

namespace orv::ui {

SplashWindow::SplashWindow(QWidget* parent) : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName("OVRIntro");
  setWindowTitle("Orvanta");
  setAutoFillBackground(true);
  QPalette pal = palette();
  pal.setColor(QPalette::Window, QColor(0x10, 0x20, 0x40));
  pal.setColor(QPalette::WindowText, Qt::white);
  setPalette(pal);

  introPic_ = new QLabel(this);
  introPic_->setObjectName("IntroPic");
  introPic_->setAlignment(Qt::AlignCenter);
  introPic_->setMinimumSize(480, 220);
  introPic_->setText("<span style='font-size:32pt; font-weight:bold'>Orvanta</span><br>"
                     "<span style='font-size:12pt'>flight planner and moving map</span>");

  lblVersion_ = new QLabel(this);
  lblVersion_->setObjectName("lblVersion");
  lblVersion_->setAlignment(Qt::AlignCenter);

  airac_ = new QLabel(this);
  airac_->setObjectName("Airac");
  airac_->setAlignment(Qt::AlignCenter);
  airac_->setVisible(false);

  lblProgress_ = new QLabel(this);
  lblProgress_->setObjectName("lblProgress");
  lblProgress_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  lblProgress_->setMinimumWidth(460);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(introPic_);
  layout->addWidget(lblVersion_);
  layout->addWidget(airac_);
  layout->addWidget(lblProgress_);
  layout->setContentsMargins(16, 16, 16, 12);
}

void SplashWindow::SetPicture(const QString& path) {
  QPixmap pix(path);
  if (!pix.isNull()) introPic_->setPixmap(pix.scaled(480, 320, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void SplashWindow::ClearPicture() { introPic_->clear(); }

void SplashWindow::SetVersion(const QString& text) { lblVersion_->setText(text); }

void SplashWindow::SetAirac(const QString& text, bool visible, unsigned rgb) {
  airac_->setText(text);
  airac_->setStyleSheet(QString("color: #%1; font-weight: bold").arg(rgb, 6, 16, QChar('0')));
  airac_->setVisible(visible);
}

}  // namespace orv::ui
