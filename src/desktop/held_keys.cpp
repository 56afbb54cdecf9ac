#include "desktop/held_keys.h"

#include <QGuiApplication>

#if QT_CONFIG(xcb)
#include <X11/XKBlib.h>
#endif

namespace borvane {

void CountHeldKeysOnce() {
#if QT_CONFIG(xcb)
  if (const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
    XkbSetDetectableAutoRepeat(x11->display(), True, nullptr);
#endif
}

}  // namespace borvane
