// OVRMap, the main window. Its menu bar is built from the core's menu table;
// each click is handed back by control name.
#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <string>

class QAction;
class QMenu;

namespace orv::ui {

class MainWindow : public QMainWindow {
  Q_OBJECT
public:
  explicit MainWindow(QWidget* parent = nullptr);

  // The action of a menu control, or nullptr.
  QAction* Action(const std::string& name) const;
  // Called with the control name of every clicked entry.
  std::function<void(const std::string&)> onMenu;
  // Called when the window closes (its unload), before it goes.
  std::function<void()> onClose;

protected:
  void closeEvent(QCloseEvent* event) override;

private:
  std::map<std::string, QAction*> actions_;
};

}  // namespace orv::ui
