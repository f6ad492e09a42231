// The Ui of the command-line program: progress texts as lines on the output
// stream, messages on the error stream, both turned from the program's 8-bit
// texts into UTF-8. Questions are answered No, as nobody is there to ask.
#pragma once

#include <iosfwd>

#include "core/Ui.h"

namespace orv::cli {

class StreamUi : public Ui {
public:
  StreamUi(std::ostream& out, std::ostream& err) : out_(out), err_(err) {}

  void MsgBox(std::string_view text, MsgStyle style, std::string_view title) override;
  bool AskYesNo(std::string_view text, std::string_view title) override;
  Answer AskYesNoCancel(std::string_view text, std::string_view title) override;
  bool AskText(std::string_view prompt, std::string_view title, std::string& inOut) override;
  void Beep() override {}
  void SetWaitCursor(bool) override {}
  void SetCaption(std::string_view, std::string_view) override {}
  void ShowProgress(std::string_view text) override;

private:
  std::ostream& out_;
  std::ostream& err_;
};

}  // namespace orv::cli
