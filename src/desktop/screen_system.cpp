#include "desktop/screen_system.h"

#include <QtGui/qtguiglobal.h>

namespace borvane {

QByteArray ScreenSystems() {
#if QT_CONFIG(xcb)
  // Qt itself takes an empty variable for one that is not set.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
    return QByteArrayLiteral("xcb;wayland");
#endif
  return {};
}

}  // namespace borvane
