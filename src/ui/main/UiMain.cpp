#include <QApplication>
#include <QIcon>
#include <QMessageBox>

#include "ui/Program.h"

// The program's resources (the user guide, the icon) live in the window
// library, which the linker would otherwise leave out.
static void InitResources() { Q_INIT_RESOURCE(ui); }

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("Orvanta");
  QApplication::setOrganizationName("Orvanta");
  QApplication::setDesktopFileName("org.orvanta.Orvanta");
  InitResources();
  QApplication::setWindowIcon(QIcon(":/orvanta.svg"));
  const orv::ui::AppDirChoice dir = orv::ui::AppDirFromArgs(argc, argv);
  if (!dir.Problem.empty()) {
    QMessageBox::warning(nullptr, "Orvanta", QString::fromStdString(dir.Problem));
    return 1;
  }
  orv::ui::Program program(dir.Path);
  if (!program.Start()) return 1;
  program.ShowFirstWindow();
  return QApplication::exec();
}
