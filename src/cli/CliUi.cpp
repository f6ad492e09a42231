#include "cli/CliUi.h"

#include <ostream>

#include "core/Runtime.h"

namespace orv::cli {

void StreamUi::MsgBox(std::string_view text, MsgStyle, std::string_view) { err_ << Latin1ToUtf8(text) << '\n'; }

bool StreamUi::AskYesNo(std::string_view text, std::string_view) {
  err_ << Latin1ToUtf8(text) << " [answered No]\n";
  return false;
}

Answer StreamUi::AskYesNoCancel(std::string_view text, std::string_view) {
  err_ << Latin1ToUtf8(text) << " [answered Cancel]\n";
  return Answer::Cancel;
}

bool StreamUi::AskText(std::string_view prompt, std::string_view, std::string&) {
  err_ << Latin1ToUtf8(prompt) << " [cancelled]\n";
  return false;
}

void StreamUi::ShowProgress(std::string_view text) { out_ << Latin1ToUtf8(text) << '\n'; }

}  // namespace orv::cli
