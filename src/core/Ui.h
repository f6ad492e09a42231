// The program's one seam to message boxes, questions and window feedback. The
// Qt shell implements it with dialogs; tests use a scripted answerer.
#pragma once

#include <string>
#include <string_view>

namespace orv {

enum class MsgStyle { Exclamation, Information, Critical, Question };
enum class Answer { Yes, No, Cancel, Ok };

// The common open and save file dialogs. Filter holds pairs of a description
// and a pattern list separated by "|", as "Flight plans (*.pln)|*.pln|All
// files (*.*)|*.*"; Folder is where the dialog opens, Name the file name it
// offers. Paths are native.
struct FileQuestion {
  std::string Title;
  std::string Filter;
  std::string Folder;
  std::string Name;
};

inline constexpr std::string_view kAppTitle = "Orvanta";

class Ui {
public:
  virtual ~Ui() = default;
  // A message box with an OK button; refusals use the default style and title.
  virtual void MsgBox(std::string_view text, MsgStyle style = MsgStyle::Exclamation,
                      std::string_view title = kAppTitle) = 0;
  virtual bool AskYesNo(std::string_view text, std::string_view title = kAppTitle) = 0;
  virtual Answer AskYesNoCancel(std::string_view text, std::string_view title = kAppTitle) = 0;
  // A line of text typed by the user; false when cancelled.
  virtual bool AskText(std::string_view prompt, std::string_view title, std::string& inOut) = 0;
  virtual void Beep() = 0;
  virtual void SetWaitCursor(bool on) = 0;
  // The caption of a window, by the window's name ("OVRMap", "frmUser", ...).
  virtual void SetCaption(std::string_view window, std::string_view text) = 0;
  // The one-line progress label of the splash; repainted at once.
  virtual void ShowProgress(std::string_view text) = 0;
  // The open and save file dialogs: true with the chosen path, false when
  // cancelled. A Ui with nobody to ask cancels.
  virtual bool AskOpenFile(const FileQuestion& q, std::string& path) { return false; }
  virtual bool AskSaveFile(const FileQuestion& q, std::string& path) { return false; }
};

// A Ui that shows nothing and answers every question with No: for the CLI and
// for code paths run without anyone to ask.
class SilentUi : public Ui {
public:
  void MsgBox(std::string_view, MsgStyle, std::string_view) override {}
  bool AskYesNo(std::string_view, std::string_view) override { return false; }
  Answer AskYesNoCancel(std::string_view, std::string_view) override { return Answer::Cancel; }
  bool AskText(std::string_view, std::string_view, std::string&) override { return false; }
  void Beep() override {}
  void SetWaitCursor(bool) override {}
  void SetCaption(std::string_view, std::string_view) override {}
  void ShowProgress(std::string_view) override {}
};

}  // namespace orv
