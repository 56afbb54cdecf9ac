#include "desktop/windows/task_bar.h"

#include <QGuiApplication>
#include <QWindow>

#if QT_CONFIG(xcb)
#include <X11/Xlib.h>
#endif

namespace borvane {

void LeaveOutOfTaskBar([[maybe_unused]] const QWindow &window) {
#if QT_CONFIG(xcb)
  // Qt's offscreen screen has this interface as well, without a display.
  const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 == nullptr || x11->display() == nullptr)
    return;
  Display *display = x11->display();
  const auto atom = [&](const char *name) { return static_cast<long>(XInternAtom(display, name, False)); };
  constexpr long add = 1;
  constexpr long from_an_application = 1;
  XEvent event = {};
  XClientMessageEvent &message = event.xclient;
  message.type = ClientMessage;
  message.window = window.winId();
  message.message_type = static_cast<Atom>(atom("_NET_WM_STATE"));
  message.format = 32;
  message.data.l[0] = add;
  message.data.l[1] = atom("_NET_WM_STATE_SKIP_TASKBAR");
  message.data.l[2] = atom("_NET_WM_STATE_SKIP_PAGER");
  message.data.l[3] = from_an_application;
  XSendEvent(display, DefaultRootWindow(display), False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
  XFlush(display);
#endif
}

}  // namespace borvane
