#include "desktop/services/event_pump.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

namespace borvane {

void QtEventPump::LetEventsRun() { QCoreApplication::processEvents(); }

void QtEventPump::LetEventsRunFor(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

void QtEventPump::WaitForEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

}  // namespace borvane
