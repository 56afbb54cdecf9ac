#include "desktop/held_keys.h"

#include "desktop/x11_display.h"

#if QT_CONFIG(xcb)
#include <X11/XKBlib.h>
#endif

namespace borvane {

void CountHeldKeysOnce() {
#if QT_CONFIG(xcb)
  if (Display *display = X11Display())
    XkbSetDetectableAutoRepeat(display, True, nullptr);
#endif
}

}  // namespace borvane
