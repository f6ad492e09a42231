// A Ui for tests: records every message, question, caption and progress text
// in order, and answers questions from a queue (No when the queue is empty).
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/Ui.h"

namespace orv::test {

struct UiEvent {
  std::string kind;   // "msg", "ask", "askcancel", "text", "beep", "wait", "caption", "progress",
                      // "open", "save" (text: the dialog's title)
  std::string text;
  std::string title;  // message title, or the window of a caption
  MsgStyle style = MsgStyle::Exclamation;
};

class ScriptedUi : public Ui {
public:
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

  // Answers given to the next questions, in order.
  std::deque<Answer> answers;
  std::deque<std::string> typedTexts;
  // Paths chosen in the next file dialogs, in order; an empty queue cancels.
  std::deque<std::string> chosenFiles;

  std::vector<UiEvent> events;
  bool waitCursor = false;

  // The texts of all events of one kind, in order.
  std::vector<std::string> Texts(std::string_view kind) const;
  std::vector<std::string> Messages() const { return Texts("msg"); }
  std::vector<std::string> Progress() const { return Texts("progress"); }
};

}  // namespace orv::test
