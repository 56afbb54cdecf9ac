#include "desktop/held_keys.h"

#include <QGuiApplication>

#if QT_CONFIG(xcb)
#include <X11/XKBlib.h>
#endif

namespace borvane {

void CountHeldKeysOnce() {
#if QT_CONFIG(xcb)
  // Qt's offscreen screen has this interface as well, without a display.
  const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 != nullptr && x11->display() != nullptr)
    XkbSetDetectableAutoRepeat(x11->display(), True, nullptr);
#endif
}

}  // namespace borvane
