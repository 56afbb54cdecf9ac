#include "desktop/services/event_pump.h"

#include <QCoreApplication>

namespace borvane {

void QtEventPump::LetEventsRun() { QCoreApplication::processEvents(); }

void QtEventPump::WaitForEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

}  // namespace borvane
