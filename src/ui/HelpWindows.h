// Help and About: the user guide shipped with the program, and the version
// with the sources of the data and their licences.
#pragma once

#include <QWidget>

class QTextBrowser;

namespace orv::ui {

class HelpWindow : public QWidget {
  Q_OBJECT
public:
  explicit HelpWindow(QWidget* parent = nullptr);
  QTextBrowser* Browser() const { return browser_; }

private:
  QTextBrowser* browser_;
};

// The About box's text (rich text).
QString AboutText();
void ShowAbout(QWidget* parent);

}  // namespace orv::ui
