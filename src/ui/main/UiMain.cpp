#include <QApplication>

#include "ui/Program.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("Orvanta");
  orv::ui::Program program(orv::ui::AppDirFromArgs(argc, argv));
  if (!program.Start()) return 1;
  program.ShowFirstWindow();
  return QApplication::exec();
}
