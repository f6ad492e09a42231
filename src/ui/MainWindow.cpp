#include "ui/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>

#include "map/MainMenu.h"
#include "ui/QtUi.h"

namespace orv::ui {

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
  setObjectName("OVRMap");
  setWindowTitle("Orvanta");
  resize(1000, 700);

  std::map<std::string, QMenu*> menus;
  for (const MenuEntry& e : MainMenuEntries()) {
    const std::string name(e.name);
    QString caption = ToQt(e.caption);
    QMenu* parentMenu = e.parent.empty() ? nullptr : menus[std::string(e.parent)];
    if (e.kind == MenuKind::Heading) {
      QMenu* menu = parentMenu ? parentMenu->addMenu(caption) : menuBar()->addMenu(caption);
      menu->setObjectName(QString::fromStdString(name));
      menus[name] = menu;
      actions_[name] = menu->menuAction();
      continue;
    }
    QAction* action = parentMenu ? parentMenu->addAction(caption) : menuBar()->addAction(caption);
    action->setObjectName(QString::fromStdString(name));
    action->setCheckable(e.kind == MenuKind::Toggle);
    connect(action, &QAction::triggered, this, [this, name] {
      if (onMenu) onMenu(name);
    });
    actions_[name] = action;
  }
}

QAction* MainWindow::Action(const std::string& name) const {
  auto it = actions_.find(name);
  return it == actions_.end() ? nullptr : it->second;
}

}  // namespace orv::ui

namespace orv::ui {

void MainWindow::closeEvent(QCloseEvent* event) {
  if (onClose) onClose();
  QMainWindow::closeEvent(event);
}

}  // namespace orv::ui
