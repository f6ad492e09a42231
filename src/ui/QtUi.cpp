#include "ui/QtUi.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>

#include "core/Runtime.h"

namespace orv::ui {

QString ToQt(std::string_view latin1Text) {
  return QString::fromUtf8(Latin1ToUtf8(latin1Text).c_str());
}

std::string FromQt(const QString& text) { return Utf8ToLatin1(text.toUtf8().toStdString()); }

namespace {
QMessageBox::Icon IconOf(MsgStyle style) {
  switch (style) {
    case MsgStyle::Information: return QMessageBox::Information;
    case MsgStyle::Critical: return QMessageBox::Critical;
    case MsgStyle::Question: return QMessageBox::Question;
    case MsgStyle::Exclamation: break;
  }
  return QMessageBox::Warning;
}
}  // namespace

void QtUi::MsgBox(std::string_view text, MsgStyle style, std::string_view title) {
  QMessageBox box(IconOf(style), ToQt(title), ToQt(text), QMessageBox::Ok, parent_);
  box.exec();
}

bool QtUi::AskYesNo(std::string_view text, std::string_view title) {
  return QMessageBox::question(parent_, ToQt(title), ToQt(text), QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

Answer QtUi::AskYesNoCancel(std::string_view text, std::string_view title) {
  auto b = QMessageBox::question(parent_, ToQt(title), ToQt(text),
                                 QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
  if (b == QMessageBox::Yes) return Answer::Yes;
  if (b == QMessageBox::No) return Answer::No;
  return Answer::Cancel;
}

namespace {
// "Plans (*.pln)|*.pln|All files (*.*)|*.*" to Qt's "Plans (*.pln);;All files (*.*)":
// the description carries the patterns Qt reads.
QString QtFilter(const std::string& filter) {
  QStringList parts = ToQt(filter).split('|');
  QStringList out;
  for (int i = 0; i < parts.size(); i += 2) out << parts[i];
  return out.join(";;");
}

QString StartPath(const FileQuestion& q) {
  if (q.Name.empty()) return ToQt(q.Folder);
  return QDir(ToQt(q.Folder)).filePath(ToQt(q.Name));
}
}  // namespace

bool QtUi::AskOpenFile(const FileQuestion& q, std::string& path) {
  QString chosen = QFileDialog::getOpenFileName(parent_, ToQt(q.Title), StartPath(q), QtFilter(q.Filter));
  if (chosen.isEmpty()) return false;
  path = QDir::toNativeSeparators(chosen).toLocal8Bit().toStdString();
  return true;
}

bool QtUi::AskSaveFile(const FileQuestion& q, std::string& path) {
  QString chosen = QFileDialog::getSaveFileName(parent_, ToQt(q.Title), StartPath(q), QtFilter(q.Filter));
  if (chosen.isEmpty()) return false;
  path = QDir::toNativeSeparators(chosen).toLocal8Bit().toStdString();
  return true;
}

bool QtUi::AskText(std::string_view prompt, std::string_view title, std::string& inOut) {
  bool ok = false;
  QString value = QInputDialog::getText(parent_, ToQt(title), ToQt(prompt), QLineEdit::Normal, ToQt(inOut), &ok);
  if (ok) inOut = FromQt(value);
  return ok;
}

void QtUi::Beep() { QApplication::beep(); }

void QtUi::SetWaitCursor(bool on) {
  if (on == waitCursor_) return;
  waitCursor_ = on;
  if (on)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void QtUi::SetCaption(std::string_view window, std::string_view text) {
  auto it = windows_.find(window);
  if (it != windows_.end() && it->second) it->second->setWindowTitle(ToQt(text));
}

void QtUi::ShowProgress(std::string_view text) {
  if (!progress_) return;
  progress_->setText(ToQt(text));
  progress_->repaint();
  // Keep the splash live while the loaders run on this thread.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace orv::ui
