#include "desktop/windows/task_bar.h"

#include <QWindow>

#include "desktop/x11_display.h"

#if QT_CONFIG(xcb)
#include <X11/Xlib.h>
#endif

namespace borvane {

void LeaveOutOfTaskBar([[maybe_unused]] const QWindow &window) {
#if QT_CONFIG(xcb)
  Display *display = X11Display();
  if (display == nullptr)
    return;
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
