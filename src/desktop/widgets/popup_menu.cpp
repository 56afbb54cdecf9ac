#include "desktop/widgets/popup_menu.h"

#include <QCursor>
#include <QWindow>

#include "controls/menu.h"
#include "desktop/windows_1252.h"

namespace borvane {

PopupMenu::PopupMenu(const Menu &menu) {
  setAccessibleName(ShownText(menu.Caption()));
  for (Control *control : menu.children()) {
    auto *item = dynamic_cast<MenuItem *>(control);
    if (item != nullptr && item->Visible())
      Add(*item);
  }
}

void PopupMenu::Add(MenuItem &item) {
  if (item.Caption() == "-") {
    addSeparator();
    return;
  }
  // An "&" is no sign for a key.
  QAction *action = addAction(ShownText(item.Caption()).replace(QLatin1Char('&'), QLatin1String("&&")));
  action->setEnabled(item.Enabled());
  action->setCheckable(item.Checked());
  action->setChecked(item.Checked());
  items_.insert(action, &item);
}

MenuItem *PopupMenu::Choose(const QWidget *window, const std::optional<QPoint> &place) {
  if (isEmpty())
    return nullptr;
  create();
  if (window != nullptr)
    windowHandle()->setTransientParent(window->windowHandle());
  if (place)
    return items_.value(exec(*place));
  // A key opens the menu at the window, wherever the pointer is.
  const bool is_pointed_at = window == nullptr || window->geometry().contains(QCursor::pos());
  return items_.value(exec(is_pointed_at ? QCursor::pos() : window->geometry().bottomLeft()));
}

}  // namespace borvane
