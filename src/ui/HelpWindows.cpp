#include "ui/HelpWindows.h"

#include <QFile>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "core/Startup.h"
#include "ui/QtUi.h"

namespace orv::ui {

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("frmHelp");
  setWindowTitle("Orvanta Help");
  browser_ = new QTextBrowser(this);
  browser_->setObjectName("txtHelp");
  browser_->setOpenExternalLinks(true);
  QFile guide(":/user-guide.md");
  if (guide.open(QIODevice::ReadOnly)) browser_->setMarkdown(QString::fromUtf8(guide.readAll()));
  auto* close = new QPushButton("&Close", this);
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(browser_, 1);
  layout->addWidget(close, 0, Qt::AlignRight);
  resize(640, 720);
}

QString AboutText() {
  return QStringLiteral(
             "<h3>Orvanta</h3><p>%1</p>"
             "<p>A flight planner and moving map for PC flight simulators.</p>"
             "<p><b>Data sources</b></p><ul>"
             "<li>Airports, navaids, fixes and airways: the X-Plane data formats, as published by "
             "Robin A. Peel and the FlightGear project (GNU General Public License, version 2 or later).</li>"
             "<li>Coastlines, lakes and rivers: Natural Earth (public domain).</li>"
             "<li>Magnetic variation: the World Magnetic Model 2025 of NOAA NCEI and the British "
             "Geological Survey (public domain).</li>"
             "<li>Procedures, when built with them: the FAA's CIFP (public domain).</li></ul>"
             "<p>Not for real-world navigation.</p>")
      // " · Version 8.0 · Build:..." without its leading separator.
      .arg(ToQt(kVersionText.substr(3)));
}

void ShowAbout(QWidget* parent) {
  QMessageBox box(parent);
  box.setObjectName("frmAbout");
  box.setWindowTitle("About Orvanta");
  box.setIconPixmap(QIcon(":/orvanta.svg").pixmap(64, 64));
  box.setTextFormat(Qt::RichText);
  box.setText(AboutText());
  box.exec();
}

}  // namespace orv::ui
