// What a window costs that does nothing: the start-up benchmark's measure of the toolkit alone.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  window.showMaximized();
  return QApplication::exec();
}
