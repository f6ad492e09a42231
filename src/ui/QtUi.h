// The Ui seam in Qt: message boxes, questions, the wait cursor, captions and
// the splash's progress line.
#pragma once

#include <QString>
#include <functional>
#include <map>
#include <string>

#include "core/Ui.h"

class QLabel;
class QWidget;

namespace orv::ui {

QString ToQt(std::string_view latin1Text);       // 8-bit core text to a QString
std::string FromQt(const QString& text);          // and back, "?" outside the code page

class QtUi : public Ui {
public:
  explicit QtUi(QWidget* parent = nullptr) : parent_(parent) {}

  void SetParent(QWidget* parent) { parent_ = parent; }
  // The label that ShowProgress writes to (the splash's lblProgress).
  void SetProgressLabel(QLabel* label) { progress_ = label; }
  // A window whose caption SetCaption may change, by its name.
  void RegisterWindow(const std::string& name, QWidget* window) { windows_[name] = window; }

  void MsgBox(std::string_view text, MsgStyle style, std::string_view title) override;
  bool AskYesNo(std::string_view text, std::string_view title) override;
  Answer AskYesNoCancel(std::string_view text, std::string_view title) override;
  bool AskText(std::string_view prompt, std::string_view title, std::string& inOut) override;
  void Beep() override;
  void SetWaitCursor(bool on) override;
  void SetCaption(std::string_view window, std::string_view text) override;
  void ShowProgress(std::string_view text) override;
  bool AskOpenFile(const FileQuestion& q, std::string& path) override;
  bool AskSaveFile(const FileQuestion& q, std::string& path) override;

private:
  QWidget* parent_;
  QLabel* progress_ = nullptr;
  std::map<std::string, QWidget*, std::less<>> windows_;
  bool waitCursor_ = false;
};

}  // namespace orv::ui
