#include "desktop/quit_request.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

namespace borvane {

QuitRequest::QuitRequest(std::function<void()> quit) : quit_(std::move(quit)) { qApp->installEventFilter(this); }

bool QuitRequest::eventFilter(QObject *object, QEvent *event) {
  if (object != qApp || event->type() != QEvent::Quit)
    return false;
  quit_();
  return true;
}

}  // namespace borvane
