#include "support/ScriptedUi.h"

namespace orv::test {

void ScriptedUi::MsgBox(std::string_view text, MsgStyle style, std::string_view title) {
  events.push_back({"msg", std::string(text), std::string(title), style});
}

bool ScriptedUi::AskYesNo(std::string_view text, std::string_view title) {
  events.push_back({"ask", std::string(text), std::string(title), MsgStyle::Question});
  if (answers.empty()) return false;
  Answer a = answers.front();
  answers.pop_front();
  return a == Answer::Yes || a == Answer::Ok;
}

Answer ScriptedUi::AskYesNoCancel(std::string_view text, std::string_view title) {
  events.push_back({"askcancel", std::string(text), std::string(title), MsgStyle::Question});
  if (answers.empty()) return Answer::Cancel;
  Answer a = answers.front();
  answers.pop_front();
  return a;
}

bool ScriptedUi::AskText(std::string_view prompt, std::string_view title, std::string& inOut) {
  events.push_back({"text", std::string(prompt), std::string(title), MsgStyle::Question});
  if (typedTexts.empty()) return false;
  inOut = typedTexts.front();
  typedTexts.pop_front();
  return true;
}

void ScriptedUi::Beep() { events.push_back({"beep", "", ""}); }

void ScriptedUi::SetWaitCursor(bool on) {
  waitCursor = on;
  events.push_back({"wait", on ? "on" : "off", ""});
}

void ScriptedUi::SetCaption(std::string_view window, std::string_view text) {
  events.push_back({"caption", std::string(text), std::string(window)});
}

void ScriptedUi::ShowProgress(std::string_view text) { events.push_back({"progress", std::string(text), ""}); }

namespace {
bool TakeFile(std::deque<std::string>& queue, std::string& path) {
  if (queue.empty()) return false;
  path = queue.front();
  queue.pop_front();
  return true;
}
}  // namespace

bool ScriptedUi::AskOpenFile(const FileQuestion& q, std::string& path) {
  events.push_back({"open", q.Title, q.Filter, MsgStyle::Question});
  return TakeFile(chosenFiles, path);
}

bool ScriptedUi::AskSaveFile(const FileQuestion& q, std::string& path) {
  events.push_back({"save", q.Title, q.Filter, MsgStyle::Question});
  return TakeFile(chosenFiles, path);
}

std::vector<std::string> ScriptedUi::Texts(std::string_view kind) const {
  std::vector<std::string> out;
  for (const UiEvent& e : events)
    if (e.kind == kind) out.push_back(e.text);
  return out;
}

}  // namespace orv::test
