// A window of the records window's size with nothing in it.

#include <QApplication>
#include <QWidget>

int main(int argument_count, char **arguments) {
  const QApplication application(argument_count, arguments);
  QWidget window;
  window.resize(735, 555);
  window.show();
  return QApplication::exec();
}
