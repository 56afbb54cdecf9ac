#include "desktop/quit_request.h"

#include <QCoreApplication>
#include <QEvent>

#include "core/dispatch.h"
#include "core/start.h"

namespace borvane {

QuitRequest::QuitRequest() { qApp->installEventFilter(this); }

bool QuitRequest::eventFilter(QObject *object, QEvent *event) {
  if (object != qApp || event->type() != QEvent::Quit)
    return false;
  Dispatch(QuitProgram);
  return true;
}

}  // namespace borvane
