#pragma once

#include <QGuiApplication>

#if QT_CONFIG(xcb)

namespace borvane {

/// The connection to the X server; null on any other screen. Qt's offscreen screen has the interface, too, without one.
inline auto *X11Display() {
  const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 == nullptr ? nullptr : x11->display();
}

}  // namespace borvane

#endif
