// The least that a program with a window can do: the limit of the start row.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QWidget window;
  window.resize(1440, 900);
  window.show();
  return QApplication::exec();
}
